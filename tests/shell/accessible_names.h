#pragma once

#include <QAccessible>
#include <QEvent>
#include <QWidget>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {

/// What a screen reader says for a control: its own name, or that of its label or its text.
inline QString SpokenName(QWidget& widget) {
  const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
  return spoken == nullptr ? QString() : spoken->text(QAccessible::Name).trimmed();
}

/// The controls within a window that can have the keyboard and have no name, in words.
inline std::vector<std::string> NamelessOf(const QWidget& window) {
  std::vector<std::string> nameless;
  const auto all = window.findChildren<QWidget*>();
  for (QWidget* widget : all) {
    if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() != nullptr) continue;
    if (!SpokenName(*widget).isEmpty()) continue;
    nameless.push_back(std::string(widget->metaObject()->className()) + " \"" +
                       widget->objectName().toStdString() + "\" of " +
                       widget->parentWidget()->metaObject()->className());
  }
  return nameless;
}

/// Looks at each window that any test shows: a control without a name fails the test.
class NameWatcher final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show || !watched->isWidgetType()) return false;
    const auto* widget = static_cast<const QWidget*>(watched);
    const Qt::WindowType type = widget->windowType();
    if (!widget->isWindow() || (type != Qt::Window && type != Qt::Dialog)) return false;
    for (const std::string& name : NamelessOf(*widget)) {
      ADD_FAILURE() << "A control without a name for screen readers: " << name << " in "
                    << widget->metaObject()->className();
    }
    return false;
  }
};

}  // namespace orvane
