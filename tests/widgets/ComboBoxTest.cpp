#include "widgets/ComboBox.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

ComboBox& filled(ComboBox& box) {
  box.add("one");
  box.add("two");
  return box;
}

TEST(ComboBox, ChoosingAnEntryTakesItsText) {
  ComboBox box(ComboStyle::DropDownList);
  filled(box).setListIndex(1);
  EXPECT_EQ(box.text(), "two");
  EXPECT_EQ(box.listIndex(), 1);
}

TEST(ComboBox, APositionOutsideTheListIsRefused) {
  ComboBox box(ComboStyle::DropDownList);
  filled(box).setListIndex(0);
  box.setListIndex(2);
  box.setListIndex(-1);
  EXPECT_EQ(box.listIndex(), 0);
  EXPECT_EQ(box.entry(2), "");
  EXPECT_EQ(box.entry(-1), "");
}

TEST(ComboBox, ATextThatIsListedChoosesItsEntry) {
  ComboBox box(ComboStyle::DropDownList);
  filled(box).setText("two");
  EXPECT_EQ(box.listIndex(), 1);
}

TEST(ComboBox, OnlyAnEditableOneTakesAnyText) {
  ComboBox list(ComboStyle::DropDownList);
  filled(list).setListIndex(0);
  list.setText("three");
  EXPECT_EQ(list.text(), "one");

  ComboBox editable(ComboStyle::Editable);
  filled(editable).setListIndex(0);
  editable.setText("three");
  EXPECT_EQ(editable.text(), "three");
  EXPECT_EQ(editable.listIndex(), -1);
}

TEST(ComboBox, EachChangeOfTheTextIsReported) {
  ComboBox box(ComboStyle::Editable);
  int told = 0;
  box.onChange = [&told] { ++told; };
  filled(box).setListIndex(0);
  box.setText("x");
  box.setListIndex(9);
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace zelvreg
