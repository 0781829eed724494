#include "widgets/ListView.h"

#include <gtest/gtest.h>

#include <set>

#include "widgets/ListBox.h"
#include "widgets/SimpleControls.h"

namespace zelvreg {
namespace {

class ListViewTest : public ::testing::Test {
 protected:
  ImageList icons{{"a", "b"}};
  MessageQueue queue{{}};
  ListView list{icons, queue, {{"Item"}, {"One"}, {"Two"}, {"Three"}}};
};

TEST_F(ListViewTest, RowsCountFromOneInTheOrderOfAdding) {
  EXPECT_EQ(list.add("first"), 1U);
  EXPECT_EQ(list.add("second"), 2U);
  EXPECT_EQ(list.text(1, 0), "first");
  EXPECT_EQ(list.text(2, 0), "second");
}

TEST_F(ListViewTest, ReadingOutsideGivesNothingAndWritingOutsideDoesNothing) {
  list.add("only");
  list.setText(2, 1, "x");
  list.setText(0, 0, "x");
  list.setText(1, 4, "x");
  list.setChecked(2, true);
  list.setRowColor(2, 255);
  list.remove(2);
  EXPECT_EQ(list.count(), 1U);
  EXPECT_EQ(list.text(1, 0), "only");
  EXPECT_EQ(list.text(1, 4), "");
  EXPECT_EQ(list.text(2, 1), "");
  EXPECT_FALSE(list.isChecked(2));
  EXPECT_EQ(list.rowColor(2), 0U);
}

TEST_F(ListViewTest, ACellEndsAtItsFirstNul) {
  list.add(std::string_view("a\0b", 3));
  list.setText(1, 2, std::string_view("c\0d", 3));
  EXPECT_EQ(list.text(1, 0), "a");
  EXPECT_EQ(list.text(1, 2), "c");
}

TEST_F(ListViewTest, TheSubItemAddedLastAtAPositionIsShown) {
  list.add("row");
  list.setText(1, 3, "");
  list.addSubItem(1, 3, "Testing", "a");
  list.addSubItem(1, 3, "Finished", "b");
  EXPECT_EQ(list.text(1, 3), "Finished");
  EXPECT_EQ(list.reportIcon(1, 3), "b");
  EXPECT_EQ(list.text(1, 4), "Testing");
}

TEST_F(ListViewTest, ACellKeepsItsStyleWhenItsTextChanges) {
  constexpr CellStyle red{.isBold = true, .color = 192};
  list.add("row");
  list.setText(1, 2, "1");
  list.setCellStyle(1, 2, red);
  list.setText(1, 2, "2");
  EXPECT_EQ(list.cellStyle(1, 2), red);
  EXPECT_EQ(list.cellStyle(1, 1), CellStyle{});
}

TEST_F(ListViewTest, ACellThatIsNotThereHasNoStyle) {
  list.add("row");
  list.setCellStyle(1, 2, {.isBold = true, .color = 192});
  list.setCellStyle(2, 1, {.isBold = true, .color = 192});
  EXPECT_EQ(list.cellStyle(1, 2), CellStyle{});
  EXPECT_EQ(list.cellStyle(2, 1), CellStyle{});
}

TEST_F(ListViewTest, ASubItemIsNotAddedAfterAGap) {
  list.add("row");
  list.addSubItem(1, 3, "x", "a");
  EXPECT_EQ(list.text(1, 3), "");
}

TEST_F(ListViewTest, AnIconThatTheImageListLacksIsRefused) {
  list.add("row");
  list.setSmallIcon(1, "k");
  EXPECT_EQ(list.smallIcon(1), "");
  list.setSmallIcon(1, "a");
  list.setSmallIcon(1, "k");
  EXPECT_EQ(list.smallIcon(1), "a");
}

TEST_F(ListViewTest, TheHighlightStaysOnItsRowWhenOthersAreRemoved) {
  list.add("1");
  list.add("2");
  list.add("3");
  list.select(3);
  list.remove(1);
  EXPECT_EQ(list.selectedRow(), 2U);
  list.remove(2);
  EXPECT_EQ(list.selectedRow(), 0U);
}

TEST_F(ListViewTest, RowsThatGoAtOnceLeaveWhatRemovingEachOneLeaves) {
  constexpr std::size_t count = 7;
  for (unsigned going = 0; going < 1U << count; ++going) {
    const auto goes = [going](std::size_t row) { return (going >> (row - 1) & 1) != 0; };
    ListView other{icons, queue, {{"Item"}}};
    list.clear();
    for (std::size_t row = 1; row <= count; ++row) {
      for (ListView* each : {&list, &other}) {
        each->add(std::to_string(row));
        each->setChecked(row, row % 2 == 0);
        each->setSelected(row, row == going % count + 1);
        each->setItemData(row, row * 10);
      }
    }
    list.removeWhere(goes);
    for (std::size_t row = count; row > 0; --row) {
      if (goes(row)) {
        other.remove(row);
      }
    }
    ASSERT_EQ(list.count(), other.count());
    EXPECT_EQ(list.selectedRow(), other.selectedRow()) << going;
    for (std::size_t row = 1; row <= list.count(); ++row) {
      EXPECT_EQ(list.text(row, 0), other.text(row, 0));
      EXPECT_EQ(list.isChecked(row), other.isChecked(row));
      EXPECT_EQ(list.isSelected(row), other.isSelected(row));
      EXPECT_EQ(list.itemData(row), other.itemData(row));
    }
  }
}

TEST_F(ListViewTest, HoldsAHundredThousandRows) {
  for (int row = 1; row <= 100000; ++row) {
    list.add("row");
  }
  list.setText(100000, 1, "last");
  EXPECT_EQ(list.text(100000, 1), "last");
}

class RecordingPeer : public ControlPeer {
 public:
  void changed(const Control& /*control*/, Change what, std::size_t row) override {
    changes.emplace_back(what, row);
  }
  std::vector<std::pair<Change, std::size_t>> changes;
};

TEST_F(ListViewTest, TellsAnAttachedPeerWhatChanged) {
  RecordingPeer peer;
  list.add("before");
  list.attach(&peer);
  list.add("row");
  list.setText(2, 1, "x");
  list.setChecked(2, true);
  list.setText(9, 1, "outside");
  list.attach(nullptr);
  list.clear();
  EXPECT_EQ(peer.changes, (std::vector<std::pair<Change, std::size_t>>{
                              {Change::Rows, 2}, {Change::Row, 2}, {Change::Checks, 2}}));
}

TEST_F(ListViewTest, TellsOnceOfAllRowsThatGoAndNothingIfNoneDoes) {
  RecordingPeer peer;
  for (int row = 1; row <= 5; ++row) {
    list.add("row");
  }
  list.attach(&peer);
  list.removeWhere([](std::size_t /*row*/) { return false; });
  list.removeWhere([](std::size_t row) { return row != 2; });
  list.attach(nullptr);
  EXPECT_EQ(peer.changes, (std::vector<std::pair<Change, std::size_t>>{{Change::Rows, 0}}));
}

TEST(Property, TellsThePeerEvenIfTheValueIsTheSame) {
  RecordingPeer peer;
  Label label("text");
  label.attach(&peer);
  label.caption = "text";
  label.visible = false;
  EXPECT_EQ(peer.changes.size(), 2U);
  EXPECT_FALSE(label.visible);
}

TEST(Property, ThatIsRenewedTellsThePeerOnlyOfAnotherValue) {
  RecordingPeer peer;
  Label label("text");
  label.attach(&peer);
  label.caption.renew("text");
  EXPECT_TRUE(peer.changes.empty());
  label.caption.renew("other");
  EXPECT_EQ(label.caption.get(), "other");
  EXPECT_EQ(peer.changes.size(), 1U);
}

TEST(Property, TakesTheValueOfAnother) {
  Label one("one");
  Label two("two");
  one.caption = two.caption;
  two.caption = "changed";
  EXPECT_EQ(one.caption.get(), "two");
}

TEST_F(ListViewTest, HighlightedRowsAreCountedAsTheyComeAndGo) {
  for (int row = 0; row < 6; ++row) {
    list.add("row");
    list.setSelected(list.count(), true);
    list.setSelected(list.count(), true);
  }
  EXPECT_EQ(list.selectedCount(), 6U);
  list.setSelected(1, false);
  list.setSelected(1, false);
  list.remove(1);
  list.remove(1);
  EXPECT_EQ(list.selectedCount(), 4U);
  list.removeWhere([](std::size_t row) { return row <= 2; });
  EXPECT_EQ(list.selectedCount(), 2U);
  list.select(1);
  EXPECT_EQ(list.selectedCount(), 1U);
  EXPECT_FALSE(list.isSelected(2));
  list.clear();
  EXPECT_EQ(list.selectedCount(), 0U);
}

TEST_F(ListViewTest, ItsRevisionIsAnotherAfterRowsHaveComeOrGone) {
  std::set<std::size_t> revisions{list.revision()};
  list.add("a");
  revisions.insert(list.revision());
  list.add("b");
  revisions.insert(list.revision());
  list.remove(1);
  revisions.insert(list.revision());
  list.removeWhere([](std::size_t /*row*/) { return true; });
  revisions.insert(list.revision());
  list.add("c");
  revisions.insert(list.revision());
  list.clear();
  revisions.insert(list.revision());
  EXPECT_EQ(revisions.size(), 7U);
}

TEST_F(ListViewTest, ManyRowsThatGoAreFreedByTheQueue) {
  const auto fill = [this] {
    for (std::size_t row = 0; row <= MessageQueue::mostFreedAtOnce; ++row) {
      list.add("row");
    }
  };
  fill();
  list.clear();
  EXPECT_EQ(list.count(), 0U);
  EXPECT_TRUE(queue.hasWork());
  queue.doEvents();
  queue.doEvents();
  EXPECT_FALSE(queue.hasWork());
  list.add("stays");
  fill();
  list.removeWhere([](std::size_t row) { return row > 1; });
  EXPECT_EQ(list.count(), 1U);
  EXPECT_TRUE(queue.hasWork());
}

TEST(ListBoxTest, ManyEntriesThatGoAreFreedByTheQueue) {
  MessageQueue queue{{}};
  ListBox list(queue);
  for (std::size_t entry = 0; entry <= MessageQueue::mostFreedAtOnce; ++entry) {
    list.add("entry");
  }
  list.clear();
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(queue.hasWork());
}

TEST(ListBoxTest, GivesTheEmptyTextPastItsEnd) {
  MessageQueue queue{{}};
  ListBox list(queue);
  list.add("a");
  EXPECT_EQ(list.text(0), "a");
  EXPECT_EQ(list.text(1), "");
  EXPECT_EQ(list.text(-1), "");
  list.clear();
  EXPECT_EQ(list.count(), 0);
}

TEST(ListBoxTest, KeepsEmptyEntriesAndCutsAtNul) {
  MessageQueue queue{{}};
  ListBox list(queue);
  list.add("");
  list.add(std::string_view("a\0b", 3));
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.text(1), "a");
}

TEST(ProgressBarTest, RefusesAMaximumThatIsNotAboveZero) {
  ProgressBar bar;
  bar.setMaximum(16);
  bar.setMaximum(0);
  EXPECT_EQ(bar.maximum(), 16);
}

TEST(ProgressBarTest, RefusesAValueOutsideItsRange) {
  ProgressBar bar;
  bar.setMaximum(2);
  bar.setValue(2);
  bar.setValue(3);
  bar.setValue(-1);
  EXPECT_EQ(bar.value(), 2);
}

TEST(TextBoxTest, RunsItsHandlerAfterEachChange) {
  TextBox box;
  std::vector<std::string> seen;
  box.onChange = [&] { seen.push_back(box.text()); };
  box.setText("1");
  box.setText("1");
  EXPECT_EQ(seen, (std::vector<std::string>{"1", "1"}));
}

TEST_F(ListViewTest, TheTickOfALockedRowDoesNotChange) {
  list.add("first");
  list.add("second");
  list.setChecked(1, true);
  list.setLocked(1, true);
  list.setChecked(1, false);
  list.setChecked(2, true);
  EXPECT_TRUE(list.isChecked(1));
  EXPECT_TRUE(list.isChecked(2));
  EXPECT_TRUE(list.isLocked(1));
  EXPECT_FALSE(list.isLocked(2));
  list.setLocked(1, false);
  list.setChecked(1, false);
  EXPECT_FALSE(list.isChecked(1));
}

}  // namespace
}  // namespace zelvreg
