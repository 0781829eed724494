#include <windows.h>

// This one needs <windows.h> before it.
#include <sddl.h>

#include "keys/AccountSids.h"
#include "registry/setpermission.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::AccessRecord;
using Records = std::vector<AccessRecord>;

const std::string place = "SOFTWARE\\PermissionsTest";
const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\PermissionsTest";

// The rights of a key that the generic ones stand for; the two denote the same entry.
DWORD mapped(DWORD mask) {
  DWORD result = mask & 0x0FFFFFFF;
  result |= (mask & GENERIC_READ) != 0 ? 0x20019 : 0;
  result |= (mask & GENERIC_WRITE) != 0 ? 0x20006 : 0;
  result |= (mask & GENERIC_EXECUTE) != 0 ? 0x20019 : 0;
  if ((mask & GENERIC_ALL) != 0) {
    result = (result & ~GENERIC_ALL) | 0xF003F;
  }
  return result;
}

class KeyPermissionsTest : public fixture::ComputerFixture {
 protected:
  KeyPermissionsTest() { emptyKey(key); }

  void grant(const std::string& path = place) {
    GrantKeyAccess(form, HiveHandle::LocalMachine, path, userName());
  }

  static Records records() {
    Records list = accessOfKey(key);
    for (AccessRecord& record : list) {
      record.mask = mapped(record.mask);
    }
    return list;
  }

  std::vector<BYTE> user = lookUpSid(userName());
  std::vector<BYTE> administrators{1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2, 0, 0};
  std::vector<BYTE> everyone = everyoneSid();

  AccessRecord denied{1, 10, 0xF003F, user};
  AccessRecord everyoneReads{0, 2, 0x20019, everyone};
  AccessRecord userWorks{0, 0, 0x3001F, user};
};

TEST_F(KeyPermissionsTest, AMissingKeyFailsAndChangesNothing) {
  const Records before = records();
  grant(place + "\\None");
  EXPECT_EQ(form.GrantKeyStatus, 1);
  EXPECT_EQ(records(), before);
}

TEST_F(KeyPermissionsTest, TheListComesInCanonicalOrder) {
  setAccessOfKey(key, "D:(A;CI;KA;;;BA)");
  grant();
  EXPECT_EQ(form.GrantKeyStatus, 0);
  EXPECT_EQ(records(),
            (Records{denied, {0, 2, 0xF003F, administrators}, everyoneReads, userWorks}));
}

TEST_F(KeyPermissionsTest, TheSecondGrantGivesTheSameListAsTheFirst) {
  setAccessOfKey(key, "D:(A;CI;KA;;;BA)");
  grant();
  const Records first = records();
  grant();
  EXPECT_EQ(records(), first);
}

TEST_F(KeyPermissionsTest, OldEntriesOfTheTablesAccountsAreReplaced) {
  setAccessOfKey(key, "D:(A;;KR;;;WD)(A;CI;KA;;;BA)");
  grant();
  EXPECT_EQ(records().size(), 4U);
}

TEST_F(KeyPermissionsTest, InheritedEntriesOfTheTablesAccountsAreKeptBehind) {
  setAccessOfKey(key, "D:(A;CI;KA;;;BA)(A;CIID;KR;;;WD)");
  grant();
  const Records list = records();
  ASSERT_EQ(list.size(), 5U);
  EXPECT_EQ(list.back().sid, everyone);
  EXPECT_NE(list.back().flags & 16, 0);
}

TEST_F(KeyPermissionsTest, AnUnknownUserLeavesTheKeyAsItWas) {
  const Records before = records();
  GrantKeyAccess(form, HiveHandle::LocalMachine, place, "no such account");
  EXPECT_EQ(form.GrantKeyStatus, 1);
  EXPECT_EQ(records(), before);
}

TEST_F(KeyPermissionsTest, SuccessClearsTheStatusOfAFailure) {
  grant(place + "\\None");
  grant();
  EXPECT_EQ(form.GrantKeyStatus, 0);
}

class DescriptorTest : public KeyPermissionsTest {
 protected:
  AccessTable table{AccessEntry{"", 0x20019, 2, 0, everyone},
                    AccessEntry{userName(), 0x3001F, 0, 0, {}},
                    AccessEntry{userName(), 0xF003F, 10, 1, {}}};

  // What building on a list gives, as text without the descriptor's head.
  Records build(const std::string& sddl, bool& isBuilt) {
    PSECURITY_DESCRIPTOR old = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(Wide(sddl).get(), SDDL_REVISION_1, &old,
                                                         nullptr);
    isBuilt = BuildSecurityDescriptor(old, table, built);
    LocalFree(old);
    Records list;
    auto* acl = reinterpret_cast<PACL>(built.acl.data());
    for (DWORD index = 0; isBuilt && index < acl->AceCount; ++index) {
      void* entry = nullptr;
      GetAce(acl, index, &entry);
      auto* ace = static_cast<ACCESS_ALLOWED_ACE*>(entry);
      const auto* sid = reinterpret_cast<const BYTE*>(&ace->SidStart);
      list.push_back({ace->Header.AceType,
                      ace->Header.AceFlags,
                      ace->Mask,
                      {sid, sid + GetLengthSid(&ace->SidStart)}});
    }
    return list;
  }

  SECURITY_DESCRIPTOR_CONTROL controlOfBuilt() {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(&built.descriptor, &control, &revision);
    return control;
  }

  NewDescriptor built;
};

TEST_F(DescriptorTest, WithoutAnOldListItHoldsJustTheTablesThreeEntries) {
  SECURITY_DESCRIPTOR old{};
  InitializeSecurityDescriptor(&old, SECURITY_DESCRIPTOR_REVISION);
  ASSERT_TRUE(BuildSecurityDescriptor(&old, table, built));
  auto* acl = reinterpret_cast<PACL>(built.acl.data());
  EXPECT_EQ(acl->AceCount, 3);
  EXPECT_EQ(built.acl.size(), 8 + 8 + everyone.size() + 2 * (8 + user.size()));
}

TEST_F(DescriptorTest, ExplicitEntriesBehindAnInheritedOneAreNotCompared) {
  bool isBuilt = false;
  const Records list = build("D:(A;ID;KR;;;BU)(A;;KA;;;WD)", isBuilt);
  ASSERT_TRUE(isBuilt);
  ASSERT_EQ(list.size(), 5U);
  EXPECT_EQ(list[4].sid, everyone);
}

TEST_F(DescriptorTest, TheControlFlagsOfTheOldOneAreTakenOver) {
  bool isBuilt = false;
  build("D:PAI(A;;KA;;;BA)", isBuilt);
  EXPECT_EQ(controlOfBuilt() & 0x1500, 0x1500);
  build("D:(A;;KA;;;BA)", isBuilt);
  EXPECT_EQ(controlOfBuilt() & 0x1500, 0);
}

TEST_F(DescriptorTest, AnEntryIsAHeaderAMaskAndAnIdentifier) {
  std::vector<BYTE> space(200);
  auto* acl = reinterpret_cast<PACL>(space.data());
  InitializeAcl(acl, 200, ACL_REVISION);
  ASSERT_NE(AppendAce(acl, 1, 10, 0x12345678, everyone), FALSE);
  const std::vector<BYTE> expected{1, 10, 20, 0, 0x78, 0x56, 0x34, 0x12, 1, 1,
                                   0, 0,  0,  0, 0,    1,    0,    0,    0, 0};
  EXPECT_EQ(std::vector<BYTE>(space.begin() + 8, space.begin() + 28), expected);
}

TEST_F(DescriptorTest, AnIdentifierHasNoMoreThan15SubAuthorities) {
  std::vector<BYTE> space(200);
  auto* acl = reinterpret_cast<PACL>(space.data());
  InitializeAcl(acl, 200, ACL_REVISION);
  SidBytes longest(8 + 15 * 4, 1);
  longest[1] = 15;
  EXPECT_NE(AppendAce(acl, ACCESS_ALLOWED_ACE_TYPE, 0, KEY_READ, longest), FALSE);
  longest.push_back(0);
  EXPECT_EQ(AppendAce(acl, ACCESS_ALLOWED_ACE_TYPE, 0, KEY_READ, longest), FALSE);
  EXPECT_EQ(acl->AceCount, 1);
}

TEST_F(DescriptorTest, AnEntryThatCannotBeAddedLeavesNoDescriptor) {
  table[0].sid.assign(8 + 16 * 4, 1);
  bool isBuilt = true;
  build("D:(A;;KA;;;BA)", isBuilt);
  EXPECT_FALSE(isBuilt);
}

TEST_F(DescriptorTest, AnIdentifierIsFoundInTheTableOnceItIsLookedUp) {
  EXPECT_TRUE(SidInTable(table, everyone.data()));
  EXPECT_FALSE(SidInTable(table, user.data()));
  bool isBuilt = false;
  build("D:(A;;KA;;;BA)", isBuilt);
  EXPECT_TRUE(SidInTable(table, user.data()));
  EXPECT_FALSE(SidInTable(table, administrators.data()));
}

}  // namespace
}  // namespace zelvreg
