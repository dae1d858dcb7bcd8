#include "entry/spreadsheet.h"

#include "formats/format_module.h"

#include <algorithm>

namespace orvane {

namespace {

std::nullopt_t Refuse(Messages& messages, const std::string& path, const std::string& fault) {
  NoteError(messages, "Can't read spreadsheet %s: %s", {path, fault});
  return std::nullopt;
}

void NoteNoSheet(Messages& messages, const std::string& name, const std::string& path) {
  NoteError(messages, "Can't find sheet %s in %s", {name, path});
}

/// \return the sheet to read
std::optional<std::string> ChosenSheet(Messages& messages, const std::string& path,
                                       const std::vector<std::string>& names,
                                       const SheetChooser& choose) {
  if (!choose) {
    if (names.size() > 1) {
      PostNote(messages, "Reading sheet %s, the first of %s",
               {names.front(), std::to_string(names.size())});
    }
    return names.front();
  }
  auto name = choose(names);
  if (name && std::find(names.begin(), names.end(), *name) == names.end()) {
    NoteNoSheet(messages, *name, path);
    return std::nullopt;
  }
  return name;
}

void AppendQuoted(std::string& text, std::string_view cell) {
  text += '"';
  for (const char c : cell) {
    if (c == '"') text += '"';
    AppendCell(text, std::string_view(&c, 1));
  }
  text += '"';
}

void AppendRow(std::string& text, const std::vector<std::string>& cells, bool quotes) {
  for (size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += '\t';
    if (quotes && cells[i].starts_with('"')) {
      AppendQuoted(text, cells[i]);
    } else {
      AppendCell(text, cells[i]);
    }
  }
  text += '\n';
}

}  // namespace

SheetChooser ChooseNamed(const std::string& name) {
  return [name](const std::vector<std::string>& /*names*/) { return name; };
}

std::optional<std::string> AskForSheet(Messages& messages, const std::string& title,
                                       const std::vector<std::string>& names) {
  if (names.empty()) return std::nullopt;
  if (names.size() == 1) return names.front();
  TextPrompt prompt;
  prompt.title = title;
  prompt.message = "Sheet to read:";
  prompt.text = names.front();
  prompt.earlier = names;
  return AskForText(messages, prompt);
}

bool IsSpreadsheetName(std::string_view path) { return SpreadsheetKindOf(path).has_value(); }

std::optional<std::string> ReadSpreadsheet(Messages& messages, const std::string& path,
                                           std::string_view bytes, const SheetChooser& choose,
                                           ClockForm clock, bool quotes) {
  const SpreadsheetFile file{path, bytes, SpreadsheetKindOf(path).value_or(SpreadsheetKind::Xlsx)};
  if (const std::string refused = WhyNotUnpacked(file); !refused.empty()) {
    return Refuse(messages, path, refused);
  }
  const LoadedModule& loaded = LoadFormatModule();
  if (loaded.module == nullptr) {
    NoteError(messages, "Reading spreadsheets needs the package orvane-gis: %s", {loaded.fault});
    return std::nullopt;
  }
  const SheetList list = loaded.module->listSheets(file);
  if (!list.fault.empty()) return Refuse(messages, path, list.fault);
  if (list.names.empty()) return Refuse(messages, path, "it has no sheet");
  const auto name = ChosenSheet(messages, path, list.names, choose);
  if (!name) return std::nullopt;
  std::string text;
  const std::string fault =
      loaded.module->readSheet(file, *name, clock, [&](const std::vector<std::string>& cells) {
        AppendRow(text, cells, quotes);
        return true;
      });
  if (!fault.empty()) return Refuse(messages, path, fault);
  if (file.kind == SpreadsheetKind::Xls) {
    PostNote(
        messages,
        "Cells of %s with formulas are read as empty, those with errors as 1; save it as .xlsx "
        "if it has any",
        {path});
  }
  return text;
}

bool WantsMissingSheet(Messages& messages, const std::string& path, const SheetChooser& choose) {
  const auto name = choose ? choose({}) : std::nullopt;
  if (name) NoteNoSheet(messages, *name, path);
  return name.has_value();
}

void AppendCell(std::string& text, std::string_view cell) {
  for (const char c : cell) text += c == '\t' || c == '\r' || c == '\n' ? ' ' : c;
}

}  // namespace orvane
