#include "scan/Policies.h"

#include <algorithm>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "keys/ValueData.h"
#include "scan/CategoryTable.h"
#include "scan/OwnPaths.h"
#include "scan/SafeguardSources.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr REGSAM readOn64BitView = KEY_QUERY_VALUE | KEY_WOW64_64KEY;

std::string textOfValue(const ValueData& value) {
  if (value.type() == REG_DWORD && value.bytes().size() == sizeof(DWORD)) {
    DWORD number = 0;
    std::ranges::copy(value.bytes(), reinterpret_cast<BYTE*>(&number));
    return decimal(number);
  }
  return value.isSingleText() ? value.text() : std::string();
}

// std::nullopt if they cannot be listed to the end.
std::optional<std::vector<std::string>> valueNames(const OpenKey& key) {
  constexpr std::size_t longestName = 16383;
  std::vector<std::string> names;
  std::vector<char16_t> name(longestName + 1);
  for (DWORD index = 0;; ++index) {
    auto size = static_cast<DWORD>(name.size());
    const LONG listed =
        RegEnumValueW(key.handle(), index, roomIn(name), &size, nullptr, nullptr, nullptr, nullptr);
    if (listed == ERROR_NO_MORE_ITEMS) {
      return names;
    }
    if (listed != ERROR_SUCCESS) {
      return std::nullopt;
    }
    names.push_back(utf8({name.data(), size}));
  }
}

// Gives the text of a value and returns what the call returned that failed, if one did.
LONG readPolicy(const Form42& form, const char* name, std::string& text) {
  if (!form.obeysComputer) {
    return ERROR_FILE_NOT_FOUND;
  }
  const OpenKey key(HiveHandle::LocalMachine, policyKey, readOn64BitView);
  ValueData value;
  const LONG read = key.isOpen() ? value.read(key.handle(), name) : key.openStatus();
  text = read == ERROR_SUCCESS ? textOfValue(value) : std::string();
  return read;
}

}  // namespace

std::vector<std::string> policyValueNames() {
  std::vector<std::string> names{letterSetting, undoPolicy, categoriesPolicy};
  for (const SafeguardRule& rule : safeguardRules) {
    names.emplace_back(rule.setting);
  }
  return names;
}

std::optional<std::string> policyText(const Form42& form, const char* name) {
  std::string text;
  return isAbsent(readPolicy(form, name, text)) ? std::nullopt : std::optional(std::move(text));
}

std::optional<bool> undoByPolicy(const Form42& form) {
  const auto text = policyText(form, undoPolicy);
  return text ? std::optional(*text != "0") : std::nullopt;
}

std::optional<std::set<std::size_t>> categoriesByPolicy(const Form42& form) {
  std::string text;
  if (readPolicy(form, categoriesPolicy, text) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::set<std::size_t> rows;
  for (const std::string_view name : split(text, ",")) {
    if (const auto row = categoryNamed(name)) {
      rows.insert(*row);
    }
  }
  return rows;
}

std::optional<std::vector<std::string>> exclusionsByPolicy(const Form42& form) {
  std::vector<std::string> entries;
  if (!form.obeysComputer) {
    return entries;
  }
  const OpenKey key(HiveHandle::LocalMachine, std::string(policyKey) + "\\" + exclusionsPolicy,
                    readOn64BitView);
  if (!key.isOpen()) {
    return isAbsent(key.openStatus()) ? std::optional(entries) : std::nullopt;
  }
  const auto names = valueNames(key);
  if (!names) {
    return std::nullopt;
  }
  for (const std::string& name : *names) {
    ValueData value;
    const LONG read = value.read(key.handle(), name);
    if (read != ERROR_SUCCESS && !isAbsent(read)) {
      return std::nullopt;
    }
    if (value.isSingleText() && !trim(value.text()).empty()) {
      entries.emplace_back(trim(value.text()));
    }
  }
  return entries;
}

std::string unreadExclusions(const Form42& form) {
  return exclusionsByPolicy(form) ? exclusionPath(form)
                                  : std::string("HKLM\\") + policyKey + "\\" + exclusionsPolicy;
}

std::string policyRefusal(const std::string& what, const std::string& advice) {
  return what + " contradicts a policy of this computer (HKLM\\" + policyKey + "); " + advice +
         ", or change the policy";
}

}  // namespace zelvreg
