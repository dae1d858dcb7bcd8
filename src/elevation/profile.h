#pragma once

#include "base/messages.h"
#include "geometry/poly.h"
#include "model/altitude_estimates.h"
#include "model/map.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The side profile of a line across the ground: of a trail, or of a straight transect. Along the
/// line runs the distance, upwards the altitude, which is mostly not measured: every pixel column
/// but a few gets an estimate from all the altitudes of the map.

/// One pixel column of a profile.
struct ElevationSample {
  LatLon position;                     ///< altitude `NoAltitude` until it is known
  const std::string* label = nullptr;  ///< name of a point near the column; not owned
};

/// Bits of `ElevationView::flags`.
enum ElevationFlag : std::uint32_t {
  ElevationOwnsPoints = 1,  ///< a transect: its two points are in `ends`
  ElevationInfoShown = 2,   ///< the info pane is visible
  ElevationPanning = 16,    ///< the line is being dragged
};

/// What a profile shows. Altitudes and distances in metres, the rest in pixels of the window, whose
/// plot begins `leftMargin` from its left and at its top.
struct ElevationView {
  Map* map = nullptr;
  const Trail* trail = nullptr;  ///< null for a transect
  std::vector<Point*> points;    ///< the line, at least two points
  ScratchPoints ends;            ///< of a transect
  std::uint32_t flags = ElevationInfoShown;
  double dragAnchor = 0;  ///< distance that was under the pointer at the start of a pan
  int lineHeight = 0;     ///< of the font
  int ascent = 0;         ///< of the font
  std::vector<ElevationSample> samples;  ///< one for each column of the plot
  int plotWidth = 0;                     ///< at least 2 once laid out
  int plotHeight = 0;                    ///< at least 1 once laid out
  double metresPerPixelY = 0;
  double plotBottom = 0;  ///< altitude at the bottom line of the plot
  double metresPerPixelX = 0;
  double minAltitude = NoAltitude;  ///< of the points of the line, or `NoAltitude`
  double maxAltitude = NoAltitude;  ///< likewise
  double lineLength = 0;
  double viewStart = 0;  ///< distance at the first column
  double viewEnd = 0;    ///< distance at the last column
  int leftMargin = 0;
  int pointerX = 0;
  int pointerY = 0;
  /// Of the map as `SampleLine` first met it; none until then, and after `FollowLine`.
  std::optional<AltitudeEstimates> estimates;
  std::vector<double> lengths;  ///< metres, of the segments of the line; likewise
};

/// The profile of a trail, all of it in view.
/// \return nothing, after a message, if the trail has fewer than two points
std::optional<ElevationView> OpenElevation(Map& map, const Trail& trail);

/// The profile of the straight line between two places, all of it in view.
/// \return nothing, after a message, if the map has no altitude at all
std::optional<ElevationView> OpenTransect(Map& map, const LatLon& from, const LatLon& to);

/// "Elevation of", name and type for a trail with a name; nothing for any other line.
std::optional<std::string> ElevationTitle(const ElevationView& view);

/// Makes the samples of all columns, from `viewStart` to `viewEnd`: places and labels. A measured
/// altitude is taken only where a point falls exactly on a column, as the last point does on the
/// last column of the whole line; the first and the last column are estimated otherwise, and the
/// rest is left unknown. Beyond the ends the line goes straight on.
///
/// The line is measured and the altitudes of the map are collected only once; after a change of the
/// map call `FollowLine`.
void SampleLine(ElevationView& view);

/// Makes the samples for a plot of so many columns, without a window around it.
/// \param plotWidth  at least 2; less counts as 2
void LayoutColumns(ElevationView& view, int plotWidth);

/// What one step of the filling redrew: the chord from column `from` to column `to` is replaced
/// by two lines, over `middle`.
struct ElevationStep {
  int from = 0;
  int middle = 0;
  int to = 0;
};

/// One pass of the filling: halves each run of unknown columns by an estimate in its middle. A
/// window draws the steps, first all chords `from` to `to` in the background colour and then all
/// lines over the middles, so that the profile sharpens from pass to pass.
/// \param steps  if not null, receives the steps of this pass from left to right
/// \return true if another pass has something to do
bool FillGapsPass(ElevationView& view, std::vector<ElevationStep>* steps);

/// All passes: afterwards every column has its altitude, unless the map has none.
void FillGaps(ElevationView& view);

/// The same a few columns at a time, so that a window can handle events in between. The profile is
/// the coarse line of the passes that are done, a little finer after each call of `Run`.
class GapFilling {
 public:
  /// Begins again: the samples are new.
  void Restart() { *this = GapFilling(); }

  /// Goes on with the passes until all are done or `mayGoOn`, which is asked after every few
  /// columns, returns false.
  /// \param view  the same one in each call until `Restart`
  /// \return true if all passes are done
  bool Run(ElevationView& view, const std::function<bool()>& mayGoOn);

  /// \return true if all passes are done
  bool IsDone() const { return isDone_; }

 private:
  std::vector<ElevationStep> steps_;  ///< of the present pass
  size_t next_ = 0;                   ///< the first of them that is not done
  bool isDone_ = false;
};

/// \return the same part of the same line, not laid out yet: for paper
ElevationView CopyOf(const ElevationView& view);

/// Call after the map or its basis was edited: takes the points that the trail has now, the places
/// and altitudes of the line, and the altitudes of the map. The view stays; if it was the whole
/// line, it still is. A trail that was deleted, or has fewer than two points left, keeps the points
/// that are shown.
void FollowLine(ElevationView& view);

/// \return false if the trail is no longer in the map: everything in the view that points into the
///         map is then invalid. A deleted trail is there, since its deletion can be undone.
bool IsLineThere(const ElevationView& view);

/// The trail of a profile by what its file says of it, so that it is found when the map is read
/// again and all records have other addresses.
struct LineIdentity {
  bool isTransect = false;
  std::optional<std::string> name;
  std::string type;
  std::string animal;
  PackedDate date = 0;
  int number = 0;  ///< among the trails of the map and its bases for which all else is equal
};

LineIdentity IdentityOf(const ElevationView& view);

/// Call after the map was read again: everything in the view that points into it is invalid. Finds
/// the trail and follows it (`FollowLine`).
/// \return false if there is no such trail; the view is then without points and of no use
bool FindLineAgain(ElevationView& view, const LineIdentity& identity);

/// \return true if a basis of the map has altitudes. The estimates of a profile do not use these.
bool HasBasisAltitudes(const Map& map);

/// \return the column under the pointer, within the plot: the one that the info pane describes
int PointerColumn(const ElevationView& view);

/// \return true if `ElevationFindPoint` finds a point of that name
bool IsOnLine(const ElevationView& view, std::string_view name);

/// Centres the view on the first point of the line that has a name, with half the span: by its
/// name or a synonym, or else by one of them without the leading `_` or `@`. The window is then to
/// be refreshed.
/// \return false, after "Can't find ...", if there is none
bool ElevationFindPoint(ElevationView& view, std::string_view name, Messages& messages);

}  // namespace orvane
