#include "output/shapefile_set.h"

#include "base/file_names.h"
#include "output/shapefiles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>

namespace orvane {

namespace {

constexpr std::uint32_t FileCode = 9994;
constexpr std::uint32_t Version = 1000;

/// The length of the header that all file lengths count: 4 bytes more than it has; see
/// docs/compatibility.md.
constexpr std::uint64_t CountedHeaderBytes = 104;
constexpr std::uint64_t IndexRecordBytes = 8;

constexpr std::uint32_t TableVersion = 3;
constexpr size_t FieldDescriptorBytes = 32;
constexpr size_t FieldNameBytes = 11;
constexpr std::uint32_t EndOfFields = 13;

/// Bytes collected before they are written.
constexpr size_t PieceBytes = size_t{1} << 20U;

constexpr std::string_view Wgs84 =
    "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\","
    "SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],"
    "PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]]";

template <size_t Bytes>
std::array<char, Bytes> LittleBytes(std::uint64_t value) {
  std::array<char, Bytes> bytes{};
  for (size_t i = 0; i < Bytes; ++i) bytes[i] = static_cast<char>((value >> (8 * i)) & 0xFFU);
  return bytes;
}

template <size_t Bytes>
std::string_view View(const std::array<char, Bytes>& bytes) {
  return {bytes.data(), Bytes};
}

void PutShapeHeader(ByteBuffer& out, const ShapefileHeader& header, std::uint64_t recordBytes) {
  out.PutBig(FileCode);
  out.PutRepeated('\0', 20);
  out.PutBig(static_cast<std::uint32_t>((CountedHeaderBytes + recordBytes) >> 1U));
  out.PutLittle(Version);
  out.PutLittle(header.type);
  const ShapeBounds& bounds = header.bounds;
  for (const double value : {bounds.minX, bounds.minY, bounds.maxX, bounds.maxY}) {
    out.PutDouble(value);
  }
  // The range of Z is empty, and that of the altitudes is the range of M; see
  // docs/compatibility.md.
  for (const double value : {0.0, 0.0, bounds.minAltitude, bounds.maxAltitude}) {
    out.PutDouble(value);
  }
}

void PutTableHeader(ByteBuffer& out, const ShapefileHeader& header,
                    const std::vector<TableField>& fields) {
  constexpr int FirstYear = 1900;
  const DateParts today = UnpackDate(header.today);
  size_t rowBytes = 1;
  for (const TableField& field : fields) rowBytes += field.width;
  out.PutByte(TableVersion);
  out.PutByte(static_cast<std::uint32_t>(today.year - FirstYear));
  out.PutByte(static_cast<std::uint32_t>(today.month));
  out.PutByte(static_cast<std::uint32_t>(today.day));
  out.PutLittle(static_cast<std::uint32_t>(header.records));
  out.PutShort(static_cast<std::uint32_t>(FieldDescriptorBytes * (fields.size() + 1) + 1));
  out.PutShort(static_cast<std::uint32_t>(rowBytes));
  out.PutRepeated('\0', 20);
  for (const TableField& field : fields) {
    out.PutText(field.name);
    out.PutRepeated('\0', FieldNameBytes - field.name.size());
    out.PutText({&field.type, 1});
    out.PutRepeated('\0', 4);
    out.PutByte(static_cast<std::uint32_t>(field.width));
    out.PutByte(field.decimals);
    out.PutRepeated('\0', 14);
  }
  out.PutByte(EndOfFields);
}

}  // namespace

void ShapeBounds::Take(const LatLon& place) {
  minX = std::min(minX, place.lon);
  maxX = std::max(maxX, place.lon);
  minY = std::min(minY, place.lat);
  maxY = std::max(maxY, place.lat);
  if (!HasAltitude(place.altitude)) return;
  minAltitude = std::min(minAltitude, double{place.altitude});
  maxAltitude = std::max(maxAltitude, double{place.altitude});
}

void ByteBuffer::PutBig(std::uint32_t value) {
  auto bytes = LittleBytes<4>(value);
  std::reverse(bytes.begin(), bytes.end());
  bytes_ += View(bytes);
}

void ByteBuffer::PutLittle(std::uint32_t value) { bytes_ += View(LittleBytes<4>(value)); }

void ByteBuffer::PutShort(std::uint32_t value) { bytes_ += View(LittleBytes<2>(value)); }

void ByteBuffer::PutByte(std::uint32_t value) { bytes_ += static_cast<char>(value & 0xFFU); }

void ByteBuffer::PutDouble(double value) {
  bytes_ += View(LittleBytes<8>(std::bit_cast<std::uint64_t>(value)));
}

void ExportedFile::Pass() {
  if (buffer_.Bytes().size() >= PieceBytes) WriteBuffer();
}

void ExportedFile::WriteBuffer() {
  failed_ = failed_ || !file_.Write(buffer_.Bytes());
  passed_ += buffer_.Bytes().size();
  buffer_.Clear();
}

bool ExportedFile::Finish() {
  WriteBuffer();
  return file_.Flush() && !failed_;
}

bool ShapefileSet::Open(const std::string& directory, const std::string& name, bool projection) {
  std::vector<std::string> endings = {".shp", ".shx", ".dbf"};
  if (projection) endings.insert(endings.end(), {".prj", ".cpg"});
  projection_ = projection;
  name_ = name;
  path_ = JoinPath(directory, name + endings.front());
  for (const std::string& ending : endings) {
    const std::string path = JoinPath(directory, name + ending);
    files_.push_back(std::make_unique<ExportedFile>(system_));
    if (path.size() > LongestExportPath || files_.back()->Open(path) != WriteResult::Done) {
      files_.clear();
      return false;
    }
  }
  return true;
}

void ShapefileSet::PutHeaders(const ShapefileHeader& header,
                              const std::vector<TableField>& fields) {
  type_ = header.type;
  widths_.clear();
  for (const TableField& field : fields) widths_.push_back(field.width);
  PutShapeHeader(Main().Buffer(), header, header.recordBytes);
  PutShapeHeader(Index().Buffer(), header, IndexRecordBytes * header.records);
  PutTableHeader(Table().Buffer(), header, fields);
}

void ShapefileSet::BeginRow() {
  Table().Pass();
  Table().Buffer().PutRepeated(' ', 1);
  nextField_ = 0;
}

void ShapefileSet::PutField(std::string_view text) {
  const size_t width = widths_[nextField_++];
  // A text that is cut may end within a character, so the whole text decides.
  if (projection_ && allUtf8_) allUtf8_ = IsValidUtf8(text);
  ByteBuffer& row = Table().Buffer();
  row.PutText(text.substr(0, width));
  if (text.size() < width) row.PutRepeated(' ', width - text.size());
}

void ShapefileSet::PutNumberField(const std::string& text, size_t width) {
  PutField(text.size() < width ? std::string(width - text.size(), ' ') + text : text);
}

ByteBuffer& ShapefileSet::BeginShape(std::uint64_t words) {
  Main().Pass();
  Index().Pass();
  ByteBuffer& entry = Index().Buffer();
  entry.PutBig(static_cast<std::uint32_t>(Main().Position() >> 1U));
  entry.PutBig(static_cast<std::uint32_t>(words));
  ByteBuffer& record = Main().Buffer();
  record.PutBig(++lastRecord_);
  record.PutBig(static_cast<std::uint32_t>(words));
  record.PutLittle(type_);
  return record;
}

bool ShapefileSet::Finish() {
  if (projection_) {
    File(3).Buffer().PutText(Wgs84);
    File(4).Buffer().PutText(allUtf8_ ? "UTF-8" : "ISO-8859-1");
  }
  bool done = true;
  for (const auto& file : files_) done = file->Finish() && done;
  return done;
}

bool ShapefileSet::TakeNames() {
  // The main file comes last: without one there is nothing that a reader would open.
  for (size_t taken = 0; taken < files_.size(); ++taken) {
    if (File(files_.size() - 1 - taken).TakeName()) continue;
    for (size_t i = 0; i < taken; ++i) std::remove(File(files_.size() - 1 - i).Path().c_str());
    return false;
  }
  return true;
}

}  // namespace orvane
