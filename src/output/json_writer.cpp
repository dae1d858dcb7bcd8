#include "output/json_writer.h"

#include "base/number_text.h"
#include "base/utf8.h"

namespace orvane {

namespace {

/// Bytes collected before they are passed on.
constexpr size_t PieceBytes = size_t{1} << 16U;

}  // namespace

void JsonWriter::Key(std::string_view key) {
  Separate();
  Quoted(key);
  buffer_ += ':';
  needsComma_ = false;
}

void JsonWriter::Text(std::string_view text) {
  Separate();
  Quoted(ToUtf8(text));
}

void JsonWriter::Number(double value) { Literal(FormatShortest(value)); }

bool JsonWriter::Finish() {
  buffer_ += '\n';
  Pass();
  return !failed_;
}

void JsonWriter::Begin(char bracket) {
  Separate();
  buffer_ += bracket;
  needsComma_ = false;
}

void JsonWriter::End(char bracket) {
  buffer_ += bracket;
  needsComma_ = true;
  if (buffer_.size() >= PieceBytes) Pass();
}

/// Called before every value and key.
void JsonWriter::Separate() {
  if (needsComma_) buffer_ += ',';
  if (newLine_) buffer_ += '\n';
  newLine_ = false;
  needsComma_ = true;
}

void JsonWriter::Literal(std::string_view literal) {
  Separate();
  buffer_ += literal;
}

void JsonWriter::Quoted(std::string_view text) {
  constexpr std::string_view Digits = "0123456789abcdef";
  buffer_ += '"';
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      buffer_ += '\\';
      buffer_ += c;
    } else if (code < 0x20 || code == 0x7F) {
      buffer_ += "\\u00";
      buffer_ += Digits[code >> 4U];
      buffer_ += Digits[code & 0xFU];
    } else {
      buffer_ += c;
    }
  }
  buffer_ += '"';
}

void JsonWriter::Pass() {
  failed_ = failed_ || !sink_(buffer_);
  buffer_.clear();
}

}  // namespace orvane
