#include <cctype>

#include "console/TargetArguments.h"

namespace zelvreg::console {
namespace {

void addDrive(Target& target, const std::string& drive) {
  if (drive.size() < 3 || drive[1] != '=' ||
      std::isalpha(static_cast<unsigned char>(drive[0])) == 0) {
    throw UsageError("\"" + drive +
                     "\" is not a drive; write it as a letter and its folder, D=/mnt/d");
  }
  const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0])));
  if (!target.drives.emplace(letter, drive.substr(2)).second) {
    throw UsageError("drive " + std::string(1, letter) + " is given twice; give each drive once");
  }
}

constexpr const char* computerGroup = "Which computer";
constexpr const char* imageGroup = "Disks in image files";
constexpr const char* diskGroup = "Disks, mounted or in an image file";

// Those that say where a repair of the image writes.
std::vector<CLI::Option*> addImage(CLI::App& app, CLI::Option* image, Target& target) {
  app.add_option("--partition", target.partition,
                 "the partition of the Windows to work on, if the image has more than one")
      ->type_name("N")
      ->group(imageGroup);
  auto* overlay = app.add_option("--overlay", target.overlay,
                                 "repair into this new qcow2 image on top, and only read FILE")
                      ->type_name("NEW.qcow2")
                      ->group(imageGroup);
  auto* inPlace = app.add_flag("--in-place", target.writesInPlace, "repair FILE itself")
                      ->group(imageGroup)
                      ->needs(image)
                      ->excludes(overlay->needs(image));
  return {overlay, inPlace};
}

// Whether an option's value is true of whatever disk it is given for.
bool isOfAnyDisk(const CLI::Option& option) {
  return option.get_name() == "--as-is" || option.get_name() == "--missing-drives";
}

void applyUser(Target& target) {
  if (target.user == everybody) {
    target.everyUser = target.everyProfile = true;
    target.user.clear();
  }
}

}  // namespace

const char* TargetArguments::program() { return "zelvreg"; }

const char* TargetArguments::usage() { return " [--machine DIR | --offline ROOT | --image FILE]"; }

std::string TargetArguments::callOf(const std::string& command) {
  return std::string(program()) + " --offline /mnt/windows " + command;
}

const char* TargetArguments::advice() {
  return "  Name the computer with --machine DIR, --offline ROOT or --image FILE.\n";
}

const char* TargetArguments::manual() {
  return "More\n  zelvreg COMMAND --help tells the options of a command, man zelvreg everything.\n";
}

void TargetArguments::addTo(CLI::App& app, Target& target) {
  auto* machine =
      app.add_option("--machine", target.machineFolder, "folder that stands for a Windows computer")
          ->type_name("DIR")
          ->group(computerGroup);
  auto* offline = app.add_option("--offline", target.offlineRoot,
                                 "mounted Windows disk: the drive of its Windows folder")
                      ->type_name("ROOT")
                      ->group(computerGroup);
  auto* image = app.add_option("--image", target.image,
                               "image file of a Windows disk: raw, qcow2, vhd, vhdx, vmdk, vdi")
                    ->type_name("FILE")
                    ->group(computerGroup);
  machine->excludes(offline);
  image->excludes(machine)->excludes(offline);
  ofOneComputer = addImage(app, image, target);
  ofOneComputer.insert(ofOneComputer.begin(), {machine, offline, image});
  app.add_option("--user", target.user,
                 "whose current user it is, or \"all\": scan or repair every user's keys; else the "
                 "one whose hive was written last")
      ->type_name("NAME|all")
      ->group(computerGroup);
  ofDisks = {
      app.add_option("--drive", drives, "another drive of that disk; may be repeated")
          ->type_name("LETTER=DIR"),
      app.add_flag("--as-is", target.leavesLogs,
                   "for a scan or a search: read hives that were not shut down cleanly without "
                   "their transaction logs"),
      app.add_option("--missing-drives", missingDrives,
                     "what files on drives that were not given count as; unknown by default")
          ->check(CLI::IsMember({"unknown", "dead"}))
          ->type_name("unknown|dead"),
      app.add_flag("--read-only-files", target.filesAreReadOnly,
                   "leave the attributes of the disk's files alone"),
      app.add_option("--keep-backups", target.keptBackups,
                     "how many older backups of each hive to keep beside FILE.bak; 3 by default, "
                     "always with the oldest")
          ->check(CLI::NonNegativeNumber)
          ->type_name("N")};
  for (CLI::Option* option : ofDisks) {
    option->group(diskGroup);
    if (!isOfAnyDisk(*option)) {
      ofOneComputer.push_back(option);
    }
  }
}

void TargetArguments::applyToImages(Target& target) const {
  for (const CLI::Option* option : ofOneComputer) {
    if (option->count() > 0) {
      throw UsageError(option->get_name() +
                       " is for one computer; leave it out, images names its own");
    }
  }
  applyUser(target);
  target.missingDrivesAreDead = missingDrives == "dead";
}

void TargetArguments::applyTo(Target& target) const {
  for (const std::string& drive : drives) {
    addDrive(target, drive);
  }
  applyUser(target);
  if (target.partition && target.image.empty()) {
    throw UsageError("--partition is for an image; give it with --image, or behind images");
  }
  if (!target.user.empty() && !target.isDisk()) {
    throw UsageError(
        "--user NAME needs --offline or --image; with --machine it takes only \"all\"");
  }
  target.missingDrivesAreDead = missingDrives == "dead";
  if (target.machineFolder.empty() && !target.isDisk()) {
    throw UsageError(
        "no computer is named; give --machine DIR (a folder that stands for one), "
        "--offline ROOT (a mounted Windows disk) or --image FILE (an image of one)");
  }
  for (const CLI::Option* option : ofDisks) {
    if (option->count() > 0 && !target.isDisk()) {
      throw UsageError(option->get_name() + " is for a disk; give it with --offline or --image");
    }
  }
}

void TargetArguments::decideWriting(Options& options) {
  Target& target = options.target;
  const bool saysWhere = target.writesInPlace || !target.overlay.empty();
  if (!target.image.empty() && changesComputer(options) && !saysWhere) {
    throw UsageError(
        "this changes the disk; give --overlay NEW.qcow2, which leaves the image as it is, or "
        "--in-place, which writes it");
  }
  if (saysWhere && !changesComputer(options) && !options.isRehearsal) {
    throw UsageError("this only reads the disk; leave out --overlay and --in-place");
  }
  if (options.isRehearsal) {
    target.overlay.clear();
    target.writesInPlace = false;
  }
}

}  // namespace zelvreg::console
