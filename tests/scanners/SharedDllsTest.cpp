#include "scanners/SharedDlls.h"

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ScannerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string key64 =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\SharedDLLs";
const std::string key32 =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\SharedDLLs";
const std::string report64 = "Software\\Microsoft\\windows\\currentversion\\SharedDlls";
const std::string report32 =
    "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\SharedDlls";
using fixture::countKey;
const std::string gone = "C:\\SharedDllsTest\\gone.dll";
const std::string there = "C:\\SharedDllsTest\\There.dll";

class SharedDllsTest : public fixture::ScannerFixture {
 protected:
  SharedDllsTest() {
    emptyKey(key64);
    emptyKey(key32);
    emptyKey(countKey);
    makeFile(there);
    form.View1.add("fonts");
    form.View1.add("dlls");
  }

  static std::vector<std::string> finding(const std::string& dll, const std::string& key) {
    return {dll, dll, "2", "HKEY_LOCAL_MACHINE", key, "b"};
  }
  static std::vector<std::string> locationAlone(const std::string& dll) {
    return {dll, "", "", "", "", ""};
  }
};

TEST_F(SharedDllsTest, ASecondPassOverridesTheFieldsOfTheFirst) {
  setNumber(key64, gone, 1);
  setNumber(key64, there, 1);
  Command2(form);
  ASSERT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(gone, report32));
  EXPECT_EQ(fixture::findingOf(form, 2), locationAlone(gone));
  EXPECT_EQ(form.View2.rowInView(), 2U);
}

TEST_F(SharedDllsTest, EntriesOfThe32BitKeyFillTheRowsThatFollow) {
  const std::string gone32 = "C:\\SharedDllsTest\\gone32.dll";
  setNumber(key64, gone, 1);
  setNumber(key32, gone32, 1);
  Command2(form);
  // Appended: gone, then gone and gone32; the fields of the second pass go to rows 1 and 2.
  ASSERT_EQ(form.View2.count(), 3U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(gone, report32));
  EXPECT_EQ(fixture::findingOf(form, 2),
            (std::vector<std::string>{gone, gone32, "2", "HKEY_LOCAL_MACHINE", report32, "b"}));
  EXPECT_EQ(fixture::findingOf(form, 3), locationAlone(gone32));
}

TEST_F(SharedDllsTest, EntriesOfThe32BitKeyAloneAreWholeFromTheFirstPassOn) {
  setNumber(key32, gone, 1);
  Command2(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(gone, report32));
}

TEST_F(SharedDllsTest, RowsAreNumberedFromWhereTheScannerBeforeEnded) {
  form.View2.add("font");
  form.Text1.setText("1");
  setNumber(key32, gone, 1);
  Command2(form);
  EXPECT_EQ(fixture::findingOf(form, 1), locationAlone("font"));
  EXPECT_EQ(fixture::findingOf(form, 2), finding(gone, report32));
  EXPECT_EQ(form.Text1.text(), "2");
}

TEST_F(SharedDllsTest, AnExistingDllLosesAllAttributesButArchive) {
  SetFileAttributesW(Wide(there).get(),
                     FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  setNumber(key64, there, 1);
  Command2(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(GetFileAttributesW(Wide(there).get()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(SharedDllsTest, AMissingDllOfTheSystemFolderIsReported) {
  const std::string dll = "C:\\Windows\\System32\\shared dlls test.dll";
  setNumber(key32, dll, 1);
  Command2(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, locationColumn), dll);
}

TEST_F(SharedDllsTest, TheCountOfBothPassesIsShownAndEachFindingKept) {
  setNumber(key64, gone, 1);
  std::vector<std::string> kept;
  form.messages.serveHost = [&] { kept.push_back(storedText(countKey, "reg-count")); };
  Command2(form);
  EXPECT_EQ(form.View1.text(2, problemsColumn), "2");
  EXPECT_EQ(kept, (std::vector<std::string>{"(none)", "1"}));
  EXPECT_EQ(storedText(countKey, "reg-count"), "2");
}

TEST_F(SharedDllsTest, WithoutFindingsTheCellShowsZeroAndTheRowCountStays) {
  setNumber(key64, there, 1);
  form.View2.add("font");
  Command2(form);
  EXPECT_EQ(form.View1.text(2, problemsColumn), "0");
  EXPECT_EQ(form.Text1.text(), "1");
}

TEST_F(SharedDllsTest, MissingKeysFindNothing) {
  removeKey(key64);
  removeKey(key32);
  Command2(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.View1.text(2, problemsColumn), "0");
}

TEST_F(SharedDllsTest, TheStatusLineNamesTheCategory) {
  Command2(form);
  EXPECT_EQ(form.Label4.caption.get(), textOf(form, categories()[1].caption));
}

TEST_F(SharedDllsTest, WhatTheUserExcludedIsAddedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_LOCAL_MACHINE\r\n");
  setNumber(key32, gone, 1);
  Command2(form);
  EXPECT_EQ(form.View2.count(), 1U);
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
