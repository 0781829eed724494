// A path that was just opened is remembered; it must never be seen that it is.
#include "machine/registry/PathMemo.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "machine/security/Security.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

constexpr const char* vendor = R"(Software\Vendor)";
constexpr const char16_t* wideVendor = uR"(Software\Vendor)";

class PathMemoTest : public MachineFixture {
 protected:
  static LONG openUser(const char* path = vendor) {
    return openStatus(HKEY_CURRENT_USER, path, all32);
  }
};

TEST_F(PathMemoTest, AMissingKeyIsFoundOnceItExists) {
  start();
  EXPECT_EQ(openUser(), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, vendor, all32).status, ERROR_SUCCESS);
  EXPECT_EQ(openUser(), ERROR_SUCCESS);
}

TEST_F(PathMemoTest, ADeletedKeyIsGoneAtOnce) {
  key(R"(HKEY_CURRENT_USER\Software\Vendor)");
  start();
  EXPECT_EQ(openUser(), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, wideVendor), ERROR_SUCCESS);
  EXPECT_EQ(openUser(), ERROR_FILE_NOT_FOUND);
}

TEST_F(PathMemoTest, EachViewHasItsOwnAnswer) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)", R"(@="32")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", R"(@="64")");
  start();
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, vendor, read32), "32");
    EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, vendor, read64), "64");
  }
}

TEST_F(PathMemoTest, EachRootHasItsOwnAnswer) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", R"(@="machine")");
  key(R"(HKEY_CURRENT_USER\Software\Vendor)", R"(@="user")");
  start();
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, vendor, read64), "machine");
    EXPECT_EQ(defaultText(HKEY_CURRENT_USER, vendor, read64), "user");
  }
}

TEST_F(PathMemoTest, AUsersClassThatIsCreatedLaterComesFirst) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\.a)", R"(@="machine")");
  start();
  EXPECT_EQ(defaultText(HKEY_CLASSES_ROOT, ".a", read32), "machine");
  const OpenedKey made =
      OpenedKey::create(HKEY_CURRENT_USER, R"(Software\Classes\.a)", KEY_ALL_ACCESS);
  setText(made, "", "user");
  EXPECT_EQ(defaultText(HKEY_CLASSES_ROOT, ".a", read32), "user");
}

TEST_F(PathMemoTest, AChangedAccessListDecidesTheNextOpen) {
  key(R"(HKEY_CURRENT_USER\Software\Vendor)");
  start();
  EXPECT_EQ(openUser(), ERROR_SUCCESS);
  const machine::Bytes list =
      machine::selfRelative(machine::parseSddl("D:(A;;KR;;;BA)"), DACL_SECURITY_INFORMATION);
  EXPECT_EQ(RegSetKeySecurity(OpenedKey(HKEY_CURRENT_USER, vendor, all32),
                              DACL_SECURITY_INFORMATION, const_cast<BYTE*>(list.data())),
            ERROR_SUCCESS);
  EXPECT_EQ(openUser(), ERROR_ACCESS_DENIED);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, vendor, read32), ERROR_SUCCESS);
}

TEST_F(PathMemoTest, MorePathsThanAreRememberedAreAllFound) {
  start();
  const std::vector<std::string> paths{"A", "B", "C", "D", "E", "F"};
  for (const std::string& path : paths) {
    OpenedKey::create(HKEY_CURRENT_USER, path.c_str(), all32);
  }
  for (int turn = 0; turn < 2; ++turn) {
    for (const std::string& path : paths) {
      EXPECT_EQ(openUser(path.c_str()), ERROR_SUCCESS) << path;
    }
  }
}

TEST(PathMemo, AnswersOnlyWhatWasKeptInThisGeneration) {
  machine::PathMemo memo;
  const machine::PathQuestion question{
      .root = HKEY_CURRENT_USER, .viewFlags = 0, .options = 0, .path = wideVendor};
  memo.keep(question, 7, std::nullopt);
  ASSERT_NE(memo.find(question, 7), nullptr);
  EXPECT_FALSE(memo.find(question, 7)->has_value());
  EXPECT_EQ(memo.find(question, 8), nullptr);
}

}  // namespace
}  // namespace zelvreg::fixture
