#pragma once

#include <QDialog>

namespace orvane {

struct Map;

/// Shows what the program is, and who made the open map.
class AboutBox final : public QDialog {
  Q_OBJECT

 public:
  /// \param map  whose credit lines are shown; null for none
  AboutBox(const Map* map, QWidget* parent);

 private:
  void AddCredits(const Map& map);
};

}  // namespace orvane
