// What kinds of files there are: extensions, content types, file classes.
#include <array>
#include <string_view>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string machineClasses = std::string(machineSoftware) + "\\Classes";
const std::string userClasses = std::string(userSoftware) + "\\Classes";
// Reported of the merged root.
const std::string mergedClasses = "HKEY_CLASSES_ROOT";

void keyWithText(const Making& making, const std::string& path, std::string_view text) {
  making.registry.key(path);
  making.registry.reference("", text);
}

Reference changed(Reference reference, const char* before, const char* after) {
  reference.text = before + reference.text + after;
  return reference;
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
  const std::string list = "\\MIME\\Database\\Content Type";
  making.registry.container(machineClasses + list);
  const std::size_t count = 4 + making.share(400);
  for (std::size_t number = 0; number < count; ++number) {
    const bool isDead = number == 0 || making.random.oneIn(10);
    const std::string key = list + "\\application/x-" + padded(number, 5);
    making.registry.key(machineClasses + key);
    making.registry.text("Extension", (isDead ? ".gone" : ".x") +
                                          padded(making.random.below(making.share(1500)), 5));
    making.label("771", mergedClasses + key, "Extension",
                 {{}, isDead ? Truth::Dead : Truth::Alive, "content-type-extension"});
  }
}

struct FileClass {
  const std::string& classes;
  std::string name;
};

void writeIcon(const Making& making, const FileClass& fileClass, const Reference& icon) {
  const std::string key = "\\" + fileClass.name + "\\DefaultIcon";
  keyWithText(making, fileClass.classes + key, icon.text);
  making.label("6", mergedClasses + key, "", icon);
}

// The key of a command, with all keys above it below the class.
std::string writeCommandKey(const Making& making, const FileClass& fileClass) {
  std::string key = "\\" + fileClass.name;
  for (const char* below : {"\\shell", "\\open", "\\command"}) {
    key += below;
    making.registry.key(fileClass.classes + key);
  }
  return mergedClasses + key;
}

void writeCommand(const Making& making, const FileClass& fileClass, const Reference& command) {
  const std::string key = writeCommandKey(making, fileClass);
  making.registry.reference("", command.text);
  making.label("7", key, "", command);
}

void writeClass(const Making& making, const FileClass& fileClass) {
  keyWithText(making, fileClass.classes + "\\" + fileClass.name, "Document");
}

void writePlainClasses(const Making& making, const std::string& classes, const char* names,
                       std::size_t perMillion) {
  making.registry.container(classes);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const FileClass fileClass{classes, names + padded(number, 5)};
    const View view = making.random.oneIn(2) ? View::Bits64 : View::Bits32;
    writeClass(making, fileClass);
    const Reference program = making.files.any(FileKind::Program, view, making.random);
    writeIcon(making, fileClass,
              making.random.oneIn(2)
                  ? making.files.any(FileKind::Picture, view, making.random)
                  : changed(making.files.any(FileKind::Program, view, making.random), "", ",1"));
    writeCommand(making, fileClass, changed(program, "\"", "\" \"%1\""));
  }
}

void writeHardClasses(const Making& making, const std::string& classes, const char* names,
                      Owner owner) {
  const std::size_t count = making.casesOfPlace();
  const std::vector<Reference> icons =
      making.paths.take({FileKind::Picture, View::Bits64, owner}, count);
  const std::vector<Reference> programs =
      making.paths.take({FileKind::Program, View::Bits64, owner}, count);
  for (std::size_t number = 0; number < count; ++number) {
    const FileClass fileClass{classes, names + padded(number, 5)};
    writeClass(making, fileClass);
    writeIcon(making, fileClass, changed(icons[number], "", number % 2 == 0 ? ",0" : ",-101"));
    writeCommand(making, fileClass, changed(programs[number], "\"", "\" /open \"%1\""));
  }
}

// A command that the installer looks up by a code of its own before it takes the text.
void writeAdvertisedCommand(const Making& making, const FileClass& fileClass) {
  constexpr std::array<std::string_view, 1> code{"w_1^VnUgw@Y=W'b,5?'p>M5KDYSUnf(HA*L[xeX)y"};
  writeClass(making, fileClass);
  writeCommand(making, fileClass,
               {"\"C:\\Nowhere\\advertised.exe\" \"%1\"", Truth::Undecidable, "advertised"});
  making.registry.texts("command", code);
}

enum class Beside { Nothing, DropTarget, Conversation, Handler, Subkey };

// The key of a command with nothing in it, and what else may carry the command out.
void writeEmptyCommand(const Making& making, const FileClass& fileClass, Beside beside) {
  writeClass(making, fileClass);
  const std::string key = writeCommandKey(making, fileClass);
  making.label("771", key, "",
               beside == Beside::Nothing
                   ? Reference{{}, Truth::Dead, "empty-command"}
                   : Reference{{}, Truth::Undecidable, "empty-command-with-handler"});
  const std::string open = fileClass.classes + "\\" + fileClass.name + "\\shell\\open\\";
  if (beside == Beside::Subkey) {
    making.registry.key(open + "command\\Vendor");
    making.registry.text("Verb", "open");
  }
  if (beside == Beside::DropTarget) {
    making.registry.key(open + "DropTarget");
    making.registry.text("CLSID", "{D1100000-0000-4000-8000-000000000001}");
  }
  if (beside == Beside::Conversation) {
    keyWithText(making, open + "ddeexec", "[open(\"%1\")]");
  }
}

// A plain cut ends at the first ending of a program.
void writeUnquotedCommand(const Making& making, const FileClass& fileClass) {
  writeClass(making, fileClass);
  writeCommand(making, fileClass,
               {"C:\\Company Tools\\setup.exe files\\v1.2.dll\\tool.exe %1", Truth::Alive, "dots"});
}

void writeOddClasses(const Making& making) {
  std::size_t number = 0;
  const auto next = [&] { return FileClass{machineClasses, "Odd." + padded(number++, 5)}; };
  for (std::size_t turn = 0; turn < making.share(20); ++turn) {
    writeAdvertisedCommand(making, next());
    for (const Beside beside :
         {Beside::Nothing, Beside::DropTarget, Beside::Conversation, Beside::Subkey}) {
      writeEmptyCommand(making, next(), beside);
    }
    writeUnquotedCommand(making, next());
  }
}

}  // namespace

void writeFileClasses(const Making& making) {
  writeExtensions(making);
  writeContentTypes(making);
  writePlainClasses(making, machineClasses, "File.", 6000);
  writeHardClasses(making, machineClasses, "Tool.", Owner::Machine);
  writeOddClasses(making);
  // No class of the user hides one of the machine.
  writePlainClasses(making, userClasses, "UserFile.", 400);
  writeHardClasses(making, userClasses, "UserTool.", Owner::User);
}

}  // namespace zelvreg::bench
