#include "keys/RootHandles.h"

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class RootHandlesTest : public fixture::ComputerFixture {};

TEST_F(RootHandlesTest, LongNamesAreComparedExactly) {
  EXPECT_EQ(GetHiveHandle("HKEY_LOCAL_MACHINE"), HiveHandle::LocalMachine);
  EXPECT_EQ(GetHiveHandle("hkey_local_machine"), HiveHandle::Unknown);
  EXPECT_EQ(GetHiveHandle("HKEY_LOCAL_MACHINE "), HiveHandle::Unknown);
  EXPECT_EQ(GetHiveHandle(""), HiveHandle::Unknown);
}

TEST_F(RootHandlesTest, EveryLongNameHasTheHandleThatTheSystemKnows) {
  const std::vector<std::pair<const char*, std::uint32_t>> names{
      {"HKEY_CLASSES_ROOT", 0x80000000},     {"HKEY_CURRENT_USER", 0x80000001},
      {"HKEY_LOCAL_MACHINE", 0x80000002},    {"HKEY_USERS", 0x80000003},
      {"HKEY_PERFORMANCE_DATA", 0x80000004}, {"HKEY_CURRENT_CONFIG", 0x80000005},
      {"HKEY_DYN_DATA", 0x80000006}};
  for (const auto& [name, number] : names) {
    EXPECT_EQ(static_cast<std::uint32_t>(GetHiveHandle(name)), number) << name;
    EXPECT_EQ(HiveFromName(name), GetHiveHandle(name)) << name;
  }
}

TEST_F(RootHandlesTest, EveryRootIsTheHandleOfTheSystem) {
  const std::vector<std::pair<HiveHandle, HKEY>> handles{
      {HiveHandle::ClassesRoot, HKEY_CLASSES_ROOT},
      {HiveHandle::CurrentUser, HKEY_CURRENT_USER},
      {HiveHandle::LocalMachine, HKEY_LOCAL_MACHINE},
      {HiveHandle::Users, HKEY_USERS},
      {HiveHandle::PerformanceData, HKEY_PERFORMANCE_DATA},
      {HiveHandle::CurrentConfig, HKEY_CURRENT_CONFIG},
      {HiveHandle::DynData, HKEY_DYN_DATA},
      {HiveHandle::hINI, nullptr},
      {HiveHandle::Unknown, nullptr}};
  for (const auto& [hive, handle] : handles) {
    EXPECT_EQ(systemKey(hive), handle) << longName(hive);
  }
}

TEST_F(RootHandlesTest, ShortNamesAreKnownInAnyCase) {
  for (const char* name : {"hklm", "HkLm", "HKLM"}) {
    EXPECT_EQ(HiveFromShortName(name), HiveHandle::LocalMachine) << name;
  }
  EXPECT_EQ(HiveFromShortName("HKCU"), HiveHandle::CurrentUser);
  EXPECT_EQ(HiveFromShortName("HKU"), HiveHandle::Users);
  EXPECT_EQ(HiveFromShortName("HKCR"), HiveHandle::ClassesRoot);
}

TEST_F(RootHandlesTest, TheShortNamesOfTwoKnownHivesGiveNoHandle) {
  EXPECT_EQ(HiveFromShortName("HKCC"), HiveHandle::Unknown);
  EXPECT_EQ(HiveFromShortName("hkdd"), HiveHandle::Unknown);
  EXPECT_EQ(GetHiveHandle("HKEY_CURRENT_CONFIG"), HiveHandle::CurrentConfig);
}

TEST_F(RootHandlesTest, AnyOtherShortNameIsAFileOrNothing) {
  EXPECT_EQ(HiveFromShortName("hkey_local_machine"), HiveHandle::Unknown);
  EXPECT_EQ(HiveFromShortName(""), HiveHandle::Unknown);
  makeFile("C:\\RootHandlesTest\\some.ini");
  EXPECT_EQ(HiveFromShortName("C:\\RootHandlesTest\\some.ini"), HiveHandle::hINI);
  EXPECT_EQ(HiveFromShortName("C:\\RootHandlesTest\\none.ini"), HiveHandle::Unknown);
}

}  // namespace
}  // namespace zelvreg
