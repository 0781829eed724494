#include "registry/View64.h"

#include <algorithm>
#include <optional>

#include "keys/RootHandles.h"
#include "keys/StdRegProv.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using fixture::entriesOf;
using Names = std::vector<std::string>;

const std::string place = "SOFTWARE\\View64Test";
const std::string key64 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\View64Test";
const std::string key32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\View64Test";

// Values are listed in the order of making or of names, as the system does it.
Names sorted(Names names) {
  std::ranges::sort(names);
  return names;
}

class View64Test : public fixture::ComputerFixture,
                   public ::testing::WithParamInterface<ProviderRoad> {
 protected:
  View64Test() {
    form.safeguards.asksService = GetParam() == ProviderRoad::Service;
    emptyKey(key64);
    emptyKey(key32);
  }
};

TEST_P(View64Test, NamesOfTheTrueViewAreAddedAfterThoseInTheList) {
  setText(key64, "b", "1");
  setNumber(key64, "a", 2);
  setText(key32, "only32", "3");
  form.List1.add("before");
  fEnumValue(form, HiveHandle::LocalMachine, place);
  const Names listed = entriesOf(form.List1);
  ASSERT_EQ(listed.size(), 3U);
  EXPECT_EQ(listed.front(), "before");
  EXPECT_EQ(sorted({listed[1], listed[2]}), (Names{"a", "b"}));
}

TEST_P(View64Test, TheOtherListIsFilledInTheSameWay) {
  setText(key64, "a", "1");
  fEnumValue4(form, HiveFromShortName("hklm"), place);
  EXPECT_EQ(entriesOf(form.List7), (Names{"a"}));
  EXPECT_EQ(form.List1.count(), 0);
}

TEST_P(View64Test, TheUnnamedValueIsNotListed) {
  setText(key64, "", "the default");
  setText(key64, "a", "1");
  fEnumValue(form, HiveHandle::LocalMachine, place);
  EXPECT_EQ(entriesOf(form.List1), (Names{"a"}));
}

// The service gives all names in one answer.
TEST_P(View64Test, TheQueueIsServedWhileManyNamesAreReadDirectly) {
  std::vector<std::string> names;
  for (int number = 100; number < 300; ++number) {
    names.push_back("name " + std::to_string(number));
    setText(key64, names.back(), "1");
  }
  setText(key32, "only32", "1");
  int count = 0;
  form.messages.serveHost = [&] {
    ++count;
    // A click may list another key meanwhile.
    valueNames(form, ProviderArchitecture::Bits32, HiveHandle::LocalMachine, place);
  };
  fEnumValue(form, HiveHandle::LocalMachine, place);
  EXPECT_EQ(sorted(entriesOf(form.List1)), names);
  if (GetParam() == ProviderRoad::Direct) {
    EXPECT_GT(count, 0);
  }
}

TEST_P(View64Test, AKeyWithoutValuesAndAMissingKeyAddNothing) {
  fEnumValue(form, HiveHandle::LocalMachine, place);
  fEnumValue(form, HiveHandle::LocalMachine, place + "\\None");
  fEnumValue(form, HiveFromShortName("HKCC"), place);
  EXPECT_EQ(form.List1.count(), 0);
}

TEST_P(View64Test, ATextIsReadInTheTrueView) {
  setText(key64, "Where", "64");
  setText(key32, "Where", "32");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "Where"), "64");
}

TEST_P(View64Test, AnEmptyNameReadsTheDefaultValue) {
  setText(key64, "", "the default");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, ""), "the default");
}

TEST_P(View64Test, WhatCannotBeReadIsTheEmptyText) {
  setText(key64, "Where", "64");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "None"), "");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place + "\\None", "Where"), "");
  EXPECT_EQ(GetKeyValue64(form, HiveFromShortName("HKCC"), place, "Where"), "");
}

TEST_P(View64Test, VariablesAreNotExpanded) {
  setText(key64, "Expand", "%windir%\\a", REG_EXPAND_SZ);
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "Expand"), "%windir%\\a");
}

TEST_P(View64Test, AnyOtherTypeIsTheEmptyText) {
  setNumber(key64, "Number", 0x00414141);
  setBytes(key64, "Binary", REG_BINARY, "abc");
  setBytes(key64, "Multi", REG_MULTI_SZ, std::string("a\0b\0\0", 5));
  for (const char* name : {"Number", "Binary", "Multi"}) {
    EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, name), "") << name;
  }
}

TEST_P(View64Test, ATextWithoutATerminatorKeepsItsLastCharacter) {
  setBytes(key64, "Unterminated", REG_SZ, "abc");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "Unterminated"), "abc");
}

TEST_P(View64Test, ALongTextIsReadWhole) {
  setText(key64, "Long", std::string(3000, 'x'));
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "Long"), std::string(3000, 'x'));
}

TEST_P(View64Test, OnA32BitSystemTheOnlyViewIsThe32BitOne) {
  setText(key32, "Where", "32");
  form.Is64BitOS = false;
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "Where"), "32");
  fEnumValue(form, HiveHandle::LocalMachine, place);
  EXPECT_EQ(entriesOf(form.List1), (Names{"Where"}));
}

TEST_P(View64Test, AProviderWithoutAnArchitectureWorksInThe32BitView) {
  setText(key64, "Where", "64");
  setText(key32, "Where", "32");
  const auto provider = connectStdRegProv(GetParam(), ProviderArchitecture::Default);
  std::string value;
  ASSERT_EQ(provider->getStringValue(HiveHandle::LocalMachine, place, "Where", value), 0);
  EXPECT_EQ(value, "32");
}

TEST_P(View64Test, TheProviderExpandsVariablesWhenAskedTo) {
  setText(key64, "Expand", "%SystemDrive%\\a", REG_EXPAND_SZ);
  const auto provider = connectStdRegProv(GetParam(), ProviderArchitecture::Bits64);
  std::string value;
  ASSERT_EQ(provider->getExpandedStringValue(HiveHandle::LocalMachine, place, "Expand", value), 0);
  EXPECT_EQ(value, "C:\\a");
}

TEST_P(View64Test, TheProviderListsSubkeysAndRefusesToDeleteAKeyThatHasSome) {
  makeKey(key64 + "\\b\\below");
  makeKey(key64 + "\\a");
  const auto provider = connectStdRegProv(GetParam(), ProviderArchitecture::Bits64);
  std::optional<std::vector<std::string>> names;
  EXPECT_EQ(provider->enumKey(HiveHandle::LocalMachine, place, names), 0);
  EXPECT_EQ(names.value_or(Names{}), (Names{"a", "b"}));
  EXPECT_NE(provider->deleteKey(HiveHandle::LocalMachine, place + "\\b"), 0);
  EXPECT_EQ(provider->deleteKey(HiveHandle::LocalMachine, place + "\\a"), 0);
  EXPECT_FALSE(hasKey(key64 + "\\a"));
  EXPECT_TRUE(hasKey(key64 + "\\b"));
}

TEST_P(View64Test, DeletingSubkeysLeavesTheFirstLevelAndSoTheKey) {
  // Listed in the 32-bit view, deleted below in the 64-bit one.
  makeKey(key32 + "\\a");
  makeKey(key64 + "\\a\\below");
  DeleteSubkeys2(form, HiveHandle::LocalMachine, place);
  EXPECT_TRUE(hasKey(key64 + "\\a"));
  EXPECT_FALSE(hasKey(key64 + "\\a\\below"));
  EXPECT_TRUE(hasKey(key32));
}

TEST_P(View64Test, DeletingSubkeysOfAKeyWithoutAnyDeletesTheKey) {
  DeleteSubkeys2(form, HiveHandle::LocalMachine, place);
  EXPECT_FALSE(hasKey(key32));
  EXPECT_TRUE(hasKey(key64));
}

INSTANTIATE_TEST_SUITE_P(Roads, View64Test,
                         ::testing::Values(ProviderRoad::Direct, ProviderRoad::Service),
                         [](const auto& road) {
                           return road.param == ProviderRoad::Direct ? "Direct" : "Service";
                         });

}  // namespace
}  // namespace zelvreg
