#include "desktop/RowOrder.h"

#include <gtest/gtest.h>

#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

class RowOrderTest : public ::testing::Test {
 protected:
  void add(std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
      list.add(text);
    }
    order.follow(list);
  }
  void sortAll() {
    while (!order.sort(3, list, [this](std::size_t row) { return list.text(row, 0); })) {
    }
  }
  // What the window shows, from top to bottom.
  [[nodiscard]] std::string shown() const {
    std::string texts;
    for (std::size_t item = 0; item < order.count(); ++item) {
      texts += list.text(order.rowAt(item), 0);
      EXPECT_EQ(order.itemOf(order.rowAt(item)), item);
    }
    return texts;
  }

  Form42 form;
  ListView& list = form.View2;
  RowOrder order;
};

TEST_F(RowOrderTest, AHeadingSortsUpwardsThenDownwardsThenNotAtAll) {
  add({"b", "c", "a"});
  EXPECT_EQ(shown(), "bca");
  order.click(0);
  EXPECT_EQ(shown(), "bca");
  sortAll();
  EXPECT_EQ(shown(), "abc");
  order.click(0);
  sortAll();
  EXPECT_EQ(shown(), "cba");
  order.click(0);
  sortAll();
  EXPECT_EQ(shown(), "bca");
  EXPECT_FALSE(order.sorting());
  // The list has kept its order all the time.
  EXPECT_EQ(list.text(1, 0), "b");
}

TEST_F(RowOrderTest, AnotherHeadingBeginsUpwards) {
  add({"b", "a"});
  order.click(0);
  order.click(0);
  order.click(3);
  EXPECT_EQ(order.sorting(), (SortedBy{3, false}));
}

TEST_F(RowOrderTest, RowsThatComeAreAtTheEndUntilTheNextSorting) {
  add({"c", "b"});
  order.click(0);
  sortAll();
  add({"d", "a"});
  EXPECT_EQ(shown(), "bcda");
  EXPECT_TRUE(order.isUnsorted());
  sortAll();
  EXPECT_EQ(shown(), "abcd");
  EXPECT_FALSE(order.isUnsorted());
}

TEST_F(RowOrderTest, RowsThatComeWhileItIsSortedAreSortedWithTheOthers) {
  add({"e", "d", "c", "b"});
  order.click(0);
  EXPECT_FALSE(order.sort(5, list, [this](std::size_t row) { return list.text(row, 0); }));
  add({"a"});
  sortAll();
  EXPECT_EQ(shown(), "abcde");
}

TEST_F(RowOrderTest, AfterRowsHaveGoneTheListsOwnOrderIsShownUntilTheNextSorting) {
  add({"c", "b", "a", "d"});
  order.click(0);
  sortAll();
  list.remove(2);
  order.follow(list);
  EXPECT_EQ(shown(), "cad");
  sortAll();
  EXPECT_EQ(shown(), "acd");
  list.clear();
  list.add("z");
  order.follow(list);
  EXPECT_EQ(shown(), "z");
}

TEST_F(RowOrderTest, HiddenRowsHaveNoItemSortedOrNot) {
  add({"c", "b", "a"});
  list.setHidden(2, true);
  order.follow(list);
  EXPECT_EQ(shown(), "ca");
  EXPECT_EQ(order.itemOf(2), std::nullopt);
  order.click(0);
  sortAll();
  EXPECT_EQ(shown(), "ac");
  list.setHidden(2, false);
  order.follow(list);
  EXPECT_EQ(shown(), "abc");
  EXPECT_FALSE(order.isUnsorted());
}

TEST_F(RowOrderTest, OutsideTheListThereIsNothing) {
  add({"a"});
  EXPECT_EQ(order.rowAt(1), 0U);
  EXPECT_EQ(order.itemOf(0), std::nullopt);
  EXPECT_EQ(order.itemOf(2), std::nullopt);
}

}  // namespace
}  // namespace zelvreg::desktop
