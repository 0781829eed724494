// Most of the way to a key was often gone just before; it must never be seen that it is remembered.
#include "machine/registry/WayMemo.h"

#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

TEST(WayTest, GoesBackToTheLastKeyThatBothPathsPass) {
  machine::Way way;
  auto* const first = reinterpret_cast<machine::RegistryKey*>(0x10);
  auto* const second = reinterpret_cast<machine::RegistryKey*>(0x20);
  EXPECT_EQ(way.goBackTo(u"A\\B\\C").end, 0U);
  way.add(u"A\\B\\C", {1, first, 0});
  way.add(u"A\\B\\C", {3, second, 1});
  const machine::Way::Step deepest = way.goBackTo(u"A\\B\\D");
  EXPECT_EQ(deepest.key, second);
  EXPECT_EQ(deepest.end, 3U);
  EXPECT_EQ(deepest.hops, 1);
  EXPECT_EQ(way.goBackTo(u"A\\BB\\C").key, first);
  // The way was cut there, and its last name is not passed by a path that ends in it.
  EXPECT_EQ(way.goBackTo(u"A\\B\\C").key, first);
  EXPECT_EQ(way.goBackTo(u"A").key, nullptr);
}

class WayMemoTest : public MachineFixture {};

TEST_F(WayMemoTest, AKeyThatWasDeletedOnTheWayIsNotPassed) {
  key(R"(HKEY_CURRENT_USER\Software\Vendor\Product\One)", R"(@="old")");
  start();
  ASSERT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Vendor\Product\One)", read32), "old");
  ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\Product)"), ERROR_SUCCESS);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, R"(Software\Vendor\Product\One)", read32),
            ERROR_FILE_NOT_FOUND);
  const OpenedKey made =
      OpenedKey::create(HKEY_CURRENT_USER, R"(Software\Vendor\Product\Two)", all32);
  ASSERT_EQ(made.status, ERROR_SUCCESS);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, R"(Software\Vendor\Product\Two)", read32), ERROR_SUCCESS);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, R"(Software\Vendor\Product\One)", read32),
            ERROR_FILE_NOT_FOUND);
}

TEST_F(WayMemoTest, EachViewGoesItsOwnWay) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor\A\One)", R"(@="32")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor\A\One)", R"(@="64")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor\A\Two)", R"(@="64 too")");
  start();
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor\A\One)", read32), "32");
    EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor\A\Two)", read64), "64 too");
    EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(Software\Vendor\A\Two)", read32),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor\A\One)", read64), "64");
  }
}

TEST_F(WayMemoTest, DoubledBackslashesAndAnotherCaseLeadTheSameWay) {
  key(R"(HKEY_CURRENT_USER\Software\Vendor\Product\One)", R"(@="1")");
  key(R"(HKEY_CURRENT_USER\Software\Vendor\Product\Two)", R"(@="2")");
  start();
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Vendor\Product\One)", read32), "1");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\\Vendor\\Product\\Two\)", read32), "2");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(SOFTWARE\vendor\Product\Two)", read32), "2");
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, R"(Software\Vendor\Product)", read32), ERROR_SUCCESS);
}

}  // namespace
}  // namespace zelvreg::fixture
