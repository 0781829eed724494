// HKEY_CLASSES_ROOT: what files and components are, of the machine in both views and of the user.
#include <array>
#include <string_view>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string machineClasses = std::string(machineSoftware) + "\\Classes";
const std::string machineClasses32 = machineClasses + "\\Wow6432Node";
const std::string userClasses = std::string(userSoftware) + "\\Classes";
const std::string userClasses32 = userClasses + "\\Wow6432Node";

View anyView(const Making& making) { return making.random.oneIn(2) ? View::Bits64 : View::Bits32; }

void keyWithText(const Making& making, const std::string& path, std::string_view text) {
  making.registry.key(path);
  making.registry.text("", text);
}

void writeExtensions(const Making& making) {
  making.registry.container(machineClasses);
  const std::size_t count = making.share(1500);
  for (std::size_t number = 0; number < count; ++number) {
    keyWithText(making, machineClasses + "\\.x" + padded(number, 5),
                "File." + padded(making.random.below(making.share(6000)), 5));
  }
}

void writeContentTypes(const Making& making) {
  const std::string list = machineClasses + "\\MIME\\Database\\Content Type";
  making.registry.container(list);
  const std::size_t count = making.share(400);
  for (std::size_t number = 0; number < count; ++number) {
    making.registry.key(list + "\\application/x-" + padded(number, 5));
    making.registry.text("Extension", (making.random.oneIn(10) ? ".gone" : ".x") +
                                          padded(making.random.below(making.share(1500)), 5));
  }
}

std::string openCommand(const Making& making, View view) {
  const std::string program = making.files.any(FileKind::Program, view, making.random);
  return "\"" + program + "\" \"%1\"";
}

void writeFileClass(const Making& making, const std::string& path) {
  const View view = anyView(making);
  keyWithText(making, path, "Document");
  keyWithText(making, path + "\\DefaultIcon",
              making.random.oneIn(2)
                  ? making.files.any(FileKind::Picture, view, making.random)
                  : making.files.any(FileKind::Program, view, making.random) + ",1");
  making.registry.key(path + "\\shell");
  making.registry.key(path + "\\shell\\open");
  keyWithText(making, path + "\\shell\\open\\command", openCommand(making, view));
}

void writeFileClasses(const Making& making, const std::string& classes, std::size_t perMillion) {
  making.registry.container(classes);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    writeFileClass(making, classes + "\\File." + padded(number, 5));
  }
}

std::string libraryGuid(std::size_t number) {
  return "{A0000000-0000-4000-8000-" + padded(number, 12) + "}";
}

void writeServer(const Making& making, const std::string& path, View view) {
  if (making.random.oneIn(5)) {
    keyWithText(making, path + "\\LocalServer32",
                "\"" + making.files.any(FileKind::Program, view, making.random) + "\"");
    return;
  }
  making.registry.key(path + "\\InprocServer32");
  if (making.random.oneIn(3)) {
    const std::string library =
        making.files.live(FileKind::SystemLibrary, View::Bits64, making.random);
    making.registry.expandableText("", "%SystemRoot%\\system32\\" + fileNameOf(library));
  } else {
    making.registry.text("", making.files.any(FileKind::Library, view, making.random));
  }
  making.registry.text("ThreadingModel", making.random.oneIn(3) ? "Both" : "Apartment");
}

void writeComponents(const Making& making, const std::string& classes, View view,
                     std::size_t perMillion) {
  making.registry.container(classes + "\\CLSID");
  const std::size_t count = making.share(perMillion);
  const std::size_t libraries = making.share(4000);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string path = classes + "\\CLSID\\" + making.guid(number, count);
    keyWithText(making, path, "Component " + padded(number, 6));
    writeServer(making, path, view);
    if (making.random.oneIn(2)) {
      keyWithText(making, path + "\\ProgID", "Vendor.Component." + padded(number, 6));
    }
    if (making.random.oneIn(2)) {
      // One in ten libraries is registered nowhere.
      const std::size_t library = making.random.below(libraries);
      keyWithText(making, path + "\\TypeLib",
                  libraryGuid(making.random.oneIn(10) ? library + libraries : library));
    }
  }
}

void writeTypeLibraries(const Making& making) {
  making.registry.container(machineClasses + "\\TypeLib");
  const std::size_t count = making.share(4000);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string file32 = making.files.any(FileKind::TypeLibrary, View::Bits32, making.random);
    const std::string path = machineClasses + "\\TypeLib\\" + libraryGuid(number);
    making.registry.key(path);
    keyWithText(making, path + "\\1.0", "Library " + padded(number, 5));
    keyWithText(making, path + "\\1.0\\FLAGS", "0");
    keyWithText(making, path + "\\1.0\\HELPDIR", folderOf(file32));
    making.registry.key(path + "\\1.0\\0");
    keyWithText(making, path + "\\1.0\\0\\win32", file32);
    keyWithText(making, path + "\\1.0\\0\\win64",
                making.files.any(FileKind::TypeLibrary, View::Bits64, making.random));
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

void writeClasses(const Making& making) {
  writeExtensions(making);
  writeContentTypes(making);
  writeFileClasses(making, machineClasses, 6000);
  writeFileClasses(making, userClasses, 400);
  writeComponents(making, machineClasses, View::Bits64, 30'000);
  writeComponents(making, machineClasses32, View::Bits32, 20'000);
  writeComponents(making, userClasses, View::Bits64, 2000);
  writeComponents(making, userClasses32, View::Bits32, 500);
  writeTypeLibraries(making);
  writeInterfaces(making, machineClasses, 40'000);
  writeInterfaces(making, machineClasses32, 30'000);
}

}  // namespace zelvreg::bench
