// COM classes, type libraries and interfaces, of the machine in both views and of the user.
#include <array>
#include <string_view>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string machineClasses = std::string(machineSoftware) + "\\Classes";
const std::string machineClasses32 = machineClasses + "\\Wow6432Node";
const std::string userClasses = std::string(userSoftware) + "\\Classes";
const std::string userClasses32 = userClasses + "\\Wow6432Node";

// Where a scan finds the classes of one list, and with which code it reports their servers.
struct Seen {
  const char* kind;
  const char* classes;
};
constexpr Seen seenOfMachine[] = {
    {"8", "HKEY_CLASSES_ROOT"},
    {"13", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes"},
};
constexpr Seen seenOfUser[] = {
    {"8", "HKEY_CLASSES_ROOT"},
    {"11", "HKEY_CURRENT_USER\\SOFTWARE\\Classes"},
    {"12", "HKEY_USERS\\S-1-5-21-1-1-1-1001_Classes"},
};

struct ClassList {
  const std::string& classes;
  View view;
  Owner owner;
  std::span<const Seen> seen;  // empty in the 32-bit view, which no scan walks
  std::size_t perMillion;
};
const ClassList classLists[] = {
    {machineClasses, View::Bits64, Owner::Machine, seenOfMachine, 30'000},
    {machineClasses32, View::Bits32, Owner::Machine, {}, 20'000},
    {userClasses, View::Bits64, Owner::User, seenOfUser, 2000},
    {userClasses32, View::Bits32, Owner::User, {}, 500},
};

void keyWithText(const Making& making, const std::string& path, std::string_view text) {
  making.registry.key(path);
  making.registry.reference("", text);
}

std::string libraryGuid(std::size_t number) {
  return "{A0000000-0000-4000-8000-" + padded(number, 12) + "}";
}

// Writes the key of a server and its text; what else it has can be written next.
void writeServer(const Making& making, const ClassList& list, const std::string& component,
                 const Reference& server) {
  const std::string key = "\\CLSID\\" + component + "\\InprocServer32";
  keyWithText(making, list.classes + key, server.text);
  for (const Seen& seen : list.seen) {
    making.label(seen.kind, seen.classes + key, "", server);
  }
}

void writePlainServer(const Making& making, const ClassList& list, const std::string& component) {
  if (making.random.oneIn(5)) {
    const Reference program = making.files.any(FileKind::Program, list.view, making.random);
    keyWithText(making, list.classes + "\\CLSID\\" + component + "\\LocalServer32",
                "\"" + program.text + "\"");
    return;
  }
  if (making.random.oneIn(3)) {
    const std::string library =
        making.files.live(FileKind::SystemLibrary, View::Bits64, making.random);
    writeServer(making, list, component,
                {"%SystemRoot%\\system32\\" + fileNameOf(library), Truth::Alive, plainFamily});
  } else {
    writeServer(making, list, component,
                making.files.any(FileKind::Library, list.view, making.random));
  }
  making.registry.text("ThreadingModel", making.random.oneIn(3) ? "Both" : "Apartment");
}

void writeLibraryReference(const Making& making, const ClassList& list,
                           const std::string& component, const Reference& library) {
  const std::string key = "\\CLSID\\" + component + "\\TypeLib";
  keyWithText(making, list.classes + key, library.text);
  if (!list.seen.empty()) {
    making.label("72", "HKEY_CLASSES_ROOT" + key, "", library);
  }
}

void writeComponent(const Making& making, const ClassList& list, const std::string& component) {
  keyWithText(making, list.classes + "\\CLSID\\" + component, "Component");
}

void writePlainComponents(const Making& making, const ClassList& list) {
  making.registry.container(list.classes + "\\CLSID");
  const std::size_t count = making.share(list.perMillion);
  const std::size_t libraries = making.share(4000);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string component = making.guid(number, count);
    writeComponent(making, list, component);
    writePlainServer(making, list, component);
    if (making.random.oneIn(2)) {
      keyWithText(making, list.classes + "\\CLSID\\" + component + "\\ProgID",
                  "Vendor.Component." + padded(number, 6));
    }
    if (making.random.oneIn(2)) {
      // One in ten libraries is registered nowhere.
      const std::size_t library = making.random.below(libraries);
      const bool isDead = making.random.oneIn(10);
      writeLibraryReference(
          making, list, component,
          {libraryGuid(isDead ? library + libraries : library), isDead ? Truth::Dead : Truth::Alive,
           isDead ? "library-not-registered" : plainFamily});
    }
  }
}

std::string hardComponent(Owner owner, std::size_t number) {
  return (owner == Owner::User ? "{C1000000-0000-4000-8000-" : "{C0000000-0000-4000-8000-") +
         padded(number, 12) + "}";
}

// A server whose text is followed by an argument counts as missing in a scan.
void writeServersWithArguments(const Making& making, const ClassList& list, std::size_t& number) {
  const auto writeOne = [&](const std::string& library, Truth truth) {
    const std::string component = hardComponent(list.owner, number++);
    writeComponent(making, list, component);
    writeServer(making, list, component, {library + " /automation", truth, "arguments"});
  };
  for (std::size_t turn = 0; turn < making.share(20); ++turn) {
    writeOne(making.files.live(FileKind::Library, list.view, making.random), Truth::Alive);
    writeOne(making.files.deadFile(FileKind::Library, list.view, making.random), Truth::Dead);
  }
}

// The runtime loads the library of the CodeBase, or one that it keeps itself.
void writeManagedServer(const Making& making, const ClassList& list, std::size_t& number) {
  const std::string component = hardComponent(list.owner, number++);
  writeComponent(making, list, component);
  writeServer(making, list, component,
              {"\\??\\C:\\Windows\\System32\\mscoree.dll", Truth::Alive, "mscoree"});
  making.registry.text("Class", "Vendor.Managed");
  making.registry.text("Assembly", "Vendor.Managed, Version=1.0.0.0");
  making.registry.text("CodeBase", "file:///C:/Company%20Tools/tool.dll");
}

// The installer puts the library there when it is first asked for.
void writeAdvertisedServer(const Making& making, const ClassList& list, std::size_t& number) {
  constexpr std::array<std::string_view, 1> code{"w_1^VnUgw@Y=W'b,5?'p>M5KDYSUnf(HA*L[xeX)y"};
  const std::string component = hardComponent(list.owner, number++);
  writeComponent(making, list, component);
  writeServer(making, list, component,
              {"C:\\Nowhere\\advertised.dll", Truth::Undecidable, "advertised"});
  making.registry.texts("InprocServer32", code);
}

// Libraries that only the other view or the user has registered.
void writeLibrariesElsewhere(const Making& making, const ClassList& list, std::size_t& number) {
  constexpr std::array places{"\\Classes\\Wow6432Node\\TypeLib", "\\Classes\\Wow6432Node\\CLSID",
                              "\\Classes\\TypeLib"};
  constexpr std::size_t firstElsewhere = 900'000'000;
  for (const char* place : places) {
    const bool isUsers = place == places.back();
    const std::string above = (isUsers ? userSoftware : machineSoftware) + std::string(place);
    const std::string library = libraryGuid(firstElsewhere + number);
    making.registry.container(above);
    keyWithText(making, above + "\\" + library, "Library");
    const std::string component = hardComponent(list.owner, number++);
    writeComponent(making, list, component);
    writeLibraryReference(
        making, list, component,
        {library, Truth::Alive, isUsers ? "library-of-user" : "library-of-other-view"});
  }
}

void writeHardComponents(const Making& making, const ClassList& list) {
  std::size_t number = 0;
  const Place place{FileKind::Library, list.view, list.owner};
  for (const Reference& server : making.paths.take(place, making.casesOfPlace())) {
    const std::string component = hardComponent(list.owner, number++);
    writeComponent(making, list, component);
    writeServer(making, list, component, server);
  }
  writeServersWithArguments(making, list, number);
  for (std::size_t turn = 0; turn < making.share(20); ++turn) {
    writeManagedServer(making, list, number);
    writeAdvertisedServer(making, list, number);
    if (list.owner == Owner::Machine) {
      writeLibrariesElsewhere(making, list, number);
    }
  }
}

void writeTypeLibrary(const Making& making, const std::string& library, const Reference& file32) {
  const std::string key = "\\TypeLib\\" + library;
  const std::string path = machineClasses + key;
  making.registry.key(path);
  keyWithText(making, path + "\\1.0", "Library");
  keyWithText(making, path + "\\1.0\\FLAGS", "0");
  const Reference folder = folderOf(file32);
  keyWithText(making, path + "\\1.0\\HELPDIR", folder.text);
  making.label("71", "HKEY_CLASSES_ROOT" + key + "\\1.0\\HELPDIR", "", folder);
  making.registry.key(path + "\\1.0\\0");
  keyWithText(making, path + "\\1.0\\0\\win32", file32.text);
  keyWithText(making, path + "\\1.0\\0\\win64",
              making.files.any(FileKind::TypeLibrary, View::Bits64, making.random).text);
}

void writeTypeLibraries(const Making& making) {
  making.registry.container(machineClasses + "\\TypeLib");
  const std::size_t count = making.share(4000);
  for (std::size_t number = 0; number < count; ++number) {
    writeTypeLibrary(making, libraryGuid(number),
                     making.files.any(FileKind::TypeLibrary, View::Bits32, making.random));
  }
  constexpr std::size_t firstHard = 800'000'000;
  std::size_t number = firstHard;
  const Place place{FileKind::TypeLibrary, View::Bits64, Owner::Machine, Use::Folder};
  for (const Reference& folder : making.paths.take(place, making.casesOfPlace())) {
    const std::string key = "\\TypeLib\\" + libraryGuid(number++);
    making.registry.key(machineClasses + key);
    keyWithText(making, machineClasses + key + "\\1.0", "Library");
    keyWithText(making, machineClasses + key + "\\1.0\\HELPDIR", folder.text);
    making.label("71", "HKEY_CLASSES_ROOT" + key + "\\1.0\\HELPDIR", "", folder);
  }
}

void writeInterfaces(const Making& making, const std::string& classes, std::size_t perMillion) {
  making.registry.container(classes + "\\Interface");
  const std::size_t count = making.share(perMillion);
  const std::size_t libraries = making.share(4000);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string path = classes + "\\Interface\\" + making.guid(number, count);
    keyWithText(making, path, "IInterface" + padded(number, 6));
    keyWithText(making, path + "\\ProxyStubClsid32", "{00020424-0000-0000-C000-000000000046}");
    keyWithText(making, path + "\\TypeLib", libraryGuid(making.random.below(libraries)));
    making.registry.text("Version", "1.0");
  }
}

}  // namespace

void writeComponents(const Making& making) {
  for (const ClassList& list : classLists) {
    writePlainComponents(making, list);
  }
  for (const ClassList& list : classLists) {
    if (!list.seen.empty()) {
      writeHardComponents(making, list);
    }
  }
  writeTypeLibraries(making);
  writeInterfaces(making, machineClasses, 40'000);
  writeInterfaces(making, machineClasses32, 30'000);
}

}  // namespace zelvreg::bench
