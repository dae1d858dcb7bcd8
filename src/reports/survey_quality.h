#pragma once

#include "model/map.h"
#include "reports/table_report.h"
#include "survey/blunders.h"
#include "survey/residuals.h"
#include "view/error_overlay.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// The Survey Quality of a map: how far each reading and each closed chain is off, the worst first,
/// and which readings were likely written down wrong.

/// What a row is about.
enum class QualityKind { Leg, Fix, Altitude, Chain };

struct QualityRow {
  QualityKind kind = QualityKind::Leg;
  const Point* point = nullptr;          ///< holds the reading, or begins the chain
  const Measurement* reading = nullptr;  ///< null for a chain
  const Point* other = nullptr;  ///< the base of a leg, or the end of a chain; null otherwise
  const Trail* trail = nullptr;  ///< the first trail of the point; null for none
  std::optional<double> north;   ///< metres, as `ReadingResidual` has them
  std::optional<double> east;
  std::optional<double> up;
  double meters = 0;              ///< of all directions
  double ground = 0;              ///< of north and east
  std::optional<double> percent;  ///< of a leg or chain
  std::optional<double> degrees;
  std::optional<LatLon> fix;  ///< where a fix puts its point
  /// The legs of a chain, each from point to point; empty for all other rows.
  std::vector<std::pair<const Point*, const Point*>> legs;
  bool checked = true;  ///< false where nothing else says what the reading says

  friend bool operator==(const QualityRow&, const QualityRow&) = default;
};

struct SurveyQuality {
  std::vector<QualityRow> rows;  ///< the worst first; altitudes without a place on the ground last
  std::vector<LikelyBlunder> blunders;
  bool mixedAltitudes = false;       ///< rows are in the order of their errors on the ground
  bool hasLargeRegion = false;       ///< in which no blunders were looked for
  size_t unchecked = 0;              ///< legs that nothing checks
  std::vector<QualityRow> unsorted;  ///< the rows as they were measured, to notice a change
};

/// Works the quality of a map out, which takes long for large maps, if its readings or places have
/// changed since `quality` was worked out.
/// \return true if it was
bool UpdateSurveyQuality(SurveyQuality& quality, const Map& map);

/// Which rows are shown.
struct QualityFilter {
  std::optional<QualityKind> kind;   ///< nothing for all
  std::optional<std::string> trail;  ///< by its text; nothing for all
};

/// The text by which a row's trail is called: its name, or for a follow its type; "(no trail)" for
/// none.
std::string QualityTrailText(const QualityRow& row);

/// The trails of the rows, each once, in the order of their names.
std::vector<std::string> QualityTrails(const SurveyQuality& quality);

/// \return the places of the rows that a filter lets through, in order
std::vector<size_t> FilteredRows(const SurveyQuality& quality, const QualityFilter& filter);

/// A sentence on a likely blunder.
std::string BlunderSentence(const LikelyBlunder& blunder);

/// The table of some rows, with the notes on the whole survey above.
TableReport QualityTable(const SurveyQuality& quality, const std::vector<size_t>& rows);

/// The colours of errors.
struct ErrorScale {
  Color color = 0;
  double below = 0;  ///< per cent of a leg, or metres of a fix
};

/// The colour of a row: by the error in per cent of a leg or chain, by metres of anything else; grey
/// where it was not checked. With mixed altitudes the error on the ground counts.
Color ErrorColorOf(const SurveyQuality& quality, const QualityRow& row);

/// What the map shows: all legs if `allLegs`, and over them the current row.
/// \param current  the place of a row; nothing for none
ErrorOverlay QualityOverlay(const SurveyQuality& quality, bool allLegs,
                            std::optional<size_t> current);

/// The middle of what a row shows on the map, to which the view can move; nothing if it shows
/// nothing there.
std::optional<LatLon> MiddleOfRow(const QualityRow& row);

}  // namespace orvane
