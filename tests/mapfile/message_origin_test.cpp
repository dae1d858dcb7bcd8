// Which file and line a message of the reader comes from.

#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "support/scripted_messages.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// Keeps the places of messages, as "file:line" with the file's own name.
class PlacedMessages : public RecordedMessages {
 public:
  void Post(Severity severity, const std::string& text) override {
    RecordedMessages::Post(severity, text);
    if (Origin() == nullptr) {
      places.emplace_back("none");
      return;
    }
    const std::string& file = Origin()->file;
    places.push_back(file.substr(file.rfind('/') + 1) + ":" + std::to_string(Origin()->line));
  }

  std::vector<std::string> places;
};

using Places = std::vector<std::string>;

TEST(MessageOrigin, IsTheLineThatIsRead) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  OpenMap(
      workspace,
      folder.Write("a.map", "G\tCamp\tN1 0'\tE10 0'\t100\t5\n\nO\tCamp\nO\tCamp\n\r\n#\rO\tCamp"));
  EXPECT_EQ(messages.places, (Places{"a.map:4", "a.map:7"}));
  EXPECT_EQ(messages.Origin(), nullptr);
}

TEST(MessageOrigin, EntersAnIncludedFileAndReturns) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  const std::string inner = folder.Write("in.map", "\n\nO\tNowhere\nO\tCamp\n");
  OpenMap(workspace, folder.Write("out.map", "G\tCamp\tN1 0'\tE10 0'\t100\t5\nO\tCamp\nI " + inner +
                                                 "\nO\tCamp\nI " + folder.Path("no.map") + "\n"));
  EXPECT_EQ(messages.places, (Places{"in.map:3", "in.map:4", "out.map:4", "out.map:5"}));
}

TEST(MessageOrigin, IsTheLineOfTheBasisForItsMessages) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  folder.Write("basis.map", "G\tCamp\tN1 0'\tE10 0'\t100\t5\nO\tCamp\nO\tCamp\n");
  OpenMap(workspace, folder.Write("top.map", "#\nB\tbasis.map\nO\tCamp\nO\tCamp\n"));
  EXPECT_EQ(messages.places, (Places{"basis.map:3", "top.map:4"}));
}

TEST(MessageOrigin, IsTheFileAsAWholeForWhatIsFoundAtItsEnd) {
  PlacedMessages messages;
  Workspace workspace(messages);
  OpenMap(workspace, "/nowhere/missing.map");
  EXPECT_EQ(messages.places, Places{"missing.map:0"});
  NoteError(messages, "later");
  EXPECT_EQ(messages.places.back(), "none");
}

TEST(MessageOrigin, OfAPointWithoutAPositionIsThePointInTheFileThatMadeIt) {
  ScriptedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  const std::string basis = folder.Write("basis.map", "G\tCamp\tN1\tE10\nP\tLost\n");
  const std::string top = folder.Write("top.map", "B\tbasis.map\nC\tHide\tFig\t20\t35\nP\tAlone\n");
  OpenMap(workspace, top);
  ASSERT_EQ(messages.origins.size(), 3U);
  EXPECT_EQ(messages.origins[0].file, basis);
  EXPECT_EQ(messages.origins[0].point, "Lost");
  EXPECT_EQ(messages.origins[0].line, 0U);
  // The region of Hide and Fig hangs on one of them.
  EXPECT_EQ(messages.origins[1].file, top);
  EXPECT_TRUE(messages.origins[1].point == "Hide" || messages.origins[1].point == "Fig");
  EXPECT_EQ(messages.origins[2].file, top);
  EXPECT_EQ(messages.origins[2].point, "Alone");
}

TEST(MessageOrigin, TheRestOfALineThatIsTooLongIsTheSameLine) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  // The comment takes several lines of the reader, and only the last is none.
  std::string text = "#";
  text.append(3 * LongestMapLine, 'x');
  OpenMap(workspace,
          folder.Write("long.map", text + "\nG\tCamp\tN1 0'\tE10 0'\t100\t5\nO\tCamp\nO\tCamp\n"));
  ASSERT_EQ(messages.places.size(), 2U);
  EXPECT_EQ(messages.places[0], "long.map:1");
  EXPECT_EQ(messages.places[1], "long.map:4");
}

TEST(MessageOrigin, IsTheBasisLineForABasisThatIsMissing) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  folder.Write("wide.map", "\xFF\xFE");
  const std::string inner = folder.Write("in.map", "\n\nB\twide.map\n");
  OpenMap(workspace, folder.Write("a.map", "#\nB\tnone.map\nI " + inner + "\n"));
  EXPECT_EQ(messages.places, (Places{"a.map:2", "in.map:3", "in.map:3"}))
      << messages.Entries().back().text;
}

TEST(MessageOrigin, IsTheTrailLineForTheNoteOnATrailGivenAgain) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  OpenMap(workspace, folder.Write("a.map",
                                  "T\tPde\tTrail\nL\tCamp\t1\t10\nT\tpde\tTrail\n\n"
                                  "L\tHill\t1\t11\nL\tRock\t1\t12\n"));
  EXPECT_EQ(messages.places, Places{"a.map:3"});
  ASSERT_EQ(messages.Entries().size(), 1U);
  EXPECT_EQ(messages.Entries()[0].severity, Severity::Note);
  EXPECT_EQ(messages.Entries()[0].text, "Trail pde is given again; its earlier points are dropped");
  EXPECT_EQ(workspace.maps.front().trails.front().points.size(), 2U);
}

TEST(MessageOrigin, IsTheTrailLineForTheNoteOnATrailOfTheBasis) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  folder.Write("base.map", "T\tPde\tTrail\nL\tCamp\t1\t10\n");
  OpenMap(workspace, folder.Write("a.map", "B\tbase.map\n#\nT\tPde\tTrail\n#\nL\tHill\t1\t11\n"));
  EXPECT_EQ(messages.places, Places{"a.map:3"});
}

TEST(MessageOrigin, NoNoteComesWhereATrailGivenAgainLosesNothing) {
  PlacedMessages messages;
  Workspace workspace(messages);
  const TemporaryFolder folder;
  // The first has no points yet, the second keeps those that it has.
  OpenMap(workspace, folder.Write("a.map",
                                  "T\tEmpty\tTrail\nT\tEmpty\tTrail\nL\tCamp\t1\t10\n"
                                  "T\tKept\tTrail\nL\tHill\t1\t11\nT\tKept\tHuman\n"));
  EXPECT_TRUE(messages.Entries().empty());
}

}  // namespace
}  // namespace orvane
