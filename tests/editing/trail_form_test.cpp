#include "editing/trail_form.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(TrailForm, OfANewTrailAsksForTheTypeFirst) {
  TrailForm form;
  EXPECT_FALSE(form.IsEnabled(TrailField::Name));
  EXPECT_FALSE(form.IsEnabled(TrailField::Date));
  EXPECT_FALSE(form.IsEnabled(TrailField::Focal));
  EXPECT_TRUE(form.IsEnabled(TrailField::Size));
  EXPECT_EQ(form.Text(TrailField::Size), "1");
  form.SetText(TrailField::Type, "River");
  EXPECT_TRUE(form.IsEnabled(TrailField::Name));
  EXPECT_TRUE(form.IsEnabled(TrailField::Date));
  EXPECT_TRUE(form.IsEnabled(TrailField::Focal));
}

TEST(TrailForm, ANameExcludesADateAndEmptyingItBringsTheDateBack) {
  TrailForm form;
  form.SetText(TrailField::Type, "River");
  form.SetText(TrailField::Name, "Sela");
  EXPECT_FALSE(form.IsEnabled(TrailField::Date));
  EXPECT_FALSE(form.IsEnabled(TrailField::Focal));
  EXPECT_FALSE(form.IsEnabled(TrailField::Size));
  form.SetText(TrailField::Name, "");
  EXPECT_TRUE(form.IsEnabled(TrailField::Date));
  EXPECT_TRUE(form.IsEnabled(TrailField::Focal));
  EXPECT_TRUE(form.IsEnabled(TrailField::Size));
}

TEST(TrailForm, ADateExcludesAName) {
  TrailForm form;
  form.SetText(TrailField::Type, "Papio");
  form.SetText(TrailField::Date, "2020-1-2");
  EXPECT_FALSE(form.IsEnabled(TrailField::Name));
  form.SetText(TrailField::Date, "");
  EXPECT_TRUE(form.IsEnabled(TrailField::Name));
}

TEST(TrailForm, AFocalAnimalIsAGroupOfOne) {
  TrailForm form;
  form.SetText(TrailField::Type, "Papio");
  form.SetText(TrailField::Size, "14");
  form.SetText(TrailField::Focal, "Ana");
  EXPECT_EQ(form.Text(TrailField::Size), "1");
  EXPECT_FALSE(form.IsEnabled(TrailField::Size));
  form.SetText(TrailField::Focal, "");
  EXPECT_TRUE(form.IsEnabled(TrailField::Size));
}

TEST(TrailForm, EmptyingTheTypeDisablesTheIdentityUntilItIsGivenAgain) {
  TrailForm form;
  form.SetText(TrailField::Type, "River");
  form.SetText(TrailField::Name, "Sela");
  form.SetText(TrailField::Type, "");
  EXPECT_FALSE(form.IsEnabled(TrailField::Name));
  form.SetText(TrailField::Type, "Road");
  EXPECT_TRUE(form.IsEnabled(TrailField::Name));
  EXPECT_FALSE(form.IsEnabled(TrailField::Date)) << "the name is still there";
}

TEST(TrailForm, OfAnExistingTrailShowsItsIdentityDisabled) {
  Trail trail;
  trail.type = "Papio";
  trail.date = PackDate(2020, 3, 1);
  trail.focalAnimal = "Ana";
  trail.color = 0x804000;
  trail.groupSize = 3;
  trail.width = 1.5;
  const TrailForm form(trail);
  EXPECT_EQ(form.Text(TrailField::Type), "Papio");
  EXPECT_EQ(form.Text(TrailField::Date), "2020-3-1");
  EXPECT_EQ(form.Text(TrailField::Focal), "Ana");
  EXPECT_EQ(form.Text(TrailField::Name), "");
  EXPECT_EQ(form.Text(TrailField::LineColor), "#804000");
  EXPECT_EQ(form.Text(TrailField::Size), "3");
  EXPECT_EQ(form.Text(TrailField::Width), "1.5");
  for (const TrailField field :
       {TrailField::Type, TrailField::Date, TrailField::Focal, TrailField::Name}) {
    EXPECT_FALSE(form.IsEnabled(field));
  }
  EXPECT_TRUE(form.IsEnabled(TrailField::Size));
}

// Pasted from a spreadsheet, it would break the line of the file.
TEST(TrailForm, ATabOrLineEndBecomesABlank) {
  TrailForm form;
  form.SetText(TrailField::Type, "Human\tRidge");
  form.SetText(TrailField::Name, "East\r\nRidge");
  EXPECT_EQ(form.Text(TrailField::Type), "Human Ridge");
  EXPECT_EQ(form.Text(TrailField::Name), "East  Ridge");
}

TEST(TrailForm, TakesNoMoreOfAnIdentityThanIsRead) {
  Trail trail;
  trail.type = "Road";
  trail.name = "A name of more than twenty-nine bytes";
  const TrailForm shown(trail);
  EXPECT_EQ(shown.Text(TrailField::Name), "A name of more than twenty-ni");
  TrailForm form;
  form.SetText(TrailField::Type, std::string(40, 'x'));
  EXPECT_EQ(form.Text(TrailField::Type), std::string(MostFieldBytes, 'x'));
  form.SetText(TrailField::Width, std::string(40, '1'));
  EXPECT_EQ(form.Text(TrailField::Width).size(), 40U) << "not an identity";
}

TEST(ColorFieldText, PrefersANameAndShowsNoColorAsNothing) {
  EXPECT_EQ(ColorFieldText(0x008000), "green");
  EXPECT_EQ(ColorFieldText(0x01AB0F), "#01ab0f");
  EXPECT_EQ(ColorFieldText(NoColor), "");
}

TEST(TrailForm, ANameBesideAFocalAnimalLeavesTheSizeAlone) {
  TrailForm form;
  form.SetText(TrailField::Type, "Papio");
  form.SetText(TrailField::Focal, "Ana");
  form.SetText(TrailField::Name, "East");
  EXPECT_FALSE(form.IsEnabled(TrailField::Size));
  form.SetText(TrailField::Name, "");
  EXPECT_TRUE(form.IsEnabled(TrailField::Focal));
  EXPECT_FALSE(form.IsEnabled(TrailField::Size)) << "the animal is still there";
}

TEST(TrailForm, OfAnExistingTrailKeepsItsRulesWhateverIsTyped) {
  Trail trail;
  trail.type = "Road";
  trail.name = "East";
  TrailForm form(trail);
  EXPECT_EQ(form.Text(TrailField::Width), "");
  form.SetText(TrailField::Focal, "Ana");
  form.SetText(TrailField::Size, "5");
  EXPECT_EQ(form.Text(TrailField::Size), "5");
  EXPECT_TRUE(form.IsEnabled(TrailField::Size));
  EXPECT_FALSE(form.IsEnabled(TrailField::Name));
}

}  // namespace
}  // namespace orvane
