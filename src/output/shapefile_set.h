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

/// The bounds of a group, as its headers tell them. Altitudes start at 0, which takes part.
struct ShapeBounds {
  double minX = 180;       ///< degrees of longitude
  double minY = 90;        ///< degrees of latitude
  double maxX = -180;      ///< degrees of longitude
  double maxY = -90;       ///< degrees of latitude
  double minAltitude = 0;  ///< metres
  double maxAltitude = 0;  ///< metres

  void Take(const LatLon& place);
};

/// Bytes as they go into a file.
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

/// A file that is written from front to back. What cannot be written is remembered, and told at
/// the end.
class ExportedFile {
 public:
  explicit ExportedFile(const FileSystem& system) : file_(system) {}

  WriteResult Open(const std::string& path) { return file_.Open(path); }
  /// What is put here goes to the file, in pieces, when `Pass` is called.
  ByteBuffer& Buffer() { return buffer_; }
  /// Bytes put so far.
  std::uint64_t Position() const { return passed_ + buffer_.Bytes().size(); }
  /// Writes what was put if that is worth a call of the system.
  void Pass();
  /// Writes the rest and brings the file to the disk. \return false if anything failed so far
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

/// A field tells its width in one byte, of which 255 is not to be used.
constexpr size_t WidestField = 254;

/// What the headers of a group tell.
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
  /// \return false if any of the files does not open; the others are then closed and gone
  bool Open(const std::string& directory, const std::string& name, bool projection);

  void PutHeaders(const ShapefileHeader& header, const std::vector<TableField>& fields);

  /// Begins the next row of the table. The fields follow in their order.
  void BeginRow();
  /// A text, filled up with blanks, or cut, to the width of the field.
  void PutField(std::string_view text);
  /// A text with blanks in front of it up to a width, and then as `PutField`.
  void PutNumberField(const std::string& text, size_t width);

  /// Begins the next record of the main file, and enters it in the index.
  /// \param words  the length of its content that is told
  /// \return where the content goes, behind the type, which is put
  ByteBuffer& BeginShape(std::uint64_t words);

  /// Writes the rest of all files and brings them to the disk. \return false if anything failed
  bool Finish();
  /// Puts all files in the place of the old ones. If that fails on the way, those of this group
  /// that did take their names are removed: files of two exports side by side would look whole.
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
  bool allUtf8_ = true;  ///< the texts put so far
};

}  // namespace orvane
