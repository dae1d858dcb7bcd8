#include "gis/zipped_xml.h"

#include "formats/spreadsheets.h"

#include <cpl_vsi.h>
#include <expat.h>
#include <memory>
#include <type_traits>
#include <vector>

namespace orvane {

namespace {

constexpr const char* ArchiveName = "/vsimem/orvane-spreadsheet.zip";

struct FreeParser {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

struct CloseFile {
  void operator()(VSILFILE* file) const { VSIFCloseL(file); }
};

/// What no spreadsheet comes near.
constexpr std::uint64_t MostElements = std::uint64_t{1} << 25U;
constexpr int DeepestElement = 256;

/// One run of the parser over a part.
struct Run {
  XML_Parser parser;
  ZippedXml::Handler* handler;
  bool hasEntities = false;
  std::uint64_t elements = 0;
  int depth = 0;

  bool IsTooLarge() const { return elements > MostElements || depth > DeepestElement; }
  void StopIfWanted() const {
    if (IsTooLarge() || handler->IsDone() || !handler->Fault().empty())
      XML_StopParser(parser, XML_FALSE);
  }
};

void XMLCALL OnOpen(void* data, const XML_Char* name, const XML_Char** attributes) {
  auto& run = *static_cast<Run*>(data);
  ++run.elements;
  ++run.depth;
  run.handler->Open(name, attributes);
  run.StopIfWanted();
}

void XMLCALL OnClose(void* data, const XML_Char* name) {
  auto& run = *static_cast<Run*>(data);
  --run.depth;
  run.handler->Close(name);
  run.StopIfWanted();
}

void XMLCALL OnText(void* data, const XML_Char* text, int length) {
  static_cast<Run*>(data)->handler->Text({text, static_cast<size_t>(length)});
}

/// A few lines of entities can expand to gigabytes, and no spreadsheet program writes any.
void XMLCALL OnEntity(void* data, const XML_Char* /*name*/, int /*isParameter*/,
                      const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                      const XML_Char* /*systemId*/, const XML_Char* /*publicId*/,
                      const XML_Char* /*notation*/) {
  auto& run = *static_cast<Run*>(data);
  run.hasEntities = true;
  XML_StopParser(run.parser, XML_FALSE);
}

/// \return why the parser stopped
std::string FaultOf(const Run& run, const std::string& part) {
  if (run.hasEntities) return "it declares entities";
  if (std::string fault = run.handler->Fault(); !fault.empty()) return fault;
  if (run.handler->IsDone()) return {};
  if (run.IsTooLarge()) return part + " has too many elements, or too many within each other";
  return part + ", line " + std::to_string(XML_GetCurrentLineNumber(run.parser)) + ": " +
         XML_ErrorString(XML_GetErrorCode(run.parser));
}

}  // namespace

ZippedXml::ZippedXml(std::string_view bytes) {
  // GDAL only reads them.
  auto* const data = reinterpret_cast<GByte*>(const_cast<char*>(bytes.data()));
  VSILFILE* const file = VSIFileFromMemBuffer(ArchiveName, data, bytes.size(), FALSE);
  if (file != nullptr) VSIFCloseL(file);
}

ZippedXml::~ZippedXml() { VSIUnlink(ArchiveName); }

std::string ZippedXml::PathOf(const std::string& part) {
  return std::string("/vsizip/") + ArchiveName + "/" + part;
}

bool ZippedXml::Has(const std::string& part) const {
  VSIStatBufL status;
  return VSIStatL(PathOf(part).c_str(), &status) == 0;
}

std::string ZippedXml::Read(const std::string& part, Handler& handler) const {
  const std::unique_ptr<VSILFILE, CloseFile> file(VSIFOpenL(PathOf(part).c_str(), "rb"));
  if (file == nullptr) return part + " is missing";
  const Parser parser(XML_ParserCreate(nullptr));
  if (parser == nullptr) return "there is not enough memory";
  Run run{parser.get(), &handler};
  XML_SetUserData(parser.get(), &run);
  XML_SetElementHandler(parser.get(), OnOpen, OnClose);
  XML_SetCharacterDataHandler(parser.get(), OnText);
  XML_SetEntityDeclHandler(parser.get(), OnEntity);
  constexpr size_t AtOnce = 1 << 16;
  std::vector<char> bytes(AtOnce);
  std::uint64_t unpacked = 0;
  for (bool isLast = false; !isLast;) {
    const size_t size = VSIFReadL(bytes.data(), 1, AtOnce, file.get());
    unpacked += size;
    if (unpacked > LargestSpreadsheet) return TooLarge();
    isLast = size < AtOnce;
    if (XML_Parse(parser.get(), bytes.data(), static_cast<int>(size), isLast ? 1 : 0) !=
        XML_STATUS_OK) {
      return FaultOf(run, part);
    }
  }
  return {};
}

std::string_view AttributeOf(const char** attributes, std::string_view name) {
  for (; *attributes != nullptr; attributes += 2) {
    if (name == attributes[0]) return attributes[1];
  }
  return {};
}

}  // namespace orvane
