#include "geo/angle_text.h"

#include "base/number_text.h"
#include "base/text.h"
#include "geo/utm.h"

#include <cmath>

namespace orvane {

namespace {

constexpr char MinuteSign = '\'';
constexpr char SecondSign = '"';

/// The byte before either degree sign in UTF-8.
constexpr char Utf8Lead = '\xC2';

bool IsDegreeSign(char c) { return c == DegreeSign || c == OtherDegreeSign; }

/// A position in a text. Past the end of the text every byte is 0.
class TextCursor {
 public:
  explicit TextCursor(std::string_view text) : text_(text) {}

  size_t Place() const { return at_; }
  char ByteAt(size_t place) const { return place < text_.size() ? text_[place] : '\0'; }
  char Next() const { return ByteAt(at_); }
  void Step() { ++at_; }

  bool StepOver(char c) {
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  bool AtDegreeSign() const { return DegreeSignLength() > 0; }
  bool StepOverDegreeSign() {
    const size_t length = DegreeSignLength();
    at_ += length;
    return length > 0;
  }

  void SkipSpace() {
    while (IsSpace(Next())) ++at_;
  }

  /// \param found  if not null, receives whether there was a number
  /// \return the number, or 0
  double Number(bool* found = nullptr) {
    const RealPrefix number = ReadReal(text_.substr(at_));
    at_ += number.length;
    if (found != nullptr) *found = number.length > 0;
    return number.value;
  }

 private:
  /// \return the bytes of the degree sign here, 0 if there is none
  size_t DegreeSignLength() const {
    if (IsDegreeSign(Next())) return 1;
    return Next() == Utf8Lead && IsDegreeSign(ByteAt(at_ + 1)) ? 2 : 0;
  }

  std::string_view text_;
  size_t at_ = 0;
};

/// What was read before the degrees.
struct AnglePrefix {
  bool letter = false;  ///< the direction is explicit; always true for a bearing
  bool negate = false;
};

/// Steps over a hemisphere letter.
/// \return true if there was one
bool StepOverHemisphere(TextCursor& cursor, bool latitude, bool& negate) {
  const char letter = FoldByte(cursor.Next());
  const bool positive = letter == (latitude ? 'n' : 'e');
  const bool negative = letter == (latitude ? 's' : 'w');
  if (!positive && !negative) return false;
  if (negative) negate = true;
  cursor.Step();
  return true;
}

AnglePrefix ReadAnglePrefix(TextCursor& cursor, const double* runningDefault, AngleMode mode) {
  AnglePrefix prefix;
  if (mode == AngleMode::Bearing) {
    // A single letter in front of a bearing says nothing: "S34" is 34.
    const char letter = FoldByte(cursor.Next());
    if (letter == 'n' || letter == 's' || letter == 'e' || letter == 'w') cursor.Step();
    prefix.letter = true;
    return prefix;
  }
  prefix.letter = StepOverHemisphere(cursor, mode == AngleMode::Latitude, prefix.negate);
  if (!prefix.letter && runningDefault != nullptr && *runningDefault < 0) prefix.negate = true;
  return prefix;
}

/// Seconds follow a blank: in "21 15'43" they are not read, and reading stops at the 4.
double ReadSeconds(TextCursor& cursor) {
  if (!cursor.StepOver(' ') || !IsDigit(cursor.Next())) return 0;
  const double seconds = cursor.Number();
  cursor.StepOver(SecondSign);
  cursor.StepOver(' ');
  return seconds;
}

/// The quadrants of a compass, from the first letter of a text towards the second. The second
/// letter is expected right after the first, before the number, so only texts without a number
/// reach this, such as "NE34"; callers refuse these because text is left over. See
/// docs/compatibility.md.
double TurnToQuadrant(char first, char second, double angle) {
  if (first == 'n' && second == 'w') return 90 - angle;
  if (first == 's' && second == 'e') return (90 - angle) + 180;
  if (first == 's' && second == 'w') return angle + 180;
  if (first == 'e' && second == 'n') return (90 - angle) + 90;
  if (first == 'e' && second == 's') return angle + 90;
  if (first == 'w' && second == 's') return (90 - angle) + 90;
  if (first == 'w' && second == 'n') return angle + 90;
  return angle;
}

/// Whole degrees and the remaining minutes.
struct DegreesAndMinutes {
  double degrees;
  double minutes;
};

DegreesAndMinutes SplitDegrees(double value) {
  const double degrees = std::trunc(value);
  return {degrees, (value - degrees) * 60};
}

/// An angle as it is written: a letter, and a value without a sign.
struct Hemisphere {
  char letter;
  double value;
};

Hemisphere HemisphereOf(double degrees, char positive, char negative) {
  // Adding 0 turns a negative zero into 0, since only the letter shows the sign.
  if (degrees >= 0) return {positive, degrees + 0.0};
  return {negative, std::fabs(degrees)};
}

std::string FormatFine(const Hemisphere& hemisphere, int minuteDecimals) {
  const DegreesAndMinutes parts = SplitDegrees(hemisphere.value);
  return hemisphere.letter + FormatFixed(parts.degrees, 0) + DegreeSign + ' ' +
         FormatFixed(parts.minutes, minuteDecimals) + MinuteSign;
}

std::string FormatSeconds(const Hemisphere& hemisphere) {
  const DegreesAndMinutes parts = SplitDegrees(hemisphere.value);
  const double minutes = std::trunc(parts.minutes);
  // Seconds that round to 60 are written as 60, without a carry.
  const double seconds = (parts.minutes - minutes) * 60;
  return hemisphere.letter + FormatFixed(parts.degrees, 0) + DegreeSign + ' ' +
         FormatFixed(minutes, 0) + MinuteSign + ' ' + FormatFixed(seconds, 1) + SecondSign;
}

std::string FormatHemisphere(const Hemisphere& hemisphere, CoordinateDisplay display) {
  if (display == CoordinateDisplay::Seconds) return FormatSeconds(hemisphere);
  if (display == CoordinateDisplay::Minutes) return FormatFine(hemisphere, 3);
  return hemisphere.letter + FormatFixed(hemisphere.value) + DegreeSign;
}

}  // namespace

double ParseAngle(std::string_view text, size_t* length, double* runningDefault, AngleMode mode) {
  TextCursor cursor(text);
  const AnglePrefix prefix = ReadAnglePrefix(cursor, runningDefault, mode);
  const size_t numberStart = cursor.Place();
  const double first = cursor.Number();
  const char next = cursor.Next();
  double degrees = first;
  double minutes = 0;
  if (next != ' ' && !cursor.AtDegreeSign() && runningDefault != nullptr &&
      (!prefix.letter || next == MinuteSign)) {
    // Minutes without degrees belong to the degree of the previous reading.
    degrees = std::floor(std::fabs(*runningDefault));
    minutes = first;
  } else {
    cursor.StepOverDegreeSign();
    cursor.StepOver(' ');
    if (cursor.Next() != '\t' && cursor.Next() != '\0') minutes = cursor.Number();
  }
  // A sign applies to the degrees only: "-21 15" is -20.75.
  double angle = degrees + minutes / 60;
  cursor.StepOver(MinuteSign);
  angle += ReadSeconds(cursor) / 3600;
  if (prefix.negate) angle = -angle;
  if (mode == AngleMode::Bearing) {
    angle = TurnToQuadrant(FoldByte(cursor.ByteAt(0)), FoldByte(cursor.ByteAt(numberStart)), angle);
  }
  if (mode == AngleMode::Longitude && angle < -180) angle += 360;
  if (runningDefault != nullptr) *runningDefault = angle;
  if (length != nullptr) *length = cursor.Place();
  return angle;
}

bool ParseCoordinate(std::string_view text, bool latitude, double& value, size_t* length) {
  TextCursor cursor(text);
  cursor.SkipSpace();
  bool negate = false;
  bool hemisphere = StepOverHemisphere(cursor, latitude, negate);
  bool found = false;
  double angle = cursor.Number(&found);
  if (!found) return false;
  bool mark = cursor.StepOverDegreeSign();
  cursor.SkipSpace();
  if (IsDigit(cursor.Next())) {
    angle += cursor.Number() / 60;
    if (cursor.StepOver(MinuteSign)) mark = true;
    cursor.SkipSpace();
    if (IsDigit(cursor.Next())) {
      // The second field counts as minutes again. See docs/compatibility.md.
      angle += cursor.Number() / 60;
      if (cursor.StepOver(SecondSign)) mark = true;
    }
  }
  if (!hemisphere) hemisphere = StepOverHemisphere(cursor, latitude, negate);
  if (!hemisphere && !mark) return false;
  value = negate ? -angle : angle;
  if (length != nullptr) *length = cursor.Place();
  return true;
}

bool ParseLatLon(std::string_view text, LatLon& place) {
  size_t length = 0;
  if (!ParseCoordinate(text, true, place.lat, &length)) return false;
  text.remove_prefix(length);
  if (!ParseCoordinate(text, false, place.lon, &length)) return false;
  text.remove_prefix(length);
  for (const char c : text) {
    if (!IsSpace(c)) return false;
  }
  return true;
}

std::string FormatLatitude(double degrees, CoordinateDisplay display) {
  return FormatHemisphere(HemisphereOf(degrees, 'N', 'S'), display);
}

std::string FormatLongitude(double degrees, CoordinateDisplay display) {
  return FormatHemisphere(HemisphereOf(degrees, 'E', 'W'), display);
}

std::string FormatLatLon(const LatLon& place, CoordinateDisplay display) {
  if (display == CoordinateDisplay::Utm) {
    if (auto text = FormatUtm(place)) return *std::move(text);
  }
  return FormatLatitude(place.lat, display) + ' ' + FormatLongitude(place.lon, display);
}

std::string FormatLatitudeFine(double degrees) {
  return FormatFine(HemisphereOf(degrees, 'N', 'S'), 5);
}

std::string FormatLongitudeFine(double degrees) {
  return FormatFine(HemisphereOf(degrees, 'E', 'W'), 5);
}

std::string FormatDistance(double meters) {
  if (meters >= 1000000 || meters <= -1000000) return FormatFixed(meters / 1000, 0) + "km";
  if (meters >= 1000 || meters <= -1000) return FormatGeneral(meters / 1000, 3) + "km";
  if (meters > -0.1 && meters < 0.1 && meters != 0) return FormatGeneral(meters * 100, 3) + "cm";
  // Adding 0 turns a negative zero into 0.
  return FormatGeneral(meters + 0.0, 3) + 'm';
}

}  // namespace orvane
