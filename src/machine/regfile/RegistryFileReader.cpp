// Reading registry.reg.
#include <optional>
#include <string>

#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/base/MappedFile.h"
#include "machine/regfile/NarrowText.h"
#include "machine/regfile/RegistryFile.h"
#include "machine/regfile/RegistryFileCursor.h"
#include "regfile/Reader.h"

namespace zelvreg::machine {
namespace {

// Carries out the statements of a file on a registry.
class Loader : public regfile::Receiver {
 public:
  explicit Loader(Registry& target) : registry(target), cursor(target) {}

  [[nodiscard]] bool spellsCurrentUser() const { return cursor.spellsCurrentUser(); }

 private:
  Objection comment(std::u16string_view /*text*/) override { return none; }

  Objection makeKey(std::u16string_view path) override {
    return attempt([&] { key = &cursor.open(path); });
  }

  Objection deleteKey(std::u16string_view path) override {
    key = nullptr;
    hasDeleted = true;
    return attempt([&] { cursor.erase(path); });
  }

  Objection setValue(std::u16string_view name, std::uint32_t type,
                     std::span<const std::byte> data) override {
    if (key == nullptr) {
      return missingKey();
    }
    registry.setValue(*key, name, type, data);
    return none;
  }

  Objection deleteValue(std::u16string_view name) override {
    if (key == nullptr) {
      return missingKey();
    }
    registry.eraseValue(*key, name);
    return none;
  }

  Objection attempt(auto step) {
    try {
      step();
      return none;
    } catch (const MachineError& error) {
      pathError = error.what();
      return pathError;
    }
  }

  [[nodiscard]] Objection missingKey() const {
    return hasDeleted ? "a value in a deleted key; put a line [key] before it"
                      : "a value before the first key; put a line [key] before it";
  }

  Registry& registry;
  RegistryFileCursor cursor;
  RegistryKey* key = nullptr;  // none before the first key and after a deletion
  bool hasDeleted = false;
  std::string pathError;
};

std::string messageOf(const std::string& fileName, const regfile::Fault& fault) {
  constexpr const char* expected = "; a line is [key], \"name\"=data, @=data or ; and a comment";
  const bool saysWhatIsExpected = fault.what.find(';') != std::string::npos;
  return fileName + ":" + std::to_string(fault.line) + ": " + fault.what +
         (saysWhatIsExpected ? "" : expected);
}

}  // namespace

RegistryFileForm readRegistryFile(const std::filesystem::path& file, Registry& registry) {
  const MappedFile mapped(file);
  regfile::Reader reader(mapped.bytes(), decodeNarrow, regfile::Nuls::Taken);
  Loader loader(registry);
  if (const auto fault = reader.read(loader)) {
    throw MachineError(messageOf(file.filename().string(), *fault));
  }
  registry.finishLoading();
  return {.text = reader.form(), .spellsCurrentUser = loader.spellsCurrentUser()};
}

}  // namespace zelvreg::machine
