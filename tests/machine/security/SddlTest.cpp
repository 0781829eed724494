#include <gtest/gtest.h>

#include "machine/base/MachineError.h"
#include "machine/security/AccessList.h"
#include "machine/security/Accounts.h"
#include "machine/security/Security.h"

namespace zelvreg::machine {
namespace {

std::string again(std::string_view text) { return formatSddl(parseSddl(text)); }

std::string refusalOf(std::string_view text) {
  try {
    parseSddl(text);
  } catch (const MachineError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(Sddl, ComesBackAsItWasRead) {
  for (const char* text :
       {"D:(A;CI;KA;;;BA)(A;CI;KA;;;SY)(A;CI;KR;;;BU)",
        "O:BAG:SYD:PAI(D;OICINPIOID;GA;;;WD)(A;;0x1200a9;;;CO)",
        "O:S-1-5-21-1-2-3-1001D:ARAI(A;;KW;;;S-1-5-21-1-1-1-1001)",
        "D:(A;;FA;;;BG)(A;;FR;;;AU)(A;;FW;;;AC)(A;;FX;;;IU)",
        "D:(A;;RC;;;BA)(A;;SD;;;BA)(A;;WD;;;BA)(A;;WO;;;BA)(A;;GR;;;BA)(A;;GW;;;BA)(A;;GX;;;BA)",
        "D:P", "D:", "D:NO_ACCESS_CONTROL", "D:PNO_ACCESS_CONTROL", "O:BA", ""}) {
    EXPECT_EQ(again(text), text);
  }
}

TEST(Sddl, JoinsSeveralRightsAndWritesThemAsANumber) {
  EXPECT_EQ(again("D:(A;;SDKR;;;BA)"), "D:(A;;0x30019;;;BA)");
  EXPECT_EQ(again("D:(A;;CCDCLCSWRPWPRCSDWDWO;;;BA)"), "D:(A;;KA;;;BA)");
  EXPECT_EQ(again("D:(A;;0X1F01FF;;;BA)"), "D:(A;;FA;;;BA)");
  EXPECT_EQ(again("D:(A;;131097;;;BA)"), "D:(A;;KR;;;BA)");
  EXPECT_EQ(again("D:(A;;KX;;;BA)"), "D:(A;;KR;;;BA)");
  EXPECT_EQ(again("D:(A;;;;;BA)"), "D:(A;;0x0;;;BA)");
}

TEST(Sddl, WritesLettersForAnAccountThatHasThem) {
  EXPECT_EQ(again("O:S-1-5-32-544D:(A;;KA;;;S-1-5-18)"), "O:BAD:(A;;KA;;;SY)");
}

TEST(Sddl, NoAccessControlLeavesNoList) {
  const SecurityDescriptor open = parseSddl("D:NO_ACCESS_CONTROL");
  EXPECT_FALSE(open.hasDacl);
  EXPECT_NE(open.control & SE_DACL_PRESENT, 0);
  const SecurityDescriptor closed = parseSddl("D:");
  EXPECT_TRUE(closed.hasDacl);
  EXPECT_TRUE(entriesOf(closed.dacl).empty());
}

TEST(Sddl, RefusesWhatItDoesNotKnowAndNamesIt) {
  EXPECT_NE(refusalOf("D:(A;;KA;;;ZZ)").find("\"ZZ\""), std::string::npos);
  EXPECT_NE(refusalOf("D:(A;XX;KA;;;BA)").find("\"XX\""), std::string::npos);
  EXPECT_NE(refusalOf("D:(A;;QQ;;;BA)").find("\"QQ\""), std::string::npos);
  EXPECT_NE(refusalOf("D:(OA;;KA;;;BA)"), "accepted");
  EXPECT_NE(refusalOf("D:(A;;KA;;BA)"), "accepted");
  EXPECT_NE(refusalOf("D:(A;;KA;;;;BA)"), "accepted");
  EXPECT_NE(refusalOf("D:(A;;KA;x;;BA)"), "accepted");
  EXPECT_NE(refusalOf("D:(A;;0xG;;;BA)"), "accepted");
  EXPECT_NE(refusalOf("D:(A;;KA;;;BA"), "accepted");
  EXPECT_NE(refusalOf("D:x"), "accepted");
  EXPECT_NE(refusalOf("S:(AU;SA;KA;;;WD)"), "accepted");
  EXPECT_NE(refusalOf("O:"), "accepted");
  EXPECT_NE(refusalOf("D::"), "accepted");
  EXPECT_NE(refusalOf("x"), "accepted");
  EXPECT_NE(refusalOf("O:S-1-5-32-99999999999"), "accepted");
  EXPECT_NE(refusalOf("O:S-1-5-32--544"), "accepted");
}

TEST(Sid, HasItsWindowsBytes) {
  EXPECT_EQ(administratorsSid(), (Bytes{1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 0x02, 0, 0}));
  EXPECT_EQ(everyoneSid(), (Bytes{1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(sidText(folderUserSid().data()), "S-1-5-21-1-1-1-1001");
}

TEST(Accounts, KnowsFiveNamesInAnyCase) {
  const Accounts accounts(u"Ann", folderUserSid());
  EXPECT_EQ(accounts.find(u"ANN")->sid, folderUserSid());
  EXPECT_EQ(accounts.find(u"everyone")->sid, everyoneSid());
  EXPECT_EQ(accounts.find(u"Administrators")->sid, administratorsSid());
  EXPECT_EQ(accounts.find(u"builtin\\users")->sid, usersSid());
  EXPECT_EQ(accounts.find(u"NT AUTHORITY\\SYSTEM")->sid, systemSid());
  EXPECT_EQ(accounts.find(u"Bob"), nullptr);
  EXPECT_EQ(accounts.find(u"BUILTIN\\Ann"), nullptr);
  EXPECT_EQ(accounts.find(u""), nullptr);
}

TEST(Accounts, TheProcessIsTheUserAndAMemberOfThreeGroups) {
  const Accounts accounts(u"Ann", folderUserSid());
  EXPECT_EQ(accounts.token().sids,
            (std::vector<Bytes>{folderUserSid(), everyoneSid(), administratorsSid(), usersSid()}));
}

}  // namespace
}  // namespace zelvreg::machine
