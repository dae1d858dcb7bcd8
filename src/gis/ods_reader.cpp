#include "gis/ods_reader.h"

#include "gis/cell_text.h"
#include "gis/gdal_session.h"
#include "gis/sheet_rows.h"
#include "gis/zipped_xml.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>

namespace orvane {

namespace {

constexpr const char* Content = "content.xml";
constexpr int SecondsOfDay = 24 * 60 * 60;

/// Reads a number at the start of a text, and removes it with the letter that must follow.
std::optional<double> TakeNumber(std::string_view& text, char after) {
  constexpr double Most = 1e8;
  double number = 0;
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  const auto size = static_cast<size_t>(stop - text.data());
  if (error != std::errc() || size >= text.size() || text[size] != after || number < 0 ||
      number > Most)
    return std::nullopt;
  text.remove_prefix(size + 1);
  return number;
}

/// \return the text of "PT08H05M00S"; nothing for another form
std::optional<std::string> TextOfTime(std::string_view value, ClockForm clock) {
  if (!value.starts_with("PT")) return std::nullopt;
  value.remove_prefix(2);
  const auto hours = TakeNumber(value, 'H');
  const auto minutes = TakeNumber(value, 'M');
  const auto seconds = TakeNumber(value, 'S');
  if (!hours || !minutes || !seconds) return std::nullopt;
  const double all = *hours * 3600 + *minutes * 60 + *seconds;
  return ClockTextOf(static_cast<std::int64_t>(std::floor(all + 0.5)), clock);
}

/// \return the text of "2003-03-04" or "2003-03-04T08:05:00"; nothing for another form
std::optional<std::string> TextOfDate(std::string_view value, ClockForm clock) {
  constexpr size_t DateSize = 10;
  if (value.size() == DateSize) return std::string(value);
  const std::string ended = std::string(value) + 'S';
  std::string_view rest = ended;
  const auto year = TakeNumber(rest, '-');
  const auto month = TakeNumber(rest, '-');
  const auto day = TakeNumber(rest, 'T');
  const auto hours = TakeNumber(rest, ':');
  const auto minutes = TakeNumber(rest, ':');
  const auto seconds = TakeNumber(rest, 'S');
  if (!year || !month || !day || !hours || !minutes || !seconds) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year{static_cast<int>(*year)},
                                         std::chrono::month{static_cast<unsigned>(*month)},
                                         std::chrono::day{static_cast<unsigned>(*day)}};
  if (!date.ok()) return std::nullopt;
  const auto days = std::chrono::sys_days{date}.time_since_epoch().count();
  const CellMoment moment = MomentOfDays(static_cast<double>(days) +
                                         (*hours * 3600 + *minutes * 60 + *seconds) / SecondsOfDay);
  return DateText(moment.days) + ' ' + ClockTextOf(moment.seconds, clock);
}

/// Walks over the tables of a document.
class OdsWalk : public ZippedXml::Handler {
 public:
  /// Lists the names of all sheets.
  OdsWalk() = default;
  /// Gives the rows of one sheet.
  OdsWalk(const std::string& sheet, ClockForm clock, SheetRows& rows)
      : sheet_(&sheet), clock_(clock), rows_(&rows) {}

  const std::vector<std::string>& Names() const { return names_; }

  void Open(std::string_view name, const char** attributes) override {
    if (name == "table:table" && tables_++ == 0) OpenSheet(attributes);
    if (name == "office:annotation") ++notes_;
    if (!isRead_ || tables_ > 1 || notes_ > 0) return;
    if (name == "table:table-row") {
      rowRepeats_ = Repeats(attributes, "table:number-rows-repeated");
      column_ = 0;
    } else if (name == "table:table-cell" || name == "table:covered-table-cell") {
      OpenCell(attributes);
    } else if (name == "text:p") {
      if (paragraphs_++ > 0) text_ += ' ';
      ++inParagraph_;
    } else if (name == "text:s") {
      text_.append(static_cast<size_t>(std::min(Repeats(attributes, "text:c"), MostSheetColumns)),
                   ' ');
    } else if (name == "text:tab" || name == "text:line-break") {
      text_ += ' ';
    }
  }

  void Close(std::string_view name) override {
    if (name == "table:table" && --tables_ == 0) CloseSheet();
    if (name == "office:annotation") --notes_;
    if (!isRead_ || tables_ > 1 || notes_ > 0) return;
    if (name == "text:p") --inParagraph_;
    if (name == "table:table-cell" || name == "table:covered-table-cell") CloseCell();
    if (name == "table:table-row") {
      rows_->EndRow(row_, rowRepeats_);
      row_ += rowRepeats_;
    }
  }

  void Text(std::string_view text) override {
    if (isRead_ && tables_ == 1 && notes_ == 0 && inParagraph_ > 0) text_ += text;
  }
  std::string Fault() const override { return rows_ == nullptr ? std::string() : rows_->Fault(); }
  bool IsDone() const override { return isDone_ || (rows_ != nullptr && rows_->IsDone()); }

 private:
  void OpenSheet(const char** attributes) {
    names_.emplace_back(AttributeOf(attributes, "table:name"));
    isRead_ = sheet_ != nullptr && names_.back() == *sheet_;
  }
  void CloseSheet() {
    isDone_ = isRead_;
    isRead_ = false;
  }

  static std::uint64_t Repeats(const char** attributes, std::string_view name) {
    const std::string_view text = AttributeOf(attributes, name);
    std::uint64_t number = 1;
    std::from_chars(text.data(), text.data() + text.size(), number);
    // More would not fit in a sheet, and the numbers of its rows must not overflow.
    return std::min(number, 2 * MostSheetRows);
  }

  void OpenCell(const char** attributes) {
    repeats_ = Repeats(attributes, "table:number-columns-repeated");
    kind_ = AttributeOf(attributes, "office:value-type");
    for (const char* name : {"office:value", "office:date-value", "office:time-value",
                             "office:boolean-value", "office:string-value"}) {
      value_ = AttributeOf(attributes, name);
      if (!value_.empty()) break;
    }
    text_.clear();
    paragraphs_ = 0;
  }

  void CloseCell() {
    const std::string text = CellText();
    // Each row is as wide as its last cell with a text.
    for (std::uint64_t i = 0; !text.empty() && i < repeats_ && rows_->Fault().empty(); ++i) {
      rows_->SetCell(column_ + i, text);
    }
    column_ += repeats_;
  }

  std::string CellText() const {
    if (kind_ == "date") {
      const auto text = TextOfDate(value_, clock_);
      if (!text) return value_;
      // Midnight has no time of day in the file, but on the screen.
      const bool showsMidnight = text->find(' ') == text->npos && text_.find(':') != text_.npos;
      return showsMidnight ? *text + " 00:00" : *text;
    }
    if (kind_ == "time") return TextOfTime(value_, clock_).value_or(value_);
    if (kind_ == "boolean") return value_ == "true" ? "TRUE" : "FALSE";
    if (kind_ == "float" || kind_ == "percentage" || kind_ == "currency") return NumberText(value_);
    return paragraphs_ > 0 ? text_ : value_;
  }

  const std::string* sheet_ = nullptr;
  ClockForm clock_ = ClockForm::Minutes;
  SheetRows* rows_ = nullptr;
  std::vector<std::string> names_;
  int tables_ = 0;  ///< open, within each other
  int notes_ = 0;   ///< open
  bool isRead_ = false;
  bool isDone_ = false;
  std::uint64_t row_ = 1;
  std::uint64_t rowRepeats_ = 1;
  // The cell that is open.
  std::uint64_t column_ = 0;
  std::uint64_t repeats_ = 1;
  std::string kind_;
  std::string value_;
  std::string text_;
  int paragraphs_ = 0;
  int inParagraph_ = 0;
};

}  // namespace

SheetList ListOdsSheets(const SpreadsheetFile& file) {
  const GdalSession session;
  const ZippedXml parts(file.bytes);
  OdsWalk walk;
  const std::string fault = parts.Read(Content, walk);
  return {walk.Names(), fault};
}

std::string ReadOdsSheet(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                         const RowTaker& take) {
  const GdalSession session;
  const ZippedXml parts(file.bytes);
  SheetRows rows(take);
  OdsWalk walk(sheet, clock, rows);
  return parts.Read(Content, walk);
}

}  // namespace orvane
