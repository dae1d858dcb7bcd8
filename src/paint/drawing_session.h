#pragma once

#include <QGuiApplication>

#include <array>
#include <memory>

namespace orvane {

/// Makes sure that fonts and images can be used while it lives: if the program has no
/// QGuiApplication, it makes one that needs no screen. Making one costs several milliseconds, so a
/// batch tool does it only for drawing.
class DrawingSession {
 public:
  DrawingSession();
  ~DrawingSession();
  DrawingSession(const DrawingSession&) = delete;
  DrawingSession& operator=(const DrawingSession&) = delete;

 private:
  // The command line of the application; it keeps references to all of it.
  std::array<char, 7> name_{"orvane"};
  std::array<char, 10> option_{"-platform"};
  std::array<char, 10> platform_{"offscreen"};
  std::array<char*, 4> arguments_{};
  int argumentCount_ = 3;
  std::unique_ptr<QGuiApplication> application_;
};

}  // namespace orvane
