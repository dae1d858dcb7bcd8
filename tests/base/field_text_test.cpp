#include "base/field_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(FieldText, HasBlanksForTabsAndLineEnds) {
  EXPECT_EQ(FieldText("Ridge\tTrail\r\nPath"), "Ridge Trail  Path");
  EXPECT_EQ(FieldText("For\xC3\xAAt 2"), "For\xC3\xAAt 2");
  EXPECT_EQ(FieldText(""), "");
}

}  // namespace
}  // namespace orvane
