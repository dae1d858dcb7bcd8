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

/// A preview that was turned could grow above the limits without a question.
TEST(MayPrintTest, AsksAgainWhereAPreviewGrows) {
  ScriptedMessages messages;
  int agreed = 60;
  EXPECT_TRUE(MayPrintAgain(messages, 60, agreed));
  EXPECT_TRUE(MayPrintAgain(messages, 90, agreed));
  EXPECT_TRUE(messages.Questions().empty());
  messages.answers = {2, 1};
  EXPECT_FALSE(MayPrintAgain(messages, 120, agreed));
  EXPECT_TRUE(MayPrintAgain(messages, 120, agreed));
  EXPECT_EQ(agreed, 120);
  // What was agreed to needs no further question.
  EXPECT_TRUE(MayPrintAgain(messages, 110, agreed));
  EXPECT_TRUE(MayPrintAgain(messages, 120, agreed));
  EXPECT_EQ(messages.Questions().size(), 2U);
  EXPECT_FALSE(MayPrintAgain(messages, 10001, agreed));
  EXPECT_EQ(agreed, 120);
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries().front().text, "Too many pages (10001)");
}

}  // namespace
}  // namespace orvane
