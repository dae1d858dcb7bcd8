#include "reports/point_index_search.h"

#include "base/text.h"

namespace orvane {

namespace {

constexpr char Backspace = 8;
constexpr char Delete = 127;
constexpr char FirstPrinting = 32;
constexpr size_t LongestFileName = 257;

}  // namespace

TypingOutcome TypeCharacter(std::string& typed, char character) {
  if (character == Backspace || character == Delete) {
    if (typed.empty()) return TypingOutcome::Ignored;
    typed.pop_back();
    return TypingOutcome::Changed;
  }
  // Where `char` is signed, bytes beyond ASCII are negative.
  if (character < FirstPrinting || character > Delete) return TypingOutcome::Ignored;
  if (typed.size() >= LongestTyped) return TypingOutcome::Full;
  typed += character;
  return TypingOutcome::Changed;
}

int EntryFrom(const PointIndex& index, std::string_view typed) {
  // The order of names is not a strict one, so the entries are tried one by one.
  int number = 0;
  for (const PointIndexEntry& entry : index.entries) {
    if (CompareIndexNames(entry.name, typed) >= 0) return number;
    ++number;
  }
  return -1;
}

int EntryNamed(const PointIndex& index, std::string_view name) {
  int number = 0;
  for (const PointIndexEntry& entry : index.entries) {
    if (SameName(entry.name, name)) return number;
    ++number;
  }
  return -1;
}

std::string PointIndexFileName(std::string_view mapName) {
  if (mapName.empty()) return "untitled.txt";
  const std::string name = std::string(mapName.substr(0, mapName.rfind('.'))) + ".txt";
  return name.size() > LongestFileName ? "index.txt" : name;
}

}  // namespace orvane
