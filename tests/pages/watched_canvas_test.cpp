#include "pages/watched_canvas.h"

#include "support/counted_progress.h"
#include "support/recording_canvas.h"

#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

/// Calls each operation that draws.
void DrawOfEachKind(Canvas& canvas) {
  canvas.DrawLine({0, 0}, {5, 5});
  canvas.DrawPolyline({{0, 0}, {5, 5}, {9, 5}});
  canvas.DrawPolygon({{0, 0}, {5, 5}, {9, 5}});
  canvas.DrawRect({0, 0, 5, 5});
  canvas.DrawOval({0, 0, 5, 5});
  canvas.DrawText({0, 0}, "Rains");
  canvas.DrawTextWithin({0, 9}, "Rains", {0, 20});
  canvas.Clear(0xFFFFFF);
}

TEST(WatchedCanvasTest, PassesEverythingOn) {
  RecordingCanvas plain(100, 100);
  RecordingCanvas below(100, 100);
  CountedProgress progress;
  WatchedCanvas watched(below, {&progress, 2, 5});
  for (Canvas* canvas : std::vector<Canvas*>{&plain, &watched}) {
    canvas->SetPen({3, PenPattern::Dashed, 0xFF0000});
    canvas->SetBrush({true, 0x00FF00});
    canvas->SetForeColor(0x0000FF);
    canvas->SetFont(CanvasFont::Label);
    canvas->SetClip({0, 0, 50, 60});
    DrawOfEachKind(*canvas);
  }
  EXPECT_EQ(below.Text(), plain.Text());
  EXPECT_EQ(watched.Clip().bottom, 60);
  EXPECT_EQ(watched.TextWidth("Rains"), plain.TextWidth("Rains"));
  EXPECT_EQ(watched.TextExtent("Rains").right, plain.TextExtent("Rains").right);
  EXPECT_EQ(watched.Ascent(CanvasFont::Label), plain.Ascent(CanvasFont::Label));
  EXPECT_EQ(watched.LineHeight(CanvasFont::Label), plain.LineHeight(CanvasFont::Label));
}

/// A job of one page could not be cancelled: only between pages was it asked.
TEST(WatchedCanvasTest, DrawsNothingMoreOnceTheJobIsCanceled) {
  RecordingCanvas below(100, 100);
  CountedProgress progress(2);
  WatchedCanvas watched(below, {&progress, 0, 1});
  for (int i = 0; i < 1000; ++i) watched.DrawLine({0, 0}, {5, 5});
  EXPECT_EQ(progress.stages, std::vector<WorkStage>(2, WorkStage::Printing));
  EXPECT_TRUE(progress.inBounds);
  EXPECT_GT(below.Count("line"), 0);
  EXPECT_LT(below.Count("line"), 500);
  below.Forget();
  DrawOfEachKind(watched);
  EXPECT_EQ(below.Text(), "");
  EXPECT_EQ(watched.TextWidth("Rains"), 5 * RecordingCanvas::LetterWidth);
}

TEST(WatchedCanvasTest, ReportsWhileLabelsAreMeasured) {
  RecordingCanvas below(100, 100);
  CountedProgress progress;
  const WatchedCanvas watched(below, {&progress, 0, 1});
  for (int i = 0; i < 1000; ++i) watched.TextWidth("Rains");
  EXPECT_GT(progress.stages.size(), 1U);
}

TEST(WatchedCanvasTest, NeedsNoProgress) {
  RecordingCanvas below(100, 100);
  WatchedCanvas watched(below, {});
  for (int i = 0; i < 1000; ++i) watched.DrawLine({0, 0}, {5, 5});
  EXPECT_EQ(below.Count("line"), 1000);
}

}  // namespace
}  // namespace orvane
