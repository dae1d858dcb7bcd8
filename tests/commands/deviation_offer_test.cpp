#include "commands/deviation_offer.h"

#include "support/field_model.h"
#include "support/map_from_text.h"
#include "support/temporary_folder.h"

namespace orvane {
namespace {

struct DeviationOfferTest : MapFixture {
  DeviationOfferTest() { FieldModelWriter::Write(folder, "tiny", 2000, 2010, 30000, 3000, 300); }

  std::optional<DeviationOffer> Offer(Map& map) {
    return OfferDeviation(map, PackDate(2010, 1, 1), folder.Path());
  }

  TemporaryFolder folder;
};

TEST_F(DeviationOfferTest, IsForTheMiddleOfTheMapAndOfItsDates) {
  // The middle is at longitude 0; of four dates the second one counts.
  Map& map = Open(
      "T\nG\tA\tN1\tW1\nG\tB\tS1\tE1\nG\tC\tN0.9\tE0.9\n"
      "T\t\tOru\tUlo\t2009-1-1\nT\t\tOru\tUlo\t2000-1-1\nT\t\tOru\tUlo\t2001-1-1\n"
      "T\t\tOru\tUlo\t2003-1-1\n");
  const auto offer = Offer(map);
  ASSERT_TRUE(offer);
  EXPECT_EQ(offer->text, "6.277298\xB0");  // the arc tangent of 3300 / 30000
  EXPECT_EQ(offer->sentence,
            "The field model tiny gives 6.277298\xB0 for the middle of the map on 2001-1-1.");
}

TEST_F(DeviationOfferTest, IsForTodayWithoutDates) {
  Map& map = Open("T\nG\tA\tN0\tE0\n");
  const auto offer = Offer(map);
  ASSERT_TRUE(offer);
  EXPECT_NE(offer->sentence.find("on 2010-1-1."), std::string::npos);
}

TEST_F(DeviationOfferTest, NeedsAPlaceAndAModel) {
  EXPECT_FALSE(Offer(Open("T\tEmpty\n")));
  Map& map = Open("T\nG\tA\tN0\tE0\n");
  EXPECT_FALSE(OfferDeviation(map, PackDate(2011, 1, 1), folder.Path()));
  EXPECT_FALSE(OfferDeviation(map, PackDate(2005, 1, 1), folder.Path("nowhere")));
}

TEST_F(DeviationOfferTest, TakesTheMiddleOfTheBasisForAMapWithoutPlaces) {
  Map& basis = Open("T\nG\tA\tN0\tE180\n");
  Map& map = Open("T\tEmpty\n");
  map.basis = &basis;
  const auto offer = Offer(map);
  ASSERT_TRUE(offer);
  EXPECT_EQ(offer->text[0], '-');
}

}  // namespace
}  // namespace orvane
