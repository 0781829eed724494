#include <gtest/gtest.h>
#include <sddl.h>
#include <windows.h>

#include <array>
#include <cstring>
#include <string>

#include "machine/security/Accounts.h"
#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

DWORD error(LONG code) { return static_cast<DWORD>(code); }

// A descriptor made of text, freed at the end.
class TextDescriptor {
 public:
  explicit TextDescriptor(const char16_t* text) {
    ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &memory, &size);
  }
  ~TextDescriptor() { LocalFree(memory); }
  TextDescriptor(const TextDescriptor&) = delete;
  TextDescriptor& operator=(const TextDescriptor&) = delete;
  PSECURITY_DESCRIPTOR memory = nullptr;
  ULONG size = 0;
};

std::string textOf(PSECURITY_DESCRIPTOR descriptor, SECURITY_INFORMATION what) {
  LPWSTR text = nullptr;
  ULONG length = 0;
  if (ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1, what, &text,
                                                           &length) == FALSE) {
    return "refused";
  }
  std::string result = utf8(text);
  EXPECT_EQ(length, result.size() + 1);
  LocalFree(text);
  return result;
}

// Room for a list, and the list at its start.
struct ListBuffer {
  alignas(8) std::array<BYTE, 256> bytes{};
  PACL list() { return reinterpret_cast<PACL>(bytes.data()); }
};

PSID asSid(const Bytes& bytes) { return const_cast<BYTE*>(bytes.data()); }

TEST(ApiSid, IsMadeComparedAndFreed) {
  SID_IDENTIFIER_AUTHORITY world{{0, 0, 0, 0, 0, 1}};
  PSID sid = nullptr;
  ASSERT_NE(AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid), FALSE);
  EXPECT_EQ(GetLengthSid(sid), 12U);
  EXPECT_NE(EqualSid(sid, asSid(everyoneSid())), FALSE);
  EXPECT_EQ(EqualSid(sid, asSid(usersSid())), FALSE);
  EXPECT_EQ(EqualSid(sid, nullptr), FALSE);
  EXPECT_EQ(FreeSid(sid), nullptr);
  EXPECT_EQ(AllocateAndInitializeSid(&world, 9, 0, 0, 0, 0, 0, 0, 0, 0, &sid), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_SID));
}

TEST(ApiSddl, GoesBothWays) {
  const TextDescriptor made(u"O:BAG:SYD:PAI(A;CI;KA;;;BA)(D;;KR;;;WD)");
  ASSERT_NE(made.memory, nullptr);
  EXPECT_EQ(textOf(made.memory, 7), "O:BAG:SYD:PAI(A;CI;KA;;;BA)(D;;KR;;;WD)");
  EXPECT_EQ(textOf(made.memory, OWNER_SECURITY_INFORMATION), "O:BA");
  EXPECT_EQ(textOf(made.memory, DACL_SECURITY_INFORMATION), "D:PAI(A;CI;KA;;;BA)(D;;KR;;;WD)");
  EXPECT_EQ(TextDescriptor(u"D:(A;;KA;;;nobody)").memory, nullptr);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_PARAMETER));
}

TEST(ApiDescriptor, AnAbsoluteOneStartsEmptyAndTakesAList) {
  SECURITY_DESCRIPTOR descriptor{};
  EXPECT_EQ(InitializeSecurityDescriptor(&descriptor, 2), FALSE);
  ASSERT_NE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION), FALSE);
  BOOL present = TRUE;
  BOOL defaulted = TRUE;
  PACL acl = nullptr;
  EXPECT_NE(GetSecurityDescriptorDacl(&descriptor, &present, &acl, &defaulted), FALSE);
  EXPECT_EQ(present, FALSE);
  ListBuffer buffer;
  ASSERT_NE(InitializeAcl(buffer.list(), 64, ACL_REVISION), FALSE);
  EXPECT_NE(SetSecurityDescriptorDacl(&descriptor, TRUE, buffer.list(), FALSE), FALSE);
  EXPECT_NE(GetSecurityDescriptorDacl(&descriptor, &present, &acl, &defaulted), FALSE);
  EXPECT_NE(present, FALSE);
  EXPECT_EQ(acl, buffer.list());
  EXPECT_EQ(defaulted, FALSE);
  EXPECT_EQ(textOf(&descriptor, DACL_SECURITY_INFORMATION), "D:");
}

TEST(ApiDescriptor, ASelfRelativeOneIsReadButTakesNoList) {
  const TextDescriptor made(u"D:(A;;KA;;;BA)");
  BOOL present = FALSE;
  BOOL defaulted = TRUE;
  PACL acl = nullptr;
  EXPECT_NE(GetSecurityDescriptorDacl(made.memory, &present, &acl, &defaulted), FALSE);
  EXPECT_NE(present, FALSE);
  ASSERT_NE(acl, nullptr);
  EXPECT_EQ(acl->AceCount, 1);
  EXPECT_EQ(SetSecurityDescriptorDacl(made.memory, TRUE, acl, FALSE), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_SECURITY_DESCR));
}

TEST(ApiDescriptor, NoAccessControlIsAListThatIsPresentAndNull) {
  const TextDescriptor made(u"D:NO_ACCESS_CONTROL");
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  PACL acl = reinterpret_cast<PACL>(&present);
  EXPECT_NE(GetSecurityDescriptorDacl(made.memory, &present, &acl, &defaulted), FALSE);
  EXPECT_NE(present, FALSE);
  EXPECT_EQ(acl, nullptr);
}

TEST(ApiDescriptor, ChangesOnlyTheControlFlagsOfInheritance) {
  SECURITY_DESCRIPTOR descriptor{};
  InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  EXPECT_NE(SetSecurityDescriptorControl(&descriptor, 0x500, 0x500), FALSE);
  EXPECT_NE(SetSecurityDescriptorControl(&descriptor, 0x1100, 0x1000), FALSE);
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  EXPECT_NE(GetSecurityDescriptorControl(&descriptor, &control, &revision), FALSE);
  EXPECT_EQ(control, 0x1400);
  EXPECT_EQ(revision, 1U);
  EXPECT_EQ(SetSecurityDescriptorControl(&descriptor, SE_DACL_PRESENT, SE_DACL_PRESENT), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_PARAMETER));
}

TEST(ApiAcl, TellsItsSizes) {
  ListBuffer buffer;
  EXPECT_EQ(InitializeAcl(buffer.list(), 7, ACL_REVISION), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(InitializeAcl(buffer.list(), 64, 1), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_PARAMETER));
  ASSERT_NE(InitializeAcl(buffer.list(), 66, ACL_REVISION), FALSE);
  ASSERT_NE(AddAccessAllowedAce(buffer.list(), ACL_REVISION, KEY_READ, asSid(usersSid())), FALSE);
  ACL_SIZE_INFORMATION sizes{};
  EXPECT_NE(GetAclInformation(buffer.list(), &sizes, sizeof sizes, AclSizeInformation), FALSE);
  EXPECT_EQ(sizes.AceCount, 1U);
  EXPECT_EQ(sizes.AclBytesInUse, 8U + 24U);
  EXPECT_EQ(sizes.AclBytesFree, 32U);
  EXPECT_EQ(GetAclInformation(buffer.list(), &sizes, 8, AclSizeInformation), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(GetAclInformation(nullptr, &sizes, sizeof sizes, AclSizeInformation), FALSE);
}

TEST(ApiAcl, EntriesAreAddedCopiedAndCounted) {
  const TextDescriptor made(u"D:(A;CI;KA;;;BA)(D;;KR;;;WD)");
  BOOL flag = FALSE;
  PACL old = nullptr;
  GetSecurityDescriptorDacl(made.memory, &flag, &old, &flag);
  ListBuffer buffer;
  InitializeAcl(buffer.list(), 128, ACL_REVISION);
  for (const DWORD index : {1U, 0U}) {
    LPVOID ace = nullptr;
    ASSERT_NE(GetAce(old, index, &ace), FALSE);
    ASSERT_NE(AddAce(buffer.list(), ACL_REVISION, 0xFFFFFFFF, ace,
                     static_cast<const ACE_HEADER*>(ace)->AceSize),
              FALSE);
  }
  LPVOID first = nullptr;
  GetAce(buffer.list(), 0, &first);
  ASSERT_NE(AddAce(buffer.list(), ACL_REVISION, 1, first, static_cast<ACE_HEADER*>(first)->AceSize),
            FALSE);
  SECURITY_DESCRIPTOR descriptor{};
  InitializeSecurityDescriptor(&descriptor, 1);
  SetSecurityDescriptorDacl(&descriptor, TRUE, buffer.list(), FALSE);
  EXPECT_EQ(textOf(&descriptor, 4), "D:(D;;KR;;;WD)(D;;KR;;;WD)(A;CI;KA;;;BA)");
}

TEST(ApiAcl, RefusesWhatDoesNotFitOrIsBroken) {
  ListBuffer buffer;
  InitializeAcl(buffer.list(), 24, ACL_REVISION);
  PACL list = buffer.list();
  EXPECT_EQ(AddAccessAllowedAce(list, ACL_REVISION, 1, asSid(usersSid())), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ALLOTTED_SPACE_EXCEEDED));
  EXPECT_EQ(AddAccessAllowedAce(list, ACL_REVISION, 1, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_SID));
  std::array<BYTE, 24> entry{0, 0, 24, 0};
  EXPECT_EQ(AddAce(list, ACL_REVISION, 0, entry.data(), 24), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(AddAce(list, ACL_REVISION, 0, entry.data(), 20), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_PARAMETER));
  LPVOID ace = nullptr;
  EXPECT_EQ(GetAce(list, 0, &ace), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_PARAMETER));
  list->AceCount = 3;
  EXPECT_EQ(AddAccessAllowedAce(list, ACL_REVISION, 1, asSid(usersSid())), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_ACL));
}

class ApiAccountsTest : public zelvreg::fixture::MachineFixture {};

TEST_F(ApiAccountsTest, LooksUpAnAccountByTheSizeProtocol) {
  setting("user", "Ann");
  start();
  DWORD sidSize = 0;
  std::array<char16_t, 64> domain{};
  DWORD domainSize = 0;
  SID_NAME_USE use = SidTypeInvalid;
  EXPECT_EQ(LookupAccountNameW(nullptr, u"ann", nullptr, &sidSize, nullptr, &domainSize, &use),
            FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(sidSize, 28U);
  EXPECT_EQ(domainSize, 9U);
  Bytes sid(sidSize);
  EXPECT_NE(
      LookupAccountNameW(nullptr, u"ann", sid.data(), &sidSize, domain.data(), &domainSize, &use),
      FALSE);
  EXPECT_EQ(sid, folderUserSid());
  EXPECT_EQ(std::u16string(domain.data()), u"COMPUTER");
  EXPECT_EQ(domainSize, 8U);
  EXPECT_EQ(use, SidTypeUser);
}

TEST_F(ApiAccountsTest, DoesNotKnowAnybodyElse) {
  start();
  Bytes sid(68);
  DWORD sidSize = 68;
  std::array<char16_t, 64> domain{};
  DWORD domainSize = 64;
  SID_NAME_USE use = SidTypeInvalid;
  EXPECT_EQ(
      LookupAccountNameW(nullptr, u"Bob", sid.data(), &sidSize, domain.data(), &domainSize, &use),
      FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_NONE_MAPPED));
  EXPECT_EQ(sidSize, 0U);
}

TEST_F(ApiAccountsTest, CanBeMadeToFail) {
  start().faults().fail(ApiCall::LookupAccountName, 1, ERROR_ACCESS_DENIED);
  DWORD size = 0;
  EXPECT_EQ(LookupAccountNameW(nullptr, u"User", nullptr, &size, nullptr, &size, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
}

}  // namespace
}  // namespace zelvreg::machine
