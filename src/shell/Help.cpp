#include "shell/Help.h"

#include <windows.h>
// shellapi needs windows.h before it.
#include <shellapi.h>

#include <algorithm>

#include "form/Form42.h"
#include "languages/Texts.h"
#include "runtime/FileSystemObject.h"
#include "scan/CategoryTable.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// A language of the help other than English.
struct HelpLanguage {
  std::string_view tag;     // of the program's language
  std::string_view folder;  // of its pages
  const char* book;
};
constexpr std::array languages{HelpLanguage{"german", "de", "zelvhelp-de.chm"}};
constexpr HelpLanguage english{"english", "en", "zelvhelp.chm"};

std::string inProgramFolder(const Form42& form, std::string_view name) {
  return form.programFolder + "\\" + std::string(name);
}

// The program's own folder may be on a share, from which the program then runs as well.
bool isThere(const std::string& file) { return fileSystemObject::fileExists(file, Shares::Asked); }

const HelpLanguage& languageOf(const Form42& form) {
  const auto* found = std::ranges::find(languages, form.langTag, &HelpLanguage::tag);
  return found == languages.end() ? english : *found;
}

std::string fileOf(const Form42& form, const HelpLanguage& language, const HelpPage& page) {
  return inProgramFolder(
      form, "manual\\" + std::string(language.folder) + "\\" + std::string(page.name) + ".html");
}

// A browser that is started by an administrator's program gives these rights up by itself.
bool openInBrowser(const std::string& file) {
  constexpr INT_PTR lastFailure = 32;
  HINSTANCE answer =
      ShellExecuteW(nullptr, Wide("open").get(), Wide(file).get(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(answer) > lastFailure;
}

}  // namespace

HelpTopic helpOfCategory(std::size_t row) {
  const auto* found = std::ranges::find(helpPages, categoryAt(row).optionName, &HelpPage::name);
  return found == helpPages.end() ? HelpTopic("categories")
                                  : HelpTopic(static_cast<std::size_t>(found - helpPages.begin()));
}

std::string helpBook(const Form42& form) {
  const std::string translated = inProgramFolder(form, languageOf(form).book);
  return form.safeguards != asDescribed() && isThere(translated)
             ? translated
             : inProgramFolder(form, english.book);
}

std::string helpFile(const Form42& form, const HelpPage& page) {
  const std::string translated = fileOf(form, languageOf(form), page);
  return isThere(translated) ? translated : fileOf(form, english, page);
}

void openHelp(Form42& form, HelpTopic topic) {
  if (form.openHelp) {
    form.openHelp(helpBook(form), topic.page().context);
  }
}

void openHelpPage(Form42& form, int context) {
  const auto* page = std::ranges::find(helpPages, context, &HelpPage::context);
  if (page == helpPages.end() || form.safeguards == asDescribed()) {
    return;
  }
  const std::string file = helpFile(form, *page);
  if (!isThere(file) || !openInBrowser(file)) {
    form.dialogs.tell(textOf(form, "help-missing", {file}), MessageIcon::Exclamation);
  }
}

}  // namespace zelvreg
