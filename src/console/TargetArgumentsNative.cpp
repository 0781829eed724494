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

}  // namespace

void TargetArguments::addTo(CLI::App& app, Target& target) {
  auto* machine = app.add_option("--machine", target.machineFolder,
                                 "folder that stands for a Windows computer");
  auto* offline = app.add_option("--offline", target.offlineRoot,
                                 "mounted Windows disk: the drive of its Windows folder");
  machine->excludes(offline);
  app.add_option("--drive", drives, "another drive of that disk, as D=DIR; may be repeated")
      ->needs(offline);
  app.add_option("--user", target.user,
                 "whose current user it is, or \"all\": scan or repair every user's keys; else the "
                 "one whose hive was written last");
  app.add_flag("--as-is", target.leavesLogs,
               "for a scan or a search: read hives that were not shut down cleanly without their "
               "transaction logs")
      ->needs(offline);
  app.add_option("--missing-drives", missingDrives,
                 "whether files on drives that were not given are \"unknown\" or \"dead\"")
      ->check(CLI::IsMember({"unknown", "dead"}))
      ->needs(offline);
  app.add_flag("--read-only-files", target.filesAreReadOnly,
               "leave the attributes of the disk's files alone")
      ->needs(offline);
  app.add_option("--keep-backups", target.keptBackups,
                 "how many older backups of each hive to keep beside FILE.bak; 3 by default, "
                 "always with the oldest")
      ->check(CLI::NonNegativeNumber)
      ->needs(offline);
}

void TargetArguments::applyTo(Target& target) const {
  for (const std::string& drive : drives) {
    addDrive(target, drive);
  }
  if (target.user == everybody) {
    target.everyUser = target.everyProfile = true;
    target.user.clear();
  }
  if (!target.user.empty() && target.offlineRoot.empty()) {
    throw UsageError("--user NAME needs --offline; with --machine it takes only \"all\"");
  }
  target.missingDrivesAreDead = missingDrives == "dead";
  if (target.machineFolder.empty() && target.offlineRoot.empty()) {
    throw UsageError(
        "no computer is named; give --machine DIR (a folder that stands for one) or "
        "--offline ROOT (a mounted Windows disk)");
  }
}

}  // namespace zelvreg::console
