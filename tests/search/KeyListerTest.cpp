#include "search/KeyLister.h"

#include <algorithm>

#include "form/Form42.h"
#include "search/SearchFixture.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::searching {
namespace {

const Texts nothing{"  "};
constexpr HiveHandle user = HiveHandle::CurrentUser;

class KeyListerTest : public SearchFixture {
 protected:
  Texts subkeys(const std::string& key = ownKey, HiveHandle root = user) {
    return ListSubkeys(form, lister, root, key);
  }
  Texts namesOfValues(const std::string& key = ownKey) {
    Texts names = ListValues(lister, user, key).names;
    std::ranges::sort(names);
    return names;
  }
  // The rows of the list that shows values: name, type, what is between, data; by name.
  std::vector<Texts> shown(const std::string& key = ownKey) {
    ListValues(lister, user, key, ShowsValues::Yes, list);
    std::vector<Texts> all;
    for (std::size_t row = 1; row <= list.count(); ++row) {
      all.push_back({list.text(row, 0), list.text(row, 1), list.text(row, 2), list.text(row, 3)});
    }
    std::ranges::sort(all);
    return all;
  }

  ListerState lister;
  ImageList images;
  MessageQueue messages{{}};
  ListView list{images, messages, {{"Name"}, {"Type"}, {""}, {"Data"}}};
};

TEST_F(KeyListerTest, ARootHasSubkeysAndAnUnknownOneHasNone) {
  EXPECT_TRUE(HasSubkeys(user));
  EXPECT_FALSE(HasSubkeys(HiveHandle::Unknown));
}

TEST_F(KeyListerTest, SubkeysComeInTheirOrderWhateverLiesBelowThem) {
  makeKey(userKey + "\\a");
  makeKey(userKey + "\\b\\below");
  makeKey(userKey + "\\c");
  EXPECT_EQ(subkeys(), (Texts{"a", "b", "c"}));
  EXPECT_EQ(subkeys(ownKey + "\\"), (Texts{"a", "b", "c"}));
}

TEST_F(KeyListerTest, AKeyWithoutSubkeysAndOneThatIsGoneGiveTwoBlanks) {
  EXPECT_EQ(subkeys(), nothing);
  EXPECT_EQ(subkeys(ownKey + "\\gone"), nothing);
  EXPECT_EQ(subkeys("", HiveHandle::Unknown), nothing);
}

TEST_F(KeyListerTest, AnEmptyKeyIsTheRootItself) {
  const Texts names = subkeys("");
  EXPECT_TRUE(std::ranges::any_of(
      names, [](const std::string& name) { return lowerCase(name) == "software"; }));
}

TEST_F(KeyListerTest, NamesAreCountedInTheStatusAtTheFirstLevelOnly) {
  makeKey(userKey + "\\a");
  makeKey(userKey + "\\b");
  form.Label3.caption = "before";
  subkeys();
  EXPECT_EQ(form.Label3.caption.get(), "before");
  lister.counter = 1;
  Texts statuses;
  form.messages.serveHost = [&] { statuses.push_back(form.Label3.caption); };
  subkeys();
  EXPECT_EQ(statuses, (Texts{"before", "1Keys scanned ", "2Keys scanned "}));
}

TEST_F(KeyListerTest, AKeysNameOf255CharactersFits) {
  const std::string longest(255, 'n');
  HKEY parent = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, Wide(ownKey).get(), 0, KEY_ALL_ACCESS, &parent),
            ERROR_SUCCESS);
  HKEY child = nullptr;
  ASSERT_EQ(RegCreateKeyExW(parent, Wide(longest).get(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                            &child, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(child);
  RegCloseKey(parent);
  EXPECT_EQ(subkeys(), (Texts{longest}));
}

TEST_F(KeyListerTest, AKeyThatIsDeletedWhileItIsListedEndsTheList) {
  makeKey(userKey + "\\a");
  makeKey(userKey + "\\b");
  int yields = 0;
  form.messages.serveHost = [&] {
    if (++yields == 2) {
      removeKey(userKey);
    }
  };
  EXPECT_EQ(subkeys(), (Texts{"a"}));
}

TEST_F(KeyListerTest, NamesAreAddedAboveThoseThatAreThere) {
  makeKey(userKey + "\\a");
  makeKey(userKey + "\\\xC3\xA9t\xC3\xA9");
  NameStack names;
  names.add(u"before");
  const std::size_t first = names.top();
  ListSubkeys(form, lister, openForLists(user, ownKey), names);
  EXPECT_EQ(names.at(0), "before");
  EXPECT_EQ(names.at(first), "a");
  const std::string second = "\xC3\xA9t\xC3\xA9";
  EXPECT_EQ(names.at(first + NameStack::sizeOf("a")), second);
  EXPECT_EQ(first + NameStack::sizeOf("a") + NameStack::sizeOf(second), names.top());
  names.cutTo(first);
  ListSubkeys(form, lister, openForLists(user, ownKey + "\\gone"), names);
  EXPECT_EQ(names.top(), first);
}

TEST_F(KeyListerTest, KeysAreThoseOfThe32BitView) {
  makeKey(machineKey + "\\only64");
  makeKey(machineKey32 + "\\only32");
  EXPECT_EQ(subkeys(ownKey, HiveHandle::LocalMachine), (Texts{"only32"}));
}

TEST_F(KeyListerTest, ValuesComeWithTheirTypesTheUnnamedOneAmongThem) {
  setText(userKey, "", "default");
  setText(userKey, "Expand", "%x%", REG_EXPAND_SZ);
  setNumber(userKey, "Number", 7);
  EXPECT_EQ(namesOfValues(), (Texts{"", "Expand", "Number"}));
  EXPECT_EQ(namesOfValues(ownKey + "\\gone"), nothing);
  std::vector<DWORD> types = ListValues(lister, user, ownKey).types;
  std::ranges::sort(types);
  EXPECT_EQ(types, (std::vector<DWORD>{REG_SZ, REG_EXPAND_SZ, REG_DWORD}));
}

TEST_F(KeyListerTest, AKeyWithoutValuesGivesTwoBlanks) { EXPECT_EQ(namesOfValues(), nothing); }

TEST_F(KeyListerTest, AVeryLongNameOfAValueIsListedWhole) {
  const std::string longest(16383, 'v');
  setNumber(userKey, longest, 1);
  EXPECT_EQ(namesOfValues(), (Texts{longest}));
}

TEST_F(KeyListerTest, ValuesAreShownByTheirTypes) {
  setText(userKey, "", "default");
  setText(userKey, "Expand", "%SystemDrive%\\x", REG_EXPAND_SZ);
  setNumber(userKey, "Number", 0xFFFFFFFF);
  setBytes(userKey, "Binary", REG_BINARY, std::string("\x01\xAB\x00", 3));
  setBytes(userKey, "Empty", REG_BINARY, "");
  setBytes(userKey, "Other", REG_MULTI_SZ, std::string("a\0\0", 3));
  EXPECT_EQ(shown(ownKey + "\\"),
            (std::vector<Texts>{{"(Default)", "REG_SZ", "", "default"},
                                {"Binary", "REG_BINARY", "", "01 ab 00"},
                                {"Empty", "REG_BINARY", "", "(zero length binary)"},
                                {"Expand", "REG_EXPAND_SZ", "", "C:\\x"},
                                {"Number", "REG_DWORD", "", "-1"},
                                {"Other", "", "", ""}}));
}

TEST_F(KeyListerTest, AKeyWithoutValuesShowsThatItsDefaultIsNotSet) {
  list.add("from before");
  EXPECT_EQ(shown(), (std::vector<Texts>{{"(Default)", "REG_SZ", "", "(value not set)"}}));
}

TEST_F(KeyListerTest, AListThatIsNotToShowIsLeftAlone) {
  list.add("from before");
  setNumber(userKey, "Number", 1);
  EXPECT_EQ(ListValues(lister, user, ownKey, ShowsValues::No, list).names, (Texts{"Number"}));
  EXPECT_EQ(list.count(), 1U);
}

TEST_F(KeyListerTest, ATextEndsAtItsFirstNulBeforeAndAfterItIsExpanded) {
  setBytes(userKey, "Plain", REG_SZ, std::string("one\0two\0", 8));
  setBytes(userKey, "Expand", REG_EXPAND_SZ, std::string("%SystemDrive%\0two\0", 18));
  EXPECT_EQ(ReadValueText(user, ownKey, "Plain", "no"), "one");
  EXPECT_EQ(ReadValueText(user, ownKey, "Expand", "no"), "C:");
}

TEST_F(KeyListerTest, ATextOfAnyLengthIsReadWhole) {
  const std::string text(5000, 't');
  setText(userKey, "Long", text);
  setBytes(userKey, "Empty", REG_SZ, "");
  EXPECT_EQ(ReadValueText(user, ownKey, "Long", "no"), text);
  EXPECT_EQ(ReadValueText(user, ownKey, "Empty", "no"), "");
}

TEST_F(KeyListerTest, WhatCannotBeReadGivesTheDefault) {
  setText(userKey, "Text", "7");
  EXPECT_EQ(ReadValueText(user, ownKey, "Gone", "no"), "no");
  EXPECT_EQ(ReadValueText(user, ownKey + "\\gone", "", "no"), "no");
  EXPECT_EQ(ReadValueDword(user, ownKey, "Text", -3), -3);
  EXPECT_EQ(ReadValueDword(user, ownKey, "Gone", -3), -3);
  EXPECT_EQ(textOf(ReadValueBytes(user, ownKey, "Text", std::string("no"))), "no");
  EXPECT_EQ(textOf(ReadValueBytes(user, ownKey, "Gone", std::string("no"))), "no");
}

TEST_F(KeyListerTest, NumbersAreOfTypeDwordAlone) {
  setNumber(userKey, "Number", 0x01020304);
  setBytes(userKey, "Binary", REG_BINARY, "abcd");
  EXPECT_EQ(ReadValueDword(user, ownKey, "Number", 0), 0x01020304);
  EXPECT_EQ(ReadValueDword(user, ownKey, "Binary", 5), 5);
}

TEST_F(KeyListerTest, NoBytesAreReadAsOneZeroByte) {
  setBytes(userKey, "Binary", REG_BINARY, "ab");
  setBytes(userKey, "Empty", REG_BINARY, "");
  EXPECT_EQ(std::get<std::vector<BYTE>>(ReadValueBytes(user, ownKey, "Binary", {})),
            (std::vector<BYTE>{'a', 'b'}));
  EXPECT_EQ(std::get<std::vector<BYTE>>(ReadValueBytes(user, ownKey, "Empty", {})),
            (std::vector<BYTE>{0}));
}

// What a repair works on is the 64-bit view, so its text decides.
TEST_F(KeyListerTest, TextsAreThoseOfThe64BitViewAndNumbersThoseOfThe32BitView) {
  setText(machineKey, "Text", "64");
  setText(machineKey32, "Text", "32");
  setNumber(machineKey, "Number", 64);
  setNumber(machineKey32, "Number", 32);
  EXPECT_EQ(ReadValueText(HiveHandle::LocalMachine, ownKey, "Text", "no"), "64");
  EXPECT_EQ(ReadValueDword(HiveHandle::LocalMachine, ownKey, "Number", 0), 32);
}

TEST_F(KeyListerTest, ExpandedTextIsCutAtItsTerminator) {
  EXPECT_EQ(CutAtNul(ExpandEnvText("%SystemDrive%\\%NoSuchName%")), "C:\\%NoSuchName%");
  EXPECT_EQ(ExpandEnvText("a").back(), '\0');
  EXPECT_EQ(CutAtNul("whole"), "whole");
  EXPECT_EQ(CutAtNul(std::string_view("a\0b", 3)), "a");
}

TEST_F(KeyListerTest, AParentIsTheTextBeforeTheLastBackslash) {
  EXPECT_EQ(ParentKeyPath("a\\b\\c"), "a\\b");
  EXPECT_EQ(ParentKeyPath("a\\b\\"), "a\\b");
  EXPECT_EQ(ParentKeyPath("\\a"), "");
  EXPECT_EQ(ParentKeyPath("a"), "");
}

}  // namespace
}  // namespace zelvreg::searching
