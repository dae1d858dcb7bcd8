#pragma once

#include "model/workspace.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/program.h"
#include "shell/shell.h"
#include "shell/surroundings.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdint>
#include <fstream>
#include <string>

namespace orvane {

/// The whole program with one window of 1200 x 800 pixels on a map.
class OpenProgram {
 public:
  explicit OpenProgram(const std::string& file) : window_(*shell_.OpenFile(file)) {
    window_.resize(1200, 800);
    Handle();
  }
  ~OpenProgram() {
    for (Map& map : workspace_.maps) map.flags &= ~std::uint32_t{MapDirty};
    window_.TryClose();
    Handle();
  }
  OpenProgram(const OpenProgram&) = delete;
  OpenProgram& operator=(const OpenProgram&) = delete;

  MapWindowWidget& Window() { return window_; }
  Shell& TheShell() { return shell_; }

  /// Handles what is due, painting included.
  static void Handle() {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
  }

 private:
  DesktopSurroundings surroundings_;
  BoxMessages boxes_{surroundings_};
  Workspace workspace_{boxes_};
  Program program_{workspace_, boxes_, surroundings_};
  Shell& shell_ = program_.TheShell();
  MapWindowWidget& window_;
};

/// A map file that goes when the benchmark ends.
class WrittenMap {
 public:
  explicit WrittenMap(const std::string& text)
      : file_(folder_.path().toStdString() + "/bench.map") {
    std::ofstream(file_, std::ios::binary) << text;
  }
  const std::string& File() const { return file_; }

 private:
  QTemporaryDir folder_;
  std::string file_;
};

}  // namespace orvane
