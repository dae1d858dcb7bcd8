// Import Fixes and its window.

#include "shell/entry/fix_import_window.h"

#include "shell/dialog_driver.h"
#include "shell/entry/preview_table.h"
#include "shell/shell_case.h"
#include "support/spreadsheet_files.h"
#include "view/fit_to_map.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <functional>

namespace orvane {
namespace {

constexpr auto Fixes =
    "time,lat,lon,id\n2004-5-3 0:30,1.3,115.5,Kiki\n2004-5-3 1:30,1.301,115.5,Kiki\n"
    "2004-5-3 2:30,1.302,115.501,Kiki\nsoon,1.3,115.5,Kiki\n2004-5-4 1:30,1.3,115.502,Kiki\n";

class FixImportTest : public ShellCase {
 protected:
  FixImportTest() : window_(OpenActive(WriteMap("site.map"))) {}

  /// Runs the command on a table, while `look` works with its window. A window that `look` leaves
  /// open is cancelled.
  /// \return true if the window came up
  bool Import(const std::string& path, const std::function<void(FixImportWindow&)>& look) {
    dialogs_->paths = {path};
    return WithDialog<FixImportWindow>([this] { ActionOf(window_, CommandImportFixes).trigger(); },
                                       look);
  }
  bool ImportText(const char* table, const std::function<void(FixImportWindow&)>& look) {
    return Import(folder_.Write("collar.csv", table), look);
  }

  template <typename Widget>
  static Widget& Named(QWidget& window, const char* name) {
    const auto all = window.findChildren<Widget*>();
    for (Widget* each : all) {
      if (each->accessibleName() == QLatin1String(name)) return *each;
    }
    ADD_FAILURE() << "nothing is named " << name;
    return *all.front();
  }
  static std::string Line(QWidget& window, const char* name) {
    return window.findChild<QLabel*>(QLatin1String(name))->text().toStdString();
  }
  static std::string Counts(QWidget& window) { return Line(window, "counts"); }
  static std::string CellOf(QWidget& window, int row, int column) {
    const QAbstractItemModel& model = *window.findChild<PreviewTable*>()->model();
    return model.index(row, column).data().toString().toStdString();
  }
  static void Type(QLineEdit& edit, const char* text) {
    edit.setFocus();
    edit.selectAll();
    if (*text == '\0') QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, QLatin1String(text));
    QTest::qWait(FixImportWindow::Patience + 50);
  }
  size_t Trails() const {
    return static_cast<size_t>(
        std::distance(window_.TheMap().trails.begin(), window_.TheMap().trails.end()));
  }

  MapWindowWidget& window_;
};

TEST_F(FixImportTest, ShowsTheRowsAndImportsThemInOneStep) {
  ASSERT_TRUE(ImportText(Fixes, [&](FixImportWindow& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import Fixes: collar.csv"));
    EXPECT_EQ(Line(dialog, "clockReason"), "UTC+08:00 is usual at the mean longitude 115.5");
    EXPECT_EQ(Counts(dialog), "5 fixes: 4 used and 1 bad time; makes 2 trails and 1 range.");
    EXPECT_EQ(CellOf(dialog, 0, 1), "used");
    EXPECT_EQ(CellOf(dialog, 3, 0), "5");
    EXPECT_EQ(CellOf(dialog, 3, 2), "\"soon\" in column time is not a usable time");
    EXPECT_EQ(CellOf(dialog, 3, 3), "soon");
    EXPECT_EQ(Trails(), 1U);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  }));
  EXPECT_EQ(dialogs_->questions[0].title, "Import Fixes...");
  EXPECT_EQ(Trails(), 3U);
  EXPECT_EQ(window_.TheMap().ranges.front().name, "Kiki");
  ASSERT_FALSE(window_.Shown().rangeViews.empty());
  EXPECT_EQ(window_.Shown().rangeViews.front().text, "Kiki");
  EXPECT_TRUE(window_.Shown().rangeViews.front().visible);
  ASSERT_EQ(Texts().size(), 1U);
  EXPECT_EQ(Texts()[0], "Read 5 fixes from " + folder_.Path("collar.csv") +
                            ": 4 taken and 1 bad time; 2 trails and 1 range added; times are "
                            "UTC+08:00, as is usual at the mean longitude 115.5");
  shell_.Commands().Run(CommandUndo, window_);
  EXPECT_EQ(Trails(), 1U);
  EXPECT_TRUE(window_.TheMap().ranges.empty());
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
}

TEST_F(FixImportTest, BringsTheRangesIntoView) {
  const float before = window_.Shown().scale;
  ASSERT_TRUE(ImportText(Fixes, [](FixImportWindow& dialog) { dialog.accept(); }));
  MapWindow fitted = window_.Shown();
  FitToMap(fitted);
  EXPECT_EQ(window_.Shown().scale, fitted.scale);
  EXPECT_NE(window_.Shown().scale, before);
}

TEST_F(FixImportTest, NothingEntersTheMapBeforeOk) {
  ASSERT_TRUE(ImportText(Fixes, [](FixImportWindow& dialog) {
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  }));
  EXPECT_EQ(Trails(), 1U);
  EXPECT_EQ(window_.TheMap().flags & MapDirty, 0U);
  EXPECT_TRUE(Texts().empty());
}

TEST_F(FixImportTest, FieldsChangeThePlanAsTheyAreTyped) {
  ASSERT_TRUE(ImportText(Fixes, [](FixImportWindow& dialog) {
    Type(Named<QLineEdit>(dialog, "Take every n-th fix"), "2");
    EXPECT_EQ(Counts(dialog),
              "5 fixes: 2 used, 1 bad time and 2 thinned; makes 1 trail and 1 range.");
    Type(*Named<QComboBox>(dialog, "Offset from UTC").lineEdit(), "America/St_Johns");
    EXPECT_EQ(Line(dialog, "clockReason"), "");
    EXPECT_EQ(CellOf(dialog, 0, 2), "22:00 of Kiki on 2004-5-2");
    QTest::keyClick(&Named<QCheckBox>(dialog, "Make a range for each animal"), Qt::Key_Space);
    EXPECT_EQ(Counts(dialog),
              "5 fixes: 2 used, 1 bad time and 2 thinned; makes 2 trails and no ranges.");
    Type(Named<QLineEdit>(dialog, "Fastest km/h to believe"), "0.1");
    EXPECT_EQ(CellOf(dialog, 1, 1), "too fast");
    Type(Named<QLineEdit>(dialog, "Type of the trails"), "Gibbon");
    QTest::mouseClick(&Named<QPushButton>(dialog, "OK"), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
  }));
  EXPECT_EQ(std::next(window_.TheMap().trails.begin())->type, "Gibbon");
  EXPECT_TRUE(window_.TheMap().ranges.empty());
  // The fields are kept from import to import.
  ASSERT_TRUE(ImportText(Fixes, [](FixImportWindow& dialog) {
    EXPECT_EQ(Named<QLineEdit>(dialog, "Take every n-th fix").text(), QStringLiteral("2"));
    EXPECT_EQ(Named<QComboBox>(dialog, "Offset from UTC").currentText(),
              QStringLiteral("America/St_Johns"));
    EXPECT_FALSE(Named<QCheckBox>(dialog, "Make a range for each animal").isChecked());
  }));
}

TEST_F(FixImportTest, AFieldThatCannotBeReadKeepsTheWindowOpen) {
  ASSERT_TRUE(ImportText(Fixes, [&](FixImportWindow& dialog) {
    QLineEdit& every = Named<QLineEdit>(dialog, "Take every n-th fix");
    Type(every, "none");
    EXPECT_EQ(Counts(dialog), "Every n-th fix needs a whole number from 1 on.");
    Named<QPushButton>(dialog, "OK").setFocus();
    const int beeps = around_.beeps;
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(around_.beeps, beeps + 1);
    EXPECT_EQ(dialog.focusWidget(), &every);
    EXPECT_EQ(every.selectedText(), QStringLiteral("none"));
  }));
  EXPECT_EQ(Trails(), 1U);
}

TEST_F(FixImportTest, ColumnsAreAssignedInTheHeading) {
  ASSERT_TRUE(
      ImportText("Zeit;Breite;Laenge\n2004-5-3 0:30;1.3;115.5\n", [](FixImportWindow& dialog) {
        EXPECT_EQ(Counts(dialog),
                  "Choose the columns of the time and of the position in the heading.");
        EXPECT_FALSE(Named<QPushButton>(dialog, "OK").isEnabled());
        QComboBox& time = Named<QComboBox>(dialog, "Meaning of column Zeit");
        EXPECT_EQ(time.currentText(), QStringLiteral("(not used)"));
        time.setFocus();
        QTest::keyClick(&time, Qt::Key_Down);
        EXPECT_EQ(time.currentText(), QStringLiteral("Time"));
        // By Tab to the next column, by a letter to the choice.
        QTest::keyClick(&time, Qt::Key_Tab);
        EXPECT_EQ(dialog.focusWidget(), &Named<QComboBox>(dialog, "Meaning of column Breite"));
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("la"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("lo"));
        EXPECT_EQ(Counts(dialog), "1 fix: 1 used; makes 1 trail and 1 range.");
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
      }));
  EXPECT_EQ(Trails(), 2U);
}

TEST_F(FixImportTest, TheHeadingScrollsToTheColumnWithTheFocus) {
  std::string table = "time,lat,lon";
  for (int i = 0; i < 30; ++i) table += ",another" + std::to_string(i);
  table += "\n2004-5-3 0:30,1,2\n";
  ASSERT_TRUE(ImportText(table.c_str(), [](FixImportWindow& dialog) {
    QComboBox& last = Named<QComboBox>(dialog, "Meaning of column another29");
    const auto* preview = dialog.findChild<PreviewTable*>();
    const auto isSeen = [&] {
      return preview->viewport()->rect().contains(last.geometry().center().x(), 1);
    };
    EXPECT_FALSE(isSeen());
    last.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(isSeen());
  }));
}

TEST_F(FixImportTest, TheWarningOnDatesNamesTheRow) {
  ASSERT_TRUE(ImportText("time,lat,lon\n3/5/2004 0:30,1,115\n13/5/2004 0:30,1,115\n",
                         [](FixImportWindow& dialog) {
                           EXPECT_EQ(Line(dialog, "dateWarning"),
                                     "The date in row 2 can be read in two ways: row 3 shows that "
                                     "the day is first");
                         }));
}

TEST_F(FixImportTest, LeftOutRowsAreSaved) {
  const std::string saved = folder_.Path("left.txt");
  ASSERT_TRUE(ImportText(Fixes, [&](FixImportWindow& dialog) {
    dialogs_->paths = {saved};
    QTest::mouseClick(&Named<QPushButton>(dialog, "Save Left-out Rows..."), Qt::LeftButton);
    EXPECT_EQ(dialogs_->questions.back().title, "Save Left-out Rows...");
    EXPECT_EQ(dialogs_->questions.back().file.name, "collar left out.txt");
  }));
  EXPECT_EQ(folder_.Read("left.txt"),
            "row\tstate\treason\ttime\tlat\tlon\tid\n5\tbad time\t\"soon\" in column time is not a "
            "usable time\tsoon\t1.3\t115.5\tKiki\n");
  ASSERT_TRUE(ImportText("time,lat,lon\n2004-5-3 0:30,1,2\n", [](FixImportWindow& dialog) {
    EXPECT_FALSE(Named<QPushButton>(dialog, "Save Left-out Rows...").isEnabled());
  }));
}

TEST_F(FixImportTest, ReadsTheSheetThatIsChosen) {
  if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
  const std::string row = R"(<row><c t="str"><v>time</v></c><c t="str"><v>lat</v></c>)"
                          R"(<c t="str"><v>lon</v></c></row><row><c s="3"><v>38049.375</v></c>)"
                          "<c><v>1</v></c><c><v>2</v></c></row>";
  const std::string path = folder_.Write("a.xlsx", XlsxOf({{"Plan", "<row/>"}, {"May", row}}));
  messages_.texts = {"May"};
  ASSERT_TRUE(Import(path, [](FixImportWindow& dialog) {
    EXPECT_EQ(Counts(dialog), "1 fix: 1 used; makes 1 trail and 1 range.");
  }));
  EXPECT_FALSE(Import(path, [](FixImportWindow&) {}));  // no sheet is chosen
}

}  // namespace
}  // namespace orvane
