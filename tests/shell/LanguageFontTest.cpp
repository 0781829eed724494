// Which controls get the font of a new language.
#include "form/Form42.h"
#include "languages/readlangfile.h"
#include "shell/Languages.h"
#include "shell/PressFixture.h"

namespace zelvreg {
namespace {

const std::string suiteSettings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\zelvane tuner";
const std::string folder = "C:\\LanguageFontTest";

class LanguageFontTest : public PressFixture {
 protected:
  LanguageFontTest() {
    emptyKey(suiteSettings);
    setText(suiteSettings, "font name", "Tahoma");
    setText(suiteSettings, "font size", "11");
    form.programFolder = folder;
    makeFile(folder + "\\lang\\zelvreg-polish.lang", "[Form42]\r\ng=Wyklucz wybrane\r\n");
    makeFile(folder + "\\lang\\zelvreg-german.lang",
             "[Form42]\r\ng=Auswahl ausschlie\xDF"
             "en\r\n");
    choose("polish", "238");
  }

  static void choose(const char* tag, const char* charset) {
    setText(suiteSettings + "\\zelvreg", "lang", tag);
    setText(suiteSettings + "\\zelvreg", "langcode", charset);
  }

  void expectFont(const Controls& controls, const char* family) const {
    for (std::size_t number = 0; number < controls.size(); ++number) {
      EXPECT_EQ(controls[number]->font.get(), expected) << family << " " << number;
    }
  }
  template <std::size_t count>
  static Controls each(std::array<Label, count>& labels) {
    Controls controls;
    for (Label& label : labels) {
      controls.push_back(&label);
    }
    return controls;
  }

  const Font expected{.name = "Tahoma", .size = 11, .charset = 238};
};

TEST_F(LanguageFontTest, ReachesListsFramesAndLabels) {
  changelangoru(form);
  expectFont({&form.View1, &form.View2, &form.View3, &form.View4}, "list");
  expectFont({&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame4, &form.Frame5, &form.Frame7,
              &form.Frame8, &form.Picture1, &form.pictrlang},
             "frame");
  expectFont({&form.Label1, &form.Label3, &form.Label4, &form.Label5, &form.Label6, &form.Label7,
              &form.Label10, &form.ProgressText, &form.EvidenceText},
             "label");
  expectFont(each(form.Label2), "Label2");
  expectFont(each(form.Label8), "Label8");
  expectFont(each(form.Label12), "Label12");
}

TEST_F(LanguageFontTest, ReachesAllButtonsThatAreSeen) {
  changelangoru(form);
  expectFont({&form.chameleonButton1,  &form.chameleonButton2,  &form.chameleonButton3,
              &form.chameleonButton4,  &form.chameleonButton5,  &form.chameleonButton6,
              &form.chameleonButton7,  &form.chameleonButton8,  &form.chameleonButton9,
              &form.chameleonButton10, &form.chameleonButton11, &form.chameleonButton12,
              &form.chameleonButton13, &form.chameleonButton14, &form.chameleonButton15,
              &form.chameleonButton16, &form.chameleonButton17, &form.chameleonButton18,
              &form.chameleonButton21, &form.chameleonButton22, &form.chameleonButton23},
             "chameleonButton");
  expectFont({&form.orubutton1, &form.orubutton2, &form.orubutton3, &form.orubutton4}, "orubutton");
  expectFont({&form.cmd_search, &form.cmd_exclud, &form.cmd_start, &form.cmd_fix, &form.cmd_cancel,
              &form.cmd_all, &form.cmd_non, &form.cmd_report, &form.cmdFind},
             "command");
  expectFont({&form.Command21, &form.Command28}, "other");
}

TEST_F(LanguageFontTest, ReachesTheControlsOfTheSearch) {
  changelangoru(form);
  expectFont({&form.Check1, &form.ChKeys, &form.ChValues, &form.ChData, &form.ChCase, &form.Option1,
              &form.Option2, &form.Option3, &form.Option4, &form.cboFind, &form.cboRoot},
             "search");
  expectFont({&form.SafeguardBoxes.front(), &form.SafeguardBoxes.back(), &form.CarefulBox},
             "safeguards");
}

TEST_F(LanguageFontTest, DoesNotReachTheEntriesOfThePicker) {
  form.lbllanguage.front()->font = Font{.name = "Arial Unicode MS", .size = 10, .charset = 161};
  changelangoru(form);
  EXPECT_EQ(form.lbllanguage.front()->font.get(),
            (Font{.name = "Arial Unicode MS", .size = 10, .charset = 161}));
}

TEST_F(LanguageFontTest, ReachesTheDialogOfAnExclusion) {
  form.chameleonButton5.click();
  ExclusionDialog& dialog = form.Form1;
  expectFont(each(dialog.Label222), "Label222");
  expectFont({&dialog.Label1, &dialog.Text1, &dialog.orubutton1, &dialog.orubutton10,
              &dialog.chameleonButton3},
             "control");
}

TEST_F(LanguageFontTest, ReachesTheDialogAboutTheProgram) {
  form.chameleonButton18.click();
  AboutDialog& about = form.frmabout;
  expectFont(each(about.Label222), "Label222");
  expectFont(each(about.Label2), "Label2");
  expectFont({&about.Label3, &about.Label4, &about.Label5, &about.Label6, &about.chameleonButton3},
             "control");
}

TEST_F(LanguageFontTest, ReachesNothingWithoutTheFileOfTheLanguage) {
  choose("klingon", "238");
  changelangoru(form);
  EXPECT_EQ(form.cmd_start.font.get(), Font{});
  form.chameleonButton5.click();
  EXPECT_EQ(form.Form1.orubutton1.font.get(), Font{});
}

TEST_F(LanguageFontTest, TheButtonThatExcludesSaysSoInTheLanguageInUse) {
  changelangoru(form);
  EXPECT_EQ(form.chameleonButton9.toolTip.get(), "Wyklucz wybrane");
  choose("german", "0");
  changelangoru(form);
  EXPECT_EQ(form.chameleonButton9.toolTip.get(), "Auswahl ausschließen");
}

}  // namespace
}  // namespace zelvreg
