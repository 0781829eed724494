#include "scan/Settings.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "keys/OpenKey.h"
#include "keys/ValueData.h"
#include "registry/Hives.h"
#include "runtime/Environment.h"
#include "runtime/FileText.h"
#include "runtime/IniText.h"
#include "runtime/OwnText.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

struct PortableSection {
  std::string_view key;
  std::string_view section;
};

// What is not among them is for the suite.
constexpr std::array portableSections{
    PortableSection{settings::regscan, "settings"},
    PortableSection{settings::selection, "categories"},
    PortableSection{settings::language, "language"},
    PortableSection{settings::suite, "font"},
    PortableSection{settings::statistics, "statistics"},
    PortableSection{settings::dates, "undo"},
    PortableSection{settings::files, "undo files"},
    PortableSection{settings::exports, "undo exports"},
    PortableSection{settings::users, "undo users"},
};

std::optional<std::string> portableSection(std::string_view key) {
  const auto* found = std::ranges::find(portableSections, key, &PortableSection::key);
  return found == portableSections.end() ? std::nullopt
                                         : std::optional(std::string(found->section));
}

// std::nullopt if the file cannot be read.
std::optional<IniText> knownPortableSettings() {
  const auto bytes = contentToKeep(settingsFile());
  return bytes ? std::optional(IniText(ownText(*bytes, CP_UTF8))) : std::nullopt;
}

IniText portableSettings() { return knownPortableSettings().value_or(IniText("")); }

// An unreadable file is not replaced: it holds the list of what can be undone.
template <typename Change>
bool changePortableSettings(const Change& change) {
  auto ini = knownPortableSettings();
  if (!ini) {
    return false;
  }
  change(*ini);
  return replaceFileText(settingsFile(), std::string(utf8Mark) + ini->text());
}

// By a key that is opened to be read alone: who is no administrator may do no more.
std::optional<std::string> readInRegistry(const char* key, const std::string& name) {
  const OpenKey opened(HiveHandle::LocalMachine, key, queryOn32BitView);
  ValueData value;
  const LONG read = opened.isOpen() ? value.read(opened.handle(), name) : opened.openStatus();
  const bool isKnown = isAbsent(read) || (read == ERROR_SUCCESS && value.isSingleText());
  return isKnown ? std::optional(value.text()) : std::nullopt;
}

std::vector<std::string> namesInRegistry(const char* key, bool& isWhole) {
  std::vector<std::string> names;
  const OpenKey opened(HiveHandle::LocalMachine, key, queryOn32BitView);
  isWhole = opened.isOpen() || isAbsent(opened.openStatus());
  std::array<char16_t, 32> name{};
  for (DWORD index = 0; opened.isOpen(); ++index) {
    auto size = static_cast<DWORD>(name.size());
    const LONG listed = RegEnumValueW(opened.handle(), index, roomIn(name), &size, nullptr, nullptr,
                                      nullptr, nullptr);
    if (listed != ERROR_SUCCESS && listed != ERROR_MORE_DATA) {
      isWhole = listed == ERROR_NO_MORE_ITEMS;
      break;
    }
    names.push_back(utf8({name.data(), listed == ERROR_SUCCESS ? size : 0}));
  }
  return names;
}

}  // namespace

std::string settingsFile() { return programFolder() + "\\zelvreg.ini"; }

bool isPortable() {
  const DWORD attributes = GetFileAttributesW(Wide(settingsFile()).get());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string readSetting(const char* key, const std::string& name) {
  if (isPortable()) {
    const auto section = portableSection(key);
    return section ? portableSettings().value(*section, name) : std::string();
  }
  std::string text;
  GetRegString(HiveHandle::LocalMachine, key, name, text);
  return text;
}

std::optional<std::string> knownSetting(const char* key, const std::string& name) {
  if (isPortable()) {
    const auto section = portableSection(key);
    const auto ini = knownPortableSettings();
    return ini ? std::optional(section ? ini->value(*section, name) : std::string()) : std::nullopt;
  }
  std::string text;
  return GetRegString(HiveHandle::LocalMachine, key, name, text) ? std::optional(std::move(text))
                                                                 : readInRegistry(key, name);
}

bool keepSetting(const char* key, const std::string& name, const std::string& text) {
  if (isPortable()) {
    const auto section = portableSection(key);
    return !section || changePortableSettings([&](IniText& ini) { ini.set(*section, name, text); });
  }
  return SaveRegString(HiveHandle::LocalMachine, key, name, text);
}

std::vector<std::string> settingNames(const char* key, bool& isWhole) {
  if (isPortable()) {
    const auto section = portableSection(key);
    const auto ini = knownPortableSettings();
    isWhole = ini.has_value();
    return ini && section ? ini->names(*section) : std::vector<std::string>();
  }
  return namesInRegistry(key, isWhole);
}

bool removeSetting(const char* key, const std::string& name) {
  if (isPortable()) {
    const auto section = portableSection(key);
    return !section || changePortableSettings([&](IniText& ini) { ini.remove(*section, name); });
  }
  const OpenKey opened(HiveHandle::LocalMachine, key, writeOn32BitView);
  const LONG status =
      opened.isOpen() ? RegDeleteValueW(opened.handle(), Wide(name).get()) : opened.openStatus();
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace zelvreg
