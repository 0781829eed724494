#include "controls/ButtonProperties.h"

#include <gtest/gtest.h>

#include <set>

#include "form/Form42.h"

namespace zelvreg::controls {
namespace {

TEST(ButtonProperties, AnEmptyBagYieldsTheDefaultOfEachProperty) {
  const ButtonProperties read = readButton({}, {});
  EXPECT_EQ(read.ButtonType, 2);
  EXPECT_EQ(read.Caption, "");
  EXPECT_TRUE(read.Enabled);
  EXPECT_EQ(read.ColorScheme, 1);
  EXPECT_TRUE(read.ShowFocusRect);
  EXPECT_EQ(read.BackColor, 0x8000000F);
  EXPECT_EQ(read.BackOver, 0x8000000F);
  EXPECT_EQ(read.ForeColor, 0x80000012);
  EXPECT_EQ(read.ForeOver, 0x80000012);
  EXPECT_EQ(read.MaskColor, 0xC0C0C0U);
  EXPECT_EQ(read.MousePointer, 0);
  EXPECT_EQ(read.MouseIcon, nullptr);
  EXPECT_EQ(read.PictureNormal, nullptr);
  EXPECT_EQ(read.PictureOver, nullptr);
  EXPECT_TRUE(read.UseMaskColor);
  EXPECT_FALSE(read.SoftBevel);
  EXPECT_EQ(read.PicturePosition, 0);
  EXPECT_FALSE(read.UseGreyscale);
  EXPECT_EQ(read.SpecialEffect, 0);
  EXPECT_FALSE(read.HandPointer);
  EXPECT_FALSE(read.CheckBoxBehaviour);
  EXPECT_FALSE(read.Value);
}

TEST(ButtonProperties, WithoutAFontItHasTheForms) {
  const Ambient form{true, {"Tahoma", 11, true, false, false}};
  EXPECT_EQ(readButton({}, form).Font, form.font);
}

TEST(ButtonProperties, TheHoveredColorsFollowTheNormalOnes) {
  PropertyBag bag;
  bag.write("BCOL", 10118205);
  bag.write("FCOL", 0xFFFFFF);
  const ButtonProperties read = readButton(bag, {});
  EXPECT_EQ(read.BackOver, 10118205U);
  EXPECT_EQ(read.ForeOver, 0xFFFFFFU);
}

TEST(ButtonProperties, HoveredColorsOfTheirOwnAreKept) {
  PropertyBag bag;
  bag.write("BCOL", 1);
  bag.write("BCOLO", 2);
  bag.write("FCOL", 3);
  bag.write("FCOLO", 4);
  const ButtonProperties read = readButton(bag, {});
  EXPECT_EQ(read.BackOver, 2U);
  EXPECT_EQ(read.ForeOver, 4U);
}

TEST(ButtonProperties, TheKeysAreThoseOfStoredForms) {
  std::string keys;
  for (const ButtonProperty& property : buttonProperties()) {
    keys.append(property.name).append(" ").append(property.key).append("\n");
  }
  EXPECT_EQ(keys,
            "ButtonType BTYPE\nCaption TX\nEnabled ENAB\nFont FONT\nColorScheme COLTYPE\n"
            "ShowFocusRect FOCUSR\nBackColor BCOL\nBackOver BCOLO\nForeColor FCOL\n"
            "ForeOver FCOLO\nMaskColor MCOL\nMousePointer MPTR\nMouseIcon MICON\n"
            "PictureNormal PICN\nPictureOver PICH\nUseMaskColor UMCOL\nSoftBevel SOFT\n"
            "PicturePosition PICPOS\nUseGreyscale NGREY\nSpecialEffect FX\nHandPointer HAND\n"
            "CheckBoxBehaviour CHECK\nValue VALUE\n");
}

ButtonProperties unusual() {
  ButtonProperties all;
  all.ButtonType = 13;
  all.Caption = "&Next";
  all.Enabled = false;
  all.Font = {"Tahoma", 12, true, true, true};
  all.ColorScheme = 2;
  all.ShowFocusRect = false;
  all.BackColor = 0x010203;
  all.BackOver = 0x040506;
  all.ForeColor = 0x070809;
  all.ForeOver = 0x8000000D;
  all.MaskColor = 0xFF00FF;
  all.MousePointer = 99;
  all.MouseIcon = std::make_shared<const Bitmap>(1, 1);
  all.PictureNormal = std::make_shared<const Bitmap>(2, 2);
  all.PictureOver = std::make_shared<const Bitmap>(3, 3);
  all.UseMaskColor = false;
  all.SoftBevel = true;
  all.PicturePosition = 3;
  all.UseGreyscale = true;
  all.SpecialEffect = 2;
  all.HandPointer = true;
  all.CheckBoxBehaviour = true;
  all.Value = true;
  return all;
}

TEST(ButtonProperties, WhatIsStoredIsReadBack) {
  const ButtonProperties stored = unusual();
  PropertyBag bag;
  writeButton(stored, bag);
  EXPECT_EQ(bag.size(), buttonProperties().size());
  EXPECT_EQ(readButton(bag, {}), stored);
}

TEST(ButtonProperties, AValueOfAnotherKindIsIgnored) {
  PropertyBag bag;
  bag.write("BTYPE", std::string("seven"));
  bag.write("ENAB", 0);
  const ButtonProperties read = readButton(bag, {});
  EXPECT_EQ(read.ButtonType, 2);
  EXPECT_TRUE(read.Enabled);
}

TEST(ButtonDesign, EachSetterMarksItsKeyAsChanged) {
  ButtonDesign design;
  EXPECT_TRUE(design.changedKeys().empty());
  design.set(&ButtonProperties::ButtonType, 7);
  design.set(&ButtonProperties::HandPointer, true);
  EXPECT_EQ(design.get().ButtonType, 7);
  EXPECT_EQ(design.changedKeys(), (std::set<std::string_view>{"BTYPE", "HAND"}));
}

TEST(ButtonDesign, TheSameValueAlsoMarksItsKey) {
  ButtonDesign design;
  design.set(&ButtonProperties::ButtonType, 2);
  EXPECT_TRUE(design.changedKeys().contains("BTYPE"));
}

TEST(ButtonDesign, FieldsOfTheSameTypeHaveTheirOwnKeys) {
  ButtonDesign design;
  EXPECT_EQ(design.set(&ButtonProperties::BackColor, 1U), "BCOL");
  EXPECT_EQ(design.set(&ButtonProperties::ForeOver, 1U), "FCOLO");
  EXPECT_EQ(design.set(&ButtonProperties::PictureOver, Picture()), "PICH");
}

TEST(ButtonDesign, SavingStoresAllAndClearsTheMarks) {
  ButtonDesign design;
  design.set(&ButtonProperties::Caption, std::string("Start"));
  PropertyBag bag;
  design.save(bag);
  EXPECT_TRUE(design.changedKeys().empty());
  EXPECT_EQ(bag.read("TX", std::string()), "Start");
}

}  // namespace
}  // namespace zelvreg::controls
