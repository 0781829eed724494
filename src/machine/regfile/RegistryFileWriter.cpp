// Writing registry.reg.
#include <algorithm>
#include <cstring>
#include <string>

#include "machine/base/CaseFold.h"
#include "machine/base/MachineError.h"
#include "machine/regfile/NarrowText.h"
#include "machine/regfile/RegistryFile.h"
#include "regfile/Writer.h"
#include "roots/Roots.h"
#include "roots/UserKeys.h"
#include "roots/ValueTypes.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

using Encoding = regfile::Form::Encoding;

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
  return decodeNarrow(encodeNarrow(text)) == text;
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

class RegistryWriter {
 public:
  RegistryWriter(std::ostream& stream, Registry& source, const RegistryFileForm& form)
      : registry(source),
        spellsCurrentUser(form.spellsCurrentUser),
        output(stream),
        writer(form.text, encodeNarrow) {}

  void write() {
    if (spellsCurrentUser) {
      writeKey(registry.currentUser(), std::u16string(wideLongName(HiveHandle::CurrentUser)));
    }
    writeKey(registry.machineRoot(), std::u16string(wideLongName(HiveHandle::LocalMachine)));
    writeKey(registry.usersRoot(), std::u16string(wideLongName(HiveHandle::Users)));
    writer.addLine({});
    flushAbove(0);
  }

 private:
  // The user's classes lie beside the user's key but are spelled as if they lay in it.
  [[nodiscard]] RegistryKey* classesBehind(const RegistryKey& alias) const {
    RegistryKey* target = registry.aliasTarget(alias);
    const bool isOfCurrentUser =
        alias.parent->parent == &registry.currentUser() && target->parent == &registry.usersRoot();
    return spellsCurrentUser && isOfCurrentUser ? target : nullptr;
  }

  [[nodiscard]] bool isWrittenElsewhere(const RegistryKey& key) const {
    if (!spellsCurrentUser || key.parent != &registry.usersRoot()) {
      return false;
    }
    const std::u16string_view sid = registry.currentUser().name();
    return &key == &registry.currentUser() ||
           (key.role == KeyRole::Classes &&
            key.name().size() == sid.size() + userClassesSuffix.size() &&
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
      writer.beginKey(path);
      const ValueList& values = registry.values(key);
      for (std::size_t index = 0; index < values.size(); ++index) {
        const RegistryValue& value = *values.at(index);
        writer.addValue({.name = value.name(), .type = value.type, .data = value.bytes()});
      }
      flushAbove(pieceSize);
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

  // In large pieces.
  void flushAbove(std::size_t size) {
    if (writer.bytes().size() > size) {
      const std::string bytes = writer.takeBytes();
      output.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
  }

  static constexpr std::size_t pieceSize = 1 << 20;

  Registry& registry;
  const bool spellsCurrentUser;
  std::ostream& output;
  regfile::Writer writer;
};

}  // namespace

void writeRegistryFile(std::ostream& output, Registry& registry, RegistryFileForm form) {
  const Encoding encoding = form.text.encoding;
  const bool isWhole =
      encoding == Encoding::Utf16 || (isCarried(registry, registry.machineRoot(), encoding) &&
                                      isCarried(registry, registry.usersRoot(), encoding));
  if (!isWhole) {
    form.text.encoding = Encoding::Utf16;
  }
  RegistryWriter(output, registry, form).write();
}

}  // namespace zelvreg::machine
