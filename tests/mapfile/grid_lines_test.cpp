#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct GridLinesTest : MapFixture {
  const Grid& ReadGrid(const std::string& text) {
    messages.Clear();
    const Map& map = Read(text);
    static const Grid none;
    EXPECT_FALSE(map.grids.empty()) << text;
    return map.grids.empty() ? none : map.grids.front();
  }
  /// Reads a shade on a grid with these row and column specs.
  const GridShade& ReadShade(const std::string& specs, const std::string& line) {
    messages.Clear();
    const Map& map = Read("H\tc\t10\t5\t5\t0\t" + specs + "\n" + line);
    static const GridShade none;
    EXPECT_EQ(Length(map.gridShades), 1) << line;
    return map.gridShades.empty() ? none : map.gridShades.front();
  }
};

TEST_F(GridLinesTest, EachFieldIsRead) {
  const Grid& grid = ReadGrid("H\tCorner\t100\t26\t-40\t12.5\ta7\tI-3\n");
  EXPECT_EQ(grid.corner->name, "Corner");
  EXPECT_EQ(grid.cellSize, 100);
  EXPECT_EQ(grid.rows, 26);
  EXPECT_EQ(grid.columns, -40);
  EXPECT_EQ(grid.angle, 12.5);
  EXPECT_EQ(grid.rowStyle, GridStyle::LettersLower);
  EXPECT_EQ(grid.rowStart, 7);
  EXPECT_EQ(grid.columnStyle, GridStyle::RomanUpper);
  EXPECT_EQ(grid.columnStart, -3);
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GridLinesTest, FieldsLeftOutHaveTheirDefaults) {
  for (const char* line : {"H\tc", "H\tc\t", "H\tc\t\t\t\t\t\t"}) {
    const Grid& grid = ReadGrid(line);
    EXPECT_EQ(grid.cellSize, 0);
    EXPECT_EQ(grid.rows, 0);
    EXPECT_EQ(grid.columns, 0);
    EXPECT_EQ(grid.angle, 0);
    EXPECT_EQ(grid.rowStyle, GridStyle::LettersUpper);
    EXPECT_EQ(grid.columnStyle, GridStyle::Decimal);
    EXPECT_EQ(grid.rowStart, 0);
    EXPECT_EQ(grid.columnStart, 0);
  }
}

TEST_F(GridLinesTest, AxisSpecIsALetterAndAStart) {
  struct Case {
    const char* text;
    std::optional<GridStyle> style;
    int start;
  };
  constexpr auto ByDefault = std::nullopt;
  const Case cases[] = {{"01", GridStyle::Decimal, 1},
                        {"1", GridStyle::Decimal, 0},
                        {"912", GridStyle::Decimal, 12},
                        {"0-4", GridStyle::Decimal, -4},
                        {"i2", GridStyle::RomanLower, 2},
                        {"I3", GridStyle::RomanUpper, 3},
                        {"a4", GridStyle::LettersLower, 4},
                        {"A5", GridStyle::LettersUpper, 5},
                        {"n6", GridStyle::Unlabeled, 6},
                        {"N7", GridStyle::Unlabeled, 7},
                        {"n", GridStyle::Unlabeled, 0},
                        {"-8", ByDefault, -8},
                        {"x9", ByDefault, 0},
                        {"", ByDefault, 0},
                        {"A x", GridStyle::LettersUpper, 0}};
  for (const Case& c : cases) {
    const Grid& rows = ReadGrid(std::string("H\tc\t1\t2\t3\t4\t") + c.text + "\tn9");
    EXPECT_EQ(rows.rowStyle, c.style.value_or(GridStyle::LettersUpper)) << c.text;
    EXPECT_EQ(rows.rowStart, c.start) << c.text;
    EXPECT_EQ(rows.columnStart, 9) << c.text;
    const Grid& columns = ReadGrid(std::string("H\tc\t1\t2\t3\t4\tn9\t") + c.text);
    EXPECT_EQ(columns.columnStyle, c.style.value_or(GridStyle::Decimal)) << c.text;
    EXPECT_EQ(columns.columnStart, c.start) << c.text;
  }
}

TEST_F(GridLinesTest, OnlyAnHDoesNothing) {
  EXPECT_TRUE(Read("H\n").grids.empty());
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GridLinesTest, FaultsOfAGridAreReported) {
  EXPECT_EQ(ReadGrid("H Corner\t5").corner->name, "Corner");
  EXPECT_EQ(Said(), Texts{"Bad grid spec: H Corner\t5"});
  messages.Clear();
  EXPECT_TRUE(Read("H\t=\t5\n").grids.empty());
  EXPECT_EQ(Said(), Texts{"Bad pointname in grid ="});
}

TEST_F(GridLinesTest, CornerIsResolvedWithNoTrail) {
  const Map& map = Read("T\tt\nP\t0900\nH\t0900\t1\nP\tb\n");
  EXPECT_NE(map.grids.front().corner, map.trails.front().points[0]);
  EXPECT_EQ(NamesOf(map.trails.front()), (Texts{"0900", "b"}));
}

TEST_F(GridLinesTest, NewestGridIsFirst) {
  const Map& map = Read("H\ta\t1\nH\tb\t2\n");
  EXPECT_EQ(map.grids.front().cellSize, 2);
}

// --- HS -------------------------------------------------------------------------------------------

TEST_F(GridLinesTest, ShadeNamesACell) {
  const GridShade& shade = ReadShade("A\t0", "HS\tC12\tred\n");
  EXPECT_EQ(shade.row, 3);
  EXPECT_EQ(shade.column, 12);
  EXPECT_EQ(shade.color, 0xff0000);
  EXPECT_EQ(shade.value, -10.0);
  EXPECT_EQ(shade.grid->corner->name, "c");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GridLinesTest, StartsAreSubtracted) {
  const GridShade& shade = ReadShade("A2\t010", "hs\tC12\tred\n");
  EXPECT_EQ(shade.row, 1);
  EXPECT_EQ(shade.column, 2);
}

TEST_F(GridLinesTest, ColumnComesFirstIfOnlyColumnsAreLetters) {
  const GridShade& shade = ReadShade("0\ta", "HS\tc12\tred\n");
  EXPECT_EQ(shade.row, 12);
  EXPECT_EQ(shade.column, 3);
  const GridShade& numbers = ReadShade("0\t0", "HS\t12-3\tred\n");
  EXPECT_EQ(numbers.row, 12);
  EXPECT_EQ(numbers.column, -3);
  const GridShade& letters = ReadShade("a\tA", "HS\tbC\tred\n");
  EXPECT_EQ(letters.row, 2);
  EXPECT_EQ(letters.column, 3);
}

TEST_F(GridLinesTest, ValueOfAShade) {
  const std::pair<const char*, double> cases[] = {
      {"", -10},   {",b", -11},  {",black", -11}, {" c", -12}, {"\tc9", -12}, {",45.5", 45.5},
      {" 30", 30}, {"\t90", 90}, {",", 0},        {",B", 0},   {",x", 0},     {",-7", -7}};
  for (const auto& [text, value] : cases) {
    const GridShade& shade = ReadShade("A\t0", std::string("HS\tA1\t#abc") + text);
    EXPECT_EQ(shade.value, value) << text;
    EXPECT_EQ(shade.color, 0xaabbcc) << text;
  }
}

TEST_F(GridLinesTest, UnknownColorOfAShadeIsNone) {
  EXPECT_EQ(ReadShade("A\t0", "HS\tA1\tnone of these").color, -1);
  EXPECT_EQ(ReadShade("A\t0", "HS\tA1\t").color, -1);
}

TEST_F(GridLinesTest, FaultsOfAShadeAreReported) {
  EXPECT_TRUE(Read("HS\tA1\tred\n").gridShades.empty());
  EXPECT_EQ(Said(), Texts{"No grid for grid shading HS\tA1\tred"});
  messages.Clear();
  EXPECT_EQ(Length(Read("H\tc\t1\nHS A1\tred\n").gridShades), 1);
  EXPECT_EQ(Said(), Texts{"Bad grid spacing spec: HS A1\tred"});
  for (const char* cell : {"A1x", "A1 ", "x", "a1", ""}) {
    messages.Clear();
    EXPECT_TRUE(Read(std::string("H\tc\t1\nHS\t") + cell + "\tred\n").gridShades.empty()) << cell;
    EXPECT_EQ(Said(), Texts{std::string("Bad grid location in grid spacing: ") + cell});
  }
  messages.Clear();
  EXPECT_TRUE(Read("H\tc\t1\nHS\tA1").gridShades.empty());
  EXPECT_EQ(Said(), Texts{"Bad grid location in grid spacing: A1"});
  messages.Clear();
  EXPECT_TRUE(Read("H\tc\t1\t2\t3\t0\tn\tn\nHS\tA1\tred").gridShades.empty());
  EXPECT_EQ(Said(), Texts{"Bad grid location in grid spacing: A1"});
  messages.Clear();
  EXPECT_TRUE(Read("H\tc\t1\nHS\n").gridShades.empty());
  EXPECT_TRUE(Read("HS\n").gridShades.empty());  // also without a grid
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(GridLinesTest, ShadeBelongsToTheNewestGridOfTheFirstMapThatHasAny) {
  Map& basis = Read("H\tlow1\t1\nH\tlow2\t2\n", "basis.map");
  Map& map = MakeMap(workspace, "above.map");
  map.basis = &basis;
  ReadMapText(map, "HS\tA1\tred\nH\town1\t3\nHS\tA2\tred\nH\town2\t4\nHS\tA3\tred\n");
  ASSERT_EQ(Length(map.gridShades), 3);
  auto shade = map.gridShades.begin();
  EXPECT_EQ(shade->grid->corner->name, "own2");
  EXPECT_EQ((++shade)->grid->corner->name, "own1");
  EXPECT_EQ((++shade)->grid->corner->name, "low2");
  EXPECT_TRUE(basis.gridShades.empty());
}

}  // namespace
}  // namespace orvane
