#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace orvane {

/// Text of a map as people see it. Maps hold 8-bit text of no declared encoding: old files are
/// Latin-1, new ones UTF-8, and a file may hold both.
/// \return `text` decoded as UTF-8 if the whole of it is valid UTF-8, else as Latin-1. Never fails.
QString DisplayText(std::string_view text);

/// The way back, for text that a user has changed.
/// \param before  the text that was shown to be changed: if it was Latin-1, the result is too where
///                that can hold it; everything else is UTF-8
std::string StoredText(const QString& text, std::string_view before);

}  // namespace orvane
