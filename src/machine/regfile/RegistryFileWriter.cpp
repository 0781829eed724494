// Writing registry.reg.
#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

#include "machine/base/CaseFold.h"
#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/regfile/RegistryFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

using Encoding = RegistryFileForm::Encoding;

constexpr unsigned regedit4CodePage = 1252;
constexpr std::size_t mostColumns = 77;  // the registry editor breaks lines of bytes behind it

std::u16string unitsOf(const RegistryValue& value) {
  std::u16string units(value.dataSize / sizeof(char16_t), u'\0');
  if (!units.empty()) {
    std::memcpy(units.data(), value.data, units.size() * sizeof(char16_t));
  }
  return units;
}

// Whether text comes back the same after a turn through the encoding.
bool survives(std::u16string_view text, Encoding encoding) {
  const bool isAscii = std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
  if (isAscii || encoding == Encoding::Utf16) {
    return true;
  }
  if (encoding == Encoding::Utf8) {
    return isPlainUtf8(utf8(text));
  }
  const CodePage& page = sharedCodePage(regedit4CodePage);
  return page.decode(page.encode(text)) == text;
}

// Whether the text form "…" gives exactly these bytes when it is read.
bool isPlainText(const RegistryValue& value, std::u16string_view units, Encoding encoding) {
  constexpr std::u16string_view breaking{u"\0\r\n", 3};
  return value.type == REG_SZ && value.dataSize % sizeof(char16_t) == 0 && !units.empty() &&
         units.find_first_of(breaking) == units.size() - 1 && units.back() == u'\0' &&
         survives(units, encoding);
}

// Text in hexadecimal is narrow in REGEDIT4; all else is the stored bytes in every form.
bool isCarried(const RegistryValue& value, Encoding encoding) {
  if (!survives(value.name(), encoding)) {
    return false;
  }
  if (encoding != Encoding::Regedit4 || !isText(value.type)) {
    return true;
  }
  return value.dataSize % sizeof(char16_t) == 0 && survives(unitsOf(value), encoding);
}

bool isCarried(Registry& registry, RegistryKey& key, Encoding encoding) {
  if (!survives(key.name(), encoding)) {
    return false;
  }
  const ValueList& values = registry.values(key);
  for (std::size_t index = 0; index < values.size(); ++index) {
    if (!isCarried(*values.at(index), encoding)) {
      return false;
    }
  }
  bool isWhole = true;
  registry.children(key).forEach([&](RegistryKey* child) {
    isWhole = isWhole && (child->isAlias || isCarried(registry, *child, encoding));
  });
  return isWhole;
}

// Encodes text and hands it on in large pieces.
class EncodedOutput {
 public:
  EncodedOutput(std::ostream& stream, Encoding used) : output(stream), encoding(used) {}
  ~EncodedOutput() { flush(); }
  EncodedOutput(const EncodedOutput&) = delete;
  EncodedOutput& operator=(const EncodedOutput&) = delete;

  void put(std::u16string_view text) {
    switch (encoding) {
      case Encoding::Utf16:
        static_assert(std::endian::native == std::endian::little);
        pending.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
        break;
      case Encoding::Utf8:
        pending += utf8(text);
        break;
      case Encoding::Regedit4:
        pending += sharedCodePage(regedit4CodePage).encode(text);
        break;
    }
    if (pending.size() > pieceSize) {
      flush();
    }
  }

 private:
  static constexpr std::size_t pieceSize = 1 << 20;

  void flush() {
    output.write(pending.data(), static_cast<std::streamsize>(pending.size()));
    pending.clear();
  }

  std::ostream& output;
  Encoding encoding;
  std::string pending;
};

class Writer {
 public:
  Writer(std::ostream& stream, Registry& source, const RegistryFileForm& used)
      : registry(source),
        form(used),
        lineEnd(used.hasCarriageReturns ? u"\r\n" : u"\n"),
        output(stream, used.encoding) {}

  void write() {
    const bool hasMark = form.encoding == Encoding::Utf16 ||
                         (form.encoding == Encoding::Utf8 && form.hasByteOrderMark);
    line = hasMark ? u"\uFEFF" : u"";
    line +=
        form.encoding == Encoding::Regedit4 ? u"REGEDIT4" : u"Windows Registry Editor Version 5.00";
    endLine();
    if (form.spellsCurrentUser) {
      writeKey(registry.currentUser(), u"HKEY_CURRENT_USER");
    }
    writeKey(registry.machineRoot(), u"HKEY_LOCAL_MACHINE");
    writeKey(registry.usersRoot(), u"HKEY_USERS");
    endLine();
  }

 private:
  void endLine() {
    line += lineEnd;
    output.put(line);
    line.clear();
  }

  // The user's classes lie beside the user's key but are spelled as if they lay in it.
  [[nodiscard]] RegistryKey* classesBehind(const RegistryKey& alias) const {
    RegistryKey* target = registry.aliasTarget(alias);
    const bool isOfCurrentUser =
        alias.parent->parent == &registry.currentUser() && target->parent == &registry.usersRoot();
    return form.spellsCurrentUser && isOfCurrentUser ? target : nullptr;
  }

  [[nodiscard]] bool isWrittenElsewhere(const RegistryKey& key) const {
    if (!form.spellsCurrentUser || key.parent != &registry.usersRoot()) {
      return false;
    }
    const std::u16string_view sid = registry.currentUser().name();
    return &key == &registry.currentUser() ||
           (key.role == KeyRole::Classes && key.nameLength == sid.size() + classesSuffixLength &&
            isSameName(key.name().substr(0, sid.size()), sid));
  }

  // A key that comes into being by itself needs no line: a root, the current user's, and one that
  // only holds built-in links.
  [[nodiscard]] bool needsLine(RegistryKey& key) {
    if (registry.values(key).size() > 0) {
      return true;
    }
    bool holdsOnlyLinks = true;
    const KeyList& children = registry.children(key);
    children.forEach([&](const RegistryKey* child) { holdsOnlyLinks &= child->isAlias; });
    return registry.isErasable(key) && (children.empty() || !holdsOnlyLinks);
  }

  void writeKey(RegistryKey& key, const std::u16string& path) {
    if (key.name().find(u'\n') != std::u16string_view::npos) {
      throw MachineError("the key " + Registry::pathOf(key) +
                         " has a line break in its name, which registry.reg cannot hold; delete "
                         "the key or rename it");
    }
    if (needsLine(key)) {
      endLine();
      line = u"[" + path + u"]";
      endLine();
      const ValueList& values = registry.values(key);
      for (std::size_t index = 0; index < values.size(); ++index) {
        writeValue(*values.at(index));
      }
    }
    std::u16string childPath = path + u"\\";
    const std::size_t parentLength = childPath.size();
    registry.children(key).forEach([&](RegistryKey* child) {
      RegistryKey* shown = child->isAlias ? classesBehind(*child) : child;
      if (shown != nullptr && !isWrittenElsewhere(*child)) {
        childPath.resize(parentLength);
        childPath += child->name();
        writeKey(*shown, childPath);
      }
    });
  }

  void putQuoted(std::u16string_view text) {
    line += u'"';
    for (const char16_t unit : text) {
      if (unit == u'"' || unit == u'\\') {
        line += u'\\';
      }
      line += unit;
    }
    line += u'"';
  }

  void putHexNumber(std::uint32_t number, int digits) {
    for (int digit = digits - 1; digit >= 0; --digit) {
      line += u"0123456789abcdef"[number >> (4 * digit) & 0xF];
    }
  }

  void writeValue(const RegistryValue& value) {
    if (value.nameLength == 0) {
      line += u'@';
    } else {
      putQuoted(value.name());
    }
    line += u'=';
    const std::u16string units = value.type == REG_SZ ? unitsOf(value) : std::u16string();
    if (isPlainText(value, units, form.encoding)) {
      putQuoted(std::u16string_view(units).substr(0, units.size() - 1));
    } else if (value.type == REG_DWORD && value.dataSize == sizeof(DWORD)) {
      DWORD number = 0;
      std::memcpy(&number, value.data, sizeof number);
      line += u"dword:";
      putHexNumber(number, 8);
    } else {
      putHex(value);
    }
    endLine();
  }

  void putHex(const RegistryValue& value) {
    line += u"hex";
    if (value.type != REG_BINARY) {
      const int digits = (std::bit_width(value.type | 1) + 3) / 4;
      line += u'(';
      putHexNumber(value.type, digits);
      line += u')';
    }
    line += u':';
    if (form.encoding == Encoding::Regedit4 && isText(value.type)) {
      const std::string narrow = sharedCodePage(regedit4CodePage).encode(unitsOf(value));
      putBytes(std::as_bytes(std::span(narrow)));
    } else {
      putBytes(value.bytes());
    }
  }

  void putBytes(std::span<const std::byte> bytes) {
    std::size_t lineStart = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
      if (index > 0) {
        line += u',';
        if (line.size() - lineStart + 3 > mostColumns) {
          line += u'\\';
          line += lineEnd;
          lineStart = line.size();
          line += u"  ";
        }
      }
      putHexNumber(std::to_integer<std::uint32_t>(bytes[index]), 2);
    }
  }

  static constexpr std::size_t classesSuffixLength = std::u16string_view(u"_Classes").size();

  Registry& registry;
  const RegistryFileForm form;
  const std::u16string_view lineEnd;
  EncodedOutput output;
  std::u16string line;
};

}  // namespace

void writeRegistryFile(std::ostream& output, Registry& registry, RegistryFileForm form) {
  const bool isWhole = form.encoding == Encoding::Utf16 ||
                       (isCarried(registry, registry.machineRoot(), form.encoding) &&
                        isCarried(registry, registry.usersRoot(), form.encoding));
  if (!isWhole) {
    form.encoding = Encoding::Utf16;
  }
  Writer(output, registry, form).write();
}

}  // namespace zelvreg::machine
