#include "gis/ods_reader.h"

#include "gis/cell_text.h"
#include "gis/gdal_session.h"
#include "gis/sheet_rows.h"
#include "gis/zipped_xml.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace orvane {

namespace {

constexpr const char* Content = "content.xml";
constexpr const char* Styles = "styles.xml";
constexpr int SecondsOfDay = 24 * 60 * 60;

/// Reads a number at the start of a text, and removes it with the letter that must follow.
/// \return 0 if the text does not begin so
double TakeNumber(std::string_view& text, char after) {
  constexpr double Most = 1e8;
  double number = 0;
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  const auto size = static_cast<size_t>(stop - text.data());
  if (error != std::errc() || size >= text.size() || text[size] != after || number < 0 ||
      number > Most)
    return 0;
  text.remove_prefix(size + 1);
  return number;
}

/// \return the seconds of a duration such as "PT08H05M00S" or "P1DT90M"; nothing for another form
std::optional<double> SecondsOf(std::string_view value) {
  if (!value.starts_with('P') || value.size() < 3) return std::nullopt;
  value.remove_prefix(1);
  double seconds = TakeNumber(value, 'D') * SecondsOfDay;
  if (value.empty()) return seconds;
  if (!value.starts_with('T') || value.size() == 1) return std::nullopt;
  value.remove_prefix(1);
  seconds += TakeNumber(value, 'H') * 3600;
  seconds += TakeNumber(value, 'M') * 60;
  seconds += TakeNumber(value, 'S');
  if (!value.empty()) return std::nullopt;
  return seconds;
}

/// What the styles of cells show, by their names. The styles of numbers come before those of cells.
class OdsStyles {
 public:
  void Open(std::string_view name, const char** attributes) {
    const std::string_view style = AttributeOf(attributes, "style:name");
    if (name == "number:date-style" || name == "number:time-style") {
      number_ = &numbers_[std::string(style)];
      *number_ = {};
      number_->showsElapsed = AttributeOf(attributes, "number:truncate-on-overflow") == "false";
    } else if (name == "style:style") {
      OpenCellStyle(std::string(style), attributes);
    } else if (number_ != nullptr) {
      CountPart(name);
    }
  }
  void Close(std::string_view name) {
    if (name == "number:date-style" || name == "number:time-style") number_ = nullptr;
  }

  /// \return the format of a style of cells; null for one that shows no moment
  const CellFormat* Of(const std::string& style) const {
    const auto found = cells_.find(style);
    return found == cells_.end() ? nullptr : &found->second;
  }

 private:
  void OpenCellStyle(const std::string& style, const char** attributes) {
    const auto number =
        numbers_.find(std::string(AttributeOf(attributes, "style:data-style-name")));
    const CellFormat* const parent =
        Of(std::string(AttributeOf(attributes, "style:parent-style-name")));
    if (number != numbers_.end()) {
      cells_[style] = number->second;
    } else if (parent != nullptr) {
      cells_[style] = *parent;
    }
  }

  void CountPart(std::string_view name) {
    for (const char* part : {"number:year", "number:month", "number:day", "number:day-of-week",
                             "number:week-of-year", "number:quarter", "number:era"}) {
      if (name == part) number_->showsDate = true;
    }
    for (const char* part : {"number:hours", "number:minutes", "number:seconds"}) {
      if (name == part) number_->showsTime = true;
    }
  }

  std::map<std::string, CellFormat, std::less<>> numbers_;
  std::map<std::string, CellFormat, std::less<>> cells_;
  CellFormat* number_ = nullptr;  ///< of the style that is open
};

/// Reads the styles that a document shares with its templates.
class StylesPart : public ZippedXml::Handler {
 public:
  explicit StylesPart(OdsStyles& styles) : styles_(styles) {}
  void Open(std::string_view name, const char** attributes) override {
    styles_.Open(name, attributes);
  }
  void Close(std::string_view name) override { styles_.Close(name); }
  void Text(std::string_view /*text*/) override {}

 private:
  OdsStyles& styles_;
};

/// The styles that the columns of a sheet give to cells without one.
class ColumnStyles {
 public:
  void Add(std::string_view style, std::uint64_t columns) {
    if (end_ >= MostSheetColumns || columns == 0) return;
    end_ += columns;
    styles_.emplace_back(end_, style);
  }
  std::string Of(std::uint64_t column) const {
    const auto found =
        std::upper_bound(styles_.begin(), styles_.end(), column,
                         [](std::uint64_t at, const auto& run) { return at < run.first; });
    return found == styles_.end() ? std::string() : found->second;
  }

 private:
  std::uint64_t end_ = 0;
  std::vector<std::pair<std::uint64_t, std::string>> styles_;  ///< up to which column, exclusive
};

/// Walks over the tables of a document.
class OdsWalk : public ZippedXml::Handler {
 public:
  /// Lists the names of all sheets.
  OdsWalk() = default;
  /// Gives the rows of one sheet.
  /// \param styles  those of the document are added to them
  OdsWalk(const std::string& sheet, ClockForm clock, OdsStyles& styles, SheetRows& rows)
      : sheet_(&sheet), clock_(clock), styles_(&styles), rows_(&rows) {}

  const std::vector<std::string>& Names() const { return names_; }

  void Open(std::string_view name, const char** attributes) override {
    if (name == "table:table" && tables_++ == 0) OpenSheet(attributes);
    if (name == "office:annotation") ++notes_;
    if (styles_ != nullptr && tables_ == 0) styles_->Open(name, attributes);
    if (!isRead_ || tables_ > 1 || notes_ > 0) return;
    if (name == "table:table-column") {
      columns_.Add(AttributeOf(attributes, "table:default-cell-style-name"),
                   Repeats(attributes, "table:number-columns-repeated"));
    } else if (name == "table:table-row") {
      rowStyle_ = AttributeOf(attributes, "table:default-cell-style-name");
      rowRepeats_ = Repeats(attributes, "table:number-rows-repeated");
      column_ = 0;
      rows_->StartRow(row_);
    } else if (name == "table:table-cell" || name == "table:covered-table-cell") {
      OpenCell(attributes);
    } else if (name == "text:p") {
      if (paragraphs_++ > 0) AppendToCell(text_, " ");
      ++inParagraph_;
    } else if (name == "text:s") {
      const std::uint64_t blanks = std::min(Repeats(attributes, "text:c"), MostSheetColumns);
      AppendToCell(text_, std::string(static_cast<size_t>(blanks), ' '));
    } else if (name == "text:tab" || name == "text:line-break") {
      AppendToCell(text_, " ");
    }
  }

  void Close(std::string_view name) override {
    if (name == "table:table" && --tables_ == 0) CloseSheet();
    if (name == "office:annotation") --notes_;
    if (styles_ != nullptr && tables_ == 0) styles_->Close(name);
    if (!isRead_ || tables_ > 1 || notes_ > 0) return;
    if (name == "text:p") --inParagraph_;
    if (name == "table:table-cell" || name == "table:covered-table-cell") CloseCell();
    if (name == "table:table-row") {
      rows_->EndRow(rowRepeats_);
      row_ += rowRepeats_;
    }
  }

  void Text(std::string_view text) override {
    if (isRead_ && tables_ == 1 && notes_ == 0 && inParagraph_ > 0) {
      AppendToCell(text_, text);
    }
  }
  std::string Fault() const override {
    if (names_.size() > MostParts) return "it has too many sheets";
    return rows_ == nullptr ? std::string() : rows_->Fault();
  }
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
    style_ = AttributeOf(attributes, "table:style-name");
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
      const auto moment = ReadIsoMoment(value_);
      return moment && moment->days ? TextOfIsoMoment(*moment, Format(), clock_) : value_;
    }
    if (kind_ == "time") return TimeText();
    if (kind_ == "boolean") return value_ == "true" ? "TRUE" : "FALSE";
    if (kind_ == "float" || kind_ == "percentage" || kind_ == "currency") return NumberText(value_);
    return paragraphs_ > 0 ? text_ : value_;
  }

  std::string TimeText() const {
    const auto seconds = SecondsOf(value_);
    if (!seconds) return value_;
    const auto rounded = static_cast<std::int64_t>(std::floor(*seconds + 0.5));
    const CellFormat format = Format();
    const bool isOfDay = !format.showsElapsed && (format.showsTime || *seconds < SecondsOfDay);
    return ClockTextOf(isOfDay ? rounded % SecondsOfDay : rounded, clock_);
  }

  /// \return the format of the open cell; it shows nothing if no style says what
  CellFormat Format() const {
    std::string style = style_.empty() ? rowStyle_ : style_;
    if (style.empty()) style = columns_.Of(column_);
    const CellFormat* const format = styles_->Of(style);
    return format == nullptr ? CellFormat() : *format;
  }

  const std::string* sheet_ = nullptr;
  ClockForm clock_ = ClockForm::Minutes;
  OdsStyles* styles_ = nullptr;
  SheetRows* rows_ = nullptr;
  ColumnStyles columns_;
  std::string rowStyle_;
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
  std::string style_;
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
  OdsStyles styles;
  StylesPart shared(styles);
  if (parts.Has(Styles)) {
    if (std::string fault = parts.Read(Styles, shared); !fault.empty()) return fault;
  }
  SheetRows rows(take);
  OdsWalk walk(sheet, clock, styles, rows);
  return parts.Read(Content, walk);
}

}  // namespace orvane
