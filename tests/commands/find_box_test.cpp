#include "commands/find_box.h"

#include <deque>
#include <gtest/gtest.h>

namespace orvane {
namespace {

/// Answers each prompt in turn and keeps it; cancels when no answer is left.
class AskedPrompts : public RecordedMessages {
 public:
  std::optional<std::string> Prompt(const TextPrompt& prompt) override {
    prompts.push_back(prompt);
    if (answers.empty()) return std::nullopt;
    std::string answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::deque<std::string> answers;
  std::vector<TextPrompt> prompts;
};

TEST(FindBox, AsksInAWideField) {
  FindBox box;
  AskedPrompts messages;
  EXPECT_EQ(box.Ask(messages), std::nullopt);
  ASSERT_EQ(messages.prompts.size(), 1U);
  EXPECT_EQ(messages.prompts[0].title, "Find");
  EXPECT_EQ(messages.prompts[0].message, "Find what?");
  EXPECT_EQ(messages.prompts[0].columns, 40);
  EXPECT_EQ(messages.prompts[0].size, 100U);
  EXPECT_EQ(messages.prompts[0].text, "");
}

TEST(FindBox, DropsBlanksAroundTheTextAndCutsIt) {
  FindBox box;
  AskedPrompts messages;
  messages.answers = {" \tFig tree \n", "   ", std::string(150, 'x')};
  EXPECT_EQ(box.Ask(messages), "Fig tree");
  EXPECT_EQ(box.Ask(messages), "");
  EXPECT_EQ(box.Ask(messages), std::string(99, 'x'));
}

TEST(FindBox, OffersItsLastTextsNewestFirst) {
  FindBox box;
  AskedPrompts messages;
  messages.answers = {"Camp", "Hill", " Camp ", ""};
  for (int i = 0; i < 4; ++i) box.Ask(messages);
  EXPECT_EQ(box.Ask(messages), std::nullopt);  // a cancelled text is not remembered
  box.Ask(messages);
  EXPECT_EQ(messages.prompts.back().earlier, (std::vector<std::string>{"Camp", "Hill"}));
  EXPECT_EQ(messages.prompts.back().text, "Camp");
}

TEST(FindBox, RemembersTenTexts) {
  FindBox box;
  AskedPrompts messages;
  for (int i = 0; i < 12; ++i) messages.answers.push_back("P" + std::to_string(i));
  for (int i = 0; i < 13; ++i) box.Ask(messages);
  EXPECT_EQ(messages.prompts.back().earlier.size(), FindBox::MostTexts);
  EXPECT_EQ(messages.prompts.back().earlier.back(), "P2");
}

}  // namespace
}  // namespace orvane
