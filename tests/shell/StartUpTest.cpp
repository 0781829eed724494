#include "shell/StartUp.h"

#include <array>
#include <optional>

#include "form/Form42.h"
#include "languages/Charset.h"
#include "scan/CategoryTable.h"
#include "shell/PressFixture.h"

namespace zelvreg {
namespace {

const std::string suiteSettings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\zelvane tuner";
const std::string language = suiteSettings + "\\zelvreg";
const std::string ticks =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
const std::string folder = "C:\\StartUpTest";

class StartUpTest : public PressFixture {
 protected:
  StartUpTest() {
    emptyKey(suiteSettings);
    emptyKey(ticks);
    form.programFolder = folder;
    std::string texts = "[Form42]\r\n";
    for (int number = 1; number <= 16; ++number) {
      const std::string digits = std::to_string(number);
      texts.append("a" + digits + "=name " + digits + "\r\n");
      texts.append("b" + digits + "=what is done in " + digits + "\r\n");
    }
    makeFile(folder + "\\lang\\zelvreg-english.lang", texts);
  }
};

TEST_F(StartUpTest, FindsOutOnWhichSystemItRuns) {
  form.Is64BitOS = false;
  Form_Load(form);
  EXPECT_TRUE(form.Is64BitOS);
}

TEST_F(StartUpTest, TheSystemIsKnownBeforeTheLanguageIsRead) {
  struct FirstCaption : ControlPeer {
    explicit FirstCaption(const Form42& loaded) : form(loaded) {}
    void changed(const Control& /*control*/, Change what, std::size_t /*row*/) override {
      wasKnown = what == Change::Text && !wasKnown ? std::optional(form.Is64BitOS) : wasKnown;
    }
    const Form42& form;
    std::optional<bool> wasKnown;
  } first(form);
  setText(language, "lang", "english");
  form.Is64BitOS = false;
  form.cmd_search.attach(&first);
  Form_Load(form);
  form.cmd_search.attach(nullptr);
  EXPECT_EQ(first.wasKnown, true);
}

TEST_F(StartUpTest, TheMenusAreDrawnAsTheStoredLanguageMatchesTheSystem) {
  for (const char* charset : {"0", "255"}) {
    setText(language, "langcode", charset);
    Form42 loaded;
    loaded.programFolder = folder;
    Form_Load(loaded);
    EXPECT_EQ(loaded.langCode, std::stoi(charset));
    EXPECT_EQ(loaded.menus.drawing, charsetMatchesCodePage(loaded.langCode, GetACP())
                                        ? MenuDrawing::InSystemCharset
                                        : MenuDrawing::InOwnCharset);
  }
}

struct ColorSetting {
  const char* text;  // null for a value that is not there
  std::uint32_t color;
};

TEST_F(StartUpTest, TheTitleHasTheSuitesColorOrTheUsualOne) {
  constexpr std::uint32_t usualColor = 10118205;
  constexpr std::array<ColorSetting, 5> settings{{{nullptr, usualColor},
                                                  {"", usualColor},
                                                  {"   ", usualColor},
                                                  {"255", 255},
                                                  {" 65280 ", 65280}}};
  for (const ColorSetting& setting : settings) {
    const std::string name = setting.text == nullptr ? "none" : setting.text;
    emptyKey(suiteSettings);
    if (setting.text != nullptr) {
      setText(suiteSettings, "color", setting.text);
    }
    Form42 fresh;
    fresh.programFolder = folder;
    Form_Load(fresh);
    EXPECT_EQ(fresh.Shape1.foreColor, setting.color) << name;
    EXPECT_EQ(fresh.Shape3.foreColor, setting.color) << name;
    for (const Button* button : {&fresh.chameleonButton4, &fresh.chameleonButton23,
                                 &fresh.chameleonButton13, &fresh.chameleonButton18}) {
      EXPECT_EQ(button->backColor, setting.color) << name;
      EXPECT_EQ(button->backOver, setting.color) << name;
    }
    EXPECT_NE(fresh.cmd_start.backColor, setting.color) << name;
  }
}

TEST_F(StartUpTest, OnlyOneTextOfTheCommandLineDisablesTheStartButton) {
  for (const char* text : {"", "d-x", "x"}) {
    Form42 fresh;
    fresh.programFolder = folder;
    fresh.commandText = text;
    Form_Load(fresh);
    EXPECT_TRUE(fresh.cmd_start.enabled) << text;
  }
  form.commandText = "d";
  Form_Load(form);
  EXPECT_FALSE(form.cmd_start.enabled);
}

TEST_F(StartUpTest, ThePictureOfAScanIsInTheProgramsFolder) {
  Form_Load(form);
  EXPECT_EQ(form.Gif89a1.file.get(), "C:\\StartUpTest\\search.gif");
}

TEST_F(StartUpTest, TheCountersStartAtZero) {
  form.wizardPage = 2;
  form.categoryFound = 3;
  form.totalFound = 4;
  form.totalFoundText = "4";
  Form_Load(form);
  EXPECT_EQ(form.wizardPage, 0);
  EXPECT_EQ(form.categoryFound, 0);
  EXPECT_EQ(form.totalFound, 0);
  EXPECT_EQ(form.totalFoundText, "0");
}

TEST_F(StartUpTest, TheWindowIsCenteredWhereverItWas) {
  form.screen = {.width = 20001, .height = 12000};
  form.window.left = 1;
  form.window.top = 2;
  Form_Load(form);
  EXPECT_EQ(form.window.left, (20001 - 15390) / 2);
  EXPECT_EQ(form.window.top, (12000 - 9180) / 2);
}

TEST_F(StartUpTest, TheSearchIsSetUp) {
  ASSERT_EQ(form.cboRoot.count(), 0);
  Form_Load(form);
  EXPECT_EQ(form.cboFind.text(), ":\\");
  EXPECT_EQ(form.cboRoot.entry(0), "My Computer");
  EXPECT_EQ(form.cboRoot.text(), "HKEY_CURRENT_USER");
  EXPECT_TRUE(form.ChData.value);
}

TEST_F(StartUpTest, SixteenRowsInTheirOrder) {
  constexpr std::array<const char*, 16> icons{"a", "b", "c", "d", "e",  "f",  "g",  "h",
                                              "i", "j", "l", "m", "re", "ru", "mr", "mui"};
  Form_Load(form);
  ASSERT_EQ(form.View1.count(), icons.size());
  for (std::size_t row = 1; row <= icons.size(); ++row) {
    const std::string digits = std::to_string(row);
    EXPECT_EQ(form.View1.text(row, 0), "name " + digits);
    EXPECT_EQ(form.View1.smallIcon(row), icons[row - 1]) << row;
    EXPECT_EQ(form.View1.text(row, descriptionColumn), "what is done in " + digits);
    EXPECT_EQ(form.View1.text(row, problemsColumn), "0") << row;
    EXPECT_EQ(form.View1.text(row, statusColumn), "") << row;
    EXPECT_EQ(form.View1.reportIcon(row, statusColumn), "") << row;
  }
}

TEST_F(StartUpTest, ARowIsTickedByTheNumberOneOfItsOwnValue) {
  struct Tick {
    const char* name;
    const char* text;  // null for a value that is not there
    bool isTicked;
  };
  constexpr std::array<Tick, 16> kept{{{"font", "1", true},
                                       {"dll", "0", false},
                                       {"app", "01", true},
                                       {"help", " 1 ", true},
                                       {"icons", "1.0", true},
                                       {"file", "1x", true},
                                       {"class", "11", false},
                                       {"8", "-1", false},
                                       {"9", "", false},
                                       {"10", nullptr, false},
                                       {"11", "x1", false},
                                       {"12", "1", true},
                                       {"13", "true", false},
                                       {"14", "1.5", false},
                                       {"15", "2", false},
                                       {"16", "1", true}}};
  for (const Tick& tick : kept) {
    if (tick.text != nullptr) {
      setText(ticks, tick.name, tick.text);
    }
  }
  Form_Load(form);
  for (std::size_t row = 1; row <= kept.size(); ++row) {
    EXPECT_EQ(form.View1.isChecked(row), kept[row - 1].isTicked) << kept[row - 1].name;
  }
}

TEST_F(StartUpTest, AnOrdinaryLoadScansNothingAndShowsTheOptionsPage) {
  setText(ticks, "16", "1");
  form.cancelRequested = false;
  expectAfter([this] { Form_Load(form); },
              {.shown = {&form.Frame1},
               .hidden = {&form.Frame2, &form.Frame3, &form.Frame7, &form.Picture1},
               .enabled = {&form.chameleonButton10, &form.chameleonButton11}});
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_FALSE(form.Gif89a1.visible);
  EXPECT_EQ(form.Text2.text(), "");
  EXPECT_TRUE(form.Timer1.isEnabled());
  EXPECT_FALSE(form.Timer2.isEnabled());
}

TEST_F(StartUpTest, TheTimersOpenTheWindowAndReport) {
  Form42 fresh;
  bindClicks(fresh);
  EXPECT_EQ(fresh.Timer1.interval, 10U);
  EXPECT_EQ(fresh.Timer2.interval, 1000U);
  fresh.window.visible = false;
  fresh.window.top = fresh.screen.height;
  fresh.Timer1.onTick();
  EXPECT_TRUE(fresh.window.visible);
}

}  // namespace
}  // namespace zelvreg
