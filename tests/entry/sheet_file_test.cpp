#include "entry/sheet_file.h"

#include "entry/fix_import.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

struct ReadSheetTest : testing::Test {
  TemporaryFolder folder;
  RecordedMessages messages;

  void ExpectOneError(const std::string& text) const {
    ASSERT_EQ(messages.Entries().size(), 1U);
    EXPECT_EQ(messages.Entries()[0].severity, Severity::Error);
    EXPECT_EQ(messages.Entries()[0].text, text);
  }
};

TEST_F(ReadSheetTest, ReportsAFileThatCannotBeOpened) {
  EXPECT_FALSE(ReadSheet(messages, folder.Path("none.txt")));
  ExpectOneError("Can not open " + folder.Path("none.txt"));
  messages.Clear();
  EXPECT_FALSE(ReadSheet(messages, folder.Path()));
  ExpectOneError("Can not open " + folder.Path());
}

TEST_F(ReadSheetTest, ReportsAFileInUtf16) {
  using namespace std::string_literals;
  const std::string path = folder.Write("wide.txt", "\xFF\xFEO\0r\0u\0"s);
  EXPECT_FALSE(ReadSheet(messages, path));
  ExpectOneError("File " + path + " is in UTF-16, which can't be read; save it as plain text");
}

TEST_F(ReadSheetTest, ReportsASheetThatATextCannotHave) {
  for (const char* name : {"a.txt", "a.csv"}) {
    const std::string path = folder.Write(name, "Oru\tUlo\n");
    messages.Clear();
    EXPECT_FALSE(ReadSheet(messages, path, ChooseNamed("Follows")));
    ExpectOneError("Can't find sheet Follows in " + path);
    messages.Clear();
    EXPECT_FALSE(ReadFixText(messages, path, ChooseNamed("Fixes")));
    ExpectOneError("Can't find sheet Fixes in " + path);
    messages.Clear();
    EXPECT_TRUE(ReadSheet(messages, path, [&](const std::vector<std::string>& names) {
      return AskForSheet(messages, "Import", names);
    }));
    EXPECT_TRUE(messages.Entries().empty());
  }
}

TEST_F(ReadSheetTest, TakesOffTheMarkOfUtf8) {
  EXPECT_EQ(ReadSheet(messages, folder.Write("a.txt", "\xEF\xBB\xBFOru\tUlo\n"))->text,
            "Oru\tUlo\n");
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(ReadSheetTest, ReadsAFileWithZeroBytesAllTheSame) {
  using namespace std::string_literals;
  const std::string text = "Oru\0\tUlo\n"s;
  const std::string path = folder.Write("a.txt", text);
  EXPECT_EQ(ReadSheet(messages, path)->text, text);
  ExpectOneError("File " + path + " holds bytes that are not text; it may be damaged");
}

TEST_F(ReadSheetTest, TurnsACsvFileIntoRowsWithTabs) {
  const auto sheet =
      ReadSheet(messages, folder.Write("a.CSV",
                                       "\xEF\xBB\xBFOru;\"the \"\"old\"\"; creek\"\n\n"
                                       "\"two\r\nlines\tand a tab\";b\rlast"));
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->text, "Oru\tthe \"old\"; creek\n\ntwo  lines and a tab\tb\nlast\n");
  EXPECT_EQ(sheet->separator, ';');
  EXPECT_EQ(sheet->rowLines, (std::vector<size_t>{1, 2, 3, 5}));
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(ReadSheetTest, ReadsACsvFileInUtf16OrLatin1AsUtf8) {
  using namespace std::string_literals;
  const auto wide = ReadSheet(messages, folder.Write("wide.csv", "\xFF\xFE\xFC\0,\0b\0"s));
  ASSERT_TRUE(wide);
  EXPECT_EQ(wide->text, "\xC3\xBC\tb\n");
  EXPECT_EQ(ReadSheet(messages, folder.Write("old.csv", "\xFC,b\n"))->text, "\xC3\xBC\tb\n");
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(ReadSheetTest, ReadsAnyOtherNameByteForByte) {
  const std::string text = "\xFC,\"b\r\nc\"\r\n";
  EXPECT_EQ(ReadSheet(messages, folder.Write("csv", text))->text, text);
  EXPECT_EQ(ReadSheet(messages, folder.Write("a.csv.txt", text))->text, text);
  EXPECT_TRUE(ReadSheet(messages, folder.Path("a.csv.txt"))->rowLines.empty());
}

}  // namespace
}  // namespace orvane
