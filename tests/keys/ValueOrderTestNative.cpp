// Wine lists values by their names, so that their order is nothing that could be set there.
#include "keys/ValueOrder.h"

#include "machine/Machine.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string path = "HKEY_LOCAL_MACHINE\\SOFTWARE\\ValueOrderTest";

class ValueOrderTest : public fixture::ComputerFixture {
 protected:
  ValueOrderTest() { emptyKey(path); }

  static void make(const char* names) {
    emptyKey(path);
    for (const char* name = names; *name != '\0'; ++name) {
      setText(path, std::string(1, *name), std::string(3, *name));
    }
  }

  static WideKey opened() {
    return {HiveHandle::LocalMachine, u"SOFTWARE\\ValueOrderTest", KEY_QUERY_VALUE | KEY_SET_VALUE};
  }

  // The names in order; each value must still have its own text.
  static std::string order() {
    std::string names;
    const auto values = opened().values();
    for (const WideValue& value : *values) {
      const std::string name(value.name.begin(), value.name.end());
      EXPECT_EQ(storedText(path, name), std::string(3, name.front()));
      names += name;
    }
    return names;
  }
};

TEST_F(ValueOrderTest, AValueGoesBackToItsPlaceAndTheOthersKeepTheirOrder) {
  make("acdb");
  EXPECT_TRUE(orderValues(opened(), {u"B"}, {1}));
  EXPECT_EQ(order(), "abcd");
  make("bdac");
  EXPECT_TRUE(orderValues(opened(), {u"a", u"c"}, {0, 2}));
  EXPECT_EQ(order(), "abcd");
}

TEST_F(ValueOrderTest, ValuesThatHaveComeOrGoneSinceDoNotMatter) {
  make("cnb");
  EXPECT_TRUE(orderValues(opened(), {u"b", u"x"}, {1, 2}));
  EXPECT_EQ(order(), "cbn");
  make("ab");
  EXPECT_TRUE(orderValues(opened(), {u"a"}, {40}));
  EXPECT_EQ(order(), "ba");
  EXPECT_TRUE(orderValues(opened(), {u"a"}, {40}));
  EXPECT_EQ(order(), "ba");
}

TEST_F(ValueOrderTest, OnlyWhatStandsElsewhereIsMadeAnew) {
  make("abcd");
  auto& faults = machine::Machine::current()->faults();
  faults.clear();
  EXPECT_TRUE(orderValues(opened(), {u"b", u"d"}, {1, 3}));
  EXPECT_EQ(faults.calls(machine::ApiCall::RegSetValue), 0U);
  EXPECT_EQ(faults.calls(machine::ApiCall::RegDeleteValue), 0U);
  EXPECT_TRUE(orderValues(opened(), {u"d"}, {2}));
  EXPECT_EQ(order(), "abdc");
  EXPECT_EQ(faults.calls(machine::ApiCall::RegSetValue), 2U);
}

TEST_F(ValueOrderTest, WhatRefusesToGoStays) {
  make("ba");
  machine::Machine::current()->faults().fail(machine::ApiCall::RegDeleteValue, 1,
                                             ERROR_ACCESS_DENIED);
  EXPECT_FALSE(orderValues(opened(), {u"b"}, {1}));
  EXPECT_EQ(order(), "ba");
}

}  // namespace
}  // namespace zelvreg
