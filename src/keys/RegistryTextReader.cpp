#include "keys/RegistryTextReader.h"

#include <algorithm>
#include <utility>

#include "keys/KeySecurity.h"
#include "keys/RegistryTextNotes.h"
#include "regfile/Reader.h"
#include "roots/NameLimits.h"
#include "roots/UserKeys.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using Kind = RegistryChange::Kind;

// The two other roots hold no keys of their own.
bool canBeImported(HiveHandle root) {
  return root != HiveHandle::Unknown && root != HiveHandle::PerformanceData &&
         root != HiveHandle::DynData;
}

std::vector<BYTE> bytesOf(std::span<const std::byte> data) {
  const auto* first = reinterpret_cast<const BYTE*>(data.data());
  return {first, first + data.size()};
}

std::optional<std::u16string> decodeOwnPage(std::string_view narrow) {
  const auto length = static_cast<int>(narrow.size());
  if (length == 0) {
    return std::u16string();
  }
  std::u16string wide(narrow.size(), u'\0');
  const int size = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, narrow.data(), length,
                                       roomIn(wide), length);
  wide.resize(static_cast<std::size_t>(size));
  return size > 0 ? std::optional(std::move(wide)) : std::nullopt;
}

// Keeps the statements of a file as changes.
class ChangeList : public regfile::Receiver {
 public:
  explicit ChangeList(std::string_view bytes)
      : reader(bytes, decodeOwnPage, regfile::Nuls::Refused) {}

  RegistryChanges read() {
    changes.fault = reader.read(*this);
    return std::move(changes);
  }

 private:
  // It becomes the name of a key, so it must be nothing else.
  Objection noteUser(const std::string& user) {
    if (!isSidText(user)) {
      return "the user's security identifier is none";
    }
    if (!changes.user.empty() && changes.user != user) {
      return "the file belongs to a second user here; restore each export by itself";
    }
    changes.user = user;
    return none;
  }

  // A comment that is no note of ours says nothing.
  Objection comment(std::u16string_view text) override {
    if (!text.starts_with(notes::prefix)) {
      return none;
    }
    text.remove_prefix(notes::prefix.size());
    if (text == notes::safetyExport) {
      changes.isSafetyExport = true;
      return none;
    }
    if (text.starts_with(notes::user)) {
      return noteUser(utf8(text.substr(notes::user.size())));
    }
    const bool isSecurity = text.starts_with(notes::security);
    if (!isSecurity && !text.starts_with(notes::order)) {
      return none;
    }
    if (changes.list.empty() || changes.list.back().kind != Kind::MakeKey) {
      return "the note belongs to no key; it must come right after a line [key]";
    }
    RegistryChange& key = changes.list.back();
    return isSecurity ? noteSecurity(key, text.substr(notes::security.size()))
                      : noteOrder(key, text.substr(notes::order.size()));
  }

  static Objection noteSecurity(RegistryChange& key, std::u16string_view text) {
    std::vector<std::byte> bytes;
    const bool isRead = regfile::readByteList(text, bytes);
    key.security = bytesOf(bytes);
    return isRead && isWholeDescriptor(key.security) ? none : "the access list is not whole";
  }

  static Objection noteOrder(RegistryChange& key, std::u16string_view text) {
    return notes::readPositions(text, key.positions)
               ? none
               : "the places of the values are not valid; write numbers such as 0-3,7";
  }

  Objection makeKey(std::u16string_view path) override { return addKey(Kind::MakeKey, path); }
  Objection deleteKey(std::u16string_view path) override { return addKey(Kind::DeleteKey, path); }

  Objection addKey(Kind kind, std::u16string_view wholePath) {
    const std::size_t backslash = std::min(wholePath.find(u'\\'), wholePath.size());
    RegistryChange change = newChange(kind);
    change.hive = rootWithLongName(wholePath.substr(0, backslash));
    if (!canBeImported(change.hive)) {
      return "the root is not known; give its long name, such as HKEY_LOCAL_MACHINE";
    }
    takesValues = kind == Kind::MakeKey;
    const bool isRoot = backslash == wholePath.size();
    if (isRoot && !takesValues) {
      return "a root cannot be deleted";
    }
    change.path = wholePath.substr(isRoot ? backslash : backslash + 1);
    const Objection wrong = isRoot ? none : wrongWithPath(change.path);
    changes.list.push_back(std::move(change));
    return wrong;
  }

  static Objection wrongWithPath(std::u16string_view path) {
    if (path.find(u'\0') != std::u16string_view::npos) {
      return "the path holds a NUL character";
    }
    for (std::size_t depth = 1;; ++depth) {
      const std::u16string_view name = path.substr(0, path.find(u'\\'));
      if (name.empty()) {
        return "the path holds an empty name";
      }
      if (name.size() > longestKeyName || depth > deepestKey) {
        return "the path is too long; a name has at most 255 characters, a path 512 names";
      }
      if (name.size() == path.size()) {
        return none;
      }
      path.remove_prefix(name.size() + 1);
    }
  }

  Objection setValue(std::u16string_view name, std::uint32_t type,
                     std::span<const std::byte> data) override {
    RegistryChange change = newChange(Kind::SetValue);
    change.value = {.name = std::u16string(name), .type = type, .data = bytesOf(data)};
    return addValue(std::move(change));
  }

  Objection deleteValue(std::u16string_view name) override {
    RegistryChange change = newChange(Kind::DeleteValue);
    change.value.name = name;
    return addValue(std::move(change));
  }

  Objection addValue(RegistryChange change) {
    if (!takesValues) {
      return "the value belongs to no key; a line [key] must come before it";
    }
    changes.list.push_back(std::move(change));
    return none;
  }

  [[nodiscard]] RegistryChange newChange(Kind kind) const {
    RegistryChange change;
    change.kind = kind;
    change.line = reader.line();
    return change;
  }

  regfile::Reader reader;
  RegistryChanges changes;
  bool takesValues = false;  // not before the first key, nor after one that is deleted
};

}  // namespace

RegistryChanges readRegistryText(std::string_view bytes) { return ChangeList(bytes).read(); }

}  // namespace zelvreg
