#include "support/spreadsheet_files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace orvane {

namespace {

/// \return a number of `size` bytes, the lowest first
std::string Little(std::uint64_t number, size_t size) {
  std::string bytes;
  for (size_t i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

std::uint32_t Crc32(const std::string& bytes) {
  std::uint32_t crc = 0xFFFFFFFFU;
  for (const char c : bytes) {
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1U ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0);
  }
  return ~crc;
}

constexpr const char* Xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr const char* Main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr const char* Types = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

std::string Relation(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + Types + "/" + kind + "\" Target=\"" + target +
         "\"/>";
}

std::string RelationsPart(const std::string& list) {
  return std::string(Xml) +
         "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
         list + "</Relationships>";
}

/// A record of an .xls file.
std::string Record(unsigned kind, const std::string& content) {
  return Little(kind, 2) + Little(content.size(), 2) + content;
}

std::string BeginOf(unsigned kind) {
  return Record(0x0809, Little(0x0600, 2) + Little(kind, 2) + Little(0x0DBB, 2) + Little(1996, 2) +
                            Little(0, 8));
}

std::string XlsSheet(const std::vector<XlsCell>& cells) {
  int rows = 0;
  int columns = 0;
  std::string records;
  for (const XlsCell& cell : cells) {
    rows = std::max(rows, cell.row + 1);
    columns = std::max(columns, cell.column + 1);
    const std::string place = Little(static_cast<unsigned>(cell.row), 2) +
                              Little(static_cast<unsigned>(cell.column), 2) +
                              Little(static_cast<unsigned>(cell.style), 2);
    if (cell.text.empty()) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, &cell.number, sizeof bits);
      records += Record(0x0203, place + Little(bits, 8));
    } else {
      records += Record(0x0204, place + Little(cell.text.size(), 2) + Little(0, 1) + cell.text);
    }
  }
  const std::string bounds = Little(0, 4) + Little(static_cast<unsigned>(rows), 4) + Little(0, 2) +
                             Little(static_cast<unsigned>(columns), 2) + Little(0, 2);
  return BeginOf(0x0010) + Record(0x0200, bounds) + records + Record(0x000A, "");
}

/// A compound file with one stream, "Workbook".
std::string CompoundFile(std::string stream) {
  constexpr size_t Sector = 512;
  constexpr size_t LeastStream = 4096;
  constexpr std::uint64_t End = 0xFFFFFFFEU;
  constexpr std::uint64_t Free = 0xFFFFFFFFU;
  stream.resize(std::max(LeastStream, (stream.size() + Sector - 1) / Sector * Sector));
  const size_t sectors = stream.size() / Sector;
  std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0') +
                       Little(0x3E, 2) + Little(3, 2) + Little(0xFFFE, 2) + Little(9, 2) +
                       Little(6, 2) + std::string(10, '\0') + Little(1, 4) + Little(1, 4) +
                       Little(0, 4) + Little(LeastStream, 4) + Little(End, 4) + Little(0, 4) +
                       Little(End, 4) + Little(0, 4) + Little(0, 4);
  for (int i = 1; i < 109; ++i) header += Little(Free, 4);
  std::string table = Little(0xFFFFFFFDU, 4) + Little(End, 4);
  for (size_t i = 0; i < sectors; ++i) table += Little(i + 1 < sectors ? i + 3 : End, 4);
  while (table.size() < Sector) table += Little(Free, 4);
  const auto entry = [](const std::string& name, unsigned kind, std::uint64_t child,
                        std::uint64_t first, std::uint64_t size) {
    std::string wide;
    for (const char c : name) wide += Little(static_cast<unsigned char>(c), 2);
    wide.resize(64);
    return wide + Little(name.empty() ? 0 : 2 * name.size() + 2, 2) + Little(kind, 1) +
           Little(1, 1) + Little(Free, 4) + Little(Free, 4) + Little(child, 4) +
           std::string(36, '\0') + Little(first, 4) + Little(size, 8);
  };
  const std::string folder = entry("Root Entry", 5, 1, End, 0) +
                             entry("Workbook", 2, Free, 2, stream.size()) +
                             entry("", 0, Free, 0, 0) + entry("", 0, Free, 0, 0);
  return header + table + folder + stream;
}

}  // namespace

std::string ZipOf(const std::vector<ZipPart>& parts) {
  std::string bytes;
  std::string directory;
  for (const ZipPart& part : parts) {
    const std::string about = Little(20, 2) + Little(0, 2) + Little(0, 2) + Little(0, 4) +
                              Little(Crc32(part.bytes), 4) + Little(part.bytes.size(), 4) +
                              Little(part.bytes.size(), 4) + Little(part.name.size(), 2) +
                              Little(0, 2);
    directory += "PK\x01\x02" + Little(20, 2) + about + Little(0, 2) + Little(0, 2) + Little(0, 2) +
                 Little(0, 4) + Little(bytes.size(), 4) + part.name;
    bytes += "PK\x03\x04" + about + part.name + part.bytes;
  }
  return bytes + directory + "PK\x05\x06" + Little(0, 4) + Little(parts.size(), 2) +
         Little(parts.size(), 2) + Little(directory.size(), 4) + Little(bytes.size(), 4) +
         Little(0, 2);
}

std::string XlsxOf(const std::vector<SheetContent>& sheets, const std::vector<std::string>& shared,
                   const std::string& origin) {
  std::string names;
  std::string relations;
  std::vector<ZipPart> parts;
  for (size_t i = 0; i < sheets.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    names += "<sheet name=\"" + sheets[i].first + "\" sheetId=\"" + number + "\" r:id=\"rId" +
             number + "\"/>";
    relations += Relation("rId" + number, "worksheet", "worksheets/sheet" + number + ".xml");
    parts.push_back({"xl/worksheets/sheet" + number + ".xml",
                     std::string(Xml) + "<worksheet xmlns=\"" + Main + "\"><sheetData>" +
                         sheets[i].second + "</sheetData></worksheet>"});
  }
  relations += Relation("rId90", "styles", "styles.xml") +
               Relation("rId91", "sharedStrings", "/xl/sharedStrings.xml");
  std::string texts;
  for (const std::string& text : shared) texts += "<si>" + text + "</si>";
  std::string styles;
  for (const int format : {0,  164, 20, 165, 166, 14, 22, 167, 168, 27, 28, 29,
                           30, 31,  32, 33,  34,  35, 36, 50,  51,  52, 53, 54}) {
    styles += "<xf numFmtId=\"" + std::to_string(format) + "\"/>";
  }
  parts.push_back(
      {"_rels/.rels", RelationsPart(Relation("rId1", "officeDocument", "xl/workbook.xml"))});
  parts.push_back({"xl/_rels/workbook.xml.rels", RelationsPart(relations)});
  parts.push_back({"xl/workbook.xml", std::string(Xml) + "<workbook xmlns=\"" + Main +
                                          "\" xmlns:r=\"" + Types + "\"><workbookPr " + origin +
                                          "/><sheets>" + names + "</sheets></workbook>"});
  parts.push_back({"xl/styles.xml",
                   std::string(Xml) + "<styleSheet xmlns=\"" + Main + "\"><numFmts>" +
                       "<numFmt numFmtId=\"164\" formatCode=\"yyyy\\-mm\\-dd;@\"/>"
                       "<numFmt numFmtId=\"165\" formatCode=\"d/m/yy\\ h:mm\"/>"
                       "<numFmt numFmtId=\"166\" formatCode=\"[h]:mm\"/>"
                       "<numFmt numFmtId=\"167\" formatCode=\"[$-409]h:mm:ss\\ AM/PM;@\"/>"
                       "<numFmt numFmtId=\"168\" formatCode=\"[Red]0.00 &quot;days&quot;\"/>"
                       "</numFmts><cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs><cellXfs>" +
                       styles + "</cellXfs></styleSheet>"});
  parts.push_back({"xl/sharedStrings.xml",
                   std::string(Xml) + "<sst xmlns=\"" + Main + "\">" + texts + "</sst>"});
  return ZipOf(parts);
}

std::string OdsOf(const std::vector<SheetContent>& sheets, const std::string& before) {
  std::string tables;
  for (const auto& [name, rows] : sheets) {
    tables += "<table:table table:name=\"" + name + "\">" + rows + "</table:table>";
  }
  const std::string space = "urn:oasis:names:tc:opendocument:xmlns:";
  const std::string date = "<number:year/><number:month/><number:day/>";
  const std::string time = "<number:hours/><number:minutes/>";
  const std::string styles =
      "<number:date-style style:name=\"N1\">" + date + "</number:date-style>" +
      "<number:time-style style:name=\"N2\">" + time + "</number:time-style>" +
      "<number:date-style style:name=\"N3\">" + date + time + "</number:date-style>" +
      "<number:time-style style:name=\"N4\" number:truncate-on-overflow=\"false\">" + time +
      "</number:time-style>"
      "<style:style style:name=\"date\" style:data-style-name=\"N1\"/>"
      "<style:style style:name=\"time\" style:data-style-name=\"N2\"/>"
      "<style:style style:name=\"both\" style:data-style-name=\"N3\"/>"
      "<style:style style:name=\"elapsed\" style:data-style-name=\"N4\"/>";
  return ZipOf(
      {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
       {"styles.xml", std::string(Xml) + "<office:document-styles xmlns:office=\"" + space +
                          "office:1.0\" xmlns:style=\"" + space + "style:1.0\" xmlns:number=\"" +
                          space + "datastyle:1.0\">" + styles + "</office:document-styles>"},
       {"content.xml",
        std::string(Xml) + before + "<office:document-content xmlns:office=\"" + space +
            "office:1.0\" xmlns:table=\"" + space + "table:1.0\" xmlns:text=\"" + space +
            "text:1.0\" xmlns:style=\"" + space + "style:1.0\" xmlns:number=\"" + space +
            "datastyle:1.0\"><office:automatic-styles><style:style style:name=\"child\" "
            "style:parent-style-name=\"both\"/></"
            "office:automatic-styles><office:body><office:spreadsheet>" +
            tables +
            "</office:spreadsheet></office:body>"
            "</office:document-content>"}});
}

std::string XlsOf(const std::vector<std::pair<std::string, std::vector<XlsCell>>>& sheets) {
  std::string formats;
  for (const unsigned format : {0U, 14U, 20U, 22U}) {
    formats += Record(0x00E0, Little(0, 2) + Little(format, 2) + std::string(16, '\0'));
  }
  const auto globals = [&](const std::vector<size_t>& places) {
    std::string records =
        BeginOf(0x0005) + Record(0x0042, Little(1200, 2)) + Record(0x0022, Little(0, 2)) + formats;
    for (size_t i = 0; i < sheets.size(); ++i) {
      const std::string& name = sheets[i].first;
      records += Record(0x0085, Little(places[i], 4) + Little(0, 2) + Little(name.size(), 1) +
                                    Little(0, 1) + name);
    }
    return records + Record(0x000A, "");
  };
  std::vector<size_t> places(sheets.size());
  size_t place = globals(places).size();
  std::string content;
  for (size_t i = 0; i < sheets.size(); ++i) {
    places[i] = place + content.size();
    content += XlsSheet(sheets[i].second);
  }
  return CompoundFile(globals(places) + content);
}

}  // namespace orvane
