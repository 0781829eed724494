#include "machine/security/Security.h"

#include <gtest/gtest.h>

#include <cstring>

#include "machine/security/AccessList.h"
#include "machine/security/Accounts.h"

namespace zelvreg::machine {
namespace {

const Token& process() {
  static const Accounts accounts(u"User", folderUserSid());
  return accounts.token();
}

ACCESS_MASK keyAccess(std::string_view sddl, ACCESS_MASK desired) {
  return grantedAccess(parseSddl(sddl), process(), desired, keyRights);
}

std::string inherited(std::string_view parent, bool newIsContainer) {
  return formatSddl(inheritFrom(parseSddl(parent), newIsContainer, keyRights));
}

TEST(AccessCheck, GrantsWhatTheEntriesAllowTogether) {
  EXPECT_EQ(keyAccess("D:(A;;KR;;;BU)(A;;KW;;;WD)", KEY_READ | KEY_WRITE), KEY_READ | KEY_WRITE);
  EXPECT_EQ(keyAccess("O:SYD:(A;;KR;;;BU)", KEY_SET_VALUE), 0U);
  EXPECT_EQ(keyAccess("O:SYD:(A;;KA;;;SY)", KEY_READ), 0U);
}

TEST(AccessCheck, TheFirstEntryThatSpeaksOfARightDecides) {
  EXPECT_EQ(keyAccess("O:SYD:(A;;KR;;;BU)(D;;KA;;;WD)", KEY_READ), KEY_READ);
  EXPECT_EQ(keyAccess("O:SYD:(D;;0x1;;;WD)(A;;KA;;;BA)", KEY_READ), 0U);
  EXPECT_EQ(keyAccess("O:SYD:(D;;0x2;;;WD)(A;;KA;;;BA)", KEY_READ), KEY_READ);
}

TEST(AccessCheck, PassesOverEntriesForChildrenAndForOthers) {
  EXPECT_EQ(keyAccess("O:SYD:(D;CIIO;KA;;;WD)(A;;KA;;;BA)", KEY_ALL_ACCESS), KEY_ALL_ACCESS);
  EXPECT_EQ(keyAccess("O:SYD:(A;CIIO;KA;;;BA)", KEY_READ), 0U);
  EXPECT_EQ(keyAccess("O:SYD:(D;;KA;;;BG)(A;;KA;;;BA)", KEY_READ), KEY_READ);
}

TEST(AccessCheck, WithoutAListEverybodyMayDoEverything) {
  EXPECT_EQ(keyAccess("D:NO_ACCESS_CONTROL", KEY_ALL_ACCESS), KEY_ALL_ACCESS);
  EXPECT_EQ(keyAccess("O:SYD:", KEY_READ), 0U);
}

TEST(AccessCheck, TheOwnerMayAlwaysReadAndChangeTheList) {
  constexpr ACCESS_MASK ownersRights = READ_CONTROL | WRITE_DAC;
  EXPECT_EQ(keyAccess("O:S-1-5-21-1-1-1-1001D:", ownersRights), ownersRights);
  EXPECT_EQ(keyAccess("O:BAD:(D;;KA;;;WD)", ownersRights), ownersRights);
  EXPECT_EQ(keyAccess("D:", ownersRights), ownersRights);  // Administrators own what nobody does
  EXPECT_EQ(keyAccess("O:SYD:", READ_CONTROL), 0U);
  EXPECT_EQ(keyAccess("D:", WRITE_OWNER), 0U);
}

TEST(AccessCheck, UnderstandsGenericRightsAndTheMost) {
  EXPECT_EQ(keyAccess("D:(A;;KA;;;BA)", GENERIC_READ), KEY_READ);
  EXPECT_EQ(keyAccess("D:(A;;GA;;;BA)", KEY_ALL_ACCESS), KEY_ALL_ACCESS);
  EXPECT_EQ(keyAccess("O:SYD:(A;;KR;;;BU)", MAXIMUM_ALLOWED), KEY_READ);
  EXPECT_EQ(keyAccess("O:SYD:(A;;KR;;;BU)", MAXIMUM_ALLOWED | KEY_SET_VALUE), 0U);
  EXPECT_EQ(keyAccess("O:SYD:", MAXIMUM_ALLOWED), 0U);
}

TEST(AccessCheck, DeniesTheAuditListAndAskingForNothing) {
  EXPECT_EQ(keyAccess("D:NO_ACCESS_CONTROL", ACCESS_SYSTEM_SECURITY), 0U);
  EXPECT_EQ(keyAccess("D:(A;;KA;;;BA)", 0), 0U);
}

TEST(AccessCheck, TheDefaultListsGiveAnAdministratorEverything) {
  EXPECT_EQ(grantedAccess(defaultKeySecurity(), process(), KEY_ALL_ACCESS, keyRights),
            KEY_ALL_ACCESS);
  EXPECT_EQ(grantedAccess(defaultFileSecurity(), process(), GENERIC_ALL, fileRights), 0x1F01FFU);
}

TEST(Inheritance, ANewKeyTakesTheInheritableEntries) {
  EXPECT_EQ(inherited("D:(A;CI;KA;;;BA)(A;;KR;;;BU)(A;OI;KR;;;WD)", true),
            "D:AI(A;CIID;KA;;;BA)(A;OIIOID;KR;;;WD)");
  EXPECT_EQ(inherited("D:(A;OICI;KA;;;BA)(A;CI;KR;;;BU)", false), "D:AI(A;ID;KA;;;BA)");
}

TEST(Inheritance, StopsAtTheFirstChildWhereTheEntrySaysSo) {
  EXPECT_EQ(inherited("D:(A;CINP;KA;;;BA)", true), "D:AI(A;ID;KA;;;BA)");
}

TEST(Inheritance, AnEntryForChildrenAloneIsInForceOnThem) {
  EXPECT_EQ(inherited("D:(D;CIIO;KA;;;WD)", true), "D:AI(D;CIID;KA;;;WD)");
}

TEST(Inheritance, SplitsEntriesThatReadDifferentlyFurtherDown) {
  EXPECT_EQ(inherited("D:(A;CIIO;GA;;;CO)", true),
            "D:AI(A;ID;KA;;;S-1-5-21-1-1-1-1001)(A;CIIOID;GA;;;CO)");
  EXPECT_EQ(inherited("D:(D;CIIO;GA;;;WD)", true), "D:AI(D;ID;KA;;;WD)(D;CIIOID;GA;;;WD)");
}

TEST(Inheritance, WithNothingToTakeOverAdministratorsAndTheSystemHaveAll) {
  EXPECT_EQ(inherited("D:(A;;KA;;;BU)", true), "D:(A;;KA;;;BA)(A;;KA;;;SY)");
  EXPECT_EQ(inherited("D:NO_ACCESS_CONTROL", true), "D:(A;;KA;;;BA)(A;;KA;;;SY)");
}

TEST(ReplaceParts, ChangesOnlyWhatIsNamed) {
  const SecurityDescriptor old = parseSddl("O:SYG:SYD:(A;;KA;;;BA)");
  const SecurityDescriptor given = parseSddl("O:BAG:BAD:(A;;KR;;;BU)");
  EXPECT_EQ(formatSddl(replaceParts(old, given, DACL_SECURITY_INFORMATION, keyRights)),
            "O:SYG:SYD:(A;;KR;;;BU)");
  EXPECT_EQ(formatSddl(replaceParts(old, given, OWNER_SECURITY_INFORMATION, keyRights)),
            "O:BAG:SYD:(A;;KA;;;BA)");
}

TEST(ReplaceParts, MapsGenericRightsButNotThoseForChildrenAlone) {
  const SecurityDescriptor given =
      parseSddl("D:(A;CI;GR;;;WD)(A;;0xe0010000;;;BU)(D;CIIO;GA;;;BU)");
  EXPECT_EQ(formatSddl(replaceParts({}, given, DACL_SECURITY_INFORMATION, keyRights)),
            "D:(A;CI;KR;;;WD)(A;;0x3001f;;;BU)(D;CIIO;GA;;;BU)");
}

TEST(ReplaceParts, TakesTheInheritedFlagOnlyWithTheRequestForIt) {
  const auto setBy = [](std::string_view sddl) {
    return formatSddl(replaceParts({}, parseSddl(sddl), DACL_SECURITY_INFORMATION, keyRights));
  };
  EXPECT_EQ(setBy("D:ARAI"), "D:AI");
  EXPECT_EQ(setBy("D:AI"), "D:");
  EXPECT_EQ(setBy("D:P"), "D:P");
}

TEST(ReplaceParts, NoListAtAllCanBeSet) {
  const SecurityDescriptor none = parseSddl("D:NO_ACCESS_CONTROL");
  EXPECT_EQ(
      formatSddl(replaceParts(defaultKeySecurity(), none, DACL_SECURITY_INFORMATION, keyRights)),
      "D:NO_ACCESS_CONTROL");
}

TEST(Descriptor, TheSelfRelativeFormReadsBack) {
  for (const char* text : {"O:BAG:SYD:PAI(A;CI;KA;;;BA)", "D:NO_ACCESS_CONTROL", "D:", "O:BA"}) {
    const SecurityDescriptor descriptor = parseSddl(text);
    SECURITY_INFORMATION parts = GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    if (!descriptor.owner.empty()) parts |= OWNER_SECURITY_INFORMATION;
    EXPECT_EQ(readDescriptor(selfRelative(descriptor, parts).data()), descriptor) << text;
  }
}

TEST(Descriptor, HoldsOnlyThePartsThatAreAskedFor) {
  const SecurityDescriptor whole = parseSddl("O:BAG:SYD:P(A;CI;KA;;;BA)");
  const auto partOf = [&](SECURITY_INFORMATION what) {
    return formatSddl(readDescriptor(selfRelative(whole, what).data()));
  };
  EXPECT_EQ(partOf(DACL_SECURITY_INFORMATION), "D:P(A;CI;KA;;;BA)");
  EXPECT_EQ(partOf(OWNER_SECURITY_INFORMATION), "O:BA");
  EXPECT_EQ(partOf(GROUP_SECURITY_INFORMATION), "G:SY");
}

TEST(Descriptor, WhatNobodyOwnsBelongsToAdministrators) {
  const Bytes bytes = selfRelative(defaultKeySecurity(), OWNER_SECURITY_INFORMATION);
  EXPECT_EQ(formatSddl(readDescriptor(bytes.data())), "O:BA");
}

TEST(Descriptor, TheAbsoluteFormReadsToo) {
  SecurityDescriptor parts = parseSddl("O:BAG:SYD:(A;CI;KA;;;BA)");
  SECURITY_DESCRIPTOR absolute{};
  absolute.Revision = SECURITY_DESCRIPTOR_REVISION;
  absolute.Control = SE_DACL_PRESENT;
  absolute.Owner = parts.owner.data();
  absolute.Group = parts.group.data();
  absolute.Dacl = reinterpret_cast<PACL>(parts.dacl.data());
  EXPECT_EQ(readDescriptor(&absolute), parts);
}

TEST(AccessList, KeepsEntriesOfOtherKindsAsTheyAre) {
  Bytes acl = aclOf({{9, CONTAINER_INHERIT_ACE, 0, {}, {1, 2, 3, 4}},
                     {ACCESS_ALLOWED_ACE_TYPE, 0, KEY_READ, usersSid(), {}}});
  EXPECT_EQ(aclOf(entriesOf(acl)), acl);
  EXPECT_EQ(entriesOf(acl)[0].unread, (Bytes{1, 2, 3, 4}));
}

TEST(AccessList, BrokenBytesAreNoList) {
  Bytes acl = aclOf({{ACCESS_ALLOWED_ACE_TYPE, 0, KEY_READ, usersSid(), {}}});
  PACL header = reinterpret_cast<PACL>(acl.data());
  EXPECT_TRUE(isWholeAcl(header));
  header->AceCount = 2;
  EXPECT_FALSE(isWholeAcl(header));
  header->AceCount = 1;
  header->AclRevision = 1;
  EXPECT_FALSE(isWholeAcl(header));
  EXPECT_FALSE(isWholeAcl(nullptr));
}

}  // namespace
}  // namespace zelvreg::machine
