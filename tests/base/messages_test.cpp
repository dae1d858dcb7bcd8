#include "base/messages.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

/// Answers a prompt with a fixed text.
class AnsweredMessages : public RecordedMessages {
 public:
  explicit AnsweredMessages(std::string answer) : answer_(std::move(answer)) {}
  std::optional<std::string> Prompt(const TextPrompt& /*prompt*/) override { return answer_; }

 private:
  std::string answer_;
};

TEST(Messages, HaveTheSeverityOfTheirCall) {
  RecordedMessages messages;
  NoteWarning(messages, "No position found for point %s", {"Fig"});
  NoteError(messages, "Bad pointname ");
  NoteInternalError(messages, "%s without %s", {"trail", "points"});
  NoteFatal(messages, "the end");
  PostNote(messages, "%s trails written", {"3"});
  ASSERT_EQ(messages.Entries().size(), 5U);
  EXPECT_EQ(messages.Entries()[0].severity, Severity::Warning);
  EXPECT_EQ(messages.Entries()[0].text, "No position found for point Fig");
  EXPECT_EQ(messages.Entries()[1].severity, Severity::Error);
  EXPECT_EQ(messages.Entries()[1].text, "Bad pointname ");
  EXPECT_EQ(messages.Entries()[2].severity, Severity::InternalError);
  EXPECT_EQ(messages.Entries()[2].text, "trail without points");
  EXPECT_EQ(messages.Entries()[3].severity, Severity::Fatal);
  EXPECT_EQ(messages.Entries()[4].severity, Severity::Note);
  EXPECT_EQ(messages.Entries()[4].text, "3 trails written");
  messages.Clear();
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(Messages, AreCutTo199Bytes) {
  RecordedMessages messages;
  const std::string name(300, 'x');
  NoteError(messages, "Can't open file %s", {name});
  NoteError(messages, "%s", {std::string_view(name).substr(0, 199)});
  ASSERT_EQ(messages.Entries().size(), 2U);
  EXPECT_EQ(messages.Entries()[0].text, "Can't open file " + std::string(199 - 16, 'x'));
  EXPECT_EQ(messages.Entries()[1].text, std::string(199, 'x'));
}

TEST(Messages, AreCutBetweenTwoCharacters) {
  RecordedMessages messages;
  const std::string before(198, 'x');
  NoteError(messages, "%s", {before + "\xC3\xA9"});
  EXPECT_EQ(messages.Entries()[0].text, before);
  // Also where the text holds a byte that is not UTF-8.
  NoteError(messages, "%s", {"\xED" + before.substr(1) + "\xC3\xA9"});
  EXPECT_EQ(messages.Entries()[1].text, "\xED" + before.substr(1));
}

TEST(Messages, TakeArgumentsAsTheyAre) {
  RecordedMessages messages;
  NoteError(messages, "%s", {"50% %s %n"});
  EXPECT_EQ(messages.Entries()[0].text, "50% %s %n");
}

TEST(AskUser, GivesTheButton) {
  RecordedMessages messages(3);
  EXPECT_EQ(AskUser(messages, "Save", "Yes", "No", "Cancel", "Save %s?", {"a.map"}), 3);
  ASSERT_EQ(messages.Questions().size(), 1U);
  EXPECT_EQ(messages.Questions()[0].title, "Save");
  EXPECT_EQ(messages.Questions()[0].buttons, (std::vector<std::string>{"Yes", "No", "Cancel"}));
  EXPECT_EQ(messages.Questions()[0].text, "Save a.map?");
  EXPECT_TRUE(messages.Entries().empty());
}

TEST(PromptForText, KeepsTheTextThatFits) {
  AnsweredMessages messages("1:5000");
  std::string buffer = "1:1000";
  EXPECT_TRUE(PromptForText(messages, "Set Scale", "Scale", buffer, 30));
  EXPECT_EQ(buffer, "1:5000");
  EXPECT_TRUE(PromptForText(messages, "Set Scale", "Scale", buffer, 4));
  EXPECT_EQ(buffer, "1:5");
  EXPECT_TRUE(PromptForText(messages, "Set Scale", "Scale", buffer, 0));
  EXPECT_EQ(buffer, "");
}

TEST(PromptForText, CutsBetweenTwoCharacters) {
  std::string buffer;
  AnsweredMessages utf8("r\xC3\xADo");
  EXPECT_TRUE(PromptForText(utf8, "Find", "Find what?", buffer, 3));
  EXPECT_EQ(buffer, "r");
  EXPECT_TRUE(PromptForText(utf8, "Find", "Find what?", buffer, 4));
  EXPECT_EQ(buffer, "r\xC3\xAD");
  AnsweredMessages latin1("r\xEDo");
  EXPECT_TRUE(PromptForText(latin1, "Find", "Find what?", buffer, 3));
  EXPECT_EQ(buffer, "r\xED");
}

TEST(PromptForText, StartsWithTheBuffer) {
  RecordedMessages messages;
  std::string buffer = "1:1000";
  EXPECT_TRUE(PromptForText(messages, "Set Scale", "Scale", buffer, 30));
  EXPECT_EQ(buffer, "1:1000");
  EXPECT_EQ(messages.Questions()[0].text, "Scale");
}

TEST(PromptForText, EmptiesTheBufferOnCancel) {
  RecordedMessages messages(2);
  std::string buffer = "1:1000";
  EXPECT_FALSE(PromptForText(messages, "Set Scale", "Scale", buffer, 30));
  EXPECT_EQ(buffer, "");
}

}  // namespace
}  // namespace orvane
