// "Preview..." of the imports of follow sheets and GPS files.

#include "shell/entry/preview_window.h"

#include "mapfile/writer.h"
#include "shell/entry/gis_trail_window.h"
#include "shell/entry/preview_table.h"
#include "shell/map/reload_bar.h"
#include "shell/messages/built_box.h"
#include "shell/messages/text_viewer.h"
#include "shell/progress/progress_box.h"
#include "shell/sheet_dialog_driver.h"
#include "shell/shell_case.h"
#include "support/working_folder.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <functional>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr auto Site =
    "T\tMain\tTrail\nG\tMain0\tN1 0'\tE10 0'\t100\nG\tMain100=Camp\tN1 0'\tE10 0.1'\n";

constexpr auto Sheet =
    "DATE\tTIME\tPLACE\tGROUP\n"
    "2003-5-1\t800\tMain0\tOru\n"
    "2003-5-1\t830\tNowhere\tOru\n"
    "2003-5-1\t900\tCamp\tOru\n"
    "2003-5-1\t910\toos\tOru\n";

class PreviewWindowTest : public ShellCase {
 protected:
  PreviewWindowTest() : window_(OpenActive(folder_.Write("site.map", Site))) {}

  /// Presses a button that opens a preview, while `look` works with it. A preview that `look` leaves
  /// open is cancelled.
  static void Open(QWidget& over, const std::function<void(PreviewWindow&)>& look) {
    EXPECT_TRUE(WithDialog<PreviewWindow>(
        [&over] { QTest::mouseClick(&Button(over, "Preview..."), Qt::LeftButton); }, look));
  }
  static QPushButton& Button(QWidget& window, const char* name) {
    const auto buttons = window.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
      if (button->accessibleName() == QLatin1String(name)) return *button;
    }
    ADD_FAILURE() << "no button " << name;
    return *buttons.front();
  }
  static std::string Line(const PreviewWindow& preview, const char* name) {
    return preview.findChild<QLabel*>(QLatin1String(name))->text().toStdString();
  }
  /// The texts of a row of the table.
  static std::vector<std::string> Row(const PreviewWindow& preview, int row) {
    const QAbstractItemModel& model = *preview.findChild<PreviewTable*>()->model();
    std::vector<std::string> texts;
    for (int column = 0; column < model.columnCount(); ++column) {
      texts.push_back(model.index(row, column).data().toString().toStdString());
    }
    return texts;
  }
  std::string Saved() const {
    return MapFileText(window_.TheMap(), window_.TheMap().fileName, true);
  }

  MapWindowWidget& window_;
  WorkingFolder working_{folder_.Path()};  ///< of the lists that an import writes
};

TEST_F(PreviewWindowTest, OfASheetFillsInTheFieldsByItsCaptions) {
  const std::string before = Saved();
  dialogs_->paths = {folder_.Write("follows.txt", Sheet)};
  ASSERT_TRUE(WithDialog<SheetDialog>(
      [&] { Press(window_, CommandImportSpreadsheet); },
      [&](SheetDialog& dialog) {
        Open(dialog, [&](PreviewWindow& preview) {
          EXPECT_EQ(preview.windowTitle(), QStringLiteral("Preview: follows.txt"));
          EXPECT_EQ(Row(preview, 0),
                    (std::vector<std::string>{"2", "used", "", "2003-5-1", "800", "Main0", "Oru"}));
          EXPECT_EQ(Row(preview, 1)[1], "unknown place");
          EXPECT_EQ(Line(preview, "counts"), "4 rows: 3 used and 1 unknown place");
          EXPECT_EQ(Saved(), before);
          QTest::keyClick(&preview, Qt::Key_Escape);
          EXPECT_FALSE(preview.isVisible());
        });
        EXPECT_EQ(dialog.Edit(SheetTime).text(), QString());
        Open(dialog, [](PreviewWindow& preview) {
          QTest::keyClick(&Button(preview, "OK"), Qt::Key_Return);
          EXPECT_FALSE(preview.isVisible());
        });
        EXPECT_EQ(dialog.Edit(SheetSkip).text(), QStringLiteral("1"));
        EXPECT_EQ(dialog.Edit(SheetTime).text(), QStringLiteral("B"));
        EXPECT_EQ(dialog.Edit(SheetLocation).text(), QStringLiteral("C"));
        EXPECT_EQ(Saved(), before);
        EXPECT_FALSE(IsEnabled(window_, CommandUndo));
        QTest::keyClick(&dialog.Edit(SheetTime), Qt::Key_Return);
      }));
  EXPECT_EQ(window_.TheMap().trails.front().type, "Oru");
  EXPECT_EQ(messages_.Questions().size(), 1U);  // of the import itself
}

// A cell such as "<h1>BIG</h1>" was shown as markup.
TEST(PreviewModelTest, ItsTipsArePlainText) {
  PreviewModel model(nullptr);
  Preview preview;
  preview.captions = {"<b>Time</b>"};
  preview.rows.push_back(
      {.row = 2, .state = "used", .reason = "<i>why</i>", .cells = {"<h1>BIG</h1>"}});
  model.Set(preview);
  const auto tip = [&model](int column) {
    return model.index(0, column).data(Qt::ToolTipRole).toString();
  };
  EXPECT_EQ(tip(0), QString());
  EXPECT_TRUE(tip(2).contains(QStringLiteral("&lt;i&gt;why&lt;/i&gt;")));
  EXPECT_TRUE(tip(3).contains(QStringLiteral("&lt;h1&gt;BIG&lt;/h1&gt;")));
  EXPECT_TRUE(model.headerData(3, Qt::Horizontal, Qt::ToolTipRole)
                  .toString()
                  .contains(QStringLiteral("&lt;b&gt;Time&lt;/b&gt;")));
  EXPECT_EQ(model.index(0, 3).data().toString(), QStringLiteral("<h1>BIG</h1>"));
}

TEST(ReloadBarTest, ItsTipIsPlainText) {
  ReloadBar bar(nullptr);
  bar.Show(QStringLiteral("<b>site</b>.map has changed"));
  EXPECT_TRUE(bar.findChild<QLabel*>(QStringLiteral("reloadText"))
                  ->toolTip()
                  .contains(QStringLiteral("&lt;b&gt;site&lt;/b&gt;.map")));
}

// The toolkit drops a "[*]" from the title of a window.
TEST_F(PreviewWindowTest, TitlesKeepAFileNameThatHasTheMarkOfAChange) {
  dialogs_->paths = {folder_.Write("gps[*].txt",
                                   "name,time,x,y,lat,lon,alt\n"
                                   "May1,3/5/2003 06:00,,,1.000,10.000,100\n"
                                   "May1,3/5/2003 06:10,,,1.001,10.000,120\n")};
  ActionOf(window_, CommandImportGis).trigger();
  auto* tracks = window_.findChild<GisTrailWindow*>();
  ASSERT_NE(tracks, nullptr);
  Open(*tracks, [&](PreviewWindow& preview) {
    EXPECT_EQ(preview.windowTitle(), QStringLiteral("Preview: gps[*][*].txt"));
  });
  TextViewer viewer;
  viewer.Show({.file = folder_.Path("gps[*].txt"), .line = 1, .message = {}, .fileState = {}});
  EXPECT_EQ(viewer.windowTitle(), QStringLiteral("gps[*][*].txt (text)"));
  const BuiltBox box(QStringLiteral("Opening a[*].map"), "x", {"OK"}, nullptr);
  EXPECT_EQ(box.windowTitle(), QStringLiteral("Opening a[*][*].map"));
  const ProgressBox progress(QStringLiteral("Opening a[*].map"), nullptr);
  EXPECT_EQ(progress.windowTitle(), QStringLiteral("Opening a[*][*].map"));
}

TEST_F(PreviewWindowTest, OfASheetFollowsTheMenusInTheHeading) {
  dialogs_->paths = {folder_.Write("follows.txt", Sheet)};
  ASSERT_TRUE(WithDialog<SheetDialog>(
      [&] { Press(window_, CommandImportSpreadsheet); },
      [&](SheetDialog& dialog) {
        TypeInField(dialog, SheetSpeciesAlways, "Tamu");
        TypeInField(dialog, SheetFocalAlways, "Pim");
        Open(dialog, [&](PreviewWindow& preview) {
          const ChoiceHeader& heading = preview.findChild<PreviewTable*>()->Heading();
          QComboBox& place = *heading.BoxAt(PreviewModel::OwnColumns + 2);
          EXPECT_EQ(place.currentText(), QStringLiteral("Trail"));
          place.setFocus();
          QTest::keyClick(&place, Qt::Key_Home);
          EXPECT_EQ(Line(preview, "counts"),
                    "You must specify a column in which to find the location (trail mark)");
          QTest::keyClick(&place, Qt::Key_Down);
          QTest::keyClick(&place, Qt::Key_Down);
          EXPECT_EQ(Line(preview, "counts"), "4 rows: 3 used and 1 unknown place");
          QComboBox& group = *heading.BoxAt(PreviewModel::OwnColumns + 3);
          EXPECT_EQ(group.currentIndex(), 0);
          group.setFocus();
          QTest::keyClicks(&group, QStringLiteral("Spec"));
          Button(preview, "OK").click();
        });
        EXPECT_EQ(dialog.Edit(SheetSpecies).text(), QStringLiteral("D"));
        EXPECT_EQ(dialog.Edit(SheetSpeciesAlways).text(), QString());
        EXPECT_EQ(dialog.Edit(SheetLocation).text(), QStringLiteral("C"));
      }));
}

TEST_F(PreviewWindowTest, OfAGpsFileSavesTheRowsThatAreLeftOut) {
  dialogs_->paths = {folder_.Write("gps.txt",
                                   "name,time,x,y,lat,lon,alt\n"
                                   "May1,3/5/2003 06:00,,,1.000,10.000,100\n"
                                   "May1,3/5/2003 06:05,,,north,10.000,110\n"
                                   "May1,3/5/2003 06:10,,,1.001,10.000,120\n")};
  ActionOf(window_, CommandImportGis).trigger();
  auto* tracks = window_.findChild<GisTrailWindow*>();
  ASSERT_NE(tracks, nullptr);
  messages_.Clear();
  const std::string before = Saved();
  Open(*tracks, [&](PreviewWindow& preview) {
    EXPECT_EQ(Line(preview, "counts"), "3 rows: 2 used and 1 unknown place");
    EXPECT_EQ(Line(preview, "dateWarning"),
              "The date in row 2 can be read in two ways. It is read with the month first; no row "
              "shows whether that is right.");
    EXPECT_EQ(Row(preview, 1),
              (std::vector<std::string>{"3", "unknown place", "no position", "May1",
                                        "3/5/2003 06:05", "north", "10.000", "110"}));
    dialogs_->paths = {folder_.Path("left.txt")};
    QTest::mouseClick(&Button(preview, "Save Left-out Rows..."), Qt::LeftButton);
    EXPECT_EQ(dialogs_->questions.back().file.name, "gps left out.txt");
    QTest::keyClick(&Button(preview, "Close"), Qt::Key_Return);
    EXPECT_FALSE(preview.isVisible());
  });
  EXPECT_EQ(folder_.Read("left.txt"),
            "row\tstate\treason\tname\ttime\tlatitude\tlongitude\taltitude\n"
            "3\tunknown place\tno position\tMay1\t3/5/2003 06:05\tnorth\t10.000\t110\n");
  EXPECT_EQ(Saved(), before);
  // A field that can't be read gets the focus.
  auto* size = tracks->findChild<QLineEdit*>(QStringLiteral("Size"));
  size->setText(QStringLiteral("many"));
  Button(*tracks, "Preview...").click();
  EXPECT_EQ(beeps_, 1);
  EXPECT_EQ(tracks->focusWidget(), size);
}

}  // namespace
}  // namespace orvane
