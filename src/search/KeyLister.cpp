#include "search/KeyLister.h"

#include <array>

#include "form/Form42.h"
#include "keys/DirectText.h"
#include "roots/NameLimits.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Whatever rights the key grants, in the view of the process.
constexpr REGSAM anyRight = MAXIMUM_ALLOWED;
// All rights of work and the reading of the access list, in the 64-bit view.
constexpr REGSAM textAccess = 0x2013F;

using KeyName = std::array<char16_t, longestKeyName + 1>;

bool readSubkeyName(HKEY key, DWORD index, KeyName& name) {
  return RegEnumKeyW(key, index, roomIn(name), static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
}

struct ListedValue {
  std::string name;
  DWORD type = REG_NONE;
  DWORD size = 0;
};

// ERROR_NO_MORE_ITEMS after the last value.
LONG readValue(ListerState& lister, HKEY key, DWORD index, ListedValue& value) {
  if (lister.valueName.empty()) {
    lister.valueName.resize(longestValueName + 1);
  }
  auto length = static_cast<DWORD>(lister.valueName.size());
  const LONG status = RegEnumValueW(key, index, roomIn(lister.valueName), &length, nullptr,
                                    &value.type, nullptr, &value.size);
  if (status == ERROR_SUCCESS) {
    value.name = utf8(untilNul(std::u16string_view(lister.valueName.data(), length)));
  }
  return status;
}

std::string hexText(const std::vector<BYTE>& bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const BYTE byte : bytes) {
    text += text.empty() ? "" : " ";
    text += digits[byte / 16];
    text += digits[byte % 16];
  }
  return text;
}

struct ShownData {
  const char* typeName = "";
  std::string text;
};

ShownData shownData(HiveHandle root, const std::string& key, const ListedValue& value) {
  switch (value.type) {
    case REG_SZ:
      return {"REG_SZ", ReadValueText(root, key, value.name, "")};
    case REG_EXPAND_SZ:
      return {"REG_EXPAND_SZ", ReadValueText(root, key, value.name, "")};
    case REG_BINARY: {
      const Variant bytes = ReadValueBytes(root, key, value.name, std::vector<BYTE>());
      return {"REG_BINARY", value.size == 0 ? "(zero length binary)"
                                            : hexText(std::get<std::vector<BYTE>>(bytes))};
    }
    case REG_DWORD:
      return {"REG_DWORD", decimal(ReadValueDword(root, key, value.name, 0))};
    default:
      return {};
  }
}

void showValue(ListView& list, const std::string& name, const ShownData& data) {
  const std::size_t row = list.add(name.empty() ? "(Default)" : name);
  list.setText(row, valueTypeColumn, data.typeName);
  list.setText(row, valueDataColumn, data.text);
}

// Where the values of which key are shown.
struct Shown {
  ListView& list;
  HiveHandle root;
  const std::string& key;
};

void listValues(ListerState& lister, const OpenKey& open, ValueNames& values, const Shown* shown) {
  values.names.clear();
  values.types.clear();
  ListedValue value;
  values.ended = open.openStatus();
  for (DWORD index = 0; values.ended == ERROR_SUCCESS; ++index) {
    values.ended = readValue(lister, open.handle(), index, value);
    if (values.ended != ERROR_SUCCESS) {
      break;
    }
    if (shown != nullptr) {
      showValue(shown->list, value.name, shownData(shown->root, shown->key, value));
    }
    values.names.push_back(std::move(value.name));
    values.types.push_back(value.type);
  }
  if (values.names.empty()) {
    values.names.emplace_back(nothingRead);
    values.types.push_back(REG_NONE);
  }
}

}  // namespace

bool HasSubkeys(HiveHandle root) {
  const OpenKey open(root, "", anyRight);
  KeyName name;
  return open.isOpen() && readSubkeyName(open.handle(), 0, name);
}

OpenKey openForLists(HiveHandle root, const std::string& key) { return {root, key, anyRight}; }

void ListSubkeys(Form42& form, ListerState& lister, const OpenKey& open, NameStack& names) {
  if (!open.isOpen()) {
    return;
  }
  for (DWORD index = 0;; ++index) {
    form.messages.doEvents();
    KeyName name;
    if (!readSubkeyName(open.handle(), index, name)) {
      return;
    }
    names.add(untilNul(name.data()));
    if (lister.counter == 1) {
      form.Label3.caption = decimal(index + 1) + "Keys scanned ";
    }
  }
}

std::vector<std::string> ListSubkeys(Form42& form, ListerState& lister, HiveHandle root,
                                     const std::string& key) {
  NameStack listed;
  ListSubkeys(form, lister, openForLists(root, key), listed);
  std::vector<std::string> names;
  for (std::size_t place = 0; place < listed.top(); place += NameStack::sizeOf(names.back())) {
    names.emplace_back(listed.at(place));
  }
  if (names.empty()) {
    names.emplace_back(nothingRead);
  }
  return names;
}

ValueNames ListValues(ListerState& lister, HiveHandle root, std::string key, ShowsValues shows,
                      ListView& list) {
  if (key.ends_with('\\')) {
    key.pop_back();
  }
  if (shows == ShowsValues::No) {
    return ListValues(lister, root, key);
  }
  list.clear();
  const Shown shown{.list = list, .root = root, .key = key};
  ValueNames values;
  listValues(lister, openForLists(root, key), values, &shown);
  if (list.count() == 0) {
    showValue(list, "", {"REG_SZ", "(value not set)"});
  }
  return values;
}

ValueNames ListValues(ListerState& lister, HiveHandle root, const std::string& key) {
  ValueNames values;
  ListValues(lister, openForLists(root, key), values);
  return values;
}

void ListValues(ListerState& lister, const OpenKey& open, ValueNames& values) {
  listValues(lister, open, values, nullptr);
}

ValueTexts::ValueTexts(HiveHandle root, const std::string& key) : open(root, key, textAccess) {}

bool ValueTexts::read(const std::string& valueName) {
  return open.isOpen() && value.read(open.handle(), valueName) == ERROR_SUCCESS;
}

std::string ValueTexts::text() const {
  const std::string text = value.text();
  return value.type() == REG_EXPAND_SZ ? CutAtNul(ExpandEnvText(text)) : text;
}

std::string ReadValueText(HiveHandle root, const std::string& key, const std::string& valueName,
                          const std::string& fallback) {
  ValueTexts texts(root, key);
  return texts.read(valueName) ? texts.text() : fallback;
}

std::int32_t ReadValueDword(HiveHandle root, const std::string& key, const std::string& valueName,
                            std::int32_t fallback) {
  const OpenKey open(root, key, anyRight);
  DWORD type = REG_NONE;
  std::int32_t number = 0;
  DWORD size = sizeof(number);
  const bool isRead =
      open.isOpen() && RegQueryValueExW(open.handle(), Wide(valueName).get(), nullptr, &type,
                                        reinterpret_cast<BYTE*>(&number), &size) == ERROR_SUCCESS;
  return isRead && type == REG_DWORD ? number : fallback;
}

Variant ReadValueBytes(HiveHandle root, const std::string& key, const std::string& valueName,
                       const Variant& fallback) {
  const OpenKey open(root, key, anyRight);
  DWORD type = REG_NONE;
  DWORD size = 0;
  if (!open.isOpen() ||
      RegQueryValueExW(open.handle(), Wide(valueName).get(), nullptr, &type, nullptr, &size) !=
          ERROR_SUCCESS ||
      type != REG_BINARY) {
    return fallback;
  }
  std::vector<BYTE> bytes(std::max<DWORD>(size, 1));
  const LONG status =
      RegQueryValueExW(open.handle(), Wide(valueName).get(), nullptr, &type, bytes.data(), &size);
  return status == ERROR_SUCCESS ? Variant(bytes) : fallback;
}

std::string ExpandEnvText(const std::string& text) { return expandedText(text); }

std::string CutAtNul(std::string_view text) { return std::string(untilNul(text)); }

std::string_view ParentKeyPath(std::string_view key) {
  const auto backslash = key.rfind('\\');
  return key.substr(0, backslash == std::string_view::npos ? 0 : backslash);
}

}  // namespace zelvreg
