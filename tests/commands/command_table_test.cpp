#include "commands/command_table.h"

#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace orvane {
namespace {

struct Listed {
  int id;
  std::string_view text;
  std::string_view key;
};

// What users have in their hands and in their notes.
constexpr Listed ListedCommands[] = {
    {1033, "&New Map", "Ctrl+N"},
    {1034, "&Open Map...", "Ctrl+O"},
    {1000, "Open &Basis", "Ctrl+B"},
    {1009, "Set B&asis", "Ctrl+Shift+B"},
    {1035, "&Close Map", "Ctrl+W"},
    {1036, "&Save", "Ctrl+S"},
    {1037, "S&ave As...", "Ctrl+Shift+S"},
    {1052, "Sa&ve Simply As...", ""},
    {1053, "Save As Arc&View...", ""},
    {1025, "Impor&t Spreadsheet...", "Ctrl+I"},
    {1038, "I&mport Submap...", ""},
    {1013, "&Import GIS...", ""},
    {1002, "Pag&e Setup...", "Ctrl+Shift+P"},
    {1003, "&Print...", "Ctrl+P"},
    {1039, "E&xit", "Ctrl+Q"},
    {1029, "Cu&t", "Ctrl+X"},
    {1030, "&Copy", "Ctrl+C"},
    {1031, "&Paste", "Ctrl+V"},
    {1059, "&Add Trail/Range", "Ctrl+A"},
    {1032, "&Delete Trail/Range", "Ctrl+D"},
    {1010, "&Graphical Trail Input", "Ctrl+G"},
    {1040, "Check &Trails", "Ctrl+Shift+T"},
    {1005, "Set &Magnetic deviance...", "Ctrl+M"},
    {1006, "&View Control...", "Ctrl+Shift+V"},
    {1015, "Set &Orientation...", ""},
    {1014, "&Hide Grids", ""},
    {1019, "&Elevation...", "Ctrl+E"},
    {1021, "&Trail Summary...", "Ctrl+T"},
    {1026, "&Point Index", "Ctrl+Shift+I"},
    {1051, "&Range Stats...", "Ctrl+R"},
    {32026, "Zoom &In", "Ctrl+Z"},
    {1046, "Zoom &Out", "Ctrl+Shift+Z"},
    {1047, "&Change Zoom...", "Ctrl+Shift+C"},
    {1011, "&Find...", "Ctrl+F"},
    {1008, "Hide I&nfo", "Ctrl+H"},
    {1016, "&Degrees", ""},
    {1017, "&Minutes", ""},
    {1018, "&Seconds", ""},
    {1050, "European Da&te Format", ""},
    {1049, "&About Orvane...", ""},
};

std::vector<CommandId> CommandsInMenus() {
  std::vector<CommandId> ids;
  for (const MenuInfo& menu : AllMenus()) {
    for (const CommandId id : menu.items) {
      if (id != CommandNone) ids.push_back(id);
    }
  }
  return ids;
}

char Mnemonic(std::string_view text) {
  const size_t at = text.find('&');
  if (at == std::string_view::npos || at + 1 == text.size()) return 0;
  return static_cast<char>(std::tolower(static_cast<unsigned char>(text[at + 1])));
}

TEST(CommandTable, HoldsEachCommandUnderItsNumberTextAndKey) {
  for (const Listed& told : ListedCommands) {
    const CommandInfo* command = FindCommand(told.id);
    ASSERT_NE(command, nullptr) << told.id;
    EXPECT_EQ(command->text, told.text);
    EXPECT_EQ(command->key, told.key) << told.text;
  }
}

TEST(CommandTable, CommandsAreInTheirOrder) {
  std::vector<int> inMenus;
  for (const CommandId id : CommandsInMenus()) {
    if (id < 40000) inMenus.push_back(id);
  }
  std::vector<int> told;
  for (const Listed& each : ListedCommands) told.push_back(each.id);
  EXPECT_EQ(inMenus, told);
}

TEST(CommandTable, EveryCommandIsInOneMenu) {
  const std::vector<CommandId> ids = CommandsInMenus();
  EXPECT_EQ(ids.size(), AllCommands().size());
  EXPECT_EQ(std::set<CommandId>(ids.begin(), ids.end()).size(), ids.size());
  for (const CommandInfo& command : AllCommands()) EXPECT_NE(command.id, CommandNone);
}

TEST(CommandTable, NoTwoCommandsShareAKey) {
  std::map<std::string_view, std::string_view> keys;
  for (const CommandInfo& command : AllCommands()) {
    if (command.key.empty()) continue;
    EXPECT_TRUE(keys.emplace(command.key, command.text).second)
        << command.key << " is that of " << keys[command.key] << " and " << command.text;
  }
}

TEST(CommandTable, AddedCommandsTakeNoLetterOfAMenuAway) {
  for (const MenuInfo& menu : AllMenus()) {
    std::set<char> letters;
    for (const CommandId id : menu.items) {
      if (id != CommandNone && id < 40000) letters.insert(Mnemonic(FindCommand(id)->text));
    }
    for (const CommandId id : menu.items) {
      if (id < 40000 || FindCommand(id)->text.empty()) continue;
      EXPECT_TRUE(letters.insert(Mnemonic(FindCommand(id)->text)).second) << FindCommand(id)->text;
    }
  }
}

TEST(CommandTable, MenusHaveLettersOfTheirOwn) {
  std::set<char> letters;
  for (const MenuInfo& menu : AllMenus()) EXPECT_TRUE(letters.insert(Mnemonic(menu.title)).second);
}

TEST(CommandTable, FindsNoCommandForAnyOtherNumber) {
  EXPECT_EQ(FindCommand(CommandNone), nullptr);
  EXPECT_EQ(FindCommand(1001), nullptr);
  EXPECT_EQ(FindCommand(-1), nullptr);
}

}  // namespace
}  // namespace orvane
