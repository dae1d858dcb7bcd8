#include "ranges/format_area.h"

#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

TEST(FormatArea, PutsThePrefixInFront) {
  EXPECT_EQ(FormatArea("MCP area: ", 5), "MCP area: 5m^2");
  EXPECT_EQ(FormatArea("", 5), "5m^2");
}

TEST(FormatArea, CutsSquareMetres) {
  EXPECT_EQ(FormatArea("", 0), "0m^2");
  EXPECT_EQ(FormatArea("", 0.99), "0m^2");
  EXPECT_EQ(FormatArea("", 9999.99), "9999m^2");
}

TEST(FormatArea, RoundsHectaresBelowTenToATenth) {
  EXPECT_EQ(FormatArea("", 10000), "1.0ha");
  EXPECT_EQ(FormatArea("", 12600), "1.3ha");
  EXPECT_EQ(FormatArea("", 99999), "10.0ha");
}

TEST(FormatArea, CutsHectaresFromTen) {
  EXPECT_EQ(FormatArea("", 100000), "10ha");
  EXPECT_EQ(FormatArea("", 999999), "99ha");
}

TEST(FormatArea, RoundsSquareKilometresBelowTenToATenth) {
  EXPECT_EQ(FormatArea("", 1000000), "1.0km^2");
  EXPECT_EQ(FormatArea("", 9990000), "10.0km^2");
}

TEST(FormatArea, CutsSquareKilometresFromTen) {
  EXPECT_EQ(FormatArea("", 10000000), "10km^2");
  EXPECT_EQ(FormatArea("", 123999999), "123km^2");
}

TEST(FormatArea, PrintsWhatIsNoNumberAsNothing) {
  EXPECT_EQ(FormatArea("", std::numeric_limits<double>::quiet_NaN()), "0m^2");
  EXPECT_EQ(FormatArea("", -0.5), "0m^2");
}

}  // namespace
}  // namespace orvane
