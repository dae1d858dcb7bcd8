#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orvane {

/// Takes text piece by piece. \return false if it cannot be taken
using TextSink = std::function<bool(std::string_view)>;

/// Writes JSON from front to back, so that a document of any size needs little memory. The caller
/// keeps the order: a key before each value of an object, and an end for each beginning. Texts
/// become valid UTF-8.
class JsonWriter {
 public:
  explicit JsonWriter(const TextSink& sink) : sink_(sink) {}

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }
  void Key(std::string_view key);

  void Text(std::string_view text);
  void Number(double value);  ///< null for a value that is not finite
  void Whole(std::int64_t value) { Literal(std::to_string(value)); }
  void Null() { Literal("null"); }

  /// The next value starts a new line.
  void NewLine() { newLine_ = true; }

  /// Ends the document with a line feed. \return false if any of it was not taken
  bool Finish();

 private:
  void Begin(char bracket);
  void End(char bracket);
  void Separate();
  void Literal(std::string_view literal);
  void Quoted(std::string_view text);
  void Pass();

  const TextSink& sink_;
  std::string buffer_;
  bool needsComma_ = false;
  bool newLine_ = false;
  bool failed_ = false;
};

}  // namespace orvane
