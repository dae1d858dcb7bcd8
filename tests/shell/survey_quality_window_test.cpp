// The window on the quality of a survey: its list, filters, and what it shows on the map.

#include "shell/reports/survey_quality_window.h"

#include "commands/map_edits.h"
#include "entry/import_edits.h"
#include "shell/map/map_view.h"
#include "shell/printed_files.h"
#include "shell/reports/report_area.h"
#include "shell/shell_case.h"
#include "support/pdf_reader.h"
#include "view/view_transform.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QPointer>

namespace orvane {
namespace {

/// A loop between two fixes with a distance that was doubled, and a dead end.
constexpr char Survey[] =
    "T\tMain\tTrail\nG\tA\tN0\tE0\nC\tB\tA\t50\t180\nC\tC\tB\t40\t270\nC\tD\tC\t100\t0\n"
    "C\tA\tD\t40\t90\nT\tSide\tTrail\nP\tB\nC\tE\tB\t20\t45\nG\tC\tN0.00044996\tE0.00035997\n";

class SurveyQualityWindowTest : public ShellCase {
 protected:
  SurveyQualityWindowTest() : window_(OpenActive(folder_.Write("site.map", Survey))) {
    Press(window_, CommandSurveyQuality);
    for (ProgramWindow* each : window_.Dependents()) {
      if (auto* found = dynamic_cast<SurveyQualityWindow*>(each)) quality_ = found;
    }
    EXPECT_TRUE(quality_ != nullptr && QTest::qWaitForWindowActive(quality_));
  }

  template <typename Child>
  Child& Part(const char* name) {
    return *quality_->findChild<Child*>(QLatin1String(name));
  }
  /// The first cells of all lines.
  std::vector<std::string> Copied() {
    QApplication::clipboard()->clear();
    Press(*quality_, CommandCopy);
    std::vector<std::string> lines;
    const auto all = QApplication::clipboard()->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : all) lines.push_back(line.toStdString());
    return lines;
  }
  void Key(int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(&quality_->Area(), static_cast<Qt::Key>(key), held);
  }
  const ErrorOverlay& OnMap() const { return window_.Shown().errors; }

  MapWindowWidget& window_;
  QPointer<SurveyQualityWindow> quality_;
};

TEST_F(SurveyQualityWindowTest, OpensOnceWithAllRows) {
  EXPECT_EQ(quality_->windowTitle(), QStringLiteral("Survey Quality"));
  EXPECT_EQ(Copied().size(), 5U + 2U + window_.TheMap().closedChains.size());
  Press(window_, CommandSurveyQuality);
  EXPECT_EQ(window_.Dependents().size(), 1U);
}

TEST_F(SurveyQualityWindowTest, FiltersByKindWithTheKeyboard) {
  auto& kinds = Part<QComboBox>("qualityKinds");
  kinds.setFocus();
  QTest::keyClick(&kinds, Qt::Key_Down);
  EXPECT_EQ(kinds.currentText(), QStringLiteral("Legs"));
  EXPECT_EQ(Copied().size(), 5U);
  QTest::keyClick(&kinds, Qt::Key_Down);
  const auto fixes = Copied();
  EXPECT_EQ(fixes.size(), 2U);
  for (const std::string& line : fixes) EXPECT_EQ(line.rfind("fix\t", 0), 0U);
  QTest::keyClick(&kinds, Qt::Key_Home);
  auto& trails = Part<QComboBox>("qualityTrails");
  trails.setFocus();
  QTest::keyClick(&trails, Qt::Key_End);
  EXPECT_EQ(trails.currentText(), QStringLiteral("Side"));
  ASSERT_EQ(Copied().size(), 1U);
  EXPECT_NE(Copied()[0].find("unchecked"), std::string::npos);
}

TEST_F(SurveyQualityWindowTest, AClickShowsTheLegOnTheMap) {
  EXPECT_TRUE(OnMap().legs.empty());
  auto& kinds = Part<QComboBox>("qualityKinds");
  kinds.setFocus();
  QTest::keyClick(&kinds, Qt::Key_Down);  // Legs
  Key(Qt::Key_Down, Qt::ControlModifier);
  ASSERT_EQ(OnMap().legs.size(), 1U);
  EXPECT_TRUE(OnMap().legs[0].strong);
  EXPECT_FALSE(OnMap().legend.empty());
  const LatLon first = OnMap().legs[0].from;
  const LatLon firstTo = OnMap().legs[0].to;
  Key(Qt::Key_Down, Qt::ControlModifier);
  ASSERT_EQ(OnMap().legs.size(), 1U);
  EXPECT_FALSE(OnMap().legs[0].from == first && OnMap().legs[0].to == firstTo);
  Key(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(OnMap().legs.empty()) << "nothing is selected";
}

TEST_F(SurveyQualityWindowTest, ColorByErrorColorsAllLegsUntilTheWindowCloses) {
  auto& tick = Part<QCheckBox>("colourByError");
  QTest::mouseClick(&tick, Qt::LeftButton, Qt::NoModifier, QPoint(8, tick.height() / 2));
  EXPECT_TRUE(tick.isChecked());
  EXPECT_EQ(OnMap().legs.size(), 5U);
  EXPECT_EQ(OnMap().legend.size(), 6U);
  Press(*quality_, CommandCloseMap);
  DeliverDeletes();
  EXPECT_TRUE(quality_.isNull());
  EXPECT_TRUE(OnMap().legs.empty());
  EXPECT_TRUE(OnMap().legend.empty());
}

TEST_F(SurveyQualityWindowTest, ReturnBringsTheLegIntoTheMiddleOfTheMap) {
  MapWindow& view = window_.Shown();
  CenterOn(view, LatLon{5, 5});
  Key(Qt::Key_Down, Qt::ControlModifier);
  Key(Qt::Key_Return);
  const LatLon middle = ScreenToMap(view, {view.centerColumn, view.centerRow});
  EXPECT_NEAR(middle.lat, 0, 0.01);
  EXPECT_NEAR(middle.lon, 0, 0.01);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
}

TEST_F(SurveyQualityWindowTest, FollowsAnEditOfTheMap) {
  const auto before = Copied();
  shell_.History().Apply(DeviationEdit(window_.TheMap(), 30));
  EXPECT_EQ(Copied().size(), before.size());
  EXPECT_NE(Copied(), before);
}

// Its points stay in memory for Redo, and were listed with their readings.
TEST_F(SurveyQualityWindowTest, LeavesOutWhatAnUndoneImportBrought) {
  const auto before = Copied();
  const std::string more =
      folder_.Write("more.map", "T\tMore\tTrail\nG\tF\tN0\tE0.001\nC\tG\tF\t30\t90\n");
  std::string sentence;
  ASSERT_TRUE(shell_.History().Apply(SubmapEdit(window_.TheMap(), more, sentence)));
  EXPECT_GT(Copied().size(), before.size());
  shell_.History().Undo(window_.TheMap());
  EXPECT_EQ(Copied().size(), before.size());
  shell_.History().Redo(window_.TheMap());
  EXPECT_GT(Copied().size(), before.size());
}

TEST_F(SurveyQualityWindowTest, AClickOfTheMouseShowsThatLineOnTheMap) {
  const QWidget* lines = quality_->Area().viewport();
  // The last line is the lowest that shows something: it is above the empty rest of the window.
  int y = lines->height() - 2;
  while (y > 0 && OnMap().legs.empty()) {
    QTest::mouseClick(quality_->Area().viewport(), Qt::LeftButton, Qt::NoModifier, {100, y});
    y -= 4;
  }
  ASSERT_EQ(OnMap().legs.size(), 1U);
  ASSERT_EQ(Copied().size(), 1U) << "only the line that was clicked";
  EXPECT_EQ(Copied()[0].rfind("leg\tE\tB\t", 0), 0U) << Copied()[0];
  EXPECT_EQ(OnMap().legs[0].color, Color{0x8C8C8C}) << "unchecked";
}

TEST_F(SurveyQualityWindowTest, IsPrintedAsThePreviewShows) {
  PrintToFiles(around_.printers, folder_);
  Press(*quality_, CommandPrint);
  Press(*quality_, CommandPrintPreview);
  const std::vector<std::string> pages = PdfPagesAsText(folder_, "printed.pdf");
  ASSERT_EQ(pages.size(), 1U);
  EXPECT_NE(pages[0].find("Likely blunder: the distance of the leg from D to C"), std::string::npos)
      << pages[0];
  EXPECT_NE(pages[0].find("1 leg is unchecked"), std::string::npos);
  EXPECT_EQ(PdfPagesAsText(folder_, "preview.pdf"), pages);
}

TEST_F(SurveyQualityWindowTest, IsSavedAsText) {
  const std::string path = folder_.Path("quality.txt");
  dialogs_->paths = {path};
  Press(*quality_, CommandSaveAs);
  const std::string text = folder_.Read("quality.txt");
  EXPECT_EQ(text.rfind("Likely blunder: the distance of the leg from D to C, 100, was doubled", 0),
            0U)
      << text;
  EXPECT_NE(text.find("\nKind\tPoint\tTo\tTrail\t"), std::string::npos);
}

TEST_F(SurveyQualityWindowTest, OutlivesADeletedMapWindow) {
  Key(Qt::Key_Down, Qt::ControlModifier);
  delete &window_;
  ASSERT_FALSE(quality_.isNull());
  quality_->grab();
  EXPECT_EQ(quality_->MapSide(), nullptr);
  DeliverDeletes();
  EXPECT_TRUE(quality_.isNull());
}

}  // namespace
}  // namespace orvane
