#pragma once

#include "base/messages.h"
#include "base/progress.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace orvane {

/// \return the name of the outermost element of an XML text, without the prefix of a namespace; empty if
///         it has none
std::string RootOfXml(std::string_view text);

/// Walks over the elements of an XML file of a GPS unit, for the readers of GPX and KML. Such files
/// declare no entities; one that does is read up to there, since a few lines of entities can expand to
/// gigabytes. Encodings of one byte a character are read (Windows-125x, ISO-8859-x, KOI8-x) beside UTF-8
/// and UTF-16.
class XmlWalk {
 public:
  XmlWalk(const XmlWalk&) = delete;
  XmlWalk& operator=(const XmlWalk&) = delete;

 protected:
  /// \param fileName  for messages; must outlive this, as must the others
  /// \param progress  receives how far the reading is and can cancel it
  XmlWalk(std::string_view fileName, Messages& messages, Progress* progress);
  virtual ~XmlWalk();

  /// Calls `Open` and `Close` for each element. A text that breaks off is an error that names the line.
  void Walk(std::string_view text);
  /// \return the line of the file where the parser is, from 1
  size_t Line() const;
  bool IsBroken() const { return isBroken_; }
  /// The text of the innermost element that keeps it, up to where the parser is.
  std::string& Text() { return text_; }
  /// From now on text is collected, or not. Forgets what was collected.
  void KeepText(bool keeps);

  std::string_view FileName() const { return fileName_; }
  Messages& Said() { return messages_; }
  bool IsCanceledNow() const { return IsCanceled(progress_); }
  void GoToLine(size_t line) { origin_.GoToLine(line); }

 private:
  /// \param name        without the prefix of a namespace
  /// \param attributes  names and values in turn, a null at the end
  virtual void Open(std::string_view name, const char** attributes) = 0;
  virtual void Close() = 0;

  struct Handlers;
  struct FreeParser {
    void operator()(XML_ParserStruct* parser) const;
  };

  void Parse(std::string_view text);
  void NoteBreak();

  std::unique_ptr<XML_ParserStruct, FreeParser> parser_;
  std::string_view fileName_;
  Messages& messages_;
  Progress* progress_;
  OriginScope origin_;
  size_t linesBefore_ = 0;  ///< those that the parser does not see
  bool isBroken_ = false;
  bool keepsText_ = false;
  std::string text_;
};

}  // namespace orvane
