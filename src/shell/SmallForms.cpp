#include "shell/SmallForms.h"

#include <windows.h>
// shellapi needs windows.h before it.
#include <shellapi.h>

#include <initializer_list>
#include <utility>

#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "form/Version.h"
#include "languages/Texts.h"
#include "languages/readlangfile.h"
#include "runtime/DateTime.h"
#include "runtime/FileSystemObject.h"
#include "shell/Languages.h"
#include "shell/SuiteColor.h"
#include "shell/WindowEvents.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr const char* supportAddress = "https://zelvane.example/support";
constexpr const char* webSite = "https://zelvane.example/";
constexpr const char* translator = "zelvtrans.exe";

using Controls = std::initializer_list<Control*>;
using Captions = std::initializer_list<std::pair<const char*, Control*>>;

void setCaption(Control& control, const std::string& text) {
  if (auto* label = dynamic_cast<Label*>(&control)) {
    label->caption = text;
  } else if (auto* button = dynamic_cast<Button*>(&control)) {
    button->caption = text;
  }
}

// Without the file of the language the form keeps its own captions and fonts. To the letter, the
// main form then finds no file of a language either, and leaves texts empty.
void changelangoru(Form42& form, const char* section, const Controls& controls,
                   const Captions& captions) {
  const std::string inUse = form.langFileName;
  readLanguageChoice(form);
  if (!fileSystemObject::fileExists(languagePath(form, form.langFileName), Shares::Asked)) {
    if (form.safeguards != asDescribed()) {
      form.langFileName = inUse;
    }
    return;
  }
  const Font font = languageFont(form);
  for (Control* control : controls) {
    control->font = font;
  }
  for (const auto& [key, control] : captions) {
    setCaption(*control, readLanguageText(form, section, key));
  }
}

std::string legalLine(const Form42& form) {
  return textOf(form, "legal-line", {std::to_string(localDateTime().year)});
}

void frmabout_Load(Form42& form) {
  AboutDialog& about = form.frmabout;
  changelangoru(
      form, "frmabout",
      {&about.Label222.front(), &about.Label222[1], &about.Label2.front(), &about.Label2[1],
       &about.Label2[2], &about.Label2[3], &about.Label2[4], &about.Label3, &about.Label4,
       &about.Label5, &about.Label6, &about.chameleonButton3},
      {{"Label2(3)", &about.Label2[3]},
       {"Label2(2)", &about.Label2[2]},
       {"Label2(1)", &about.Label2[1]},
       {"Label2(0)", &about.Label2.front()},
       {"Label222(1)", &about.Label222[1]}});
  about.Label2[4].caption = legalLine(form);
  about.Label3.caption = programVersion();
  about.Label4.caption = supportAddress;
  about.Label5.caption = webSite;
  about.Label6.caption = translator;
  giveColor(about.chameleonButton3, suiteColor(form));
  centerOnScreen(about.window, form.screen);
}

void frmabout_chameleonButton3_Click(Form42& form) {
  form.frmabout.shadow.remove();
  form.window.visible = true;
  form.frmabout.isOpen = false;
}

void open(const std::string& target) {
  ShellExecuteW(nullptr, Wide("open").get(), Wide(target).get(), nullptr, nullptr, SW_SHOWNORMAL);
}

// To the letter, nothing happens where the program is missing.
void openTranslator(const Form42& form) {
  const std::string program = form.programFolder + "\\" + translator;
  if (form.safeguards != asDescribed() && !fileSystemObject::fileExists(program, Shares::Asked)) {
    form.dialogs.tell(textOf(form, "translator-missing", {program}), MessageIcon::Exclamation);
    return;
  }
  open(program);
}

}  // namespace

void Form1_Load(Form42& form) {
  ExclusionDialog& dialog = form.Form1;
  changelangoru(form, "Form1",
                {&dialog.Label222.front(), &dialog.Label222[1], &dialog.Label1, &dialog.Text1,
                 &dialog.orubutton1, &dialog.orubutton10, &dialog.chameleonButton3},
                {{"orubutton10", &dialog.orubutton10},
                 {"Label222(1)", &dialog.Label222[1]},
                 {"Label1", &dialog.Label1},
                 {"orubutton1", &dialog.orubutton1}});
  giveColor(dialog.chameleonButton3, suiteColor(form));
  centerOnScreen(dialog.window, form.screen);
  drawShadow(dialog.shadow);
}

void chameleonButton18_Click(Form42& form) {
  form.window.visible = false;
  frmabout_Load(form);
  drawShadow(form.frmabout.shadow);
  form.frmabout.isOpen = true;
  if (form.frmabout.show) {
    form.frmabout.show(form.frmabout);
  }
}

void bindSmallForms(Form42& form) {
  form.Form1.load.bind([&form] { Form1_Load(form); });
  form.Form1.orubutton1.bind([&form] { Form1_orubutton1_Click(form); });
  form.Form1.orubutton10.bind([&form] { closeExclusionDialog(form); });
  form.Form1.chameleonButton3.bind([&form] { closeExclusionDialog(form); });
  form.frmabout.chameleonButton3.bind([&form] { frmabout_chameleonButton3_Click(form); });
  form.frmabout.Label4.bind([] { open(supportAddress); });
  form.frmabout.Label5.bind([] { open(webSite); });
  form.frmabout.Label6.bind([&form] { openTranslator(form); });
}

}  // namespace zelvreg
