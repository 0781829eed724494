#include "shell/ScanFollower.h"

#include "languages/Texts.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct Notice {
  std::string title;
  std::string text;

  bool operator==(const Notice&) const = default;
};

struct Signs : ScanSigns {
  void showTask(const TaskProgress& task) override { tasks.push_back(task); }
  bool isInFront() override { return isFront; }
  void showNotice(const std::string& title, const std::string& text) override {
    notices.push_back({title, text});
  }

  bool isFront = false;
  std::vector<TaskProgress> tasks;
  std::vector<Notice> notices;
};

// A scan of the rows 2, 5 and 9, on a clock that the test moves.
class ScanFollowerTest : public fixture::ComputerFixture {
 protected:
  ScanFollowerTest() {
    emptyKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan");
    constexpr std::size_t rows = 16;
    for (std::size_t row = 1; row <= rows; ++row) {
      form.View1.add("row");
    }
    for (const std::size_t row : {2U, 5U, 9U}) {
      form.View1.setChecked(row, true);
    }
    form.Bar1.setMaximum(3);
  }

  void keepTimes() {
    ScanTimes times;
    times[2] = seconds(20);
    times[5] = seconds(60);
    times[9] = seconds(10);
    times[0] = seconds(30);
    keepScanTimes(times);
  }

  void test(std::size_t row) {
    form.Text2.setText("1");
    form.testedRow = row;
    follower.follow(now);
  }
  void pass(milliseconds time) {
    now += time;
    follower.follow(now);
  }
  void end() {
    form.Text2.setText("0");
    form.testedRow.reset();
    follower.follow(now);
  }
  const std::string& told() const { return form.ProgressText.caption.get(); }

  Form42 form;
  Signs signs;
  ScanFollower follower{form, signs};
  milliseconds now{5'000};
};

TEST_F(ScanFollowerTest, TheFirstScanTellsItsCategoriesAndNoTime) {
  test(2);
  EXPECT_EQ(told(), "1 of 3");
  EXPECT_EQ(follower.share(), 0);
  pass(seconds(8));
  EXPECT_EQ(told(), "1 of 3");
  form.Bar1.setValue(1);
  test(5);
  EXPECT_EQ(told(), "2 of 3");
  EXPECT_EQ(follower.share(), 1.0 / 3);
  EXPECT_EQ(signs.tasks.back(), (TaskProgress{TaskState::Normal, 333}));
  test(9);
  EXPECT_EQ(told(), "3 of 3");
  test(0);
  EXPECT_EQ(told(), "");
  end();
  EXPECT_EQ(follower.share(), std::nullopt);
  EXPECT_EQ(signs.tasks.back(), TaskProgress());
}

TEST_F(ScanFollowerTest, TheNextScanTellsTheTimeThatIsLeft) {
  keepTimes();
  test(2);
  EXPECT_EQ(told(), "1 of 3  \xC2\xB7  About 2 minutes left");
  pass(seconds(20));
  test(5);
  EXPECT_EQ(told(), "2 of 3  \xC2\xB7  About 2 minutes left");
  pass(seconds(30));
  EXPECT_EQ(told(), "2 of 3  \xC2\xB7  About a minute left");
  EXPECT_DOUBLE_EQ(*follower.share(), 50.0 / 120);
  EXPECT_EQ(signs.tasks.back(), (TaskProgress{TaskState::Normal, 417}));
  pass(seconds(30));
  test(9);
  pass(seconds(10));
  test(0);
  EXPECT_EQ(told(), "About 30 seconds left");
  pass(seconds(25));
  EXPECT_EQ(told(), "Less than 10 seconds left");
  end();
  EXPECT_EQ(told(), "");
}

TEST_F(ScanFollowerTest, WhatIsShownChangesAFewTimesInASecond) {
  keepTimes();
  test(2);
  const std::size_t before = signs.tasks.size();
  for (int count = 0; count < 500; ++count) {
    pass(milliseconds(2));
  }
  EXPECT_EQ(signs.tasks.size(), before + 4);
}

TEST_F(ScanFollowerTest, EachPartsTimeIsKeptWhenTheScanEnds) {
  test(2);
  pass(seconds(3));
  // Row 5 has been too short to be seen.
  test(9);
  EXPECT_EQ(readScanTimes(), ScanTimes());
  pass(seconds(4));
  test(0);
  pass(seconds(2));
  end();
  ScanTimes expected;
  expected[2] = seconds(3);
  expected[5] = seconds(0);
  expected[9] = seconds(4);
  expected[0] = seconds(2);
  EXPECT_EQ(readScanTimes(), expected);
}

TEST_F(ScanFollowerTest, AScanThatIsCancelledKeepsNoTimesAndTellsNone) {
  keepTimes();
  const ScanTimes before = readScanTimes();
  test(2);
  pass(seconds(3));
  form.Text2.setText("2");
  pass(seconds(50));
  EXPECT_EQ(told(), "1 of 3");
  EXPECT_EQ(signs.tasks.back().state, TaskState::Paused);
  // The second look says that it runs.
  form.Text2.setText("1");
  form.testedRow = 0;
  pass(seconds(1));
  EXPECT_EQ(told(), "");
  EXPECT_EQ(signs.tasks.back().state, TaskState::Paused);
  end();
  EXPECT_EQ(readScanTimes(), before);
  EXPECT_EQ(signs.tasks.back(), TaskProgress());
  EXPECT_TRUE(signs.notices.empty());
}

TEST_F(ScanFollowerTest, TheEndOfASearchCannotBeTold) {
  // An earlier scan was cancelled.
  form.Text2.setText("2");
  form.testedRow = 0;
  follower.follow(now);
  EXPECT_EQ(signs.tasks, (std::vector<TaskProgress>{{TaskState::Endless, 0}}));
  EXPECT_EQ(told(), "");
  EXPECT_EQ(follower.share(), std::nullopt);
  pass(seconds(2));
  form.cancelRequested = true;
  pass(seconds(2));
  EXPECT_EQ(signs.tasks.back().state, TaskState::Paused);
  end();
  EXPECT_EQ(signs.tasks.back(), TaskProgress());
  EXPECT_EQ(readScanTimes(), ScanTimes());
}

TEST_F(ScanFollowerTest, ALongScanThatNobodyWatchesEndsWithANotice) {
  test(2);
  pass(ScanFollower::longScan);
  form.View2.add("one");
  form.View2.add("two");
  end();
  EXPECT_EQ(signs.notices,
            (std::vector<Notice>{{"The scan has ended", textOf(form, "problems-found", {"2"})}}));
  form.View2.clear();
  test(2);
  pass(ScanFollower::longScan);
  end();
  EXPECT_EQ(signs.notices.back(), (Notice{"The scan has ended", "No problems were found"}));
}

TEST_F(ScanFollowerTest, AShortScanOrAWatchedOneOrThatOfASuiteEndsWithout) {
  test(2);
  pass(ScanFollower::longScan - milliseconds(1));
  end();
  signs.isFront = true;
  test(2);
  pass(ScanFollower::longScan);
  end();
  signs.isFront = false;
  form.hasCommandLine = true;
  test(2);
  pass(ScanFollower::longScan);
  end();
  EXPECT_TRUE(signs.notices.empty());
}

TEST_F(ScanFollowerTest, AMessageHoldsTheWorkUpOrTellsWhatWentWrong) {
  follower.showMessage(TaskState::Paused);
  EXPECT_TRUE(signs.tasks.empty());
  follower.showMessage(TaskState::Failed);
  EXPECT_EQ(signs.tasks.back(), (TaskProgress{TaskState::Failed, 1000}));
  follower.showMessage(std::nullopt);
  EXPECT_EQ(signs.tasks.back(), TaskProgress());
  form.Bar1.setValue(1);
  test(5);
  follower.showMessage(TaskState::Paused);
  EXPECT_EQ(signs.tasks.back(), (TaskProgress{TaskState::Paused, 333}));
  follower.showMessage(std::nullopt);
  EXPECT_EQ(signs.tasks.back(), (TaskProgress{TaskState::Normal, 333}));
}

}  // namespace
}  // namespace zelvreg
