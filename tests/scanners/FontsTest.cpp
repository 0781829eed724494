#include "scanners/Fonts.h"

#include "form/Form42.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "scanners/ScannerFixture.h"

namespace zelvreg {
namespace {

const std::string windowsKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
const std::string windowsNtKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
const std::string fontsKey = windowsNtKey + "\\Fonts";
using fixture::countKey;

class FontsTest : public fixture::ScannerFixture {
 protected:
  FontsTest() {
    emptyKey(fontsKey);
    emptyKey(countKey);
    setText(windowsKey, "SystemRoot", "C:\\FontsTest");
    makeFile("C:\\FontsTest\\fonts\\there.ttf");
    form.View1.add("fonts");
  }

  static std::vector<std::string> finding(const std::string& name, const std::string& data) {
    return {name,
            data,
            "1",
            "HKEY_LOCAL_MACHINE",
            "Software\\Microsoft\\windows\\currentversion\\fonts",
            "a"};
  }
};

TEST_F(FontsTest, AFontWhoseFileIsGoneIsReportedUnderTheSpellingWithoutNt) {
  setText(fontsKey, "Gone (TrueType)", "gone.ttf");
  setText(fontsKey, "There (TrueType)", "there.ttf");
  Command1(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding("Gone (TrueType)", "gone.ttf"));
  EXPECT_EQ(form.View1.text(1, problemsColumn), "1");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "1");
}

TEST_F(FontsTest, TheListFollowsEachFinding) {
  form.View2.add("before");
  setText(fontsKey, "Gone", "gone.ttf");
  setText(fontsKey, "Gone too", "gone too.ttf");
  Command1(form);
  EXPECT_EQ(form.View2.rowInView(), 3U);
}

TEST_F(FontsTest, AnAbsolutePathIsReportedEvenIfItsFileIsThere) {
  setText(fontsKey, "Absolute", "C:\\FontsTest\\fonts\\there.ttf");
  Command1(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding("Absolute", "C:\\FontsTest\\fonts\\there.ttf"));
}

TEST_F(FontsTest, APathIntoTheSystemFolderIsNot) {
  setText(fontsKey, "System", "C:\\Windows\\System32\\none.ttf");
  Command1(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(FontsTest, AFontWithoutDataIsReportedWithAnEmptyBadValue) {
  setText(fontsKey, "Empty", "");
  Command1(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding("Empty", ""));
}

TEST_F(FontsTest, WithoutFindingsTheCellShowsZero) {
  setText(fontsKey, "There", "there.ttf");
  Command1(form);
  EXPECT_EQ(form.View1.text(1, problemsColumn), "0");
  EXPECT_EQ(form.Text1.text(), "0");
}

TEST_F(FontsTest, AnEmptyOrMissingKeyFindsNothing) {
  Command1(form);
  EXPECT_EQ(form.View2.count(), 0U);
  removeKey(fontsKey);
  Command1(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(FontsTest, TheFontsFolderIsFoundThroughTheOtherSpelling) {
  setText(windowsKey, "SystemRoot", "  ");
  setText(windowsNtKey, "SystemRoot", "C:\\FontsTest");
  setText(fontsKey, "There", "there.ttf");
  Command1(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(FontsTest, TheDataIsTrimmedOnlyInTheReport) {
  setText(fontsKey, "Blank", " gone.ttf ");
  Command1(form);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "gone.ttf");
  EXPECT_EQ(form.Label3.caption.get(), " gone.ttf ");
}

TEST_F(FontsTest, TheQueueIsServedAtEachFontAndTheListsAreEmptiedFirst) {
  form.List1.add("before");
  form.List2.add("before");
  setText(fontsKey, "a", "there.ttf");
  setText(fontsKey, "b", "there.ttf");
  int served = 0;
  form.messages.serveHost = [&served] { ++served; };
  fEnumValue(form, HiveHandle::LocalMachine, scannedKeys::fonts);
  const int whileListing = served;
  Command1(form);
  EXPECT_EQ(served - 2 * whileListing, 2);
  EXPECT_EQ(form.List1.count(), 2);
  EXPECT_EQ(form.List2.count(), 0);
}

TEST_F(FontsTest, ACancelEndsTheWalk) {
  setText(fontsKey, "a", "gone.ttf");
  setText(fontsKey, "b", "gone.ttf");
  form.messages.post([this] { form.Text2.setText("2"); });
  Command1(form);
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(FontsTest, TheStatusLineNamesTheCategory) {
  Command1(form);
  EXPECT_EQ(form.Label4.caption.get(), textOf(form, categories()[0].caption));
}

TEST_F(FontsTest, TheRunningTotalIsSavedOnceAtTheEnd) {
  setText(fontsKey, "a", "gone.ttf");
  std::string seen;
  form.messages.serveHost = [&] { seen = storedText(countKey, "reg-count"); };
  setText(fontsKey, "b", "gone.ttf");
  Command1(form);
  EXPECT_EQ(seen, "(none)");
  EXPECT_EQ(storedText(countKey, "reg-count"), "2");
}

}  // namespace
}  // namespace zelvreg
