// Import Spreadsheet and its dialog.

#include "shell/entry/sheet_dialog.h"

#include "mapfile/writer.h"
#include "panes/trail_tree.h"
#include "shell/help/help_topics.h"
#include "shell/sheet_dialog_driver.h"
#include "shell/shell_case.h"
#include "support/spreadsheet_files.h"
#include "support/working_folder.h"
#include "view/fit_to_map.h"
#include "view/view_transform.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr auto Site =
    "T\tMain\tTrail\nG\tMain0\tN1 0'\tE10 0'\t100\nG\tMain100\tN1 0'\tE10 0.1'\n"
    "G\tMain200=Camp\tN1 0'\tE10 0.2'\t120\n";

constexpr auto Sheet =
    "DATE\tTIME\tPLACE\n"
    "2003-5-1\t800\tMain0\n"
    "2003-5-1\t830\tMain100\n"
    "2003-5-1\t900\tCamp\n"
    "2003-5-1\t910\toos\n";

class SheetImportInWindow : public ShellCase {
 protected:
  SheetImportInWindow() : window_(OpenActive(folder_.Write("site.map", Site))) {}

  /// Runs the command on a file, while `look` works with the dialog.
  /// \return true if the dialog came up
  bool Import(MapWindowWidget& window, const std::string& path,
              const std::function<void(SheetDialog&)>& look) {
    dialogs_->paths = {path};
    return WithDialog<SheetDialog>([&] { Press(window, CommandImportSpreadsheet); }, look);
  }
  bool Import(const char* sheet, const std::function<void(SheetDialog&)>& look) {
    return Import(window_, folder_.Write("follows.txt", sheet), look);
  }

  /// Fills in the columns of `Sheet`.
  static void TypeColumns(SheetDialog& dialog) {
    TypeInField(dialog, SheetSkip, "1");
    TypeInField(dialog, SheetTime, "B");
    TypeInField(dialog, SheetLocation, "C");
    TypeInField(dialog, SheetSpeciesAlways, "Oru");
    TypeInField(dialog, SheetDate, "A");
  }
  static std::string TextOf(SheetDialog& dialog, SheetField field) {
    return dialog.Edit(field).text().toStdString();
  }
  static void PressReturn(SheetDialog& dialog) {
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  }
  static std::string Saved(const MapWindowWidget& window) {
    return MapFileText(window.TheMap(), window.TheMap().fileName, true);
  }
  static bool IsDirty(const MapWindowWidget& window) {
    return (window.TheMap().flags & MapDirty) != 0;
  }
  size_t Trails() const {
    return static_cast<size_t>(
        std::distance(window_.TheMap().trails.begin(), window_.TheMap().trails.end()));
  }

  MapWindowWidget& window_;
  WorkingFolder working_{folder_.Path()};  ///< of the lists that an import writes
};

TEST_F(SheetImportInWindow, TakesTheSheetOfTheExampleSite) {
  for (const char* name : {"rains.map", "season.map", "trails.map", "rains.txt"}) {
    std::filesystem::copy(std::string(EXAMPLE_SITE) + "/" + name, folder_.Path(name));
  }
  MapWindowWidget& rains = OpenActive(folder_.Path("rains.map"));
  messages_.Clear();
  const std::string before = Saved(rains);
  ASSERT_TRUE(Import(rains, folder_.Path("rains.txt"), [](SheetDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("SpreadSheet Data"));
    // As a user types them: from the first field on, with Tab to the next.
    const std::array<const char*, SheetFieldCount> texts{
        "2", "D", "E", "B", "", "A", "", "C", "", "F", "", "fruit", "", "leaf", "", "rest"};
    for (size_t field = 0; field < texts.size(); ++field) {
      EXPECT_EQ(dialog.focusWidget(), &dialog.Edit(static_cast<SheetField>(field)));
      QTest::keyClicks(dialog.focusWidget(), QLatin1String(texts[field]));
      QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(dialog.focusWidget()->accessibleName(), QStringLiteral("OK"));
    PressReturn(dialog);
    EXPECT_FALSE(dialog.isVisible());
  }));
  EXPECT_EQ(dialogs_->questions[0].title, "Import Spreadsheet Data...");
  EXPECT_EQ(dialogs_->questions[0].file.type, "txt");
  ASSERT_EQ(messages_.Questions().size(), 1U);
  EXPECT_EQ(messages_.Questions()[0].text,
            "Bad location specification same as yesterday, dry, Do you want to continue?");
  EXPECT_EQ(Texts(), std::vector<std::string>{"Imported 12 follows with 151 stops from " +
                                              folder_.Path("rains.txt") +
                                              "; 4 notes on the weather in badweather.txt"});
  EXPECT_EQ(messages_.Entries()[0].severity, Severity::Note);
  EXPECT_EQ(folder_.Read("badweather.txt").substr(0, 37), "4-9-2003 600: same as yesterday, dry\n");
  const Trail& newest = rains.TheMap().trails.front();
  EXPECT_EQ(newest.type, "Oru group");
  EXPECT_NE(FindTrailRow(rains.Shown(), newest), nullptr);
  EXPECT_TRUE(IsEnabled(rains, CommandSave));
  EXPECT_NE(Saved(rains), before);
  // One step takes all of it back.
  EXPECT_EQ(*shell_.History().UndoName(rains.TheMap()), "Import of rains.txt");
  Press(rains, CommandUndo);
  EXPECT_EQ(Saved(rains), before);
  EXPECT_FALSE(IsDirty(rains));
  EXPECT_FALSE(IsEnabled(rains, CommandUndo));
}

TEST_F(SheetImportInWindow, AColumnAndItsTextForAllRowsExcludeEachOther) {
  constexpr SheetField Pairs[][2] = {{SheetSpecies, SheetSpeciesAlways},
                                     {SheetDate, SheetDateAlways},
                                     {SheetFocal, SheetFocalAlways}};
  ASSERT_TRUE(Import(Sheet, [&](SheetDialog& dialog) {
    for (const auto& [column, always] : Pairs) {
      TypeInField(dialog, column, "A");
      TypeInField(dialog, always, "Oru");
      EXPECT_EQ(TextOf(dialog, column), "");
      dialog.Edit(column).setFocus();  // only the focus: nothing changes
      EXPECT_EQ(TextOf(dialog, always), "Oru");
      QTest::keyClicks(&dialog.Edit(column), "B");
      EXPECT_EQ(TextOf(dialog, always), "");
      EXPECT_EQ(TextOf(dialog, column), "B");
    }
    TypeInField(dialog, SheetSpeciesAlways, "Oru");
    TypeInField(dialog, SheetActivity, "F");
    EXPECT_EQ(TextOf(dialog, SheetSpeciesAlways), "");
    EXPECT_EQ(TextOf(dialog, SheetDate), "B");
  }));
}

TEST_F(SheetImportInWindow, FieldsAreRememberedOnceTheyAreAccepted) {
  ASSERT_TRUE(Import(Sheet, [](SheetDialog& dialog) {
    TypeColumns(dialog);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  }));
  ASSERT_TRUE(Import(Sheet, [](SheetDialog& dialog) {
    for (size_t field = 0; field < SheetFieldCount; ++field) {
      EXPECT_EQ(TextOf(dialog, static_cast<SheetField>(field)), "") << field;
    }
    TypeColumns(dialog);
    TypeInField(dialog, SheetSpeciesAlways, "Red colobus");
    PressReturn(dialog);
  }));
  EXPECT_EQ(window_.TheMap().trails.front().type, "Red colobus");
  ASSERT_TRUE(Import(Sheet, [](SheetDialog& dialog) {
    EXPECT_EQ(TextOf(dialog, SheetSkip), "1");
    EXPECT_EQ(TextOf(dialog, SheetTime), "B");
    EXPECT_EQ(TextOf(dialog, SheetDate), "A");
    EXPECT_EQ(TextOf(dialog, SheetSpeciesAlways), "Red colob");
    EXPECT_EQ(dialog.focusWidget(), &dialog.Edit(SheetSkip));
  }));
}

TEST_F(SheetImportInWindow, ARefusalSaysWhyAndKeepsTheDialog) {
  const std::string before = Saved(window_);
  ASSERT_TRUE(Import(Sheet, [this](SheetDialog& dialog) {
    TypeColumns(dialog);
    TypeInField(dialog, SheetDate, "A/B");
    TypeInField(dialog, SheetTime, "");
    PressReturn(dialog);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(
        Texts().back().starts_with("You must specify either a column number in which to "
                                   "find a date"));
    EXPECT_EQ(dialog.focusWidget(), &dialog.Edit(SheetDate));
    EXPECT_EQ(dialog.Edit(SheetDate).selectedText(), QStringLiteral("A/B"));
    TypeInField(dialog, SheetDateAlways, "31 May");
    PressReturn(dialog);
    EXPECT_EQ(Texts().back(), "Bad date");
    EXPECT_EQ(dialog.focusWidget(), &dialog.Edit(SheetDateAlways));
    TypeInField(dialog, SheetDateAlways, "2003-5-31");
    TypeInField(dialog, SheetFocalAlways, "Pim");
    PressReturn(dialog);
    EXPECT_EQ(Texts().back(), "You must specify a column in which to find the time");
    EXPECT_EQ(dialog.focusWidget(), &dialog.Edit(SheetTime));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(messages_.Entries().back().severity, Severity::Error);
  }));
  EXPECT_EQ(Saved(window_), before);
  EXPECT_FALSE(IsDirty(window_));
}

TEST_F(SheetImportInWindow, CancelImportsNothing) {
  const std::string before = Saved(window_);
  ASSERT_TRUE(Import(Sheet, [](SheetDialog& dialog) {
    TypeColumns(dialog);
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
      if (button->accessibleName() == QStringLiteral("Cancel")) button->click();
    }
    EXPECT_FALSE(dialog.isVisible());
  }));
  EXPECT_EQ(Saved(window_), before);
  EXPECT_FALSE(IsDirty(window_));
  EXPECT_FALSE(IsEnabled(window_, CommandUndo));
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("unknownlocs.txt")));
  EXPECT_TRUE(Texts().empty());
}

TEST_F(SheetImportInWindow, AFileThatDoesNotOpenHasNoDialog) {
  EXPECT_FALSE(Import(window_, folder_.Path("missing.txt"), [](SheetDialog&) {}));
  EXPECT_EQ(Texts(), std::vector<std::string>{"Can not open " + folder_.Path("missing.txt")});
  EXPECT_FALSE(Import(window_, "", [](SheetDialog&) {}));  // the file dialog was cancelled
  EXPECT_EQ(Texts().size(), 1U);
}

TEST_F(SheetImportInWindow, OnlyMeasuresThatTheMapNamesAreShown) {
  const auto labels = [](const SheetDialog& dialog) {
    std::string shown;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
      if (label->isVisible()) shown += QString(label->text()).toStdString() + "|";
    }
    return shown;
  };
  const std::string always =
      "Import data saved as 'tab seperated data'|&Skip the first|lines (headers and such)|"
      "&Time in column:|T&rail in column:|S&pecies in column:|or al&ways:|&Date in column:|"
      "or &always:|&Focal animal in column:|or a&lways:|Act&ivity in column:|";
  ASSERT_TRUE(Import(Sheet, [&](SheetDialog& dialog) {
    EXPECT_EQ(labels(dialog), always);
    EXPECT_FALSE(dialog.Edit(SheetSm1).isVisible());
    EXPECT_FALSE(dialog.Edit(SheetSm3Code).isVisible());
  }));
  MapWindowWidget& measured = OpenActive(folder_.Write("z.map", "Z\tfruit & nuts,,rest\n"));
  const std::string sheet = folder_.Write("follows.txt", Sheet);
  ASSERT_TRUE(Import(measured, sheet, [&](SheetDialog& dialog) {
    EXPECT_EQ(labels(dialog), always + "fruit && nuts Col:|&Code:|rest Col:|C&ode:|");
    EXPECT_TRUE(dialog.Edit(SheetSm1).isVisible());
    EXPECT_FALSE(dialog.Edit(SheetSm2).isVisible());
    EXPECT_FALSE(dialog.Edit(SheetSm2Code).isVisible());
    EXPECT_EQ(dialog.Edit(SheetSm1).accessibleName(), QStringLiteral("fruit & nuts Col"));
  }));
  MapWindowWidget& longName =
      OpenActive(folder_.Write("l.map", "Z\t" + std::string(300, 'm') + "\n"));
  ASSERT_TRUE(Import(longName, sheet, [](SheetDialog& dialog) { EXPECT_LT(dialog.width(), 800); }));
}

TEST_F(SheetImportInWindow, AltAndALetterLeadToAField) {
  MapWindowWidget& measured = OpenActive(folder_.Write("z.map", "Z\tfruit,leaf,rest\n"));
  ASSERT_TRUE(Import(measured, folder_.Write("follows.txt", Sheet), [](SheetDialog& dialog) {
    constexpr std::pair<Qt::Key, SheetField> Keys[] = {
        {Qt::Key_T, SheetTime},          {Qt::Key_S, SheetSkip},
        {Qt::Key_R, SheetLocation},      {Qt::Key_P, SheetSpecies},
        {Qt::Key_W, SheetSpeciesAlways}, {Qt::Key_D, SheetDate},
        {Qt::Key_A, SheetDateAlways},    {Qt::Key_F, SheetFocal},
        {Qt::Key_L, SheetFocalAlways},   {Qt::Key_I, SheetActivity},
        {Qt::Key_C, SheetSm1Code},       {Qt::Key_E, SheetSm2Code},
        {Qt::Key_O, SheetSm3Code}};
    for (const auto& [key, field] : Keys) {
      QTest::keyClick(&dialog, key, Qt::AltModifier);
      EXPECT_EQ(dialog.focusWidget(), &dialog.Edit(field)) << field;
    }
    EXPECT_EQ(HelpPageAt(dialog.Edit(SheetTime)), "field-sheet.html#the-fields");
    QTest::keyClick(&dialog, Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&dialog] { return !dialog.isVisible(); }));
  }));
}

TEST_F(SheetImportInWindow, AnAbandonedImportKeepsWhatWasReadAndCanBeTakenBack) {
  const std::string before = Saved(window_);
  messages_.answers = {2};
  ASSERT_TRUE(Import("2003-5-1\t800\tMain0\n2003-5-1\t830\tMain100\n2003-5-1\t2575\tCamp\n",
                     [](SheetDialog& dialog) {
                       TypeColumns(dialog);
                       TypeInField(dialog, SheetSkip, "");
                       PressReturn(dialog);
                     }));
  EXPECT_EQ(messages_.Questions().back().title, "Bad Time");
  EXPECT_EQ(Texts(), std::vector<std::string>{"Imported 1 follow with 1 stop from " +
                                              folder_.Path("follows.txt") + "; gave up at line 3"});
  ASSERT_EQ(Trails(), 2U);
  EXPECT_NE(FindTrailRow(window_.Shown(), window_.TheMap().trails.front()), nullptr);
  EXPECT_TRUE(IsDirty(window_));
  Press(window_, CommandUndo);
  EXPECT_EQ(Saved(window_), before);
  EXPECT_EQ(Trails(), 1U);
}

TEST_F(SheetImportInWindow, UnknownPlacesOfAnAbandonedImportGoIntoTheNextList) {
  const auto import = [this](const char* sheet) {
    ASSERT_TRUE(Import(sheet, [](SheetDialog& dialog) {
      TypeColumns(dialog);
      TypeInField(dialog, SheetSkip, "");
      PressReturn(dialog);
    }));
  };
  import("2003-5-1\t800\tCreek\nnever\t830\tMain100\n");
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("unknownlocs.txt")));
  EXPECT_EQ(Texts().front(), "Bad date never");
  import("2003-5-1\t800\tBrook\n2003-5-1\t830\tCamp\n");
  EXPECT_EQ(folder_.Read("unknownlocs.txt"), "Brook\nCreek\n");
}

TEST_F(SheetImportInWindow, ASheetWithoutFollowsSaysWhatItLookedForAndMarksNothing) {
  ASSERT_TRUE(Import("DATE,TIME,PLACE\n", [](SheetDialog& dialog) {
    TypeColumns(dialog);
    PressReturn(dialog);
  }));
  EXPECT_EQ(Texts(), std::vector<std::string>{
                         "No follows in " + folder_.Path("follows.txt") +
                         ": looked for a date in column A, a time in column B and a place in "
                         "column C, with tabs between columns, but the file has commas and no "
                         "tabs"});
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("unknownlocs.txt")));
  EXPECT_EQ(folder_.Read("unknownlocs.txt"), "");
  EXPECT_FALSE(IsDirty(window_));
  EXPECT_FALSE(IsEnabled(window_, CommandSave));
  EXPECT_FALSE(IsEnabled(window_, CommandUndo));
}

TEST_F(SheetImportInWindow, AListThatCannotBeWrittenIsReported) {
  std::filesystem::create_directory(folder_.Path("unknownlocs.txt"));
  ASSERT_TRUE(Import(Sheet, [](SheetDialog& dialog) {
    TypeColumns(dialog);
    PressReturn(dialog);
  }));
  ASSERT_EQ(Texts().size(), 2U);
  EXPECT_EQ(Texts()[0], "Can't open unknownlocs.txt for writing");
  EXPECT_TRUE(Texts()[1].starts_with("Imported 1 follow with 3 stops from "));
  EXPECT_EQ(Trails(), 2U);
}

TEST_F(SheetImportInWindow, IntoAnEmptyMapPutsItInView) {
  MapWindowWidget& empty = OpenActive(folder_.Write("empty.map", ""));
  const std::string sheet = folder_.Write("follows.txt",
                                          "2003-5-1\t800\tN1 E10\n2003-5-1\t830\tN1 E10.01\n"
                                          "2003-5-1\t900\tN1.01 E10.01\n");
  const auto take = [](SheetDialog& dialog) {
    TypeColumns(dialog);
    TypeInField(dialog, SheetSkip, "");
    PressReturn(dialog);
  };
  ASSERT_TRUE(Import(empty, sheet, take));
  ASSERT_EQ(empty.TheMap().trails.front().points.size(), 3U);
  MapWindow fitted = empty.Shown();
  FitToMap(fitted);
  EXPECT_EQ(empty.Shown().scale, fitted.scale);
  const auto middleOf = [](const MapWindow& view) {
    return ScreenToMap(view, {view.centerColumn, view.centerRow});
  };
  EXPECT_EQ(middleOf(empty.Shown()).lat, middleOf(fitted).lat);
  EXPECT_NEAR(middleOf(fitted).lat, 1.005, 1e-3);
  // A map that has places keeps its view.
  const float scale = window_.Shown().scale;
  ASSERT_TRUE(Import(window_, sheet, take));
  EXPECT_EQ(window_.Shown().scale, scale);
}

TEST_F(SheetImportInWindow, ANameInLatin1OfTheMapIsShownRight) {
  MapWindowWidget& measured = OpenActive(folder_.Write("z.map",
                                                       "Z\tp\xEA"
                                                       "che\n"));
  ASSERT_TRUE(Import(measured, folder_.Write("follows.txt", Sheet), [](SheetDialog& dialog) {
    EXPECT_EQ(dialog.Edit(SheetSm1).accessibleName(), QString::fromUtf8("pêche Col"));
  }));
}

TEST_F(SheetImportInWindow, AsksWhichSheetOfASpreadsheetToRead) {
  if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
  const std::string row =
      "<row><c s=\"1\"><v>37742</v></c><c s=\"2\"><v>0.375</v></c><c "
      "t=\"str\"><v>Camp</v></c></row>";
  const std::string path =
      folder_.Write("follows.xlsx", XlsxOf({{"Plan", "<row/>"}, {"May", "<row/>" + row}}));
  EXPECT_FALSE(Import(window_, path, [](SheetDialog&) {}));  // the box is cancelled
  EXPECT_EQ(messages_.shown, std::vector<std::string>{"Plan"});
  messages_.texts = {"May"};
  ASSERT_TRUE(Import(window_, path, [](SheetDialog& dialog) {
    TypeColumns(dialog);
    PressReturn(dialog);
  }));
  EXPECT_EQ(Trails(), 2U);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Imported 1 follow with 1 stop from " + path});
}

}  // namespace
}  // namespace orvane
