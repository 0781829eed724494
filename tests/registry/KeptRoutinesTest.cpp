#include "registry/KeptRoutines.h"

#include "keys/StdRegProv.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using fixture::entriesOf;
using Names = std::vector<std::string>;

const std::string place = "SOFTWARE\\KeptRoutinesTest";
const std::string key64 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\KeptRoutinesTest";
const std::string key32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\KeptRoutinesTest";
const std::string iniFile = "C:\\KeptRoutinesTest\\settings.ini";

class KeptRoutinesTest : public fixture::ComputerFixture {
 protected:
  KeptRoutinesTest() {
    emptyKey(key64);
    emptyKey(key32);
  }
};

class KeptEnumeratorsTest : public KeptRoutinesTest {
 protected:
  KeptEnumeratorsTest() {
    for (const char* name : {"b", "A", "c"}) {
      makeKey(key64 + "\\" + name);
    }
    form.Text2.setText("1");
  }

  std::string names;
  LONG rc = -1;
};

TEST_F(KeptEnumeratorsTest, TheCounterpartSeesThe32BitView) {
  makeKey(key32 + "\\only32");
  fEnumKeyno(form, "HKLM", place, names, rc);
  EXPECT_EQ(entriesOf(form.List1), (Names{"only32"}));
  EXPECT_EQ(rc, 0);
}

TEST_F(KeptEnumeratorsTest, TheCounterpartStoppedGivesNoCode) {
  form.Text2.setText("2");
  fEnumKeyno(form, "HKLM", "SOFTWARE", names, rc);
  EXPECT_EQ(rc, -1);
  EXPECT_EQ(names, "");
}

TEST_F(KeptEnumeratorsTest, TwoOfThemOnlyTellWhetherThereIsASubkey) {
  fEnumKey5(form, "HKLM", place, names, rc);
  fEnumKey6(form, "HKLM", place, names, rc);
  EXPECT_EQ(entriesOf(form.List5), (Names{"A"}));
  EXPECT_EQ(entriesOf(form.List6), (Names{"A"}));
  EXPECT_EQ(names, std::string("A\0\0A\0\0", 6));
}

class EnumValueOldTest : public KeptRoutinesTest {
 protected:
  std::string pairs;
  LONG rc = -1;
};

TEST_F(EnumValueOldTest, ListsTextsAndNumbersWithTheirData) {
  setText(key64, "aText", "abc");
  setNumber(key64, "bNumber", 258);
  setBytes(key64, "cTwo", REG_BINARY, "\1\1");
  setBytes(key64, "dThree", REG_BINARY, "\1\1\1");
  setText(key64, "eExpand", "abc", REG_EXPAND_SZ);
  fEnumValue_old(form, "HKLM", place, pairs, rc);
  EXPECT_EQ(pairs, std::string("aText=abc\0bNumber=258\0cTwo=257\0\0", 32));
  EXPECT_EQ(fixture::entriesOf(form.List1),
            (std::vector<std::string>{"aText", "bNumber", "cTwo", "dThree", "eExpand"}));
  EXPECT_EQ(rc, 0);
}

TEST_F(EnumValueOldTest, AStopEndsTheWalk) {
  setText(key64, "Text", "abc");
  form.Text2.setText("2");
  fEnumValue_old(form, "HKLM", place, pairs, rc);
  EXPECT_EQ(form.List1.count(), 0);
  EXPECT_EQ(rc, 0);
}

TEST_F(EnumValueOldTest, GivesTheCodeOfARefusedHiveAndOfAMissingKey) {
  fEnumValue_old(form, "HKCC", place, pairs, rc);
  EXPECT_EQ(rc, 99);
  fEnumValue_old(form, "HKLM", place + "\\None", pairs, rc);
  EXPECT_EQ(rc, 2);
}

TEST_F(EnumValueOldTest, ListsTheLinesOfAnIniSection) {
  makeFile(iniFile, "[Section]\r\na=1\r\nb=2\r\n[Other]\r\nc=3\r\n");
  fEnumValue_old(form, iniFile, "Section", pairs, rc);
  EXPECT_EQ(pairs, std::string("a=1\0b=2\0", 8));
  EXPECT_EQ(rc, 8);
}

class IniFuzzyTest : public KeptRoutinesTest {
 protected:
  void read(const std::string& name) {
    fReadIniFuzzy(iniFile, section, name, "fallback", result, rc);
  }
  std::string section = "driver";
  std::string result;
  LONG rc = -1;
};

TEST_F(IniFuzzyTest, FindsASectionThatOnlyContainsTheName) {
  makeFile(iniFile, "[First]\r\nname=1\r\n[My Driver Set]\r\nNameOfIt=here\r\n");
  read("name");
  EXPECT_EQ(result, "HERE");
  EXPECT_EQ(section, "MY DRIVER SET");
  EXPECT_EQ(rc, 0);
}

TEST_F(IniFuzzyTest, GivesTheFallbackWhenTheSectionEndsWithoutTheKey) {
  makeFile(iniFile, "[driver]\r\nother=1\r\n[driver 2]\r\nname=2\r\n");
  read("name");
  EXPECT_EQ(result, "fallback");
  EXPECT_EQ(rc, 2);
}

TEST_F(IniFuzzyTest, GivesTheFallbackWithoutTheFile) {
  makeFile(iniFile, "");
  read("name");
  EXPECT_EQ(result, "fallback");
}

TEST_F(IniFuzzyTest, ALineWithoutAnEqualSignIsNone) {
  makeFile(iniFile, "[driver]\r\nname\r\nname of it=here\r\n");
  read("name");
  EXPECT_EQ(result, "HERE");
}

TEST_F(IniFuzzyTest, AsksNoOtherComputerForTheFile) {
  fReadIniFuzzy("\\\\server\\share\\file.ini", section, "name", "fallback", result, rc,
                Shares::Refused);
  EXPECT_EQ(result, "fallback");
  EXPECT_EQ(rc, ERROR_FILE_NOT_FOUND);
}

TEST_F(KeptRoutinesTest, AKeyIsDeletedDirectlyUnderThePredefinedHandle) {
  makeKey("HKEY_CURRENT_USER\\KeptRoutinesTest\\Below");
  EXPECT_FALSE(DeleteKey3(HiveHandle::CurrentUser, "KeptRoutinesTest"));
  EXPECT_TRUE(DeleteKey3(HiveHandle::CurrentUser, "KeptRoutinesTest\\Below"));
  EXPECT_TRUE(DeleteKey3(HiveHandle::CurrentUser, "KeptRoutinesTest"));
  EXPECT_FALSE(DeleteKey3(HiveHandle::CurrentUser, "KeptRoutinesTest"));
}

class IdleWalksTest : public KeptRoutinesTest,
                      public ::testing::WithParamInterface<ProviderRoad> {};

TEST_P(IdleWalksTest, ChangeNothing) {
  form.safeguards.asksService = GetParam() == ProviderRoad::Service;
  LONG rc = -1;
  setText(key64, "a", "1");
  makeKey(key32 + "\\a\\b");
  EnumerateKeys(form, HiveHandle::LocalMachine, place);
  zelvreg::test(form, "HKLM", place, rc);
  EXPECT_EQ(rc, -1);
  EXPECT_EQ(form.List1.count(), 0);
  EXPECT_TRUE(hasKey(key32 + "\\a\\b"));
}

INSTANTIATE_TEST_SUITE_P(Roads, IdleWalksTest,
                         ::testing::Values(ProviderRoad::Direct, ProviderRoad::Service),
                         [](const auto& road) {
                           return road.param == ProviderRoad::Direct ? "Direct" : "Service";
                         });

}  // namespace
}  // namespace zelvreg
