// Every control that the keyboard can reach has a name that can be read out.

#include "entry/gis_import.h"
#include "shell/about_box.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/help/help_window.h"
#include "shell/map/map_panes.h"
#include "shell/map/orientation_dialog.h"
#include "shell/messages/built_box.h"
#include "shell/messages/messages_window.h"
#include "shell/messages/text_viewer.h"
#include "shell/shell_case.h"

#include <QAccessible>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

namespace orvane {
namespace {

/// What a screen reader says for a control: its own name, or that of its label or its text.
QString SpokenName(QWidget& widget) {
  const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
  return spoken == nullptr ? QString() : spoken->text(QAccessible::Name).trimmed();
}

/// The controls within a window that can have the keyboard and have no name, and the window itself
/// if it has no title.
std::vector<std::string> NamelessOf(QWidget& window) {
  std::vector<std::string> nameless;
  const auto note = [&nameless](const QWidget& widget) {
    nameless.push_back(std::string(widget.metaObject()->className()) + " \"" +
                       widget.objectName().toStdString() + "\" of " +
                       (widget.parentWidget() == nullptr
                            ? "nothing"
                            : widget.parentWidget()->metaObject()->className()) +
                       " in \"" + widget.window()->windowTitle().toStdString() + "\"");
  };
  if (window.windowTitle().isEmpty()) note(window);
  const auto all = window.findChildren<QWidget*>();
  for (QWidget* widget : all) {
    if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() != nullptr) continue;
    if (SpokenName(*widget).isEmpty()) note(*widget);
  }
  return nameless;
}

const std::vector<std::string> None;

class AccessibleNames : public ShellCase {
 protected:
  GisImport Import(Map& map) {
    auto import = StartGisImportOfText(map, "name,time,a,b,lat,lon,alt\nA,,,,1,115\nA,,,,2,115\n",
                                       "gps.txt", gisBoxes_);
    EXPECT_TRUE(import);
    return std::move(*import);
  }

  GisBoxes gisBoxes_;
};

TEST_F(AccessibleNames, TheWalkFindsWhatHasNone) {
  QWidget window;
  window.setWindowTitle(QStringLiteral("T"));
  auto* edit = new QLineEdit(&window);
  EXPECT_EQ(NamelessOf(window), std::vector<std::string>{"QLineEdit \"\" of QWidget in \"T\""});
  edit->setAccessibleName(QStringLiteral("Name"));
  EXPECT_EQ(NamelessOf(window), None);
}

TEST_F(AccessibleNames, TheWindowsOfTheProgram) {
  shell_.Start({});
  ASSERT_NE(ShownTaskWindow(), nullptr);
  EXPECT_EQ(NamelessOf(*ShownTaskWindow()), None);
  MapWindowWidget& map = OpenNew();
  EXPECT_EQ(NamelessOf(map), None);
  EXPECT_GE(map.findChildren<QWidget*>().size(), 10);
}

TEST_F(AccessibleNames, TheWindowsOfMessages) {
  MessagesWindow messages(boxes_.Log());
  EXPECT_EQ(NamelessOf(messages), None);
  TextViewer viewer;
  viewer.ShowLine(folder_.Write("a.map", "G\tCamp\n"), 1);
  EXPECT_EQ(NamelessOf(viewer), None);
}

TEST_F(AccessibleNames, TheBuiltBoxes) {
  const std::string longText(3000, '\n');
  for (const std::string& text : {std::string("has changed"), longText + "end"}) {
    BuiltBox question(QStringLiteral("Save Map?"), text, {"Save", "Cancel", "Don't Save"},
                      std::nullopt, nullptr);
    EXPECT_EQ(NamelessOf(question), None);
    BuiltBox prompt(QStringLiteral("Find"), text, {"OK", "Cancel"}, QString(), nullptr);
    EXPECT_EQ(NamelessOf(prompt), None);
  }
}

TEST_F(AccessibleNames, TheBoxOfAMessage) {
  int seen = 0;
  QTimer look;
  look.setInterval(1);
  QObject::connect(&look, &QTimer::timeout, &look, [&seen] {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return;
    ++seen;
    EXPECT_EQ(NamelessOf(*box), None);
    QTest::keyClick(box, Qt::Key_Return);
  });
  look.start();
  const MessageBatch batch(boxes_, QStringLiteral("opening a.map"));
  for (int i = 0; i < 3; ++i) NoteError(boxes_, "Bad line");
  boxes_.EndBatch();
  EXPECT_EQ(seen, 3);
  boxes_.BeginBatch({});
}

TEST_F(AccessibleNames, TheDialogs) {
  MapWindowWidget& window = OpenNew();
  OrientationDialog orientation(window.View().View(), &window);
  EXPECT_EQ(NamelessOf(orientation), None);
  AboutBox about(&window.TheMap(), &window);
  EXPECT_EQ(NamelessOf(about), None);
  auto* trail = new GisTrailWindow(shell_, Import(window.TheMap()), gisBoxes_, &window);
  EXPECT_EQ(NamelessOf(*trail), None);
  delete trail;
}

TEST_F(AccessibleNames, TheHelp) {
  HelpWindow help(QStringLiteral(HELP_FILE), nullptr);
  help.show();
  EXPECT_EQ(NamelessOf(help), None);
}

}  // namespace
}  // namespace orvane
