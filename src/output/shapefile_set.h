#pragma once

#include "base/dates.h"
#include "base/replaced_file.h"
#include "base/utf8.h"
#include "geo/positions.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The files of one group of shapefiles, record by record.

/// Kinds of records, as numbered in the files.
enum ShapeType : std::uint32_t {
  ShapePoint = 1,
  ShapePolyLine = 3,
  ShapePolygon = 5,
  ShapePolyLineZ = 13
};

/// The M value of a place that has none.
constexpr double NoMeasure = 1e-39;

/// The bounds of a group in its headers. The altitudes include 0.
struct ShapeBounds {
  double minX = 180;       ///< degrees of longitude
  double minY = 90;        ///< degrees of latitude
  double maxX = -180;      ///< degrees of longitude
  double maxY = -90;       ///< degrees of latitude
  double minAltitude = 0;  ///< metres
  double maxAltitude = 0;  ///< metres

  void Take(const LatLon& place);
};

/// Collects the bytes of a file.
class ByteBuffer {
 public:
  void PutBig(std::uint32_t value);
  void PutLittle(std::uint32_t value);
  void PutShort(std::uint32_t value);  ///< the low 16 bits, little-endian
  void PutByte(std::uint32_t value);   ///< the low 8 bits
  void PutDouble(double value);        ///< little-endian
  void PutText(std::string_view text) { bytes_ += text; }
  void PutRepeated(char byte, size_t count) { bytes_.append(count, byte); }

  const std::string& Bytes() const { return bytes_; }
  void Clear() { bytes_.clear(); }

 private:
  std::string bytes_;
};

/// A file that is written from front to back. It remembers a failure until `Finish`.
class ExportedFile {
 public:
  explicit ExportedFile(const FileSystem& system) : file_(system) {}

  WriteResult Open(const std::string& path) { return file_.Open(path); }
  /// Receives the bytes for the file, which `Pass` writes in pieces.
  ByteBuffer& Buffer() { return buffer_; }
  /// Bytes put so far.
  std::uint64_t Position() const { return passed_ + buffer_.Bytes().size(); }
  /// Writes the buffer if it is large enough.
  void Pass();
  /// Writes the rest and flushes the file to the disk. \return false if anything failed so far
  bool Finish();
  bool TakeName() { return file_.TakeName(); }
  const std::string& Path() const { return file_.Path(); }

 private:
  void WriteBuffer();

  ReplacedFile file_;
  ByteBuffer buffer_;
  std::uint64_t passed_ = 0;
  bool failed_ = false;
};

/// A column of the table.
struct TableField {
  std::string_view name;  ///< at most 10 bytes
  char type = 'C';        ///< `C` text, `N` number
  size_t width = 0;       ///< bytes, at most `WidestField`
  unsigned decimals = 0;
};

/// The width of a field is one byte; 255 is not used.
constexpr size_t WidestField = 254;

/// The content of the headers of a group.
struct ShapefileHeader {
  ShapeType type = ShapePoint;
  ShapeBounds bounds;
  std::uint64_t records = 0;      ///< in the index and in the table
  std::uint64_t recordBytes = 0;  ///< of all records of the main file, with their headers
  PackedDate today = 0;
};

/// The three files of a group, or five. The order of calls: `Open`, `PutHeaders`, and then for each
/// record `BeginRow`, the fields of the row, `BeginShape` and the content of the shape.
class ShapefileSet {
 public:
  explicit ShapefileSet(const FileSystem& system) : system_(system) {}

  /// \param directory  the folder
  /// \param name       "points" and so on
  /// \return false if a file cannot be opened; the others are then closed and removed
  bool Open(const std::string& directory, const std::string& name, bool projection);

  void PutHeaders(const ShapefileHeader& header, const std::vector<TableField>& fields);

  /// Begins the next row of the table. The fields follow in their order.
  void BeginRow();
  /// Writes a text, padded with blanks or cut to the width of the field.
  void PutField(std::string_view text);
  /// Pads a text on the left to `width`, then does as `PutField`.
  void PutNumberField(const std::string& text, size_t width);

  /// Begins the next record of the main file, and enters it in the index.
  /// \param words  the length of its content for the header
  /// \return where the content goes, after the type, which is written
  ByteBuffer& BeginShape(std::uint64_t words);

  /// Writes the rest of all files and flushes them to the disk. \return false if anything failed
  bool Finish();
  /// Replaces the old files. If that fails on the way, the files of this group that were already
  /// renamed are removed: files of two exports together would look complete.
  bool TakeNames();

  /// The path of the main file.
  const std::string& Path() const { return path_; }
  /// "points" and so on.
  const std::string& Name() const { return name_; }
  size_t FileCount() const { return files_.size(); }

 private:
  ExportedFile& File(size_t index) { return *files_[index]; }
  ExportedFile& Main() { return File(0); }
  ExportedFile& Index() { return File(1); }
  ExportedFile& Table() { return File(2); }

  const FileSystem& system_;
  std::string name_;
  std::string path_;
  std::vector<std::unique_ptr<ExportedFile>> files_;  ///< .shp, .shx, .dbf; perhaps .prj, .cpg
  ShapeType type_ = ShapePoint;
  std::vector<size_t> widths_;  ///< of the fields
  size_t nextField_ = 0;
  std::uint32_t lastRecord_ = 0;
  bool projection_ = false;
  bool allUtf8_ = true;  ///< of the texts written so far
};

}  // namespace orvane
