#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// A file whose parts are XML in a zip archive, as spreadsheets are. GDAL unpacks it; a `GdalSession`
/// must exist.
class ZippedXml {
 public:
  /// \param bytes  of the archive; must outlive this
  explicit ZippedXml(std::string_view bytes);
  ~ZippedXml();
  ZippedXml(const ZippedXml&) = delete;
  ZippedXml& operator=(const ZippedXml&) = delete;

  /// Receives what is in a part. Elements have their names as written, with a prefix, if any.
  class Handler {
   public:
    virtual ~Handler() = default;
    /// \param attributes  names and values in turn, null at the end
    virtual void Open(std::string_view name, const char** attributes) = 0;
    virtual void Close(std::string_view name) = 0;
    virtual void Text(std::string_view text) = 0;
    /// \return why reading stops; empty to go on
    virtual std::string Fault() const { return {}; }
    /// \return true if nothing more is wanted
    virtual bool IsDone() const { return false; }
  };

  bool Has(const std::string& part) const;

  /// Reads a part, at most `LargestSpreadsheet` bytes of it.
  /// \return why it can't be read, as a part of a sentence; empty if it was, or if the handler was
  ///         done
  std::string Read(const std::string& part, Handler& handler) const;

 private:
  static std::string PathOf(const std::string& part);
};

/// \return the value of an attribute; empty if it is missing
std::string_view AttributeOf(const char** attributes, std::string_view name);

}  // namespace orvane
