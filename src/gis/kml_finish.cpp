#include "gis/kml_finish.h"

#include "gis/xml_text.h"

#include <cstdio>
#include <fstream>
#include <string_view>

namespace orvane {

namespace {

constexpr std::string_view DocumentBegin = "<Document";
constexpr std::string_view FolderBegin = "<Folder><name>";
constexpr std::string_view LineBegin = "<LineString>";
constexpr std::string_view Unfilled = "<PolyStyle><fill>0</fill></PolyStyle>";
constexpr std::string_view ThinLine = "<width>1</width>";
constexpr std::string_view ColorBegin = "<LineStyle><color>FF";
constexpr size_t ColorDigits = 6;

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : XmlText(text)) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

/// Fills an area whose outline is thin.
void Fill(std::string& line) {
  const size_t style = line.find(Unfilled);
  const size_t color = line.find(ColorBegin);
  if (style == line.npos || color == line.npos || line.find(ThinLine) == line.npos) return;
  const std::string digits = line.substr(color + ColorBegin.size(), ColorDigits);
  line.replace(style, Unfilled.size(), "<PolyStyle><color>80" + digits + "</color></PolyStyle>");
}

}  // namespace

bool FinishKml(const std::string& path, const std::string& title,
               const std::vector<std::string>& folders) {
  const std::string finished = path + ".finished";
  std::ifstream in(path, std::ios::binary);
  std::ofstream out(finished, std::ios::binary);
  size_t folder = 0;
  // Texts of features have no line that begins like these: there "<" is "&lt;".
  for (std::string line; std::getline(in, line); out << line << '\n') {
    if (line.starts_with(DocumentBegin)) line += "\n<name>" + Escaped(title) + "</name>";
    if (line.starts_with(FolderBegin) && folder < folders.size()) {
      line = std::string(FolderBegin) + Escaped(folders[folder++]) + "</name>";
    }
    Fill(line);
    if (const size_t at = line.find(LineBegin); at != line.npos) {
      line.insert(at + LineBegin.size(), "<tessellate>1</tessellate>");
    }
  }
  out.close();
  return in.eof() && out.good() && std::rename(finished.c_str(), path.c_str()) == 0;
}

}  // namespace orvane
