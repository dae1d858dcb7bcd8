#include "gis/xlsx_reader.h"

#include "gis/cell_text.h"
#include "gis/gdal_session.h"
#include "gis/sheet_rows.h"
#include "gis/zipped_xml.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <utility>

// An .xlsx file names its parts by relations:
//
//     _rels/.rels ── officeDocument ──> xl/workbook.xml: the sheets, in order
//     xl/_rels/workbook.xml.rels ─┬─ worksheet ──> xl/worksheets/sheet1.xml: rows of cells
//                                 ├─ sharedStrings ──> texts, which cells give by number
//                                 └─ styles ──> number formats, likewise
//
// A date is a number of days in a cell whose format shows it as a date.

namespace orvane {

namespace {

std::string_view LocalName(std::string_view name) { return name.substr(name.rfind(':') + 1); }

std::optional<std::uint64_t> Whole(std::string_view text) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

/// The relations of a part to others.
class Relations : public ZippedXml::Handler {
 public:
  struct Relation {
    std::string id;
    std::string kind;  ///< the last word of its type
    std::string part;
  };

  /// \param folder  of the part, "" or "xl/"
  explicit Relations(std::string folder) : folder_(std::move(folder)) {}

  void Open(std::string_view name, const char** attributes) override {
    if (LocalName(name) != "Relationship") return;
    const std::string_view type = AttributeOf(attributes, "Type");
    const std::string_view target = AttributeOf(attributes, "Target");
    list_.push_back(
        {std::string(AttributeOf(attributes, "Id")), std::string(type.substr(type.rfind('/') + 1)),
         target.starts_with('/') ? std::string(target.substr(1)) : folder_ + std::string(target)});
  }
  void Close(std::string_view /*name*/) override {}
  void Text(std::string_view /*text*/) override {}
  std::string Fault() const override {
    return list_.size() > MostParts ? "it has too many parts" : "";
  }

  /// \return the first part of a kind; empty if there is none
  std::string OfKind(std::string_view kind) const {
    const auto found = std::find_if(list_.begin(), list_.end(),
                                    [&](const Relation& each) { return each.kind == kind; });
    return found == list_.end() ? std::string() : found->part;
  }
  /// \return the part of a sheet of cells; empty for a sheet of another kind
  std::string SheetOf(std::string_view id) const {
    const auto found = std::find_if(list_.begin(), list_.end(), [&](const Relation& each) {
      return each.id == id && each.kind == "worksheet";
    });
    return found == list_.end() ? std::string() : found->part;
  }

 private:
  std::string folder_;
  std::vector<Relation> list_;
};

class Workbook : public ZippedXml::Handler {
 public:
  struct Sheet {
    std::string name;
    std::string id;
    bool isHidden = false;
  };
  std::vector<Sheet> sheets;
  bool countsFrom1904 = false;

  void Open(std::string_view name, const char** attributes) override {
    const std::string_view local = LocalName(name);
    if (local == "workbookPr") {
      const std::string_view answer = AttributeOf(attributes, "date1904");
      countsFrom1904 = answer == "1" || answer == "true";
    }
    if (local != "sheet") return;
    Sheet sheet{std::string(AttributeOf(attributes, "name")), {}};
    sheet.isHidden = AttributeOf(attributes, "state").ends_with("idden");
    // The prefix of this attribute may be another.
    for (; *attributes != nullptr; attributes += 2) {
      if (std::string_view(attributes[0]).ends_with(":id")) sheet.id = attributes[1];
    }
    sheets.push_back(std::move(sheet));
  }
  void Close(std::string_view /*name*/) override {}
  void Text(std::string_view /*text*/) override {}
  std::string Fault() const override {
    return sheets.size() > MostParts ? "it has too many sheets" : "";
  }
};

/// What the styles of cells show.
class Styles : public ZippedXml::Handler {
 public:
  void Open(std::string_view name, const char** attributes) override {
    const std::string_view local = LocalName(name);
    if (local == "cellXfs") isInCells_ = true;
    const std::string_view number = AttributeOf(attributes, "numFmtId");
    if (local == "numFmt") {
      own_[std::string(number)] = ReadCellFormat(AttributeOf(attributes, "formatCode"));
    }
    if (local != "xf" || !isInCells_) return;
    const auto own = own_.find(std::string(number));
    formats_.push_back(own == own_.end()
                           ? OwnCellFormat(static_cast<int>(Whole(number).value_or(0)))
                           : own->second);
  }
  void Close(std::string_view name) override {
    if (LocalName(name) == "cellXfs") isInCells_ = false;
  }
  void Text(std::string_view /*text*/) override {}

  CellFormat Of(std::string_view style) const {
    const auto index = Whole(style);
    return index && *index < formats_.size() ? formats_[*index] : CellFormat();
  }

 private:
  std::map<std::string, CellFormat> own_;
  std::vector<CellFormat> formats_;
  bool isInCells_ = false;
};

/// \return a text without escapes; one that is too long for a cell stays too long
std::string PlainText(std::string text) {
  return text.size() > LongestCell ? std::move(text) : WithoutEscapes(text);
}

/// Collects the text of an item, of all its runs, without what shows how it is spoken.
class ItemText {
 public:
  void Open(std::string_view local) {
    if (local == "rPh") ++spoken_;
    takes_ = local == "t" && spoken_ == 0;
  }
  void Close(std::string_view local) {
    if (local == "rPh") --spoken_;
    takes_ = false;
  }
  void Text(std::string_view text) {
    if (takes_) AppendToCell(text_, text);
  }
  std::string Take() { return PlainText(std::exchange(text_, {})); }

 private:
  std::string text_;
  int spoken_ = 0;
  bool takes_ = false;
};

class SharedTexts : public ZippedXml::Handler {
 public:
  void Open(std::string_view name, const char** /*attributes*/) override {
    item_.Open(LocalName(name));
  }
  void Close(std::string_view name) override {
    const std::string_view local = LocalName(name);
    item_.Close(local);
    if (local == "si") texts_.push_back(item_.Take());
  }
  void Text(std::string_view text) override { item_.Text(text); }
  std::string Fault() const override {
    return texts_.size() > MostSheetCells ? "it has too many texts" : "";
  }

  /// \return null for a number that is not that of a text
  const std::string* Of(std::string_view number) const {
    const auto index = Whole(number);
    return index && *index < texts_.size() ? &texts_[*index] : nullptr;
  }

 private:
  ItemText item_;
  std::vector<std::string> texts_;
};

/// What the cells of all sheets share.
struct Shared {
  SharedTexts texts;
  Styles styles;
  bool countsFrom1904 = false;
  ClockForm clock = ClockForm::Minutes;
};

/// \return the text of a number in a cell whose format shows a date or a time
std::string MomentText(std::string_view stored, const CellFormat& format, const Shared& shared) {
  // Days from the origin of the numbers to 1970-01-01. The numbers up to 60 count a 29 February 1900.
  constexpr double From1900 = 25569;
  constexpr double From1904 = 24107;
  constexpr double LeapDay = 60;
  constexpr double MostDays = 2958466;  // the end of the year 9999
  double number = 0;
  const char* const end = stored.data() + stored.size();
  const auto [stop, error] = std::from_chars(stored.data(), end, number);
  if (error != std::errc() || stop != end || number < 0 || number >= MostDays) {
    return NumberText(stored);
  }
  const CellMoment ofNumber = MomentOfDays(number);
  const bool isWhole = ofNumber.seconds == 0 && ofNumber.days > 0;
  const bool showsDate = format.showsDate || (format.showsEither && isWhole);
  if (format.showsElapsed) {
    constexpr std::int64_t SecondsOfDay = 24 * 60 * 60;
    return ClockTextOf(ofNumber.days * SecondsOfDay + ofNumber.seconds, shared.clock);
  }
  std::string clock = ClockTextOf(ofNumber.seconds, shared.clock);
  const bool isOnlyTime = !showsDate || (format.showsTime && ofNumber.days == 0);
  if (isOnlyTime) return clock;
  double origin = shared.countsFrom1904 ? From1904 : From1900;
  if (!shared.countsFrom1904 && number < LeapDay) origin -= 1;
  const std::string date = DateText(ofNumber.days - static_cast<std::int64_t>(origin));
  return format.showsTime ? date + ' ' + clock : date;
}

class SheetCells : public ZippedXml::Handler {
 public:
  SheetCells(const Shared& shared, const RowTaker& take) : shared_(shared), rows_(take) {}

  void Open(std::string_view name, const char** attributes) override {
    const std::string_view local = LocalName(name);
    item_.Open(local);
    takesValue_ = local == "v";
    if (local == "row") {
      row_ = Whole(AttributeOf(attributes, "r")).value_or(row_ + 1);
      column_ = 0;
      rows_.StartRow(row_);
    } else if (local == "c") {
      OpenCell(attributes);
    }
  }
  void Close(std::string_view name) override {
    const std::string_view local = LocalName(name);
    item_.Close(local);
    takesValue_ = false;
    if (local == "c") {
      rows_.SetCell(column_, CellText());
      ++column_;
      value_.clear();
    } else if (local == "row") {
      rows_.EndRow();
    }
  }
  void Text(std::string_view text) override {
    item_.Text(text);
    if (takesValue_) AppendToCell(value_, text);
  }
  std::string Fault() const override { return fault_.empty() ? rows_.Fault() : fault_; }
  bool IsDone() const override { return rows_.IsDone(); }

 private:
  void OpenCell(const char** attributes) {
    const std::string_view place = AttributeOf(attributes, "r");
    if (!place.empty()) column_ = ColumnOf(place);
    kind_ = AttributeOf(attributes, "t");
    format_ = shared_.styles.Of(AttributeOf(attributes, "s"));
  }

  /// \return the column of a place such as "AB12", from 0
  static std::uint64_t ColumnOf(std::string_view place) {
    constexpr std::uint64_t Letters = 26;
    std::uint64_t column = 0;
    for (const char c : place) {
      if (c < 'A' || c > 'Z' || column > MostSheetColumns) break;
      column = column * Letters + static_cast<std::uint64_t>(c - 'A') + 1;
    }
    return column == 0 ? 0 : column - 1;
  }

  std::string CellText() {
    std::string inLine = item_.Take();
    if (kind_ == "s") return SharedText();
    if (kind_ == "inlineStr") return inLine;
    if (kind_ == "b") return value_ == "0" ? "FALSE" : "TRUE";
    if (kind_ == "str") return PlainText(value_);
    if (kind_ == "d") {
      const auto moment = ReadIsoMoment(value_);
      return moment ? TextOfIsoMoment(*moment, format_, shared_.clock) : value_;
    }
    if (!kind_.empty() && kind_ != "n") return value_;
    if (value_.empty()) return {};
    const bool isMoment = format_.showsDate || format_.showsTime || format_.showsEither;
    return isMoment ? MomentText(value_, format_, shared_) : NumberText(value_);
  }

  std::string SharedText() {
    const std::string* const text = shared_.texts.Of(value_);
    if (text != nullptr) return *text;
    if (!value_.empty()) {
      fault_ =
          "the text of the cell in " + CellPlaceText(row_, column_) + " is missing in the file";
    }
    return {};
  }

  const Shared& shared_;
  SheetRows rows_;
  std::string fault_;
  std::uint64_t row_ = 0;
  std::uint64_t column_ = 0;
  // The cell that is open.
  std::string kind_;
  CellFormat format_;
  std::string value_;
  bool takesValue_ = false;
  ItemText item_;
};

/// A workbook with the relations of its parts.
class XlsxFile {
 public:
  explicit XlsxFile(const SpreadsheetFile& file) : parts_(file.bytes), relations_("") {}

  /// \return why it can't be read
  std::string Open() {
    Relations top("");
    if (std::string fault = parts_.Read("_rels/.rels", top); !fault.empty()) return fault;
    const std::string book = top.OfKind("officeDocument");
    if (std::string fault = parts_.Read(book, workbook_); !fault.empty()) return fault;
    const size_t name = book.rfind('/') + 1;
    const std::string folder = book.substr(0, name);
    relations_ = Relations(folder);
    return parts_.Read(folder + "_rels/" + book.substr(name) + ".rels", relations_);
  }

  /// Those that the user sees come first.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const bool isHidden : {false, true}) {
      for (const Workbook::Sheet& sheet : workbook_.sheets) {
        if (sheet.isHidden == isHidden && !relations_.SheetOf(sheet.id).empty()) {
          names.push_back(sheet.name);
        }
      }
    }
    return names;
  }

  std::string ReadRows(const std::string& name, ClockForm clock, const RowTaker& take) {
    Shared shared;
    shared.countsFrom1904 = workbook_.countsFrom1904;
    shared.clock = clock;
    if (std::string fault = ReadShared("sharedStrings", shared.texts); !fault.empty()) return fault;
    if (std::string fault = ReadShared("styles", shared.styles); !fault.empty()) return fault;
    for (const Workbook::Sheet& sheet : workbook_.sheets) {
      const std::string part = sheet.name == name ? relations_.SheetOf(sheet.id) : std::string();
      if (part.empty()) continue;
      SheetCells cells(shared, take);
      return parts_.Read(part, cells);
    }
    return "it has no sheet " + name;
  }

 private:
  /// Reads a part that not all files have.
  std::string ReadShared(const char* kind, ZippedXml::Handler& handler) const {
    const std::string part = relations_.OfKind(kind);
    return part.empty() || !parts_.Has(part) ? std::string() : parts_.Read(part, handler);
  }

  ZippedXml parts_;
  Workbook workbook_;
  Relations relations_;
};

}  // namespace

SheetList ListXlsxSheets(const SpreadsheetFile& file) {
  const GdalSession session;
  XlsxFile opened(file);
  const std::string fault = opened.Open();
  return {opened.Names(), fault};
}

std::string ReadXlsxSheet(const SpreadsheetFile& file, const std::string& sheet, ClockForm clock,
                          const RowTaker& take) {
  const GdalSession session;
  XlsxFile opened(file);
  if (std::string fault = opened.Open(); !fault.empty()) return fault;
  return opened.ReadRows(sheet, clock, take);
}

}  // namespace orvane
