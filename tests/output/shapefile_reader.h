#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace orvane {

/// Reads shapefiles for the tests, independently of the code that writes them. It follows the index;
/// a record extends to the next one.

/// The bytes of a file, read from any place.
struct FileBytes {
  std::string bytes;

  explicit FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    bytes.assign(std::istreambuf_iterator<char>(file), {});
  }
  std::uint64_t Number(size_t at, size_t size, bool big) const {
    EXPECT_LE(at + size, bytes.size());
    if (at + size > bytes.size()) return 0;
    std::uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) {
      value = value << 8U | static_cast<unsigned char>(bytes[big ? at + i : at + size - 1 - i]);
    }
    return value;
  }
  std::uint32_t Big(size_t at) const { return static_cast<std::uint32_t>(Number(at, 4, true)); }
  std::uint32_t Little(size_t at) const { return static_cast<std::uint32_t>(Number(at, 4, false)); }
  unsigned Short(size_t at) const { return static_cast<unsigned>(Number(at, 2, false)); }
  unsigned Byte(size_t at) const { return static_cast<unsigned>(Number(at, 1, false)); }
  double Double(size_t at) const { return std::bit_cast<double>(Number(at, 8, false)); }
};

struct ReadHeader {
  std::uint32_t fileWords = 0;
  std::uint32_t type = 0;
  double bounds[8] = {};  ///< X, Y minimum; X, Y maximum; Z range; M range

  explicit ReadHeader(const FileBytes& file) {
    EXPECT_EQ(file.Big(0), 9994U);
    for (size_t i = 4; i < 24; ++i) EXPECT_EQ(file.Byte(i), 0U);
    fileWords = file.Big(24);
    EXPECT_EQ(file.Little(28), 1000U);
    type = file.Little(32);
    for (size_t i = 0; i < 8; ++i) bounds[i] = file.Double(36 + 8 * i);
  }
};

struct ReadPlace {
  double x = 0;
  double y = 0;
  bool operator==(const ReadPlace&) const = default;
};

struct ReadRecord {
  std::uint32_t number = 0;
  std::uint32_t words = 0;  ///< of the header
  size_t bytes = 0;         ///< of the content, up to the next record
  std::uint32_t type = 0;
  double box[4] = {};
  std::vector<ReadPlace> places;
  std::vector<double> rest;  ///< doubles after the places
};

struct ReadField {
  std::string name;
  char type = 0;
  unsigned width = 0;
  unsigned decimals = 0;
};

/// A group of three files.
struct ReadShapefile {
  ReadHeader mainHeader;
  ReadHeader indexHeader;
  size_t mainBytes = 0;
  size_t indexBytes = 0;
  std::vector<ReadRecord> records;
  unsigned tableRecords = 0;
  unsigned tableHeaderBytes = 0;
  unsigned rowBytes = 0;
  unsigned date[3] = {};
  std::vector<ReadField> fields;
  std::vector<std::map<std::string, std::string>> rows;

  /// \param path  without ending
  explicit ReadShapefile(const std::string& path)
      : ReadShapefile(FileBytes(path + ".shp"), FileBytes(path + ".shx"),
                      FileBytes(path + ".dbf")) {}

 private:
  ReadShapefile(const FileBytes& shp, const FileBytes& shx, const FileBytes& dbf)
      : mainHeader(shp),
        indexHeader(shx),
        mainBytes(shp.bytes.size()),
        indexBytes(shx.bytes.size()) {
    const size_t count = (shx.bytes.size() - 100) / 8;
    EXPECT_EQ((shx.bytes.size() - 100) % 8, 0U);
    for (size_t i = 0; i < count; ++i) {
      const size_t begin = size_t{2} * shx.Big(100 + 8 * i);
      const size_t end = i + 1 < count ? size_t{2} * shx.Big(108 + 8 * i) : shp.bytes.size();
      records.push_back(Record(shp, begin, end));
      EXPECT_EQ(records.back().words, shx.Big(104 + 8 * i));
    }
    Table(dbf);
  }

  static ReadRecord Record(const FileBytes& shp, size_t begin, size_t end) {
    ReadRecord record;
    record.number = shp.Big(begin);
    record.words = shp.Big(begin + 4);
    record.bytes = end - begin - 8;
    size_t at = begin + 8;
    record.type = shp.Little(at);
    at += 4;
    size_t count = 1;
    if (record.type != 1) {
      for (double& value : record.box) {
        value = shp.Double(at);
        at += 8;
      }
      EXPECT_EQ(shp.Little(at), 1U);
      count = shp.Little(at + 4);
      EXPECT_EQ(shp.Little(at + 8), 0U);
      at += 12;
    }
    for (; count > 0; --count, at += 16) {
      record.places.push_back({shp.Double(at), shp.Double(at + 8)});
    }
    for (; at < end; at += 8) record.rest.push_back(shp.Double(at));
    EXPECT_EQ(at, end);
    return record;
  }

  void Table(const FileBytes& dbf) {
    EXPECT_EQ(dbf.Byte(0), 3U);
    for (size_t i = 0; i < 3; ++i) date[i] = dbf.Byte(1 + i);
    tableRecords = dbf.Little(4);
    tableHeaderBytes = dbf.Short(8);
    rowBytes = dbf.Short(10);
    size_t at = 32;
    for (; dbf.Byte(at) != 13 && at < dbf.bytes.size(); at += 32) {
      // The name ends at its first zero byte. NOLINTNEXTLINE(readability-redundant-string-cstr)
      fields.push_back({dbf.bytes.substr(at, 11).c_str(), dbf.bytes[at + 11], dbf.Byte(at + 16),
                        dbf.Byte(at + 17)});
    }
    ++at;
    EXPECT_EQ(at, tableHeaderBytes);
    EXPECT_EQ((dbf.bytes.size() - at) % rowBytes, 0U);
    for (; at + rowBytes <= dbf.bytes.size(); at += rowBytes) {
      EXPECT_EQ(dbf.bytes[at], ' ');
      size_t field = at + 1;
      auto& row = rows.emplace_back();
      for (const ReadField& told : fields) {
        row[told.name] = dbf.bytes.substr(field, told.width);
        field += told.width;
      }
      EXPECT_EQ(field, at + rowBytes);
    }
  }
};

}  // namespace orvane
