// What starts at log-on: every command that is hard to judge, and among them many that are not.
#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

struct RunKey {
  const char* software;
  View view;
  Owner owner;
};
constexpr RunKey runKeys[] = {
    {machineSoftware, View::Bits64, Owner::Machine},
    {userSoftware, View::Bits64, Owner::User},
    {machineSoftware32, View::Bits32, Owner::Machine},
};

// So many of these in each key that none is left out.
constexpr std::size_t fewestCommands = 32;
constexpr std::size_t fewestPaths = 34;
// Or more than half of the list would be reported.
constexpr std::size_t plainForEachCase = 3;

std::vector<Reference> hardOnes(const Making& making, Cases& paths, const RunKey& key) {
  const Place place{FileKind::Program, key.view, key.owner};
  const std::size_t more = making.share(40);
  std::vector<Reference> programs = making.commands.take(place, fewestCommands + more);
  for (Reference& path : paths.take(place, fewestPaths + more)) {
    path.text = "\"" + path.text + "\" /background";
    programs.push_back(std::move(path));
  }
  return programs;
}

// Data that is no text.
void writeNumbers(const Making& making, const std::string& path) {
  const Reference number{{}, Truth::Undecidable, "no-text"};
  making.registry.number("Number", 1);
  making.label("144", path, "Number", number);
  making.registry.binary("Bytes", making.random.bits());
  making.label("144", path, "Bytes", number);
}

void writeRunKey(const Making& making, Cases& paths, const RunKey& key) {
  const std::string path = std::string(key.software) + windowsKey + "\\Run";
  making.registry.container(path);
  std::vector<Reference> programs = hardOnes(making, paths, key);
  const std::size_t plain = programs.size() * plainForEachCase + making.share(40);
  for (std::size_t number = 0; number < plain; ++number) {
    Reference program = making.files.any(FileKind::Program, key.view, making.random);
    program.text = "\"" + program.text + "\" /background";
    programs.push_back(std::move(program));
  }
  for (std::size_t number = 0; number < programs.size(); ++number) {
    const std::string name = "Program " + padded(number, 4);
    making.registry.reference(name, programs[number].text);
    making.label("144", path, name, programs[number]);
  }
  writeNumbers(making, path);
}

}  // namespace

void writeStartupPrograms(const Making& making) {
  // Every case is here, whatever other places have: a scan resolves nothing of a startup program.
  Cases paths(pathCases(), making.files, making.random);
  for (const RunKey& key : runKeys) {
    writeRunKey(making, paths, key);
  }
}

}  // namespace zelvreg::bench
