#pragma once

#include "commands/file_dialogs.h"
#include "shell/command_menu.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/program.h"
#include "shell/scripted_surroundings.h"
#include "shell/task_window.h"
#include "support/temporary_folder.h"

#include <QAction>
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace orvane {

/// A shell whose every question is answered as a test lays down.
class ShellCase : public testing::Test {
 protected:
  ShellCase() : workspace_(messages_), program_(workspace_, boxes_, around_) {
    shell_.TheSettings().dialogDirectory = folder_.Path();
  }

  ~ShellCase() override {
    messages_.answers.clear();
    for (Map& map : workspace_.maps) map.flags &= ~std::uint32_t{MapDirty};
    while (!shell_.Windows().All().empty()) shell_.Windows().All().front()->TryClose();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  /// A map of two points and a trail between them.
  std::string WriteMap(const std::string& name) const {
    return folder_.Write(name, "T\tRidge\tTrail\nG\tCamp\tN1\tE10\nG\tHill\tN1 0.6'\tE10 0.6'\n");
  }

  MapWindowWidget& OpenNew() {
    MapWindowWidget& window = shell_.NewMap();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    return window;
  }

  MapWindowWidget& OpenActive(const std::string& path) {
    MapWindowWidget& window = *shell_.OpenFile(path);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    return window;
  }

  static QAction& ActionOf(MapWindowWidget& window, CommandId id) {
    return window.Commands().ActionOf(id);
  }
  static bool IsEnabled(MapWindowWidget& window, CommandId id) {
    return ActionOf(window, id).isEnabled();
  }

  /// Presses the key that the table has for a command.
  static void Press(QWidget& window, CommandId id) {
    const std::string_view key = FindCommand(id)->key;
    ASSERT_FALSE(key.empty());
    const QKeySequence keys(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QWidget* focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
    QTest::keyClick(focus, keys[0].key(), keys[0].keyboardModifiers());
  }

  void DeliverDeletes() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  TaskWindow* ShownTaskWindow() {
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* widget : all) {
      auto* window = qobject_cast<TaskWindow*>(widget);
      if (window != nullptr && window->isVisible()) return window;
    }
    return nullptr;
  }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages_.Entries()) texts.push_back(entry.text);
    return texts;
  }

  TemporaryFolder folder_;
  ScriptedMessages messages_;
  ScriptedSurroundings around_;
  BoxMessages boxes_{around_};
  Workspace workspace_;
  Program program_;
  Shell& shell_ = program_.TheShell();
  ScriptedDialogs* dialogs_ = &around_.dialogs;
  int& beeps_ = around_.beeps;
  int& ends_ = around_.ends;
};

}  // namespace orvane
