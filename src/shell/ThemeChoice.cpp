#include "shell/ThemeChoice.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "languages/Texts.h"
#include "scan/Settings.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr const char* setting = "theme";

struct Choice {
  std::string_view stored;
  TextKey text;
};

// In the order of ThemeChoice.
constexpr std::array<Choice, 3> choices{{
    {"system", "theme-system"},
    {"light", "theme-light"},
    {"dark", "theme-dark"},
}};

void keepChoice(Form42& form) {
  const auto position = static_cast<std::size_t>(form.cboTheme.listIndex());
  form.theme.choice = static_cast<ThemeChoice>(position);
  keepSetting(settings::regscan, setting, std::string(choices.at(position).stored));
}

bool isWindowsDark() {
  DWORD isLight = 1;
  DWORD size = sizeof isLight;
  HKEY key = nullptr;
  const Wide path("Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize");
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path.get(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
    return false;
  }
  DWORD type = 0;
  const bool isRead = RegQueryValueExW(key, Wide("AppsUseLightTheme").get(), nullptr, &type,
                                       reinterpret_cast<BYTE*>(&isLight), &size) == ERROR_SUCCESS &&
                      type == REG_DWORD;
  RegCloseKey(key);
  return isRead && isLight == 0;
}

}  // namespace

void loadThemeChoice(Form42& form) {
  for (const Choice& choice : choices) {
    form.cboTheme.add(englishOf(choice.text));
  }
  const auto* stored =
      std::ranges::find(choices, readSetting(settings::regscan, setting), &Choice::stored);
  const auto position = stored == choices.end() ? 0 : stored - choices.begin();
  form.cboTheme.setListIndex(static_cast<int>(position));
  form.theme.choice = static_cast<ThemeChoice>(position);
  form.cboTheme.onChange = [&form] { keepChoice(form); };
}

bool isDarkWanted(const Form42& form) {
  const ThemeChoice choice = form.theme.choice;
  return choice == ThemeChoice::AsWindows ? isWindowsDark() : choice == ThemeChoice::Dark;
}

}  // namespace zelvreg
