#pragma once

#include <QWidget>

class QListWidget;

namespace orvane {

/// A list under a title bar.
class ListPane final : public QWidget {
  Q_OBJECT

 public:
  ListPane(const QString& title, QWidget* parent);

  QListWidget& List() { return *list_; }

 private:
  QListWidget* list_;
};

}  // namespace orvane
