#pragma once

#include "entry/fix_import.h"
#include "entry/preview.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The fields of the window "Import Fixes", as text.
struct FixForm {
  std::string clock = "auto";
  std::string type;
  std::string every = "1";
  std::string minMinutes = "0";
  std::string minMeters = "0";
  std::string maxSpeed;  ///< empty for no limit
  bool leavesOutliers = true;
  bool makesRanges = true;
};

/// A field that can't be read.
enum class FixFormField { None, Clock, Every, MinMinutes, MinMeters, MaxSpeed };

/// \return what is wrong with a field, as a sentence for the user; empty for `None`
std::string FixFormFault(FixFormField field);

/// What a column of a table can mean.
enum class FixRole {
  None,
  Time,
  Date,
  Lat,
  Lon,
  Easting,
  Northing,
  Zone,
  Altitude,
  Animal,
  Species,
  Outlier,
  Visible
};
constexpr size_t FixRoleCount = 13;

/// \return the name of a role for the user: "Latitude"; empty for `None`
std::string_view FixRoleName(FixRole role);

/// An import of fixes that the user is still choosing. Nothing enters the map.
class FixDraft {
 public:
  /// \param map   is only read; must outlive this
  /// \param text  of the table, in UTF-8
  FixDraft(const Map& map, std::string name, std::string text);

  const std::string& FileName() const { return name_; }

  /// The meaning of each column, at first by its caption.
  std::vector<FixRole> Roles() const;
  /// Gives a column another meaning. For this, it comes before the other columns that have it.
  void Assign(size_t column, FixRole role);

  /// Reads and plans with what the fields hold. The rows are read again only if `Assign` was called.
  /// \return the first field that can't be read; the plan is then the one before
  FixFormField Plan(const FixForm& form);

  /// \return true if there is something that an import can take
  bool CanImport() const;
  /// \return the import as planned, to be entered into the map
  FixImport& Import() { return *import_; }

  /// \return the first rows with their states; without states where the columns don't give a time and a
  ///         place
  Preview FirstRows(size_t most = MostPreviewRows) const;
  /// \return what the import takes and makes, in one sentence; or what it lacks
  std::string CountsText() const;
  /// \return why the clock is as it is: "UTC+08:00 is usual at the mean longitude 115.6"; empty where
  ///         the user has chosen
  std::string ClockReason() const;
  /// \return that dates can be read in two ways, and which row decides; empty if they can't
  std::string DateWarning() const;
  /// \return true if a row is left out
  bool LeavesOut() const;
  /// \return the name that is offered for a file with them
  std::string LeftOutName() const;
  /// \return all rows that are left out, with their reasons, as lines of cells with tabs between
  std::string LeftOutText() const;

 private:
  bool HasPlan() const { return import_.has_value() && !import_->plan.fixes.empty(); }
  bool ReadRows(const FixOptions& options);

  const Map& map_;
  std::string name_;
  std::string text_;  ///< while there is no import; else the import has it
  FixLayout layout_;
  bool isRead_ = false;
  std::optional<FixImport> import_;
};

}  // namespace orvane
