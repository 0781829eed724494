#include "images/DriveLetters.h"

#include <cstring>
#include <functional>
#include <initializer_list>
#include <string_view>

#include "machine/base/CaseFold.h"
#include "machine/base/MachineError.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::images {
namespace {

using machine::HiveReader;

std::optional<char> letterOf(char16_t unit) {
  const char16_t letter = machine::upperCase(unit);
  const bool isLetter = letter >= u'A' && letter <= u'Z';
  return isLetter ? std::optional(static_cast<char>(letter)) : std::nullopt;
}

// The letter of a name like \DosDevices\D:, if it is one.
std::optional<char> letterOfDevice(std::u16string_view name) {
  constexpr std::u16string_view front = u"\\DosDevices\\";
  if (name.size() != front.size() + 2 || name.back() != u':' ||
      !machine::isSameName(name.substr(0, front.size()), front)) {
    return std::nullopt;
  }
  return letterOf(name[front.size()]);
}

// The values of a key, by the names on the way from the root to it.
void readValues(const std::filesystem::path& file, std::initializer_list<std::u16string_view> way,
                const HiveReader::TakeValue& take) {
  try {
    machine::HiveFile hive(file);
    std::optional<std::uint32_t> node = hive.root();
    for (const std::u16string_view name : way) {
      std::optional<std::uint32_t> next;
      hive.content().subkeys(*node, {}, [&](const machine::HiveSubkey& key) {
        if (key.name.isSame(name)) next = key.node;
      });
      if (!next) return;
      node = next;
    }
    hive.content().values(*node, take);
  } catch (const machine::MachineError&) {
    return;
  }
}

}  // namespace

std::map<char, std::string> markedLetters(const std::filesystem::path& systemHive) {
  std::map<char, std::string> letters;
  readValues(systemHive, {u"MountedDevices"}, [&letters](const machine::HiveValue& value) {
    if (const auto letter = letterOfDevice(value.name.text())) {
      letters.emplace(*letter, std::string(reinterpret_cast<const char*>(value.bytes.data()),
                                           value.bytes.size()));
    }
  });
  return letters;
}

std::optional<char> systemDrive(const std::filesystem::path& softwareHive) {
  std::optional<char> drive;
  readValues(softwareHive, {u"Microsoft", u"Windows NT", u"CurrentVersion"},
             [&drive](const machine::HiveValue& value) {
               char16_t first = 0;
               if (value.name.isSame(u"SystemRoot") && value.bytes.size() >= sizeof first) {
                 std::memcpy(&first, value.bytes.data(), sizeof first);
                 drive = letterOf(first);
               }
             });
  return drive;
}

}  // namespace zelvreg::images
