// What needs planned faults, a 32-bit computer, more keys than Wine makes in a minute, or longer
// paths than it opens by narrow names (260 characters).
#include <algorithm>

#include "machine/Machine.h"
#include "machine/base/FaultPlan.h"
#include "search/DeadPath.h"
#include "search/SearchFixture.h"
#include "text/Wide.h"

namespace zelvreg::searching {
namespace {

using machine::ApiCall;

class SearchNativeTest : public SearchFixture {
 protected:
  static void failCall(ApiCall call, std::uint64_t number, LONG code) {
    machine::Machine::current()->faults().clear();
    machine::Machine::current()->faults().fail(call, number, code);
  }
};

TEST_F(SearchNativeTest, ANameThatIsTooLongEndsTheList) {
  makeKey(userKey + "\\a");
  makeKey(userKey + "\\b");
  ListerState lister;
  failCall(ApiCall::RegEnumKey, 2, ERROR_MORE_DATA);
  EXPECT_EQ(ListSubkeys(form, lister, HiveHandle::CurrentUser, ownKey), (Texts{"a"}));
}

TEST_F(SearchNativeTest, AKeyThatCannotBeOpenedIsSkipped) {
  setGone(userKey + "\\a", "Run");
  setGone(userKey + "\\b", "Run");
  setAccessOfKey(userKey + "\\a", "D:(D;;KA;;;WD)");
  EXPECT_EQ(found().size(), 1U);
}

TEST_F(SearchNativeTest, AKeyIsOpenedOnceInEachViewAndAValueIsReadOnce) {
  makeKey(userKey + "\\a\\b");
  for (const char* name : {"One", "Two"}) {
    setText(userKey + "\\a", name, "C:\\SearchTest\\there.exe");
  }
  auto& faults = machine::Machine::current()->faults();
  faults.clear();
  EXPECT_TRUE(found().empty());
  EXPECT_EQ(faults.calls(ApiCall::RegOpenKey), 4U);
  EXPECT_EQ(faults.calls(ApiCall::RegQueryValue), 2U);
}

TEST_F(SearchNativeTest, ASecondReadOfALongTextThatFailsGivesTheDefault) {
  setText(userKey, "Text", std::string(5000, 't'));
  failCall(ApiCall::RegQueryValue, 2, ERROR_ACCESS_DENIED);
  EXPECT_EQ(ReadValueText(HiveHandle::CurrentUser, ownKey, "Text", "no"), "no");
}

TEST_F(SearchNativeTest, ASecondReadOfBytesThatFailsGivesTheDefault) {
  setBytes(userKey, "Binary", REG_BINARY, "ab");
  failCall(ApiCall::RegQueryValue, 2, ERROR_ACCESS_DENIED);
  EXPECT_EQ(ReadValueBytes(HiveHandle::CurrentUser, ownKey, "Binary", 5), Variant(5));
}

TEST_F(SearchNativeTest, AFileThatIsThereIsAskedForOnce) {
  form.safeguards.touches = false;
  auto& faults = machine::Machine::current()->faults();
  faults.clear();
  EXPECT_FALSE(isDeadPath(form, "C:\\SearchTest\\there.exe"));
  EXPECT_EQ(faults.calls(ApiCall::GetFileAttributes), 1U);
}

// A folder is asked for three times: as what it is, as a file and as a folder.
TEST_F(SearchNativeTest, AFolderThatVanishesMeanwhileIsDeadUnlessTheUserCancels) {
  makeFolder("C:\\SearchTest\\Folder");
  failCall(ApiCall::GetFileAttributes, 3, ERROR_FILE_NOT_FOUND);
  EXPECT_TRUE(isDeadPath(form, "C:\\SearchTest\\Folder"));
  form.cancelRequested = true;
  failCall(ApiCall::GetFileAttributes, 3, ERROR_FILE_NOT_FOUND);
  EXPECT_FALSE(isDeadPath(form, "C:\\SearchTest\\Folder"));
}

TEST_F(SearchNativeTest, DrivesAreFixedOrNotThere) {
  EXPECT_EQ(GetDriveTypeW(Wide("C:\\").get()), DRIVE_FIXED);
  EXPECT_EQ(GetDriveTypeW(Wide("Q:\\").get()), DRIVE_NO_ROOT_DIR);
}

TEST_F(SearchNativeTest, AHundredThousandSiblingsAreWalked) {
  constexpr int count = 100'000;
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, Wide(ownKey).get(), 0, KEY_ALL_ACCESS, &key),
            ERROR_SUCCESS);
  for (int number = 0; number < count; ++number) {
    HKEY child = nullptr;
    RegCreateKeyExW(key, Wide(std::to_string(number)).get(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &child, nullptr);
    RegCloseKey(child);
  }
  RegCloseKey(key);
  setGone(userKey + "\\99999", "Run");
  EXPECT_EQ(found().size(), 1U);
  ListerState lister;
  lister.counter = 1;
  EXPECT_EQ(ListSubkeys(form, lister, HiveHandle::CurrentUser, ownKey).size(), 100'000U);
  EXPECT_EQ(form.Label3.caption.get(), "100000Keys scanned ");
}

TEST_F(SearchNativeTest, ALinkToAKeyAboveItEndsWhereTheSystemFollowsNoMoreLinks) {
  setGone(userKey, "Run");
  HKEY link = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, Wide(ownKey + "\\Round").get(), 0, nullptr, 0,
                            KEY_ALL_ACCESS, nullptr, &link, nullptr),
            ERROR_SUCCESS);
  const std::u16string target = u"\\REGISTRY\\USER\\S-1-5-21-1-1-1-1001\\Software\\SearchTest";
  ASSERT_EQ(RegSetValueExW(link, Wide("SymbolicLinkValue").get(), 0, REG_LINK,
                           reinterpret_cast<const BYTE*>(target.data()),
                           static_cast<DWORD>(target.size() * 2)),
            ERROR_SUCCESS);
  RegCloseKey(link);
  EXPECT_EQ(found().size(), 33U);
}

TEST_F(SearchNativeTest, AllRootsAreWalkedInTheOrderOfTheList) {
  setGone(userKey, "Run");
  setGone(machineKey, "Run");
  setGone(machineKey32, "Run");
  form.cboRoot.setListIndex(0);
  cmdFind(form);
  Texts roots;
  for (const Texts& row : rows()) {
    roots.push_back(row[3] + " " + row[2]);
  }
  EXPECT_EQ(roots, (Texts{"HKEY_CURRENT_USER 11", "HKEY_LOCAL_MACHINE 13", "HKEY_USERS 12"}));
}

TEST_F(SearchNativeTest, ACancelBetweenRootsEndsTheSearch) {
  setGone(userKey, "Run");
  form.cboRoot.setListIndex(0);
  form.messages.serveHost = [&] { form.cancelRequested = form.View2.count() > 0; };
  cmdFind(form);
  EXPECT_EQ(rows().size(), 1U);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "1");
  EXPECT_EQ(form.View1.text(9, problemsColumn), "before");
  EXPECT_EQ(form.View1.text(10, problemsColumn), "before");
}

TEST_F(SearchNativeTest, NamesOf255CharactersAreWalked) {
  const std::string longest(255, 'n');
  setGone(userKey + "\\" + longest + "\\" + longest, "Run");
  EXPECT_EQ(found().at(0).at(4), ownKey + "\\" + longest + "\\" + longest);
}

TEST_F(SearchNativeTest, TheDeepestKeyOfTheRegistryIsReached) {
  // As deep as the system lets keys be: each is below the one before.
  std::string path = userKey;
  std::string deepest;
  while (hasKey(path) && path.size() < 1100) {
    deepest = path;
    path += "\\d";
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, Wide(path.substr(path.find('\\') + 1)).get(), 0, nullptr,
                        0, KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, &key,
                        nullptr) == ERROR_SUCCESS) {
      RegCloseKey(key);
    }
  }
  setGone(deepest, "Run");
  EXPECT_EQ(found().size(), 1U);
  EXPECT_GT(std::ranges::count(deepest, '\\'), 500);
}

class Search32Test : public SearchFixture {
 protected:
  Search32Test() : SearchFixture(32) {}
};

TEST_F(Search32Test, AFileOfTheSystemFolderIsNeverDeadOn32BitWindows) {
  setText(userKey, "Text", "C:\\Windows\\System32\\SearchTestGone.exe");
  EXPECT_TRUE(found().empty());
  setGone(userKey, "Text");
  EXPECT_EQ(found().size(), 1U);
}

}  // namespace
}  // namespace zelvreg::searching
