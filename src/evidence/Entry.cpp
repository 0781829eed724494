#include "evidence/Entry.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "evidence/NamedPlaces.h"
#include "form/Form42.h"
#include "roots/ValueTypes.h"
#include "scan/Findings.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// The value whose text was judged: that which the row names, or the default one of its key.
std::optional<std::u16string> valueNameOf(const Form42& form, std::size_t row,
                                          const NamedPlace& named) {
  switch (named.names) {
    case Names::Value:
      return utf16UntilNul(textFor(form, row, named.value));
    case Names::KeyOfDeadText:
      return u"";
    default:
      return std::nullopt;
  }
}

std::string keyNameOf(const Form42& form, std::size_t row, const NamedPlace& named) {
  const std::string key = textFor(form, row, named.key);
  return named.below.field == Field::None ? key : key + "\\" + textFor(form, row, named.below);
}

bool isBlank(const std::string& text) { return trim(text).empty(); }

// Fills in what is there; whether this place is the one.
bool readAt(Entry& entry, const WideKey& key, const NamedPlace& named) {
  if (key.presence() == Presence::Refused) {
    entry.state = EntryIs::Denied;
    return true;
  }
  if (!key.isOpen()) {
    return false;
  }
  entry.opened = &key;
  if (!entry.name) {
    entry.state = EntryIs::There;
    return true;
  }
  const auto value = key.value(*entry.name);
  if (!value) {
    // What cannot be read is there all the same.
    entry.state = key.presenceOf(*entry.name) == Presence::Absent ? EntryIs::Gone : EntryIs::Denied;
    return entry.state == EntryIs::Denied;
  }
  entry.type = value->type;
  entry.text = isSingleText(value->type) ? textOf(*value) : std::string();
  if (value->type == REG_DWORD && value->data.size() == sizeof(entry.number)) {
    std::memcpy(&entry.number, value->data.data(), sizeof(entry.number));
  }
  entry.state = EntryIs::There;
  return !(named.isBlankPassedOver && isBlank(entry.text));
}

// With the rights to read its owner and its subkeys, unless one of them is what is refused.
WideKey openToRead(const TruePlace& place) {
  WideKey key(place.hive, place.path, KEY_READ);
  return key.isDenied() ? WideKey(place.hive, place.path, KEY_QUERY_VALUE) : std::move(key);
}

ProgramView viewOf(std::u16string_view path) {
  // Few paths have the number in them, and only those need to be converted.
  auto digit = path.find(u'6');
  while (digit != std::u16string_view::npos && path.substr(digit, 4) != u"6432") {
    digit = path.find(u'6', digit + 1);
  }
  if (digit == std::u16string_view::npos) {
    return ProgramView::Bits64;
  }
  return containsIgnoringCase(utf8(path) + "\\", "\\wow6432node\\") ? ProgramView::Bits32
                                                                    : ProgramView::Bits64;
}

}  // namespace

const std::vector<EntryReader::OpenPlace>& EntryReader::open(HiveHandle root,
                                                             const std::string& key) {
  if (root != lastRoot || key != lastKey) {
    lastRoot = root;
    lastKey = key;
    places.clear();
    for (TruePlace& place : possiblePlaces(root, key, Views::True)) {
      WideKey opened = openToRead(place);
      const ProgramView view = viewOf(place.path);
      places.push_back({std::move(place), view, std::move(opened)});
    }
  }
  return places;
}

// Rows of one list have one root.
HiveHandle EntryReader::rootOf(const Form42& form, std::size_t row) {
  const std::string& name = form.View2.text(row, rootNameColumn);
  if (name != lastRootName) {
    lastRootName = name;
    namedRoot = rootOfRow(form, row);
  }
  return namedRoot;
}

Entry EntryReader::entryOf(const Form42& form, std::size_t row, int code) {
  Entry entry;
  for (const NamedPlace& named : namedPlaces(form, row, code)) {
    const HiveHandle root = named.root == rowsRoot ? rootOf(form, row) : named.root;
    for (const OpenPlace& one : open(root, keyNameOf(form, row, named))) {
      Entry there;
      there.key = one.place;
      there.view = one.view;
      there.name = valueNameOf(form, row, named);
      if (readAt(there, one.key, named)) {
        return there;
      }
      if (entry.key.hive == HiveHandle::Unknown) {
        entry = std::move(there);
      }
    }
  }
  return entry;
}

bool KeyContent::hasNamedValue() const {
  return std::ranges::any_of(values, [](const WideValue& value) { return !value.name.empty(); });
}

KeyContent contentOf(const TruePlace& key) {
  KeyContent content;
  const WideKey opened(key.hive, key.path, KEY_READ);
  if (!opened.isOpen()) {
    content.isDenied = opened.presence() == Presence::Refused;
    return content;
  }
  auto values = opened.values();
  auto subkeys = opened.subkeys();
  content.isDenied = !values || !subkeys;
  content.values = std::move(values).value_or(std::vector<WideValue>());
  content.subkeys = std::move(subkeys).value_or(std::vector<std::u16string>());
  return content;
}

bool holdsValues(const TruePlace& key, int levels) {
  const KeyContent content = contentOf(key);
  if (content.isDenied || !content.values.empty()) {
    return true;
  }
  return std::ranges::any_of(content.subkeys, [&](const std::u16string& name) {
    return levels == 0 || holdsValues(below(key, name), levels - 1);
  });
}

bool hasOtherHandler(const Entry& command) {
  constexpr std::array handlerKeys{u"DropTarget", u"ddeexec"};
  constexpr std::array handlerValues{u"DelegateExecute", u"ExplorerCommandHandler", u"SubCommands",
                                     u"ExtendedSubCommandsKey"};
  const TruePlace place = parentOf(command.key);
  const WideKey verb(place.hive, place.path, KEY_QUERY_VALUE);
  const auto isHandler = [&](const char16_t* name) {
    return (verb.isOpen() && verb.presenceOf(name) == Presence::Open) ||
           command.opened->presenceOf(name) == Presence::Open;
  };
  const auto isHandlerKey = [&](const char16_t* name) {
    return WideKey(place.hive, below(place, name).path, KEY_QUERY_VALUE).presence() !=
           Presence::Absent;
  };
  return verb.presence() == Presence::Refused || std::ranges::any_of(handlerValues, isHandler) ||
         std::ranges::any_of(handlerKeys, isHandlerKey);
}

TruePlace parentOf(const TruePlace& key) {
  const auto last = key.path.find_last_of(u'\\');
  return {key.hive, last == std::u16string::npos ? std::u16string() : key.path.substr(0, last)};
}

}  // namespace zelvreg
