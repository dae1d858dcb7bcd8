#include "paint/drawing_session.h"

#include <QHashSeed>
#include <QtGlobal>

namespace orvane {
namespace {

/// Drops what Qt remarks on the machine that it finds itself on (no session directory, no theme):
/// on standard error it would appear between the messages about the user's map.
void DropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

DrawingSession::DrawingSession() {
  if (QCoreApplication::instance() != nullptr) return;
  // The fonts of a PDF file are in the order of a hash table: two runs make the same file.
  QHashSeed::setDeterministicGlobalSeed();
  arguments_ = {name_.data(), option_.data(), platform_.data(), nullptr};
  const QtMessageHandler before = qInstallMessageHandler(DropMessage);
  QGuiApplication::setDesktopSettingsAware(false);
  application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_.data());
  qInstallMessageHandler(before);
}

DrawingSession::~DrawingSession() = default;

}  // namespace orvane
