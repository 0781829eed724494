#include "undo/UndoStores.h"

#include <algorithm>
#include <array>
#include <set>

#include "form/Form42.h"
#include "keys/AccountSids.h"
#include "scan/Policies.h"
#include "scan/Settings.h"
#include "text/Characters.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

bool& isListUnread() {
  static bool isUnread = false;
  return isUnread;
}

// Notes what cannot be read, and takes it for missing.
std::string readOfList(const char* key, const std::string& name) {
  const auto text = knownSetting(key, name);
  isListUnread() = isListUnread() || !text;
  return text.value_or(std::string());
}

}  // namespace

bool isUndoListUnread() { return isListUnread(); }

bool registerUndoEntry(const std::string& label, const std::string& stem,
                       const std::string& exportStem) {
  const auto counted = knownSetting(settings::regscan, "cnt");
  if (!counted) {
    return false;  // any number may be that of another entry
  }
  const std::int64_t highest = leadingInteger(*counted);
  const std::string number = decimal(highest + 1);
  const bool isCounted = keepSetting(settings::regscan, "cnt", number);
  const bool isLabelled = keepSetting(settings::dates, number, label);
  const bool isNamed = keepSetting(settings::files, label, stem);
  const bool isLinked = exportStem.empty() || keepSetting(settings::exports, label, exportStem);
  const std::string user = currentUserSid();
  const bool isOwned = user.empty() || keepSetting(settings::users, label, user);
  return isCounted && isLabelled && isNamed && isLinked && isOwned;
}

std::int64_t highestUndoNumber() { return leadingInteger(readOfList(settings::regscan, "cnt")); }

std::vector<std::int64_t> undoNumbers() {
  std::set<std::int64_t> numbers;
  isListUnread() = false;
  const std::int64_t highest = std::max<std::int64_t>(highestUndoNumber(), 1);
  bool areNamesWhole = true;
  const auto names = settingNames(settings::dates, areNamesWhole);
  isListUnread() = isListUnread() || !areNamesWhole;
  for (const std::string& text : names) {
    const std::int64_t number = leadingInteger(text);
    if (number >= 1 && number <= highest && decimal(number) == text) {
      numbers.insert(number);
    }
  }
  return {numbers.begin(), numbers.end()};
}

std::string undoLabel(std::int64_t number) { return readOfList(settings::dates, decimal(number)); }

std::string undoStem(const std::string& label) { return readOfList(settings::files, label); }

std::string undoExportStem(const std::string& label) {
  return readOfList(settings::exports, label);
}

std::string undoUser(const std::string& label) { return readOfList(settings::users, label); }

std::string userSuffix(const Form42& form) {
  return form.userScope ? " " + form.userScope->currentUser : std::string();
}

// It can name neither another folder nor a stream nor a device.
bool isPlainStem(std::string_view stem) {
  constexpr std::string_view parting = "\\/:*?\"<>|";
  constexpr std::array<std::string_view, 4> devices{"con", "prn", "aux", "nul"};
  constexpr std::array<std::string_view, 2> ports{"com", "lpt"};
  const auto isBad = [&](char letter) {
    return (static_cast<unsigned char>(letter) < ' ') ||
           parting.find(letter) != std::string_view::npos;
  };
  const std::string base = lowerCase(trim(stem.substr(0, stem.find('.'))));
  const bool isPort =
      characterCount(base) == 4 && std::ranges::find(ports, base.substr(0, 3)) != ports.end();
  return !trim(stem).empty() && std::ranges::none_of(stem, isBad) && !isPort &&
         std::ranges::find(devices, base) == devices.end();
}

bool removeUndoEntry(std::int64_t number) {
  return removeSetting(settings::dates, decimal(number));
}

std::string undoSetting() { return readSetting(settings::regscan, undoPolicy); }

void keepUndoSetting(bool isOn) { keepSetting(settings::regscan, undoPolicy, isOn ? "1" : "0"); }

std::string journalPath(const Form42& form, const std::string& stem) {
  return form.programFolder + "\\" + stem + ".txt";
}

}  // namespace zelvreg
