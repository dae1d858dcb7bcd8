#include "entry/sheet_draft.h"

#include "entry/fix_columns.h"
#include "entry/sheet_cells.h"
#include "model/workspace.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace orvane {

namespace {

/// Captions are looked for in so many lines.
constexpr size_t MostCaptionLines = 20;

struct KnownCaption {
  SheetField field;
  std::string_view key;  ///< as `CaptionKey`
};

constexpr KnownCaption KnownCaptions[] = {
    {SheetTime, "time"},          {SheetTime, "clock"},         {SheetTime, "timeofday"},
    {SheetLocation, "place"},     {SheetLocation, "location"},  {SheetLocation, "trail"},
    {SheetLocation, "mark"},      {SheetLocation, "trailmark"}, {SheetSpecies, "species"},
    {SheetSpecies, "group"},      {SheetSpecies, "taxon"},      {SheetDate, "date"},
    {SheetFocal, "focal"},        {SheetFocal, "focalanimal"},  {SheetFocal, "animal"},
    {SheetFocal, "individual"},   {SheetActivity, "act"},       {SheetActivity, "activity"},
    {SheetActivity, "behaviour"}, {SheetActivity, "behavior"}};

/// The texts for all rows that exclude a column.
SheetField AlwaysOf(SheetField field) {
  if (field == SheetSpecies) return SheetSpeciesAlways;
  if (field == SheetDate) return SheetDateAlways;
  return field == SheetFocal ? SheetFocalAlways : field;
}

/// "A" for the first column, as `ParseColumnRef` reads it.
std::string ColumnLetters(size_t column) {
  constexpr size_t Letters = 26;
  std::string letters(1, static_cast<char>('A' + column % Letters));
  // A line has no column for which two letters are too few.
  if (column >= Letters) letters.insert(0, 1, static_cast<char>('A' + column / Letters - 1));
  return letters;
}

std::vector<std::string> CellsOf(std::string_view row) {
  std::vector<std::string> cells;
  for (size_t begin = 0; begin <= row.size();) {
    const size_t end = std::min(row.find('\t', begin), row.size());
    cells.emplace_back(row.substr(begin, end - begin));
    begin = end + 1;
  }
  return cells;
}

/// \return the column of a caption; nothing if there is none
std::optional<size_t> FindCaption(const std::vector<std::string>& captions, std::string_view key) {
  const auto found =
      std::find_if(captions.begin(), captions.end(),
                   [&](const std::string& caption) { return CaptionKey(caption) == key; });
  if (found == captions.end() || found - captions.begin() >= MostColumns) return std::nullopt;
  return static_cast<size_t>(found - captions.begin());
}

/// \return how many fields have a caption
size_t KnownFields(const std::vector<std::string>& captions) {
  std::array<bool, SheetFieldCount> known{};
  for (const auto& [field, key] : KnownCaptions) {
    if (FindCaption(captions, key)) known[field] = true;
  }
  return static_cast<size_t>(std::count(known.begin(), known.end(), true));
}

}  // namespace

SheetDraft::SheetDraft(Map& map, const FollowSheet& sheet, std::string fileName, SheetFields fields)
    : map_(map), sheet_(sheet), fileName_(std::move(fileName)), fields_(std::move(fields)) {
  Guess();
}

/// \param line  of the text of the sheet, from 1
std::vector<std::string> SheetDraft::CaptionsOf(size_t line) const {
  SheetLines lines(sheet_.text);
  std::optional<std::string_view> row;
  for (size_t i = 0; i < line; ++i) row = lines.Next();
  return row ? CellsOf(*row) : std::vector<std::string>();
}

void SheetDraft::Guess() {
  size_t heading = 0;
  if (fields_[SheetSkip].empty()) {
    constexpr size_t FewestFields = 2;
    size_t most = FewestFields - 1;
    for (size_t line = 1; line <= MostCaptionLines; ++line) {
      const size_t known = KnownFields(CaptionsOf(line));
      if (known <= most) continue;
      most = known;
      heading = line;
    }
    if (heading > 0) fields_[SheetSkip] = std::to_string(heading);
  } else {
    heading = static_cast<size_t>(std::max(ParseColumnRef(fields_[SheetSkip]), 0));
  }
  const std::vector<std::string> captions = CaptionsOf(heading);
  const auto fill = [&](SheetField field, const std::string& text) {
    if (fields_[field].empty() && fields_[AlwaysOf(field)].empty()) fields_[field] = text;
  };
  for (const auto& [field, key] : KnownCaptions) {
    if (const auto column = FindCaption(captions, key)) fill(field, ColumnLetters(*column));
  }
  for (size_t sm = 0; sm < SmColumnFields.size(); ++sm) {
    if (!map_.smName[0] || !IsSmRowShown(map_, sm)) continue;
    const auto column = FindCaption(captions, CaptionKey(*map_.smName[sm]));
    if (column) fill(SmColumnFields[sm], ColumnLetters(*column));
  }
  const auto day = FindCaption(captions, "day");
  const auto month = FindCaption(captions, "month");
  const auto year = FindCaption(captions, "year");
  if (!day || !month || !year) return;
  const bool dayFirst = map_.workspace->preferences.europeanDates;
  fill(SheetDate, ColumnLetters(dayFirst ? *day : *month) + "/" +
                      ColumnLetters(dayFirst ? *month : *day) + "/" + ColumnLetters(*year));
}

/// The fields in the order of the choices after the first.
std::vector<SheetField> SheetDraft::MeaningsOfColumns() const {
  std::vector<SheetField> fields = {SheetTime, SheetLocation, SheetSpecies,
                                    SheetDate, SheetFocal,    SheetActivity};
  for (size_t sm = 0; sm < SmColumnFields.size(); ++sm) {
    if (map_.smName[0] && IsSmRowShown(map_, sm)) fields.push_back(SmColumnFields[sm]);
  }
  return fields;
}

std::vector<std::string> SheetDraft::Choices() const {
  std::vector<std::string> choices = {"(not used)", "Time",         "Trail",   "Species",
                                      "Date",       "Focal animal", "Activity"};
  for (size_t sm = 0; sm < SmColumnFields.size(); ++sm) {
    if (map_.smName[0] && IsSmRowShown(map_, sm)) choices.push_back(*map_.smName[sm]);
  }
  return choices;
}

std::vector<int> SheetDraft::Chosen() const {
  std::vector<int> chosen(columns_, 0);
  const std::vector<SheetField> meanings = MeaningsOfColumns();
  const auto mark = [&](int column, size_t meaning) {
    if (column < 0 || static_cast<size_t>(column) >= chosen.size()) return;
    chosen[static_cast<size_t>(column)] = static_cast<int>(meaning) + 1;
  };
  const ImportSpec spec = ReadSheetFields(fields_, map_).spec;
  for (size_t i = 0; i < meanings.size(); ++i) {
    if (meanings[i] == SheetDate && spec.dateColumn == ColumnMalformed) {
      for (const int column : {spec.dayColumn, spec.monthColumn, spec.yearColumn}) mark(column, i);
    } else {
      mark(ParseColumnRef(fields_[meanings[i]]), i);
    }
  }
  return chosen;
}

void SheetDraft::Assign(size_t column, size_t choice) {
  // The arrow keys go through the choices one by one. Those passed over must take nothing away.
  if (column == assigned_) {
    fields_ = beforeAssigned_;
  } else {
    assigned_ = column;
    beforeAssigned_ = fields_;
  }
  const std::vector<int> chosen = Chosen();
  const std::vector<SheetField> meanings = MeaningsOfColumns();
  // What the column meant before is without a column now.
  if (column < chosen.size() && chosen[column] > 0) {
    ChangeSheetField(fields_, meanings[static_cast<size_t>(chosen[column]) - 1], "");
  }
  if (choice == 0 || choice > meanings.size() || column >= MostColumns) return;
  ChangeSheetField(fields_, meanings[choice - 1], ColumnLetters(column));
}

void SheetDraft::Read() {
  SheetReading reading = ReadSheetFields(fields_, map_);
  ImportSpec& spec = reading.spec;
  spec.sheet = &sheet_;
  spec.fileName = fileName_;
  constexpr size_t AllRows = std::numeric_limits<size_t>::max();
  Preview all = reading.refusal ? PlainRows() : PreviewSheet(spec, AllRows);
  columns_ = 0;
  for (size_t i = 0; i < std::min(all.rows.size(), MostPreviewRows); ++i) {
    columns_ = std::max(columns_, all.rows[i].cells.size());
  }
  all.captions = CaptionsOf(static_cast<size_t>(std::max(spec.skipCount, 0)));
  all.captions.resize(columns_);
  for (size_t i = 0; i < columns_; ++i) {
    if (all.captions[i].empty()) all.captions[i] = ColumnLetters(i);
  }
  if (reading.refusal) {
    page_ = {std::move(all), reading.refusal->message, {}, {}};
    return;
  }
  std::string warning;
  if (spec.dateColumn >= 0) {
    warning = DateOrderWarning(all, static_cast<size_t>(spec.dateColumn),
                               map_.workspace->preferences.europeanDates);
  }
  page_ = PageOfPreview(std::move(all));
  page_.warning = std::move(warning);
}

/// The first rows, without what becomes of them.
Preview SheetDraft::PlainRows() const {
  Preview preview;
  SheetLines lines(sheet_.text);
  const int skipped = ParseColumnRef(fields_[SheetSkip]);
  for (int i = 0; i < skipped; ++i) lines.Next();
  while (preview.rows.size() < MostPreviewRows) {
    const auto row = lines.Next();
    if (!row) break;
    const size_t line = lines.Number();
    const std::vector<size_t>& numbers = sheet_.rowLines;
    const size_t number = numbers.empty() ? line : numbers[line - 1];
    if (!row->empty()) preview.rows.push_back({number, "", "", CellsOf(*row)});
  }
  return preview;
}

}  // namespace orvane
