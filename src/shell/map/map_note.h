#pragma once

#include <QLabel>

#include <string>
#include <vector>

namespace orvane {

/// A small note that floats in the middle of its parent: lines of text on the ground of tool tips.
/// It takes no part in what the mouse does.
class MapNote final : public QLabel {
  Q_OBJECT

 public:
  MapNote(const std::vector<std::string>& lines, QWidget* parent);

  /// Puts it in the middle of its parent.
  void Center();
};

}  // namespace orvane
