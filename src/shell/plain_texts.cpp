#include "shell/plain_texts.h"

namespace orvane {

QString PlainTip(const QString& text) {
  if (text.isEmpty()) return text;
  return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

QString PlainTitle(QString text) {
  return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

}  // namespace orvane
