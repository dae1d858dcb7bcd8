// Every control that the keyboard can reach has a name that can be read out, and every window has
// a title. What the other tests show is looked at as well, see main.cpp.

#include "shell/accessible_names.h"

#include "entry/gis_import.h"
#include "shell/about_box.h"
#include "shell/entry/fix_import_window.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/entry/sheet_dialog.h"
#include "shell/help/help_window.h"
#include "shell/map/map_panes.h"
#include "shell/map/orientation_dialog.h"
#include "shell/messages/built_box.h"
#include "shell/messages/messages_window.h"
#include "shell/messages/text_viewer.h"
#include "shell/output/export_dialog.h"
#include "shell/recovery/recovery_dialog.h"
#include "shell/shell_case.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest-spi.h>

namespace orvane {
namespace {

const std::vector<std::string> None;

/// \return what has no name in a window, which must have a title
std::vector<std::string> NamelessIn(const QWidget& window) {
  EXPECT_FALSE(window.windowTitle().isEmpty()) << window.metaObject()->className();
  return NamelessOf(window);
}

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
  auto* edit = new QLineEdit(&window);
  EXPECT_EQ(NamelessOf(window), std::vector<std::string>{"QLineEdit \"\" of QWidget"});
  edit->setAccessibleName(QStringLiteral("Name"));
  EXPECT_EQ(NamelessOf(window), None);
}

TEST_F(AccessibleNames, WhateverATestShowsIsLookedAt) {
  QWidget window;
  new QLineEdit(&window);
  EXPECT_NONFATAL_FAILURE(window.show(), "QLineEdit \"\" of QWidget");
}

TEST_F(AccessibleNames, TheWindowsOfTheProgram) {
  program_.Start({});
  ASSERT_NE(ShownTaskWindow(), nullptr);
  EXPECT_EQ(NamelessIn(*ShownTaskWindow()), None);
  MapWindowWidget& map = OpenNew();
  EXPECT_EQ(NamelessIn(map), None);
  EXPECT_GE(map.findChildren<QWidget*>().size(), 10);
}

TEST_F(AccessibleNames, TheWindowsOfMessages) {
  MessagesWindow messages(boxes_.Log(), around_);
  EXPECT_EQ(NamelessIn(messages), None);
  TextViewer viewer;
  viewer.Show({.file = folder_.Write("a.map", "G\tCamp\n"),
               .line = 1,
               .message = QStringLiteral("Bad line"),
               .fileState = {}});
  EXPECT_EQ(NamelessIn(viewer), None);
}

TEST_F(AccessibleNames, TheBuiltBoxes) {
  const std::string longText(3000, '\n');
  for (const std::string& text : {std::string("has changed"), longText + "end"}) {
    BuiltBox question(QStringLiteral("Save Map?"), text, {"Save", "Cancel", "Don't Save"}, nullptr);
    EXPECT_EQ(NamelessIn(question), None);
    for (const auto& earlier : {std::vector<std::string>{}, std::vector<std::string>{"Camp"}}) {
      BuiltBox prompt({.title = "Find",
                       .message = text,
                       .text = {},
                       .size = 100,
                       .columns = 40,
                       .earlier = earlier},
                      nullptr);
      EXPECT_EQ(NamelessIn(prompt), None);
    }
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
    EXPECT_EQ(NamelessIn(*box), None);
    QTest::keyClick(box, Qt::Key_Return);
  });
  look.start();
  const MessageBatch batch(boxes_, QStringLiteral("Opening a.map"));
  for (int i = 0; i < 3; ++i) NoteError(boxes_, "Bad line");
  boxes_.EndBatch();
  EXPECT_EQ(seen, 3);
  boxes_.BeginBatch({});
}

TEST_F(AccessibleNames, TheDialogs) {
  MapWindowWidget& window = OpenNew();
  OrientationDialog orientation(window.Shown(), around_, &window);
  EXPECT_EQ(NamelessIn(orientation), None);
  SheetFields columns;
  SheetDialog sheet(window.TheMap(), columns, &window);
  EXPECT_EQ(NamelessIn(sheet), None);
  ExportFields fields;
  const LoadedModule none{nullptr, "it is not installed"};
  ExportDialog exported(window.TheMap(), fields, none, &window);
  EXPECT_EQ(NamelessIn(exported), None);
  AboutBox about(&window.TheMap(), &window);
  EXPECT_EQ(NamelessIn(about), None);
  auto* trail = new GisTrailWindow(shell_, Import(window.TheMap()), gisBoxes_, &window);
  EXPECT_EQ(NamelessIn(*trail), None);
  delete trail;
  FixDraft draft(window.TheMap(), "collar.csv", "time,lat,lon\n2004-5-3 0:30,1,2\n");
  FixForm form;
  FixImportWindow fixes(shell_, draft, form, window, &window);
  EXPECT_EQ(NamelessIn(fixes), None);
}

TEST_F(AccessibleNames, TheOfferOfCopies) {
  RecoveryOffer offer;
  offer.copy.record.fileName = "/maps/site.map";
  offer.differences = {"It has one trail more."};
  RecoveryDialog dialog({offer, offer}, nullptr);
  EXPECT_EQ(NamelessIn(dialog), None);
}

TEST_F(AccessibleNames, TheHelp) {
  HelpWindow help(QStringLiteral(HELP_FILE), nullptr);
  help.show();
  EXPECT_EQ(NamelessIn(help), None);
}

}  // namespace
}  // namespace orvane
