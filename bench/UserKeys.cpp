// What the shell keeps for the user.
#include <array>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string explorer = std::string(userSoftware) + windowsKey + "\\Explorer";
const std::string compatibility =
    std::string(userSoftware) + "\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags";
const std::string muiCache =
    std::string(userSoftware) +
    "\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\MuiCache";

// What is kept about an extension besides the programs that can open it.
enum class Holds { Programs, Nothing, EmptyPrograms, OpenWithList, UserChoice, Application };

struct ExtensionCase {
  Holds holds;
  Reference reference;
};
const ExtensionCase extensionCases[] = {
    {Holds::Nothing, {{}, Truth::Dead, "extension-with-nothing"}},
    {Holds::EmptyPrograms, {{}, Truth::Dead, "extension-with-nothing"}},
    {Holds::OpenWithList, {{}, Truth::Undecidable, "extension-with-open-with-list"}},
    {Holds::Application, {{}, Truth::Undecidable, "extension-with-application"}},
    {Holds::UserChoice, {{}, Truth::Undecidable, "extension-with-user-choice"}},
};

void writeExtension(const Making& making, const std::string& path, Holds holds,
                    const Reference& reference) {
  making.registry.key(path);
  making.label("122", path, "", reference);
  if (holds == Holds::Application) {
    making.registry.text("Application", "app00000.exe");
  }
  if (holds == Holds::Programs || holds == Holds::OpenWithList) {
    making.registry.key(path + "\\OpenWithList");
    making.registry.text("a", "app" + padded(making.random.below(1000), 5) + ".exe");
    making.registry.text("MRUList", "a");
  }
  if (holds == Holds::Programs || holds == Holds::EmptyPrograms) {
    making.registry.key(path + "\\OpenWithProgids");
  }
  if (holds == Holds::Programs) {
    making.registry.binary("File." + fileNameOf(path), 0);
  }
  if (holds == Holds::UserChoice) {
    making.registry.key(path + "\\UserChoice");
    making.registry.text("ProgId", "File.00000");
  }
}

void writeFileExtensions(const Making& making) {
  const std::string list = explorer + "\\FileExts";
  making.registry.container(list);
  const std::size_t count = making.share(1500);
  for (std::size_t number = 0; number < count; ++number) {
    const bool isDead = making.random.oneIn(10);
    writeExtension(making, list + "\\.x" + padded(number, 5),
                   isDead ? Holds::Nothing : Holds::Programs,
                   isDead ? Reference{{}, Truth::Dead, "extension-with-nothing"}
                          : Reference{{}, Truth::Alive, plainFamily});
  }
  std::size_t number = 0;
  for (std::size_t turn = 0; turn < making.share(20); ++turn) {
    for (const ExtensionCase& one : extensionCases) {
      writeExtension(making, list + "\\.y" + padded(number++, 5), one.holds, one.reference);
    }
  }
}

void writeRecentOrder(const Making& making, const std::string& path, const char* name) {
  making.registry.binary(name, making.random.bits());
  making.label("155", path, name, {{}, Truth::Undecidable, "recent-order"});
}

void writeRecentItems(const Making& making, const std::string& path, std::size_t entries) {
  making.registry.container(path);
  for (std::size_t number = 0; number < entries; ++number) {
    const std::string name = std::to_string(number);
    making.registry.binary(name, making.random.bits());
    making.label("155", path, name, {{}, Truth::Undecidable, "recent-item"});
  }
  writeRecentOrder(making, path, "MRUListEx");
}

void writeRecentText(const Making& making, const std::string& path, const std::string& name,
                     const std::string& ending, const Reference& reference) {
  making.registry.text(name, reference.text + ending);
  making.label("155", path, name, reference);
}

std::string letter(std::size_t number) { return {static_cast<char>('a' + number)}; }

constexpr std::size_t recentTexts = 20;

void writeTypedPaths(const Making& making) {
  const std::string path = explorer + "\\TypedPaths";
  making.registry.container(path);
  std::vector<Reference> folders;
  for (std::size_t number = 0; number < recentTexts; ++number) {
    folders.push_back(folderOf(making.files.any(FileKind::Program, View::Bits64, making.random)));
  }
  folders.push_back({"C:\\Nowhere\\Folder", Truth::Dead, "recent-text"});
  folders.push_back({"C:\\Company Tools", Truth::Alive, "recent-text"});
  folders.push_back({"\\\\server\\programs", Truth::Undecidable, "share"});
  folders.push_back({"Q:\\Programs", Truth::Undecidable, "drive-absent"});
  folders.push_back({"shell:startup", Truth::Undecidable, "recent-text"});
  for (std::size_t number = 0; number < folders.size(); ++number) {
    writeRecentText(making, path, "url" + std::to_string(number + 1), "", folders[number]);
  }
}

void writeRunList(const Making& making) {
  const std::string path = explorer + "\\RunMRU";
  making.registry.container(path);
  std::vector<Reference> programs;
  for (std::size_t number = 0; number < recentTexts; ++number) {
    programs.push_back(making.files.any(FileKind::Program, View::Bits64, making.random));
  }
  programs.push_back({"C:\\Nowhere\\gone.exe", Truth::Dead, "recent-text"});
  programs.push_back({"notepad", Truth::Alive, "recent-text"});
  programs.push_back({"\\\\server\\programs\\tool.exe", Truth::Undecidable, "share"});
  for (std::size_t number = 0; number < programs.size(); ++number) {
    writeRecentText(making, path, letter(number), "\\1", programs[number]);
  }
  writeRecentOrder(making, path, "MRUList");
}

void writeRecentLists(const Making& making) {
  constexpr std::array flatLists{"StreamMRU", "WordWheelQuery",
                                 "ComDlg32\\LastVisitedPidlMRULegacy",
                                 "ComDlg32\\LastVisitedPidlMRU"};
  constexpr std::array listsByExtension{"RecentDocs", "ComDlg32\\OpenSavePidlMRU"};
  writeTypedPaths(making);
  writeRunList(making);
  for (const char* list : flatLists) {
    writeRecentItems(making, explorer + "\\" + list, 20);
  }
  for (const char* list : listsByExtension) {
    writeRecentItems(making, explorer + "\\" + list, 100);
    const std::size_t count = making.share(150);
    for (std::size_t number = 0; number < count; ++number) {
      writeRecentItems(making, explorer + "\\" + list + "\\.x" + padded(number, 5), 10);
    }
  }
}

struct ProgramList {
  std::string path;
  const char* kind;
  std::size_t perMillion;
};

void writeProgramName(const Making& making, const ProgramList& list, const Reference& program) {
  making.registry.text(program.text, "Program");
  making.label(list.kind, list.path, program.text, program);
}

// A list whose values are named by the paths of programs.
void writeProgramList(const Making& making, const ProgramList& list) {
  making.registry.container(list.path);
  const std::size_t count = making.share(list.perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const View view = number % 2 == 0 ? View::Bits64 : View::Bits32;
    writeProgramName(making, list,
                     making.files.distinct(FileKind::Program, view, number / 2, making.random));
  }
  const Place place{FileKind::Program, View::Bits64, Owner::User, Use::Name};
  std::vector<Reference> cases = making.paths.take(place, making.casesOfPlace());
  removeRepeated(cases);
  for (const Reference& program : cases) {
    writeProgramName(making, list, program);
  }
}

// Names of the MUI cache that say which text of a program they keep.
void writeTextsOfPrograms(const Making& making, const ProgramList& list) {
  constexpr std::array endings{".FriendlyAppName", ".ApplicationCompany"};
  for (std::size_t number = 0; number < making.share(20); ++number) {
    const std::string name = "\\texts" + padded(number, 5) + ".exe";
    const std::string live = making.files.nth(FileKind::Program, View::Bits64, number);
    for (const char* ending : endings) {
      writeProgramName(making, list, {live + ending, Truth::Alive, "mui-text"});
      writeProgramName(making, list,
                       {"C:\\Company Tools" + name + ending, Truth::Dead, "mui-text"});
    }
  }
}

}  // namespace

void writeUserKeys(const Making& making) {
  const std::string store = compatibility + "\\Compatibility Assistant\\Store";
  const std::string layers = compatibility + "\\Layers";
  const ProgramList mui{muiCache, "166", 1500};
  writeFileExtensions(making);
  writeRecentLists(making);
  writeProgramList(making, {store, "3", 500});
  writeProgramList(making, {layers, "3", 200});
  writeProgramList(making, mui);
  writeTextsOfPrograms(making, mui);
}

}  // namespace zelvreg::bench
