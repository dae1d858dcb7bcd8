#include "mapfile/recovery.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/files.h"
#include "base/number_text.h"
#include "base/text.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/workspace.h"

#include <algorithm>
#include <charconv>

namespace orvane {
namespace {

constexpr std::string_view FileKey = "file=";
constexpr std::string_view UntitledKey = "untitled=";
constexpr std::string_view DatesKey = "europeanDates=";
constexpr std::string_view SizeKey = "size=";
constexpr std::string_view HashKey = "hash=";

constexpr int Hexadecimal = 16;

/// A file name can have any byte except zero, also those that would end its line.
std::string EscapedName(std::string_view name) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string text;
  for (const char c : name) {
    if (c != '\n' && c != '\r' && c != '%') {
      text += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    text += '%';
    text += Digits[byte / Hexadecimal];
    text += Digits[byte % Hexadecimal];
  }
  return text;
}

template <typename Number>
std::optional<Number> WholeNumber(std::string_view text, int base) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, base);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

std::string NameWithoutEscapes(std::string_view text) {
  constexpr size_t EscapeLength = 3;
  std::string name;
  while (!text.empty()) {
    const auto byte = text.front() == '%' && text.size() >= EscapeLength
                          ? WholeNumber<unsigned char>(text.substr(1, 2), Hexadecimal)
                          : std::nullopt;
    name += byte ? static_cast<char>(*byte) : text.front();
    text.remove_prefix(byte ? EscapeLength : 1);
  }
  return name;
}

/// A name that no map of the workspace has: "site (recovered).map" for "site.map".
std::string FreeName(Workspace& workspace, const std::string& fileName) {
  const std::string baseName(BaseName(fileName));
  const size_t dot = baseName.rfind('.');
  const std::string stem = baseName.substr(0, dot);
  const std::string ending = dot == std::string::npos ? std::string() : baseName.substr(dot);
  for (int number = 1;; ++number) {
    const std::string mark = number == 1 ? "" : " " + std::to_string(number);
    std::string name = ReplaceBaseName(fileName, stem + " (recovered" + mark + ")" + ending);
    if (FindMap(workspace, name) == nullptr) return name;
  }
}

/// \return the whole path of the basis of a copy; empty for none
std::string BasisOf(const RecoveryCopy& copy) {
  const auto text = ReadWholeFile(RecoveryCopyPath(copy.slot));
  const auto rest = text ? StartsWith("B\t", *text) : std::nullopt;
  return rest ? std::string(rest->substr(0, rest->find('\n'))) : std::string();
}

/// While it exists, the user's file counts as being read, so that it can't be the basis of a basis,
/// and dates are read as they were when the copy was made.
class ReadingAs {
 public:
  ReadingAs(Workspace& workspace, const RecoveryRecord& record)
      : workspace_(workspace), europeanDates_(workspace.preferences.europeanDates) {
    workspace_.reading.openFiles.push_back({.path = record.fileName, .shownName = record.fileName});
    workspace_.preferences.europeanDates = record.europeanDates;
  }
  ~ReadingAs() {
    workspace_.reading.openFiles.pop_back();
    workspace_.preferences.europeanDates = europeanDates_;
  }
  ReadingAs(const ReadingAs&) = delete;
  ReadingAs& operator=(const ReadingAs&) = delete;

 private:
  Workspace& workspace_;
  bool europeanDates_;
};

}  // namespace

std::string RecoveryCopyPath(const std::string& slot) { return slot + ".map"; }

std::string RecoveryRecordText(const RecoveryRecord& record) {
  std::string text(FileKey);
  text += EscapedName(record.fileName);
  text += '\n';
  text += UntitledKey;
  text += record.untitled ? "1\n" : "0\n";
  text += DatesKey;
  text += record.europeanDates ? "1\n" : "0\n";
  if (record.original) {
    text += SizeKey;
    text += std::to_string(record.original->size);
    text += '\n';
    text += HashKey;
    text += std::to_string(record.original->hash);
    text += '\n';
  }
  return text;
}

std::optional<RecoveryRecord> ParseRecoveryRecord(std::string_view text) {
  constexpr int Decimal = 10;
  RecoveryRecord record;
  std::optional<std::uint64_t> size;
  std::optional<std::uint64_t> hash;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (const auto name = StartsWith(FileKey, line)) {
      record.fileName = NameWithoutEscapes(*name);
    } else if (const auto untitled = StartsWith(UntitledKey, line)) {
      record.untitled = *untitled == "1";
    } else if (const auto dates = StartsWith(DatesKey, line)) {
      record.europeanDates = *dates == "1";
    } else if (const auto sizeText = StartsWith(SizeKey, line)) {
      size = WholeNumber<std::uint64_t>(*sizeText, Decimal);
    } else if (const auto hashText = StartsWith(HashKey, line)) {
      hash = WholeNumber<std::uint64_t>(*hashText, Decimal);
    }
  }
  if (record.fileName.empty()) return std::nullopt;
  if (size && hash) record.original = FileMark{.size = *size, .hash = *hash};
  return record;
}

RecoveryRecord RecordOf(const Map& map) {
  const bool untitled = IsUntitled(map);
  // A map made by New has no directory before its first save.
  const bool named = !untitled || map.fileMark.has_value();
  return {.fileName = named ? WholePath(map.fileName) : map.fileName,
          .untitled = untitled,
          .europeanDates = map.workspace->preferences.europeanDates,
          .original = map.fileMark};
}

std::string RecoveryText(Map& map) {
  std::string text = MapFileText(map, map.fileName, true);
  if (map.basis == nullptr) return text;
  const std::string line = "B\t" + WholePath(map.basis->fileName);
  return text.replace(0, text.find('\n'), line);
}

Map* OpenRecoveryCopy(Workspace& workspace, const RecoveryCopy& copy) {
  const RecoveryRecord& record = copy.record;
  const std::string path = RecoveryCopyPath(copy.slot);
  if (!ReadWholeFile(path)) {
    NoteError(workspace.messages, "Can't open file %s", {path});
    return nullptr;
  }
  const bool unnamed = record.untitled && !record.original;
  const bool taken = !unnamed && FindOpenMap(workspace, record.fileName) != nullptr;
  Map& map = MakeMap(workspace, taken ? FreeName(workspace, record.fileName) : record.fileName);
  if (record.untitled || taken) map.flags |= MapUntitled;
  const OriginScope origin(workspace.messages, path);
  // Otherwise half a map would be copied over the whole one.
  const MustFinish whole(workspace.progress);
  {
    const ReadingAs reading(workspace, record);
    ReadMapFile(map, path);
  }
  FinishMap(map);
  if (!taken) map.fileMark = record.original;
  map.flags |= MapDirty;
  return &map;
}

std::vector<Map*> OpenRecoveryCopies(Workspace& workspace,
                                     const std::vector<RecoveryCopy>& copies) {
  std::vector<std::string> bases;
  std::vector<size_t> waiting;
  for (size_t i = 0; i < copies.size(); ++i) {
    bases.push_back(BasisOf(copies[i]));
    waiting.push_back(i);
  }
  std::vector<Map*> maps(copies.size(), nullptr);
  while (!waiting.empty()) {
    const auto basisWaits = [&](size_t i) {
      return std::any_of(waiting.begin(), waiting.end(),
                         [&](size_t j) { return copies[j].record.fileName == bases[i]; });
    };
    auto next = std::find_if_not(waiting.begin(), waiting.end(), basisWaits);
    // If their bases form a circle, one has to be first.
    if (next == waiting.end()) next = waiting.begin();
    maps[*next] = OpenRecoveryCopy(workspace, copies[*next]);
    waiting.erase(next);
  }
  return maps;
}

}  // namespace orvane
