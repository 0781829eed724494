// Fonts are installed only on Windows.
#include <gtest/gtest.h>

#include <string>

#include "desktop/Desk.h"

namespace zelvreg::desktop {
namespace {

// Whether the font itself has all letters, without help from another one.
bool hasLetters(HFONT font, const std::u16string& letters) {
  constexpr WORD missing = 0xFFFF;
  const controls::WindowContext screen(nullptr);
  const controls::Selection selected(screen.get(), font);
  std::vector<WORD> glyphs(letters.size());
  GetGlyphIndicesW(screen.get(), wideText(letters), static_cast<int>(letters.size()), glyphs.data(),
                   GGI_MARK_NONEXISTING_GLYPHS);
  return std::ranges::find(glyphs, missing) == glyphs.end();
}

TEST(DeskTest, AFontHasTheScriptOfItsCharsetBoldToo) {
  struct Script {
    int charset;
    const char16_t* letters;
  };
  Desk desk(96);
  for (const Script& script :
       {Script{0, u"Fix"}, Script{204, u"Исправить"}, Script{128, u"修復する"},
        Script{134, u"修复所选"}, Script{178, u"إصلاح"}}) {
    for (const char* name : {"Segoe UI", "A font that nobody has"}) {
      const Font font{.name = name, .charset = script.charset};
      EXPECT_TRUE(hasLetters(desk.font(font), script.letters)) << name << " " << script.charset;
      EXPECT_TRUE(hasLetters(desk.font(font, 0, true), script.letters)) << script.charset;
    }
  }
}

TEST(DeskTest, AFontThatIsInstalledIsTaken) {
  Desk desk(96);
  EXPECT_EQ(desk.faceOf({}), "Segoe UI");
  EXPECT_EQ(desk.faceOf({.name = "A font that nobody has"}), "Segoe UI");
  // A charset may come from anybody's language file.
  EXPECT_EQ(desk.faceOf({.charset = 77}), "Segoe UI");
}

}  // namespace
}  // namespace zelvreg::desktop
