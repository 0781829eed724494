#include "registry/SubkeyEnumerators.h"

#include "keys/RootHandles.h"
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
};

TEST_F(SubkeyEnumeratorsTest, NamesComeInUpperCaseOrderAsTheyAreWritten) {
  const Enumeration listed = fEnumKey(form, HiveHandle::LocalMachine, parent);
  EXPECT_EQ(entriesOf(form.List1), (Names{"A", "b", "c"}));
  EXPECT_EQ(listed.names, std::string("A\0b\0c\0\0", 7));
  EXPECT_EQ(listed.rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, AnEmptyKeyAddsNothingAndLeavesTwoNuls) {
  emptyKey(hklm + parent);
  form.List1.add("before");
  const Enumeration listed = fEnumKey(form, HiveHandle::LocalMachine, parent);
  EXPECT_EQ(entriesOf(form.List1), (Names{"before"}));
  EXPECT_EQ(listed.names, std::string("\0\0", 2));
  EXPECT_EQ(listed.rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, ARefusedHiveTextLeavesTheListAndGives99) {
  form.List1.add("before");
  for (const char* hive : {"HKCC", "HKDD", "nonsense", ""}) {
    const Enumeration listed = fEnumKey(form, HiveFromShortName(hive), parent);
    EXPECT_EQ(listed.rc, 99) << hive;
    EXPECT_EQ(listed.names, "") << hive;
  }
  EXPECT_EQ(entriesOf(form.List1), (Names{"before"}));
}

TEST_F(SubkeyEnumeratorsTest, AMissingKeyGivesItsCodeAndNoNul) {
  const Enumeration listed = fEnumKey(form, HiveHandle::LocalMachine, parent + "\\None");
  EXPECT_EQ(listed.rc, 2);
  EXPECT_EQ(listed.names, "");
}

TEST_F(SubkeyEnumeratorsTest, AStopKeepsTheNamesFoundAndLeavesTheListOfNamesOpen) {
  form.messages.post([this] { form.messages.post([this] { form.Text2.setText("2"); }); });
  const Enumeration listed = fEnumKey(form, HiveHandle::LocalMachine, parent);
  EXPECT_EQ(entriesOf(form.List1), (Names{"A"}));
  EXPECT_EQ(listed.names, std::string("A\0", 2));
  EXPECT_EQ(listed.rc, 0);
}

TEST_F(SubkeyEnumeratorsTest, TheStatusLineShowsEachName) {
  fEnumKey(form, HiveHandle::LocalMachine, parent);
  EXPECT_EQ(form.Label3.caption.get(), "c");
}

TEST_F(SubkeyEnumeratorsTest, TheInnerLevelClearsItsListAlsoForAMissingKey) {
  form.List4.add("before");
  const Enumeration listed = fEnumKey1(form, HiveHandle::LocalMachine, parent + "\\None");
  EXPECT_EQ(form.List4.count(), 0);
  EXPECT_EQ(listed.rc, 2);
}

TEST_F(SubkeyEnumeratorsTest, TheInnerLevelDoesNotServeTheMessageQueue) {
  bool isServed = false;
  form.messages.post([&] { isServed = true; });
  fEnumKey1(form, HiveHandle::LocalMachine, parent);
  EXPECT_FALSE(isServed);
  EXPECT_EQ(entriesOf(form.List4), (Names{"A", "b", "c"}));
}

TEST_F(SubkeyEnumeratorsTest, TheInnerLevelStoppedStillClosesTheListOfNames) {
  form.Text2.setText("2");
  const Enumeration listed = fEnumKey1(form, HiveHandle::LocalMachine, parent);
  EXPECT_EQ(listed.names, std::string("\0\0", 2));
  EXPECT_EQ(listed.rc, 0);
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
