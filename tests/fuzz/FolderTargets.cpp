// The files of a machine folder, and the notes of a save that was stopped.
#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <sstream>

#include "fuzz/FuzzTarget.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/AtomicFile.h"
#include "machine/base/MachineError.h"
#include "machine/computer/RecordFiles.h"
#include "machine/offline/HiveSaving.h"
#include "machine/regfile/RegistryFile.h"
#include "machine/registry/Registry.h"
#include "support/RegistryContent.h"

namespace zelvreg::fuzz {
namespace {

using fixture::TemporaryFolder;
using machine::Machine;
using machine::MachineError;

constexpr const char* sid = "S-1-5-21-1-1-1-1001";
constexpr const char* registryHead = "Windows Registry Editor Version 5.00\r\n\r\n";

// A refusal is one line, and names the file that is wrong.
void requireLine(const MachineError& error, const std::string& file) {
  const std::string line = error.what();
  require(line.find('\n') == std::string::npos, "a refusal is one line");
  require(line.find(file) != std::string::npos, "a refusal names the file");
}

std::string written(machine::Registry& registry, const machine::RegistryFileForm& form) {
  std::ostringstream output;
  writeRegistryFile(output, registry, form);
  return output.str();
}

struct LoadedRegistry {
  LoadedRegistry(const TemporaryFolder& folder, std::string_view bytes) : registry(64, sid) {
    folder.write("registry.reg", bytes);
    form = readRegistryFile(folder.path() / "registry.reg", registry);
  }
  machine::Registry registry;
  machine::RegistryFileForm form;
};

void readRegistry(std::string_view input) {
  const TemporaryFolder folder;
  try {
    LoadedRegistry first(folder, input);
    const std::string text = written(first.registry, first.form);
    LoadedRegistry second(folder, text);
    require(written(second.registry, second.form) == text, "what was written is read alike");
  } catch (const MachineError& error) {
    require(std::string_view(error.what()).find('\n') == std::string_view::npos,
            "a refusal is one line");
  }
}

// A machine folder with some keys and files that the records may be about.
TemporaryFolder& smallFolder() {
  static TemporaryFolder folder;
  folder.write("registry.reg", std::string(registryHead) +
                                   "[HKEY_LOCAL_MACHINE\\SOFTWARE\\A]\r\n\"b\"=\"c\"\r\n\r\n"
                                   "[HKEY_CURRENT_USER\\Software\\A]\r\n");
  folder.write("machine.ini", "");
  folder.write("security.txt", "");
  folder.write("attributes.txt", "");
  folder.write("C/Windows/a.txt", "a");
  folder.makeFolder("C/Program Files (x86)/zelvreg");
  return folder;
}

// With these bytes as one of its files. After a change, saving writes what opens again and holds
// the same records.
void openAndSave(const std::string& file, std::string_view input) {
  const TemporaryFolder& folder = smallFolder();
  folder.write(file, input);
  const auto records = [](const Machine& computer) {
    return writeSecurities(computer.registry(), computer.drives()) +
           writeAttributes(computer.drives());
  };
  try {
    std::string before;
    {
      const auto computer = Machine::open(folder.path());
      computer->registry().makeChild(computer->registry().machineRoot(), u"added");
      before = records(*computer);
      computer->save();
    }
    const auto again = Machine::open(folder.path());
    require(again->registry().find("HKEY_LOCAL_MACHINE\\added") != nullptr,
            "what is saved is there");
    require(records(*again) == before, "records are kept");
  } catch (const MachineError& error) {
    requireLine(error, file);
  }
}

void readSecurity(std::string_view input) { openAndSave("security.txt", input); }
void readAttributesFile(std::string_view input) { openAndSave("attributes.txt", input); }
void readSettings(std::string_view input) { openAndSave("machine.ini", input); }

// A file that a note must not reach lies beside the folder that it is in.
struct GuardedFolder {
  GuardedFolder() { outer.write("outside", "outside"); }
  [[nodiscard]] std::filesystem::path path() const { return outer.path() / "in"; }
  void write(const std::string& name, std::string_view content) const {
    outer.write("in/" + name, content);
  }
  [[nodiscard]] std::string read(const std::string& name) const { return outer.read("in/" + name); }
  void requireUntouched() const {
    require(outer.read("outside") == "outside", "nothing outside is written");
  }

  TemporaryFolder outer;
};

// A save that was to replace this file; `end` reads the note.
void endSaveOf(const std::string& file, const std::string& newFile, const std::string& note,
               std::string_view input, const std::function<void(const GuardedFolder&)>& end) {
  const GuardedFolder folder;
  folder.write(file, "old");
  folder.write(newFile, "new");
  folder.write(note, input);
  try {
    end(folder);
  } catch (const MachineError& error) {
    requireLine(error, note);
  }
  const std::string content = folder.read(file);
  require(content == "old" || content == "new", "a file is the old one or the new one");
  folder.requireUntouched();
}

void endSave(std::string_view input) {
  endSaveOf(
      "registry.reg", ".registry.reg.zelvreg-AbCdEf", "saving.txt", input,
      [](const GuardedFolder& folder) { machine::finishReplacing(folder.path() / "saving.txt"); });
}

void endSaveOfHives(std::string_view input) {
  endSaveOf("Windows/SOFTWARE", "Windows/.SOFTWARE.zelvreg-AbCdEf", "zelvreg-saving.txt", input,
            [](const GuardedFolder& folder) { machine::finishSavingHives(folder.path()); });
}

constexpr std::array<FuzzTarget, 6> targets{{
    {.name = "registry", .run = readRegistry},
    {.name = "security", .run = readSecurity},
    {.name = "attributes", .run = readAttributesFile},
    {.name = "settings", .run = readSettings},
    {.name = "saving", .run = endSave},
    {.name = "saving-hives", .run = endSaveOfHives},
}};

}  // namespace

std::span<const FuzzTarget> folderTargets() { return targets; }

}  // namespace zelvreg::fuzz
