// Windows are there only on Windows.
#include "translator/TranslatorWindow.h"

#include <functional>

#include "shell/Languages.h"
#include "support/ComputerFixture.h"
#include "support/ShippedLanguages.h"

namespace zelvreg::desktop {
namespace {

const std::string folder = "C:\\TranslatorWindowTest";

class TranslatorWindowTest : public fixture::ComputerFixture {
 protected:
  TranslatorWindowTest() {
    makeFile(folder + "\\lang\\data.lang", fixture::languageAsset("data.lang"));
    for (const fixture::ShippedLanguage& language : fixture::shippedLanguages) {
      const std::string name = fixture::fileOfLanguage(language);
      makeFile(folder + "\\lang\\" + name, fixture::languageAsset(name));
    }
    form.programFolder = folder;
  }

  static std::string german() { return folder + "\\lang\\zelvreg-german.lang"; }
};

// Does something once the window is open.
void afterOpening(Form42& form, const std::function<void()>& act) { form.messages.post(act); }

TEST_F(TranslatorWindowTest, ShowsAFileAndEndsWhenItIsClosed) {
  TranslatorWindow window(form);
  std::size_t rows = 0;
  afterOpening(form, [&] {
    rows = window.translator().form.list.count();
    PostMessageW(window.hwnd(), WM_CLOSE, 0, 0);
  });
  window.run(german());
  EXPECT_GT(rows, 200U);
  EXPECT_EQ(window.translator().form.language.text(), "Deutsch");
}

TEST_F(TranslatorWindowTest, KeysLeadToProblemsAndSave) {
  TranslatorWindow window(form);
  Translator& translator = window.translator();
  afterOpening(form, [&] {
    translator.select(1);
    translator.form.translation.setText("");
    translator.select(3);
    PostMessageW(window.hwnd(), WM_KEYDOWN, VK_F8, 0);
    form.messages.post([&] {
      EXPECT_EQ(translator.form.list.selectedRow(), 1U);
      translator.form.translation.setText("Neu");
      translator.form.save.click();
      PostMessageW(window.hwnd(), WM_CLOSE, 0, 0);
    });
  });
  window.run(german());
  EXPECT_EQ(LanguageFile(german(), 0).value("Form42", "a1"), "Neu");
}

TEST_F(TranslatorWindowTest, IsLaidOutFromTheRightForSuchALanguage) {
  form.readsFromRight = true;
  const TranslatorWindow window(form);
  EXPECT_NE(GetWindowLongPtrW(window.hwnd(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL, 0);
}

}  // namespace
}  // namespace zelvreg::desktop
