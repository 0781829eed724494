#include "registry/SubkeyEnumerators.h"

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using fixture::entriesOf;
using Names = std::vector<std::string>;

const std::string hklm = "HKEY_LOCAL_MACHINE\\";
const std::string parent = "SOFTWARE\\EnumeratorsTest";

class SubkeyEnumeratorsTest : public fixture::ComputerFixture {
 protected:
  SubkeyEnumeratorsTest() {
    emptyKey(hklm + parent);
    for (const char* name : {"b", "A", "c"}) {
      makeKey(hklm + parent + "\\" + name);
    }
    form.Text2.setText("1");
  }

  std::string names;
  LONG rc = -1;
};

TEST_F(SubkeyEnumeratorsTest, NamesComeInUpperCaseOrderAsTheyAreWritten) {
  fEnumKey(form, "HKLM", parent, names, rc);
  EXPECT_EQ(entriesOf(form.List1), (Names{"A", "b", "c"}));
  EXPECT_EQ(names, std::string("A\0b\0c\0\0", 7));
  EXPECT_EQ(rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, AnEmptyKeyAddsNothingAndLeavesTwoNuls) {
  emptyKey(hklm + parent);
  form.List1.add("before");
  fEnumKey(form, "HKLM", parent, names, rc);
  EXPECT_EQ(entriesOf(form.List1), (Names{"before"}));
  EXPECT_EQ(names, std::string("\0\0", 2));
  EXPECT_EQ(rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, ARefusedHiveTextLeavesTheListAndGives99) {
  form.List1.add("before");
  for (const char* hive : {"HKCC", "HKDD", "nonsense", ""}) {
    rc = -1;
    fEnumKey(form, hive, parent, names, rc);
    EXPECT_EQ(rc, 99) << hive;
  }
  EXPECT_EQ(entriesOf(form.List1), (Names{"before"}));
  EXPECT_EQ(names, "");
}

TEST_F(SubkeyEnumeratorsTest, AMissingKeyGivesItsCodeAndNoNul) {
  fEnumKey(form, "HKLM", parent + "\\None", names, rc);
  EXPECT_EQ(rc, 2);
  EXPECT_EQ(names, "");
}

TEST_F(SubkeyEnumeratorsTest, AStopKeepsTheNamesFoundAndLeavesTheListOfNamesOpen) {
  form.messages.post([this] { form.messages.post([this] { form.Text2.setText("2"); }); });
  fEnumKey(form, "HKLM", parent, names, rc);
  EXPECT_EQ(entriesOf(form.List1), (Names{"A"}));
  EXPECT_EQ(names, std::string("A\0", 2));
  EXPECT_EQ(rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, TheStatusLineShowsEachName) {
  fEnumKey(form, "HKLM", parent, names, rc);
  EXPECT_EQ(form.Label3.caption.get(), "c");
}

TEST_F(SubkeyEnumeratorsTest, TheCounterpartSeesThe32BitView) {
  emptyKey(hklm + "SOFTWARE\\Wow6432Node\\EnumeratorsTest");
  makeKey(hklm + "SOFTWARE\\Wow6432Node\\EnumeratorsTest\\only32");
  fEnumKeyno(form, "HKLM", parent, names, rc);
  EXPECT_EQ(entriesOf(form.List1), (Names{"only32"}));
  EXPECT_EQ(rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, TheCounterpartStoppedGivesNoCode) {
  form.Text2.setText("2");
  fEnumKeyno(form, "HKLM", "SOFTWARE", names, rc);
  EXPECT_EQ(rc, -1);
  EXPECT_EQ(names, "");
}

TEST_F(SubkeyEnumeratorsTest, TheInnerLevelClearsItsListAlsoForAMissingKey) {
  form.List4.add("before");
  fEnumKey1(form, "HKLM", parent + "\\None", names, rc);
  EXPECT_EQ(form.List4.count(), 0);
  EXPECT_EQ(rc, 2);
}

TEST_F(SubkeyEnumeratorsTest, TheInnerLevelDoesNotServeTheMessageQueue) {
  bool isServed = false;
  form.messages.post([&] { isServed = true; });
  fEnumKey1(form, "HKLM", parent, names, rc);
  EXPECT_FALSE(isServed);
  EXPECT_EQ(entriesOf(form.List4), (Names{"A", "b", "c"}));
}

TEST_F(SubkeyEnumeratorsTest, TheInnerLevelStoppedStillClosesTheListOfNames) {
  form.Text2.setText("2");
  fEnumKey1(form, "HKLM", parent, names, rc);
  EXPECT_EQ(names, std::string("\0\0", 2));
  EXPECT_EQ(rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, TwoOfThemOnlyTellWhetherThereIsASubkey) {
  fEnumKey5(form, "HKLM", parent, names, rc);
  fEnumKey6(form, "HKLM", parent, names, rc);
  EXPECT_EQ(entriesOf(form.List5), (Names{"A"}));
  EXPECT_EQ(entriesOf(form.List6), (Names{"A"}));
  EXPECT_EQ(names, std::string("A\0\0A\0\0", 6));
}

TEST_F(SubkeyEnumeratorsTest, OnlyTheNumberTwoStopsAWalk) {
  for (const char* state : {"", "0", "1", "20", "x2"}) {
    form.Text2.setText(state);
    EXPECT_FALSE(isStopAsked(form)) << state;
  }
  form.Text2.setText("2 and more");
  EXPECT_TRUE(isStopAsked(form));
}

}  // namespace
}  // namespace zelvreg
