#include "paint/display_text.h"

#include <QStringDecoder>

#include <algorithm>
#include <optional>

namespace orvane {
namespace {

/// \return `text` decoded as UTF-8, or nothing if it is not valid
std::optional<QString> DecodedUtf8(QByteArrayView text) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString decoded = decoder.decode(text);
  if (decoder.hasError()) return std::nullopt;
  return decoded;
}

QByteArrayView BytesOf(std::string_view text) {
  return {text.data(), static_cast<qsizetype>(text.size())};
}

}  // namespace

QString DisplayText(std::string_view text) {
  if (auto decoded = DecodedUtf8(BytesOf(text))) return *decoded;
  return QString::fromLatin1(BytesOf(text));
}

std::string StoredText(const QString& text, std::string_view before) {
  const bool fitsLatin1 =
      std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF; });
  if (fitsLatin1 && !DecodedUtf8(BytesOf(before))) return text.toLatin1().toStdString();
  return text.toStdString();
}

}  // namespace orvane
