#include "commands/save_report.h"

#include "base/files.h"
#include "support/scripted_questions.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct SaveReportTest : testing::Test {
  TemporaryFolder folder;
  ScriptedMessages messages;
  ScriptedDialogs dialogs;
  FileSpecification file{.directory = folder.Path(), .type = "txt", .name = "earlier.txt"};
  const ReportFile report{.title = "Save it as...", .name = "untitled.txt", .text = "A\t\xB0\n"};

  void Save() { SaveReport(report, dialogs, file, messages); }
};

TEST_F(SaveReportTest, WritesTheBytesOfTheReport) {
  const std::string path = folder.Path() + "/out.txt";
  dialogs.paths = {path};
  Save();
  EXPECT_EQ(ReadWholeFile(path), "A\t\xB0\n");
  EXPECT_EQ(dialogs.questions.at(0).title, "Save it as...");
  EXPECT_EQ(dialogs.questions.at(0).file.name, "untitled.txt");
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(SaveReportTest, WritesAnEmptyReportToo) {
  const std::string path = folder.Path() + "/out.txt";
  WriteReport(path, "", messages);
  EXPECT_EQ(ReadWholeFile(path), "");
}

TEST_F(SaveReportTest, SaysIfTheFileCantBeWritten) {
  dialogs.paths = {folder.Path() + "/missing/out.txt"};
  Save();
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries()[0].text, "Can't save to file");
  EXPECT_EQ(messages.Entries()[0].severity, Severity::Error);
}

TEST_F(SaveReportTest, CancelWritesNothing) {
  Save();
  EXPECT_EQ(dialogs.questions.size(), 1U);
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(SaveReportTest, ADialogThatFailsIsFatal) {
  dialogs.fails = true;
  Save();
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries()[0].text, "Error getting file name.");
  EXPECT_EQ(messages.Entries()[0].severity, Severity::Fatal);
}

}  // namespace
}  // namespace orvane
