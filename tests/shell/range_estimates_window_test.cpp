// The window on the estimates of home ranges: its table, its charts, and how it follows the map.

#include "shell/reports/range_estimates_window.h"

#include "paint/pdf_drawing.h"
#include "panes/pane_clicks.h"
#include "shell/map/map_panes.h"
#include "shell/panes/range_pane.h"
#include "shell/printed_files.h"
#include "shell/progress/progress_box.h"
#include "shell/reports/report_area.h"
#include "shell/shell_case.h"
#include "support/pdf_reader.h"

#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>

#include <chrono>

namespace orvane {
namespace {

constexpr char SmallSeason[] =
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t8:30\tS20 0.3\tE47 0.1\n"
    "G\t9:00\tS20 0\tE47 0.3\n"
    "R\tAnas\nK\tPapio\tAna\nR\tAll\nK\tPapio\n";

class RangeEstimatesWindowTest : public ShellCase {
 protected:
  RangeEstimatesWindowTest() : window_(OpenActive(folder_.Write("site.map", SmallSeason))) {
    SelectRanges();
    Press(window_, CommandRangeEstimates);
    for (ProgramWindow* each : window_.Dependents()) {
      if (auto* found = dynamic_cast<RangeEstimatesWindow*>(each)) estimates_ = found;
    }
    EXPECT_TRUE(estimates_ != nullptr && QTest::qWaitForWindowActive(estimates_));
  }

  void SelectRanges() {
    SelectAllRanges(window_.Shown());
    Q_EMIT window_.Panes().Ranges().selectionChanged();
  }
  template <typename Child>
  Child& Part(const char* name) {
    return *estimates_->findChild<Child*>(QLatin1String(name));
  }
  std::string Copied() {
    QApplication::clipboard()->clear();
    estimates_->Area().setFocus();  // a field copies its own text
    Press(*estimates_, CommandCopy);
    return QApplication::clipboard()->text().toStdString();
  }
  /// The cells after a caption.
  std::string Line(const std::string& caption) {
    const std::string all = '\n' + Copied();
    const size_t at = all.find('\n' + caption + '\t');
    if (at == std::string::npos) return "none";
    const size_t begin = at + caption.size() + 2;
    return all.substr(begin, all.find('\n', begin) - begin);
  }

  MapWindowWidget& window_;
  QPointer<RangeEstimatesWindow> estimates_;
};

TEST_F(RangeEstimatesWindowTest, ShowsTheSelectedRanges) {
  EXPECT_EQ(estimates_->windowTitle(), QStringLiteral("Range Estimates"));
  EXPECT_EQ(Part<QComboBox>("chartRange").count(), 2);
  EXPECT_NE(Line("Fixes").find('3'), std::string::npos);
  EXPECT_NE(Line("Fixes").find('6'), std::string::npos);
  EXPECT_EQ(Line("Days").size(), 3U);
}

TEST_F(RangeEstimatesWindowTest, TheFactorChangesTheKernel) {
  const std::string before = Line("Bandwidth of the kernel");
  const std::string polygons = Line("Polygon of 95 % of the fixes");
  auto& factor = Part<QDoubleSpinBox>("bandwidthFactor");
  factor.setFocus();
  factor.selectAll();
  QTest::keyClicks(&factor, QStringLiteral("0.5"));
  QTest::keyClick(&factor, Qt::Key_Return);
  EXPECT_NE(Line("Bandwidth of the kernel"), before);
  EXPECT_EQ(Line("Polygon of 95 % of the fixes"), polygons);
}

/// The user presses Cancel as soon as there is a box.
TEST_F(RangeEstimatesWindowTest, CanceledWorkLeavesASentenceUntilItIsDoneAgain) {
  std::chrono::milliseconds now{0};
  int boxesSeen = 0;
  around_.clock = [&] {
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* each : all) {
      auto* box = qobject_cast<ProgressBox*>(each);
      if (box == nullptr || !box->isVisible()) continue;
      ++boxesSeen;
      box->findChild<QPushButton*>(QStringLiteral("progressCancel"))->click();
    }
    return now += std::chrono::milliseconds(300);
  };
  Part<QDoubleSpinBox>("bandwidthFactor").setValue(0.5);
  around_.clock = {};
  EXPECT_GE(boxesSeen, 1);
  dialogs_->paths = {folder_.Path("estimates.txt")};
  Press(*estimates_, CommandSaveAs);
  const std::string text = folder_.Read("estimates.txt");
  EXPECT_NE(text.find("The estimates were cancelled."), std::string::npos) << text;
  EXPECT_EQ(Line("Bandwidth of the kernel"), "none");
  EXPECT_EQ(Part<QComboBox>("chartRange").count(), 0);
  Part<QPushButton>("estimateAgain").click();
  EXPECT_NE(Line("Bandwidth of the kernel"), "none");
  EXPECT_EQ(Part<QComboBox>("chartRange").count(), 2);
}

TEST_F(RangeEstimatesWindowTest, FollowsTheSelection) {
  for (RangePanelRow& row : window_.Shown().rangeViews) row.selected = false;
  Q_EMIT window_.Panes().Ranges().selectionChanged();
  EXPECT_EQ(Copied(), "");
  EXPECT_EQ(Part<QComboBox>("chartRange").count(), 0);
  EXPECT_FALSE(Part<QComboBox>("chartRange").isEnabled());
  EXPECT_FALSE(estimates_->Commands().ActionOf(CommandSavePicture).isEnabled());
  SelectRanges();
  EXPECT_EQ(Part<QComboBox>("chartRange").count(), 2);
  EXPECT_TRUE(estimates_->Commands().ActionOf(CommandSavePicture).isEnabled());
}

TEST_F(RangeEstimatesWindowTest, TheChartsAreOfTheChosenRange) {
  auto& ranges = Part<QComboBox>("chartRange");
  auto& charts = Part<QWidget>("estimateCharts");
  const QImage before = charts.grab().toImage();
  ranges.setFocus();
  QTest::keyClick(&ranges, Qt::Key_Down);
  EXPECT_EQ(ranges.currentIndex(), 1);
  EXPECT_NE(charts.grab().toImage(), before);
  QTest::mouseClick(&Part<QPushButton>("estimateAgain"), Qt::LeftButton);
  EXPECT_EQ(ranges.currentIndex(), 1) << "the choice stays";
}

/// In narrower windows the titles of the charts ran into each other.
TEST_F(RangeEstimatesWindowTest, IsWideEnoughForTheTitlesOfItsCharts) {
  estimates_->resize(100, 100);
  QFont font = Part<QWidget>("estimateCharts").font();
  font.setBold(true);
  const int title =
      QFontMetrics(font).horizontalAdvance(QStringLiteral("Polygon of all fixes against"));
  EXPECT_GT(Part<QWidget>("estimateCharts").width(), 3 * title);
}

TEST_F(RangeEstimatesWindowTest, TheChartsAreCopiedWithTheirNumbers) {
  QApplication::clipboard()->clear();
  Press(*estimates_, CommandCopyImage);
  const QMimeData* data = QApplication::clipboard()->mimeData();
  ASSERT_TRUE(data != nullptr && data->hasImage());
  EXPECT_GT(qvariant_cast<QImage>(data->imageData()).width(), 1000);
  EXPECT_TRUE(data->text().startsWith(QStringLiteral("Polygons\n% of the fixes\t")));
  EXPECT_EQ(estimates_->Commands().ActionOf(CommandCopyImage).text().remove(QLatin1Char('&')),
            QStringLiteral("Copy Charts as Image"));
}

TEST_F(RangeEstimatesWindowTest, TheChartsAreSavedInTheFormatOfTheirName) {
  for (const char* name : {"a.png", "a.svg", "a.pdf", "a.txt"}) {
    dialogs_->paths.push_back(folder_.Path(name));
  }
  for (int i = 0; i < 4; ++i) Press(*estimates_, CommandSavePicture);
  EXPECT_EQ(Texts(), std::vector<std::string>{});
  EXPECT_EQ(dialogs_->questions[0].title, "Save Picture of Charts...");
  EXPECT_EQ(dialogs_->questions[0].file.name,
            Part<QComboBox>("chartRange").currentText().toStdString() + ".png");
  EXPECT_GT(QImage(QString::fromStdString(folder_.Path("a.png"))).width(), 1000);
  EXPECT_NE(folder_.Read("a.svg").find(">Polygon of all fixes against days<"), std::string::npos);
  const std::vector<std::string> pdf = PdfPagesAsText(folder_, "a.pdf");
  ASSERT_EQ(pdf.size(), 1U);
  EXPECT_NE(pdf[0].find("mean of random orders"), std::string::npos) << pdf[0];
  EXPECT_EQ(folder_.Read("a.txt").rfind("Polygons\n", 0), 0U);
}

size_t CountOf(const std::string& text, const std::string& word) {
  size_t count = 0;
  for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++count;
  return count;
}

TEST_F(RangeEstimatesWindowTest, IsPrintedWithTheChartsOfAllRangesAsThePreviewShows) {
  PrintToFiles(around_.printers, folder_);
  Press(*estimates_, CommandPrint);
  Press(*estimates_, CommandPrintPreview);
  const std::vector<std::string> pages = PdfPagesAsText(folder_, "printed.pdf");
  std::string text;
  for (const std::string& page : pages) text += page;
  SCOPED_TRACE(text);
  // Without words in which the font joins two letters.
  EXPECT_EQ(CountOf(text, "Polygon of 95 % of the "), 1U);
  EXPECT_EQ(CountOf(text, " against days"), 2U) << "one for each range";
  EXPECT_EQ(CountOf(text, "50 and 95 % of the density"), 2U);
  EXPECT_NE(text.find("page 1 of "), std::string::npos);
  EXPECT_EQ(PdfPagesAsText(folder_, "preview.pdf"), pages);
  // Areas are painted too, those of the density as well.
  std::string drawn;
  for (const std::string& page : PdfPages(folder_.Read("printed.pdf"))) drawn += page;
  EXPECT_GT(CountOf(drawn, "\nf"), 20U);
  std::string previewed;
  for (const std::string& page : PdfPages(folder_.Read("preview.pdf"))) previewed += page;
  EXPECT_EQ(CountOf(previewed, "\nf"), CountOf(drawn, "\nf"));
}

TEST_F(RangeEstimatesWindowTest, IsSavedAsText) {
  dialogs_->paths = {folder_.Path("estimates.txt")};
  Press(*estimates_, CommandSaveAs);
  const std::string text = folder_.Read("estimates.txt");
  EXPECT_NE(text.find("the last quarter of the days"), std::string::npos);
  EXPECT_NE(text.find("\nFigure\t"), std::string::npos);
}

TEST_F(RangeEstimatesWindowTest, OutlivesADeletedMapWindow) {
  delete &window_;
  ASSERT_FALSE(estimates_.isNull());
  estimates_->grab();
  EXPECT_EQ(estimates_->MapSide(), nullptr);
  DeliverDeletes();
  EXPECT_TRUE(estimates_.isNull());
}

}  // namespace
}  // namespace orvane
