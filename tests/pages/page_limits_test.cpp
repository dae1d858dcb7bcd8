#include "pages/page_limits.h"

#include "support/scripted_messages.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(MayPrintTest, AsksBeforeMoreThanAHundredPages) {
  ScriptedMessages messages;
  EXPECT_TRUE(MayPrint(messages, 100));
  EXPECT_TRUE(messages.Questions().empty());
  messages.answers = {1, 2};
  EXPECT_TRUE(MayPrint(messages, 101));
  EXPECT_FALSE(MayPrint(messages, 101));
  ASSERT_EQ(messages.Questions().size(), 2U);
  EXPECT_EQ(messages.Questions().front().text, "This makes 101 pages. Print them all?");
}

TEST(MayPrintTest, RefusesMoreThanTenThousandPages) {
  ScriptedMessages messages;
  EXPECT_TRUE(MayPrint(messages, 10000));
  EXPECT_FALSE(MayPrint(messages, 10001));
  EXPECT_EQ(messages.Questions().size(), 1U);
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries().front().text, "Too many pages (10001)");
}

}  // namespace
}  // namespace orvane
