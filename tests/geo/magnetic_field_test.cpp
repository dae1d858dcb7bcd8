#include "geo/magnetic_field.h"

#include "support/field_model.h"
#include "support/temporary_folder.h"

#include <cmath>
#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr double DegreesPerRadian = 57.29577951308232;

TEST(DeclinationAt, IsTheTurnOfTheHorizontalField) {
  const TemporaryFolder folder;
  FieldModelWriter::Write(folder, "tiny", 2000, 2010, 30000, 3000, 300);
  const auto at = DeclinationAt({0, 0}, PackDate(2000, 1, 1), folder.Path());
  ASSERT_TRUE(at);
  EXPECT_NEAR(at->degrees, std::atan2(3000, 30000) * DegreesPerRadian, 1e-6);
  EXPECT_EQ(at->model, "tiny");
  // Half way round the dipole turns the needle to the other side.
  EXPECT_NEAR(DeclinationAt({0, 180}, PackDate(2000, 1, 1), folder.Path())->degrees, -at->degrees,
              1e-6);
}

TEST(DeclinationAt, FollowsTheYears) {
  const TemporaryFolder folder;
  FieldModelWriter::Write(folder, "tiny", 2000, 2010, 30000, 3000, 300);
  EXPECT_NEAR(DeclinationAt({0, 0}, PackDate(2002, 7, 1), folder.Path())->degrees,
              std::atan2(3000 + 2.5 * 300, 30000) * DegreesPerRadian, 1e-6);
}

TEST(DeclinationAt, AsksOnlyModelsThatCoverTheDate) {
  const TemporaryFolder folder;
  FieldModelWriter::Write(folder, "later", 2010, 2015, 30000, 6000);
  FieldModelWriter::Write(folder, "sooner", 2000, 2005, 30000, 3000);
  EXPECT_EQ(DeclinationAt({0, 0}, PackDate(2001, 1, 1), folder.Path())->model, "sooner");
  EXPECT_EQ(DeclinationAt({0, 0}, PackDate(2015, 1, 1), folder.Path())->model, "later");
  EXPECT_FALSE(DeclinationAt({0, 0}, PackDate(1999, 12, 31), folder.Path()));
  EXPECT_FALSE(DeclinationAt({0, 0}, PackDate(2007, 1, 1), folder.Path()));
  EXPECT_FALSE(DeclinationAt({0, 0}, PackDate(2015, 2, 1), folder.Path()));
}

TEST(DeclinationAt, NeedsAReadableModelAndAPlace) {
  const TemporaryFolder folder;
  const PackedDate date = PackDate(2001, 1, 1);
  EXPECT_FALSE(DeclinationAt({0, 0}, date, folder.Path()));
  EXPECT_FALSE(DeclinationAt({0, 0}, date, folder.Path("nowhere")));
  folder.Write("broken.wmm", "WMMF-1\nName broken\n");
  folder.Write("notes.txt", "no model");
  FieldModelWriter::Write(folder, "cut", 2000, 2005, 30000, 3000);
  folder.Write("cut.wmm.cof", folder.Read("cut.wmm.cof").substr(0, 20));
  EXPECT_FALSE(DeclinationAt({0, 0}, date, folder.Path()));
  FieldModelWriter::Write(folder, "whole", 2000, 2005, 30000, 3000);
  EXPECT_EQ(DeclinationAt({0, 0}, date, folder.Path())->model, "whole");
  EXPECT_FALSE(DeclinationAt({std::nan(""), 0}, date, folder.Path()));
  EXPECT_FALSE(DeclinationAt({0, std::nan("")}, date, folder.Path()));
}

}  // namespace
}  // namespace orvane
