#include "pages/table_pages.h"

#include "pages/small_pages.h"
#include "support/recording_canvas.h"

#include <gtest/gtest.h>
#include <map>

namespace orvane {
namespace {

TableReport Sample(int rows) {
  TableReport table;
  table.notes = {"A note."};
  table.columns = {{"Name"}};
  for (int i = 0; i < rows; ++i) table.rows.push_back({"row" + std::to_string(i) + "."});
  return table;
}

TEST(TablePages, PrintsEachRowOnceTheNotesOnceAndTheHeadingsOnEachPage) {
  TablePages pages(SmallPages(), "Survey Quality", Sample(50));
  EXPECT_EQ(pages.Title(), "Survey Quality");
  RecordingCanvas measuring(1, 1);
  pages.Measure(measuring);
  ASSERT_EQ(pages.Count(), 3);
  std::map<std::string, int> counts;
  for (int page = 0; page < pages.Count(); ++page) {
    RecordingCanvas canvas(400, 205);
    pages.DrawPage(page, canvas);
    for (const std::string& line : canvas.Having("text")) {
      const std::string text = line.substr(line.find(' ', 5) + 1);
      ++counts[text];
      if (text.rfind("row", 0) == 0) {
        EXPECT_LE(std::stoi(line.substr(line.find(',') + 1)), 205);
      }
    }
  }
  EXPECT_EQ(counts["A note."], 1);
  EXPECT_EQ(counts["Name"], 3);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(counts["row" + std::to_string(i) + "."], 1) << i;
}

TEST(TablePages, AnEmptyTableIsOnePage) {
  TablePages pages(SmallPages(), "Range Estimates", Sample(0));
  RecordingCanvas canvas(400, 205);
  pages.Measure(canvas);
  EXPECT_EQ(pages.Count(), 1);
  pages.DrawPage(0, canvas);
  EXPECT_GT(canvas.Count("text"), 0);
}

}  // namespace
}  // namespace orvane
