#include "repair/LivingContent.h"

#include "repair/GuardFixture.h"

namespace zelvreg::fixture {
namespace {

const std::string key = "HKEY_CURRENT_USER\\Software\\LivingContentTest";
const TruePlace place{HiveHandle::CurrentUser, u"Software\\LivingContentTest"};

class LivingContentTest : public GuardFixture {
 protected:
  LivingContentTest() { emptyKey(key); }
  ~LivingContentTest() override { removeKey(key); }

  [[nodiscard]] bool isLiving(KeyIs is = KeyIs::DeadReference) const {
    return livingContent(form, RegistryState(), place, is).has_value();
  }
};

struct Text {
  const char* text;
  Reference is;
};

TEST_F(LivingContentTest, ATextIsDeadOnlyIfNoReadingOfItLeadsAnywhere) {
  makeFile("C:\\GuardTest\\with blank\\a.exe");
  for (const auto& [text, is] : {
           Text{"", Reference::None},
           Text{"Both", Reference::None},
           Text{"A name, with signs: and so on", Reference::None},
           Text{"v4.0.30319", Reference::None},
           Text{"C:\\GuardTest gone\\gone.exe", Reference::Dead},
           Text{"\"C:\\GuardTest gone\\gone.exe\" /x", Reference::Dead},
           Text{"C:\\GuardTest gone\\gone.exe /x C:\\y", Reference::Dead},
           Text{"C:/GuardTest gone/gone.exe", Reference::Dead},
           Text{"file:///C:/GuardTest gone/gone.dll", Reference::Dead},
           Text{"C:\\GuardTest\\living.exe", Reference::Living},
           Text{"C:\\GuardTest\\living", Reference::Living},
           Text{"C:\\GuardTest\\living.exe,3", Reference::Living},
           Text{"C:\\GuardTest\\living.exe /x", Reference::Living},
           Text{"\"C:\\GuardTest\\living.exe\" /x", Reference::Living},
           Text{"C:\\GuardTest\\with blank\\a.exe -b", Reference::Living},
           Text{"C:\\GuardTest", Reference::Living},
           Text{"file:///C:/GuardTest/living.exe", Reference::Living},
           Text{"http://vendor.example/x", Reference::Living},
           Text{"\\\\server\\share\\x.exe", Reference::Living},
           Text{"//server/share/x.exe", Reference::Living},
           Text{"%USERPROFILE%\\gone.exe", Reference::Living},
           Text{"Q:\\gone.exe", Reference::Living},
           Text{"mscoree.dll", Reference::Living},
           Text{"cmd.exe /c start x", Reference::Living},
           Text{"{11111111-1111-1111-1111-111111111111}", Reference::Living},
           Text{"Vendor\\relative", Reference::Living},
       }) {
    EXPECT_EQ(referenceIn(form, text), is) << text;
  }
}

TEST_F(LivingContentTest, BesideADeadReferenceValuesMayDescribe) {
  setText(key, "", livingFile);  // what the finding has judged
  setText(key, "ThreadingModel", "Both");
  setNumber(key, "Flags", 1);
  setText(key, "Old", deadFile);
  EXPECT_FALSE(isLiving());
  setText(key, "CodeBase", livingFile);
  EXPECT_TRUE(isLiving());
}

TEST_F(LivingContentTest, AnAdvertisedCommandCannotBeDecided) {
  setBytes(key, "command", REG_MULTI_SZ, std::string_view("w\0x\0\0\0\0\0", 8));
  EXPECT_TRUE(isLiving());
}

TEST_F(LivingContentTest, ASubkeyWithAValueIsARecordOfItsOwn) {
  makeKey(key + "\\Empty\\Below");
  setText(key + "\\Dead", "x", deadFile);
  EXPECT_FALSE(isLiving());
  setText(key + "\\Empty\\Below", "x", "only a word");
  EXPECT_TRUE(isLiving());
}

TEST_F(LivingContentTest, AnEmptyKeyHasNothingButABlankDefaultValue) {
  EXPECT_FALSE(isLiving(KeyIs::Empty));
  setText(key, "", "  ");
  EXPECT_FALSE(isLiving(KeyIs::Empty));
  setText(key, "Old", deadFile);
  EXPECT_TRUE(isLiving(KeyIs::Empty));
  emptyKey(key);
  setText(key, "", "x");
  EXPECT_TRUE(isLiving(KeyIs::Empty));
}

}  // namespace
}  // namespace zelvreg::fixture
