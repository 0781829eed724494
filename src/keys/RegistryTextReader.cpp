#include "keys/RegistryTextReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "keys/KeySecurity.h"
#include "keys/RegistryTextNotes.h"
#include "keys/RegistryTextScanner.h"

namespace zelvreg {
namespace {

constexpr std::size_t longestKeyName = 255;
constexpr std::size_t longestValueName = 16383;
constexpr std::size_t deepestKey = 512;

// The two other roots hold no keys of their own.
bool canBeImported(HiveHandle root) {
  return root != HiveHandle::Unknown && root != HiveHandle::PerformanceData &&
         root != HiveHandle::DynData;
}

std::vector<BYTE> bytesOf(std::u16string_view text) {
  std::vector<BYTE> bytes(text.size() * sizeof(char16_t));
  std::memcpy(bytes.data(), text.data(), bytes.size());
  return bytes;
}

// Each step answers whether it went well; the first that did not has noted the fault.
class Reader {
 public:
  Reader(std::u16string_view body, bool textBytesAreNarrow)
      : scanner(body), isNarrow(textBytesAreNarrow) {}

  RegistryChanges read() {
    while (!scanner.atEnd() && readLine()) {
    }
    changes.fault = scanner.fault();
    return std::move(changes);
  }

 private:
  bool readLine() {
    scanner.beginStatement();
    if (scanner.atEnd() || scanner.skipLineEnd()) {
      return true;
    }
    switch (scanner.next()) {
      case u';':
        return readComment(scanner.takeLine());
      case u'[':
        return readKey(scanner.takeLine());
      case u'"':
      case u'@':
        return readValue();
      default:
        return scanner.fail("this is neither a key nor a value; a line begins with [, \", @ or ;");
    }
  }

  // A comment that is no note of ours says nothing.
  bool readComment(std::u16string_view text) {
    if (!text.starts_with(notes::prefix)) {
      return true;
    }
    text.remove_prefix(notes::prefix.size());
    if (text == notes::safetyExport) {
      changes.isSafetyExport = true;
      return true;
    }
    const bool isSecurity = text.starts_with(notes::security);
    if (!isSecurity && !text.starts_with(notes::order)) {
      return true;
    }
    if (changes.list.empty() || changes.list.back().kind != RegistryChange::Kind::MakeKey) {
      return scanner.fail("the note belongs to no key; it must stand right behind a line [key]");
    }
    RegistryChange& key = changes.list.back();
    if (isSecurity) {
      RegistryTextScanner bytes(text.substr(notes::security.size()));
      return (bytes.readBytes(key.security) && isWholeDescriptor(key.security)) ||
             scanner.fail("the access list is not whole");
    }
    return notes::readPositions(text.substr(notes::order.size()), key.positions) ||
           scanner.fail("the places of the values are not valid; write numbers such as 0-3,7");
  }

  bool readKey(std::u16string_view text) {
    if (!text.ends_with(u']')) {
      return scanner.fail("the key is not closed; its line must end in ]");
    }
    text = text.substr(1, text.size() - 2);
    RegistryChange change = newChange(RegistryChange::Kind::MakeKey);
    if (text.starts_with(u'-')) {
      text.remove_prefix(1);
      change.kind = RegistryChange::Kind::DeleteKey;
    }
    const std::size_t backslash = std::min(text.find(u'\\'), text.size());
    change.hive = rootWithLongName(text.substr(0, backslash));
    if (!canBeImported(change.hive)) {
      return scanner.fail("the root is not known; give its long name, such as HKEY_LOCAL_MACHINE");
    }
    takesValues = change.kind == RegistryChange::Kind::MakeKey;
    if (backslash == text.size()) {
      return takesValues ? keep(std::move(change)) : scanner.fail("a root cannot be deleted");
    }
    change.path = text.substr(backslash + 1);
    return checkPath(change.path) && keep(std::move(change));
  }

  bool checkPath(std::u16string_view path) {
    std::size_t depth = 0;
    while (true) {
      const std::u16string_view name = path.substr(0, path.find(u'\\'));
      if (name.empty()) {
        return scanner.fail("the path holds an empty name");
      }
      if (name.size() > longestKeyName || ++depth > deepestKey) {
        return scanner.fail(
            "the path is too long; a name has at most 255 characters, a path 512 names");
      }
      if (name.find(u'\0') != std::u16string_view::npos) {
        return scanner.fail("the path holds a NUL character");
      }
      if (name.size() == path.size()) {
        return true;
      }
      path.remove_prefix(name.size() + 1);
    }
  }

  [[nodiscard]] RegistryChange newChange(RegistryChange::Kind kind) const {
    RegistryChange change;
    change.kind = kind;
    change.line = scanner.statementLine();
    return change;
  }

  bool keep(RegistryChange change) {
    changes.list.push_back(std::move(change));
    return true;
  }

  bool readValue() {
    if (!takesValues) {
      return scanner.fail("the value belongs to no key; a line [key] must stand before it");
    }
    RegistryChange change = newChange(RegistryChange::Kind::SetValue);
    if (!scanner.skip(u"@") && !scanner.readQuoted(change.value.name)) {
      return false;
    }
    if (change.value.name.size() > longestValueName) {
      return scanner.fail("the value's name is too long; it has at most 16383 characters");
    }
    scanner.skipBlanks();
    if (!scanner.skip(u"=")) {
      return scanner.fail("there is no = behind the value's name");
    }
    scanner.skipBlanks();
    if (scanner.skip(u"-")) {
      change.kind = RegistryChange::Kind::DeleteValue;
    } else if (!readData(change.value)) {
      return false;
    }
    return endValue() && keep(std::move(change));
  }

  bool endValue() {
    scanner.skipBlanks();
    if (scanner.next() == u';') {
      scanner.takeLine();
      return true;
    }
    return scanner.atEnd() || scanner.skipLineEnd() ||
           scanner.fail("there is more behind the data");
  }

  bool readData(WideValue& value) {
    if (scanner.next() == u'"') {
      value.type = REG_SZ;
      std::u16string text;
      if (!scanner.readQuoted(text)) {
        return false;
      }
      value.data = bytesOf(text += u'\0');
      return true;
    }
    if (scanner.skip(u"dword:")) {
      value.type = REG_DWORD;
      DWORD number = 0;
      value.data.resize(sizeof number);
      const bool isRead = scanner.readNumber(number);
      std::memcpy(value.data.data(), &number, sizeof number);
      return isRead;
    }
    if (scanner.skip(u"hex:")) {
      value.type = REG_BINARY;
      return scanner.readBytes(value.data);
    }
    if (scanner.skip(u"hex(")) {
      return scanner.readNumber(value.type) &&
             (scanner.skip(u"):") ||
              scanner.fail("the type is not closed; write hex(n): and bytes")) &&
             scanner.readBytes(value.data) && widen(value);
    }
    return scanner.fail(
        "the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -");
  }

  // The bytes of a text that is narrow in its hexadecimal form too.
  bool widen(WideValue& value) {
    const bool isText =
        value.type == REG_SZ || value.type == REG_EXPAND_SZ || value.type == REG_MULTI_SZ;
    if (!isNarrow || !isText) {
      return true;
    }
    const std::string narrow(value.data.begin(), value.data.end());
    const auto wide = decodeNarrow(CP_ACP, narrow);
    if (!wide) {
      return scanner.fail("the bytes are no text of the code page");
    }
    value.data = bytesOf(*wide);
    return true;
  }

  RegistryTextScanner scanner;
  bool isNarrow;
  RegistryChanges changes;
  bool takesValues = false;  // not before the first key, nor after one that is deleted
};

}  // namespace

RegistryChanges readRegistryText(std::string_view bytes) {
  const DecodedRegistryText decoded = decodeRegistryText(bytes);
  if (decoded.fault) {
    return {.list = {}, .fault = decoded.fault};
  }
  return Reader(std::u16string_view(decoded.text).substr(decoded.body), decoded.isNarrow).read();
}

}  // namespace zelvreg
