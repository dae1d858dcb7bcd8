#include "formats/spreadsheets.h"

#include "base/text.h"

#include <algorithm>

namespace orvane {

namespace {

/// The last record of a zip file: 22 bytes and a comment.
constexpr std::string_view EndMark = "PK\x05\x06";
constexpr size_t EndBytes = 22;
constexpr size_t LongestComment = 65535;
constexpr std::string_view EntryMark = "PK\x01\x02";
constexpr size_t EntryBytes = 46;
/// Sizes and numbers that are given elsewhere, for files of 4 GiB and more.
constexpr std::uint64_t Elsewhere = 0xFFFFFFFFU;

/// How an .xls file begins.
constexpr std::string_view XlsMark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";

constexpr const char* Damaged = "it is damaged, locked with a password, or not what its name says";

/// \return a number of `size` bytes, the lowest first
std::uint64_t NumberAt(std::string_view bytes, size_t at, size_t size) {
  std::uint64_t number = 0;
  for (size_t i = size; i-- > 0;) {
    number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
  }
  return number;
}

}  // namespace

std::optional<SpreadsheetKind> SpreadsheetKindOf(std::string_view path) {
  const auto endsWith = [&](std::string_view ending) {
    return path.size() >= ending.size() &&
           SameName(path.substr(path.size() - ending.size()), ending);
  };
  if (endsWith(".xlsx")) return SpreadsheetKind::Xlsx;
  if (endsWith(".ods")) return SpreadsheetKind::Ods;
  if (endsWith(".xls")) return SpreadsheetKind::Xls;
  return std::nullopt;
}

std::string WhyNotUnpacked(const SpreadsheetFile& file) {
  const std::string_view bytes = file.bytes;
  if (bytes.size() > LargestSpreadsheet) return TooLarge();
  if (file.kind == SpreadsheetKind::Xls) return bytes.starts_with(XlsMark) ? "" : Damaged;
  const size_t from = bytes.size() - std::min(bytes.size(), EndBytes + LongestComment);
  const size_t end = bytes.rfind(EndMark);
  if (end == bytes.npos || end < from || end + EndBytes > bytes.size()) return Damaged;
  const std::uint64_t parts = NumberAt(bytes, end + 10, 2);
  std::uint64_t at = NumberAt(bytes, end + 16, 4);
  if (parts > MostParts || at == Elsewhere) return "it has too many parts";
  std::uint64_t unpacked = 0;
  for (std::uint64_t i = 0; i < parts; ++i) {
    if (at + EntryBytes > end || bytes.substr(at, EntryMark.size()) != EntryMark) return Damaged;
    const std::uint64_t size = NumberAt(bytes, at + 24, 4);
    unpacked += size;
    if (unpacked > LargestSpreadsheet) return TooLarge();
    at += EntryBytes + NumberAt(bytes, at + 28, 2) + NumberAt(bytes, at + 30, 2) +
          NumberAt(bytes, at + 32, 2);
  }
  return {};
}

}  // namespace orvane
