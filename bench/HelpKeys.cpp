// Where help files are, and which ones the snap-ins have.
//
// A scan writes the findings of three sections to the same rows, the last section over the one
// before. There are rows of each only if more snap-ins are dead than entries of the joined list are
// reported, and more entries are dead in the plain list than snap-ins.
#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string microsoft = std::string(machineSoftware) + "\\Microsoft\\";
const std::string help = microsoft + "Windows\\Help";
const std::string htmlHelp = microsoft + "Windows\\HTML Help";
const std::string htmlHelpNt = microsoft + "Windows NT\\HTML Help";
const std::string snapIns = microsoft + "MMC\\SnapIns";
constexpr const char* folder = "C:\\Windows\\Help";
constexpr const char* endedFolder = "C:\\Windows\\Help\\";

constexpr std::size_t oneOfEntriesIsDead = 10;
constexpr std::size_t oneOfSnapInsIsDead = 5;

std::size_t snapInCount(const Making& making) { return 40 + making.share(600); }

// A name of the list of help files. Of a dead one there is no file.
std::string fileName(const Making& making, std::size_t number, Truth truth) {
  return (truth == Truth::Dead ? "old" : "") +
         fileNameOf(making.files.nth(FileKind::Help, View::Bits64, number));
}

Truth truthOf(std::size_t number, std::size_t oneIsDead) {
  return number % oneIsDead == 0 ? Truth::Dead : Truth::Alive;
}

const char* familyOf(Truth truth) { return truth == Truth::Dead ? deadFileFamily : plainFamily; }

void writeHelpList(const Making& making) {
  making.registry.container(help);
  const std::size_t count = 20 + making.share(60);
  for (std::size_t number = 0; number < count; ++number) {
    const Truth truth = truthOf(number, oneOfEntriesIsDead);
    const std::string name = fileName(making, number, truth);
    making.registry.text(name, folder);
    making.label("4", help, name, {name, truth, familyOf(truth)});
  }
}

void writeHtmlHelpFile(const Making& making, const std::string& name, const char* itsFolder,
                       const Reference& reference) {
  making.registry.text(name, itsFolder);
  making.label("5", htmlHelp, name, reference);
  making.label("56", htmlHelp, name, reference);
}

// The data of these are blank, and the true ones stand in the other list.
void writeHtmlHelpOfNt(const Making& making, std::size_t count) {
  making.registry.container(htmlHelpNt);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string name = "lost" + padded(number, 5) + ".chm";
    making.registry.text(name, folder);
    making.label("5", htmlHelpNt, name, {name, Truth::Dead, deadFileFamily});
  }
}

void writeHtmlHelpList(const Making& making) {
  making.registry.container(htmlHelp);
  std::size_t number = 0;
  const std::size_t unended = 1 + making.share(20);
  for (; number < unended; ++number) {
    const std::string name = fileName(making, number, Truth::Alive);
    writeHtmlHelpFile(making, name, folder, {name, Truth::Alive, "help-folder-without-backslash"});
  }
  const std::size_t count = unended + 30 + making.share(250);
  for (; number < count; ++number) {
    const Truth truth = truthOf(number, oneOfEntriesIsDead);
    const bool isEnded = truth == Truth::Alive || number % (2 * oneOfEntriesIsDead) == 0;
    const std::string name = fileName(making, number, truth);
    writeHtmlHelpFile(making, name, isEnded ? endedFolder : folder,
                      {name, truth, isEnded ? familyOf(truth) : "help-folder-without-backslash"});
  }
  const std::size_t blank = snapInCount(making) / oneOfSnapInsIsDead + making.casesOfPlace() + 4;
  for (number = 0; number < blank; ++number) {
    making.registry.text("lost" + padded(number, 5) + ".chm", "");
  }
  // The last entry of the list is not tested.
  making.registry.text("last.chm", endedFolder);
  writeHtmlHelpOfNt(making, blank);
}

void writeSnapIn(const Making& making, const std::string& name, const Reference& topic,
                 const char* value = "HelpTopic") {
  making.registry.key(snapIns + "\\" + name);
  making.registry.text("NameString", "Snap-in");
  making.registry.reference(value, topic.text);
  making.label("55", snapIns + "\\" + name, value, topic);
}

// Lists of several topics.
void writeLinkedTopics(const Making& making) {
  constexpr const char* value = "LinkedHelpTopics";
  constexpr const char* family = "linked-topics";
  const std::string live = "C:\\Windows\\Tools\\tool.chm";
  const std::string dead = "C:\\Windows\\Tools\\notool.chm";
  writeSnapIn(making, "Linked 1", {live + ";" + live, Truth::Alive, family}, value);
  writeSnapIn(making, "Linked 2", {dead + ";" + live, Truth::Alive, family}, value);
  writeSnapIn(making, "Linked 3", {dead, Truth::Dead, family}, value);
}

void writeSnapIns(const Making& making) {
  making.registry.container(snapIns);
  const std::size_t count = snapInCount(making);
  for (std::size_t number = 0; number < count; ++number) {
    const Truth truth = truthOf(number, oneOfSnapInsIsDead);
    const std::string file =
        truth == Truth::Dead ? making.files.deadFile(FileKind::Help, View::Bits64, making.random)
                             : making.files.live(FileKind::Help, View::Bits64, making.random);
    writeSnapIn(making, "FX:" + making.guid(number, count), {file, truth, familyOf(truth)});
  }
  std::size_t number = 0;
  const Place place{FileKind::Help, View::Bits64, Owner::Machine};
  for (const Reference& topic : making.paths.take(place, making.casesOfPlace())) {
    writeSnapIn(making, "Tools " + padded(number++, 4), topic);
  }
  writeLinkedTopics(making);
}

}  // namespace

void writeHelpKeys(const Making& making) {
  writeHelpList(making);
  writeHtmlHelpList(making);
  writeSnapIns(making);
}

}  // namespace zelvreg::bench
