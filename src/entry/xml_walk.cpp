#include "entry/xml_walk.h"

#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>
#include <cerrno>
#include <expat.h>
#include <iconv.h>
#include <iterator>
#include <type_traits>

namespace orvane {

namespace {

constexpr size_t MostAtOnce = 1 << 20;  // bytes; then the user can cancel

/// The part after the prefix of a namespace.
std::string_view LocalName(const char* name) {
  const std::string_view whole(name);
  const size_t colon = whole.rfind(':');
  return colon == std::string_view::npos ? whole : whole.substr(colon + 1);
}

/// Removes leading white space, which XML does not allow before its declaration.
/// \return the number of lines that end in it
size_t TakeBlankLines(std::string_view& text) {
  size_t lines = 0;
  for (char before = 0; !text.empty() && IsSpace(text.front()); text.remove_prefix(1)) {
    const char c = text.front();
    if (c == '\r' || (c == '\n' && before != '\r')) ++lines;
    before = c;
  }
  return lines;
}

/// True for the name of an encoding that may have one byte a character.
bool IsByteEncoding(std::string_view name) {
  const std::string folded = FoldedText(name);
  const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
    return IsDigit(c) || c == '-' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  });
  const char* const begins[] = {"windows-125", "cp125", "iso-8859-", "koi8-"};
  return isPlain && std::any_of(std::begin(begins), std::end(begins), [&](const char* begin) {
           return folded.starts_with(FoldedText(begin));
         });
}

/// Fills the character of each byte, by the tables of the system. \return false if it can't
bool FillCharacters(const char* name, XML_Encoding& encoding) {
  constexpr int Bytes = 256;
  if (!IsByteEncoding(name)) return false;
  iconv_t converter = iconv_open("UTF-32LE", name);
  if (converter == iconv_t(-1)) return false;  // NOLINT(performance-no-int-to-ptr): as documented
  for (int byte = 0; byte < Bytes; ++byte) {
    char in = static_cast<char>(byte);
    unsigned char out[4] = {};
    char* from = &in;
    char* to = reinterpret_cast<char*>(out);
    size_t inLeft = 1;
    size_t outLeft = sizeof(out);
    const size_t done = iconv(converter, &from, &inLeft, &to, &outLeft);
    const bool isCharacter = done != size_t(-1) && outLeft == 0;
    encoding.map[byte] = isCharacter ? static_cast<int>(out[0] | out[1] << 8U | out[2] << 16U) : -1;
  }
  iconv_close(converter);
  encoding.data = nullptr;
  encoding.convert = nullptr;
  encoding.release = nullptr;
  return true;
}

int XMLCALL OnEncoding(void* /*data*/, const XML_Char* name, XML_Encoding* encoding) {
  return FillCharacters(name, *encoding) ? XML_STATUS_OK : XML_STATUS_ERROR;
}

/// What `RootOfXml` looks for.
struct RootSearch {
  XML_Parser parser = nullptr;
  std::string name;
};

void XMLCALL OnRoot(void* data, const XML_Char* name, const XML_Char** /*attributes*/) {
  auto& search = *static_cast<RootSearch*>(data);
  search.name = LocalName(name);
  XML_StopParser(search.parser, XML_FALSE);
}

}  // namespace

std::string RootOfXml(std::string_view text) {
  RootSearch search;
  const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
      XML_ParserCreate(nullptr), &XML_ParserFree);
  if (parser == nullptr) return {};  // no memory
  search.parser = parser.get();
  XML_SetUserData(parser.get(), &search);
  XML_SetStartElementHandler(parser.get(), &OnRoot);
  XML_SetUnknownEncodingHandler(parser.get(), &OnEncoding, nullptr);
  TakeBlankLines(text);
  while (!text.empty()) {
    const std::string_view part = text.substr(0, MostAtOnce);
    text.remove_prefix(part.size());
    const auto size = static_cast<int>(part.size());
    if (XML_Parse(parser.get(), part.data(), size, 0) != XML_STATUS_OK) break;
  }
  return search.name;
}

/// What the parser calls.
struct XmlWalk::Handlers {
  static void XMLCALL OnStart(void* walk, const XML_Char* name, const XML_Char** attributes) {
    static_cast<XmlWalk*>(walk)->Open(LocalName(name), attributes);
  }
  static void XMLCALL OnEnd(void* walk, const XML_Char* /*name*/) {
    static_cast<XmlWalk*>(walk)->Close();
  }
  static void XMLCALL OnText(void* walk, const XML_Char* text, int length) {
    auto& self = *static_cast<XmlWalk*>(walk);
    if (self.keepsText_) self.text_.append(text, static_cast<size_t>(length));
  }
  static void XMLCALL OnEntity(void* walk, const XML_Char* /*name*/, int /*isParameter*/,
                               const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                               const XML_Char* /*systemId*/, const XML_Char* /*publicId*/,
                               const XML_Char* /*notation*/) {
    XML_StopParser(static_cast<XmlWalk*>(walk)->parser_.get(), XML_FALSE);
  }
};

void XmlWalk::FreeParser::operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }

XmlWalk::XmlWalk(std::string_view fileName, Messages& messages, Progress* progress)
    : parser_(XML_ParserCreate(nullptr)),
      fileName_(fileName),
      messages_(messages),
      progress_(progress),
      origin_(messages, std::string(fileName)) {
  if (parser_ == nullptr) return;  // no memory
  XML_SetUserData(parser_.get(), this);
  XML_SetElementHandler(parser_.get(), &Handlers::OnStart, &Handlers::OnEnd);
  XML_SetCharacterDataHandler(parser_.get(), &Handlers::OnText);
  XML_SetEntityDeclHandler(parser_.get(), &Handlers::OnEntity);
  XML_SetUnknownEncodingHandler(parser_.get(), &OnEncoding, nullptr);
}

XmlWalk::~XmlWalk() = default;

void XmlWalk::Walk(std::string_view text) {
  if (parser_ == nullptr) return;
  linesBefore_ = TakeBlankLines(text);
  Parse(text);
}

size_t XmlWalk::Line() const {
  return linesBefore_ + static_cast<size_t>(XML_GetCurrentLineNumber(parser_.get()));
}

void XmlWalk::KeepText(bool keeps) {
  keepsText_ = keeps;
  text_.clear();
}

void XmlWalk::Parse(std::string_view text) {
  const size_t whole = text.size();
  ProgressSteps steps(progress_, WorkStage::Reading, whole);
  for (bool isLast = false; !isLast && steps.Next(whole - text.size());) {
    const std::string_view part = text.substr(0, MostAtOnce);
    text.remove_prefix(part.size());
    isLast = text.empty();
    const auto size = static_cast<int>(part.size());
    if (XML_Parse(parser_.get(), part.data(), size, isLast ? 1 : 0) != XML_STATUS_OK) {
      NoteBreak();
      return;
    }
  }
}

void XmlWalk::NoteBreak() {
  isBroken_ = true;
  const XML_Error error = XML_GetErrorCode(parser_.get());
  origin_.GoToLine(Line());
  NoteError(messages_, "%s can't be read from line %s on: %s",
            {fileName_, std::to_string(Line()),
             error == XML_ERROR_ABORTED ? "it declares entities" : XML_ErrorString(error)});
}

}  // namespace orvane
