// Opening a machine folder.
#include <array>
#include <cctype>

#include "machine/MachineState.h"
#include "machine/base/AtomicFile.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "machine/computer/MachineSettings.h"
#include "machine/computer/RecordFiles.h"
#include "machine/offline/OfflineEnvironment.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

// What comes before everything else, so that its faults are told first and nothing is read twice.
struct FolderContent {
  FolderLock lock;
  std::vector<std::string> notices;
  MachineSettings settings;
  std::map<char, std::filesystem::path> drives;
};

constexpr std::array foldersFiles{"registry.reg", "machine.ini", "security.txt", "attributes.txt",
                                  savingNote};

// A folder may come from somebody else: what it is made of lies in it, so that nothing outside is
// read or written in its stead.
void refuseUnlessIn(const std::filesystem::path& place, bool mayBeFolder) {
  const std::filesystem::file_status status = std::filesystem::symlink_status(place);
  if (std::filesystem::is_symlink(status)) {
    throw MachineError(place.string() +
                       " is a link; a machine folder holds its files and drives itself, so put "
                       "there what it leads to");
  }
  const bool isRight = !std::filesystem::exists(status) ||
                       std::filesystem::is_regular_file(status) ||
                       (mayBeFolder && std::filesystem::is_directory(status));
  if (!isRight) {
    throw MachineError(place.string() + " cannot be read: it is no plain file; take it away");
  }
}

std::string readIfThere(const std::filesystem::path& file) {
  return std::filesystem::exists(file) ? readWholeFile(file) : std::string();
}

// The folders with a name of one letter.
std::map<char, std::filesystem::path> driveFolders(const std::filesystem::path& folder) {
  std::map<char, std::filesystem::path> drives;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.size() != 1 || std::isalpha(static_cast<unsigned char>(name[0])) == 0) continue;
    refuseUnlessIn(entry.path(), true);
    if (!entry.is_directory()) continue;
    const char letter = static_cast<char>(name[0] & ~0x20);
    if (!drives.emplace(letter, entry.path()).second) {
      throw MachineError(folder.string() + " has two folders for drive " + letter +
                         ":; take one of them away");
    }
  }
  return drives;
}

FolderContent readFolder(const std::filesystem::path& folder) {
  FolderLock lock(folder);
  for (const char* file : foldersFiles) refuseUnlessIn(folder / file, false);
  std::vector<std::string> notices;
  if (finishReplacing(folder / savingNote)) {
    notices.push_back(folder.string() +
                      ": an earlier command was stopped while it saved; its work was ended");
  }
  for (const char* file : foldersFiles) removeLeftovers(folder / file);
  if (!std::filesystem::exists(folder / "registry.reg")) {
    throw MachineError(folder.string() +
                       " has no registry.reg; put the registry there as the registry editor "
                       "exports it");
  }
  MachineSettings settings = parseMachineSettings(readIfThere(folder / "machine.ini"));
  return {std::move(lock), std::move(notices), std::move(settings), driveFolders(folder)};
}

// What the settings say of the user's own variables holds for the user that they name.
std::function<Environment(const MachineUser&)> environmentsOf(const MachineSettings& settings) {
  return [settings](const MachineUser& user) {
    Environment environment(settings.is64Bit, utf16(user.name));
    const Environment nobodys(settings.is64Bit, u"");
    const Environment somebodys(settings.is64Bit, u"name");
    for (const auto& [name, value] : settings.environment) {
      const bool isUsers = nobodys.get(utf16(name)) != somebodys.get(utf16(name));
      if (user.name == settings.user || !isUsers) {
        environment.set(utf16(name), utf16(value));
      }
    }
    return environment;
  };
}

// The name of the profile's folder that the list of profiles tells; the identifier without it.
std::string listedName(Registry& registry, const std::string& sid) {
  const auto folder = textValue(
      registry,
      R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\ProfileList\)" + sid,
      "ProfileImagePath");
  return folder ? folder->substr(folder->find_last_of("\\/") + 1) : sid;
}

// The user of the settings, then the others whose keys are there.
std::vector<MachineUser> usersOf(const MachineSettings& settings, const std::string& ownSid,
                                 Registry& registry) {
  std::vector<MachineUser> users(1);
  users.front().name = settings.user;
  users.front().sid = users.front().key = ownSid;
  registry.children(registry.usersRoot()).forEach([&](const RegistryKey* key) {
    const std::string sid = utf8(key->name());
    if (sid.starts_with("S-1-") && sidFromText(sid) && sid != ownSid) {
      MachineUser& user = users.emplace_back();
      user.name = listedName(registry, sid);
      user.sid = user.key = sid;
    }
  });
  return users;
}

DriveSettings driveSettings(FolderContent& content) {
  DriveSettings drives;
  drives.folders = std::move(content.drives);
  drives.is64Bit = content.settings.is64Bit;
  drives.programFolder =
      drives.is64Bit ? u"C:\\Program Files (x86)\\zelvreg" : u"C:\\Program Files\\zelvreg";
  return drives;
}

}  // namespace

std::unique_ptr<Machine> Machine::open(const std::filesystem::path& folder) {
  try {
    FolderContent content = readFolder(folder);
    const MachineSettings& settings = content.settings;
    const std::string userSid = sidText(folderUserSid().data());
    const CodePage& page = sharedCodePage(settings.codePage);
    auto registry = std::make_unique<Registry>(settings.is64Bit ? 64 : 32, userSid);
    const RegistryFileForm form = readRegistryFile(folder / "registry.reg", *registry);
    auto users = usersOf(settings, userSid, *registry);
    auto environmentOf = environmentsOf(settings);
    Environment environment = environmentOf(users.front());
    Accounts accounts = accountsFor(users.front());
    std::unique_ptr<State> state(new State{
        .lock = std::move(content.lock),
        .folder = folder,
        .form = form,
        .hasSecurityFile = std::filesystem::exists(folder / "security.txt"),
        .is64Bit = settings.is64Bit,
        .hasSuite = settings.hasSuite,
        .processes = {},
        .requests = {},
        .page = page,
        .users = std::move(users),
        .environmentOf = std::move(environmentOf),
        .accounts = {{0, std::move(accounts)}},
        .actingUser = 0,
        .environment = std::move(environment),
        .clock = Clock(settings.now),
        .registry = std::move(registry),
        .drives = Drives(driveSettings(content)),
        .openFiles = {},
        .faults = {},
        .damagedHives = {},
        .damagedProfiles = {},
        .notices = std::move(content.notices),
        .unsavedChanges = {},
        .diskAttributes = std::nullopt,
        .diskRoot = {},
    });
    readSecurities(readIfThere(folder / "security.txt"), *state->registry, state->drives);
    readAttributes(readIfThere(folder / "attributes.txt"), state->drives);
    state->drives.records().markSaved();
    return std::unique_ptr<Machine>(new Machine(std::move(state)));
  } catch (const std::filesystem::filesystem_error& error) {
    throw MachineError(placeOf(error, folder) + " cannot be read: " + error.code().message() +
                       "; check that you may read it");
  }
}

}  // namespace zelvreg::machine
