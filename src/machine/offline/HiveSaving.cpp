#include "machine/offline/HiveSaving.h"

#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "machine/base/MachineError.h"
#include "machine/offline/HiveBackups.h"

namespace zelvreg::machine {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view noteName = "zelvreg-saving.txt";
constexpr std::string_view noteHead = "zelvreg: these hives are being replaced";

// By which a hive is known again after another start of the computer.
std::string fingerprintOf(const fs::path& file) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char byte : readWholeFile(file)) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
  }
  return std::to_string(hash);
}

// Other programs that keep to locks see these for as long as the hives are replaced.
std::vector<FileDescriptor> lockAll(const std::vector<WaitingHive>& hives) {
  std::vector<FileDescriptor> locks;
  for (const WaitingHive& hive : hives) {
    FileDescriptor& lock = locks.emplace_back(openPlainFile(hive.file->place()));
    if (lock.isOpen() && flock(lock.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
      throw MachineError(hive.file->place().string() +
                         ": is locked by another program; wait until it has ended");
    }
  }
  return locks;
}

// One save, which is undone when it cannot be ended.
class Saving {
 public:
  Saving(const fs::path& root, const std::vector<WaitingHive>& waiting)
      : note(root / noteName), hives(waiting) {
    for (const WaitingHive& hive : hives) {
      const fs::path& place = hive.file->place();
      backups.push_back(AtomicFile::copyOf(place, hive.oldStamp, backupOf(place)));
    }
    writeNote(root);
  }

  void go() {
    try {
      for (std::size_t at = 0; at < hives.size(); ++at) {
        asides.push_back(setBackupAside(hives[at].file->place(), hives[at].oldStamp));
        backups[at].replace();
        ++backupsInPlace;
      }
      for (const WaitingHive& hive : hives) {
        const FileStamp newStamp = stampOf(hive.file->beside());
        hive.file->replaceJust(hive.oldStamp);
        newStamps.push_back(newStamp);
      }
    } catch (const MachineError& error) {
      undo(error);
      throw;
    }
    unlink(note.c_str());
  }

 private:
  void writeNote(const fs::path& root) const {
    std::string lines = std::string(noteHead) + "\n";
    for (const WaitingHive& hive : hives) {
      const fs::path& place = hive.file->place();
      std::error_code error;
      const std::string target = fs::proximate(place, root, error).string();
      if (error) {
        throw MachineError(place.string() + " cannot be replaced: " + error.message() +
                           "; check the disk, and try again");
      }
      if (target.find('\n') != std::string::npos) {
        throw MachineError(place.string() + ": has a line break in its name; rename it");
      }
      lines += fingerprintOf(place) + "\n" + fingerprintOf(hive.file->beside()) + "\n" +
               hive.file->beside().filename().string() + "\n" + target + "\n";
    }
    replaceFile(note, lines);
  }

  void undo(const MachineError& reason) {
    try {
      for (std::size_t at = newStamps.size(); at-- > 0;) {
        const fs::path place = hives[at].file->place();
        const fs::path backup = backupOf(place);
        AtomicFile::copyOf(backup, stampOf(backup), place).replaceJust(newStamps[at]);
      }
    } catch (const MachineError&) {
      for (const WaitingHive& hive : hives) hive.file->leave();
      throw MachineError(reason.what() +
                         std::string("; some hives are new and others old now, which the next "
                                     "command on this disk puts in order"));
    }
    for (std::size_t at = 0; at < asides.size(); ++at) {
      const fs::path backup = backupOf(hives[at].file->place());
      if (at < backupsInPlace) unlink(backup.c_str());
      if (!asides[at].empty()) rename(asides[at].c_str(), backup.c_str());
    }
    unlink(note.c_str());
  }

  const fs::path note;
  const std::vector<WaitingHive>& hives;
  std::vector<AtomicFile> backups;
  std::vector<fs::path> asides;  // where each FILE.bak went that was there
  std::size_t backupsInPlace = 0;
  std::vector<FileStamp> newStamps;  // of the hives that are in place
};

// A hive that a note names.
struct NotedHive {
  fs::path place;
  fs::path beside;
  std::string oldPrint;
  std::string newPrint;

  // Waiting is old with its new file ready; Old is without.
  enum class State : std::uint8_t { Waiting, Old, New, Other } state = State::Other;
};

NotedHive::State stateOf(const NotedHive& hive) {
  using State = NotedHive::State;
  const std::string now = fingerprintOf(hive.place);
  if (now == hive.newPrint) return State::New;
  if (now != hive.oldPrint) return State::Other;
  std::error_code error;
  const bool isReady =
      fs::exists(hive.beside, error) && fingerprintOf(hive.beside) == hive.newPrint;
  return isReady ? State::Waiting : State::Old;
}

// A disk may hold anything: its note may name nothing but a hive in it and a file of this program's
// beside that.
bool isOnDisk(const fs::path& root, const NotedHive& hive) {
  std::error_code error;
  const fs::path folder = fs::canonical(hive.place.parent_path(), error);
  const fs::path realRoot = fs::canonical(root, error);
  const auto isPlainOrGone = [&error](const fs::path& file) {
    const fs::file_status status = fs::symlink_status(file, error);
    return !fs::exists(status) || fs::is_regular_file(status);
  };
  return !folder.empty() && std::ranges::mismatch(realRoot, folder).in1 == realRoot.end() &&
         AtomicFile::isBeside(hive.beside.filename().string(), hive.place.filename().string()) &&
         hive.beside.parent_path() == hive.place.parent_path() &&
         fs::is_regular_file(fs::symlink_status(hive.place, error)) && isPlainOrGone(hive.beside);
}

std::vector<NotedHive> readNote(const fs::path& root, const fs::path& note) {
  const auto refuse = [&note] {
    throw MachineError(note.string() +
                       ": is no note of this program, which keeps one there while it writes hives; "
                       "take it away");
  };
  if (!fs::is_regular_file(fs::symlink_status(note))) refuse();
  const std::string content = readWholeFile(note);
  // The system's calls would take a name for shorter than it was when it was looked at.
  if (content.find('\0') != std::string::npos) refuse();
  std::istringstream lines(content);
  std::string line;
  if (!std::getline(lines, line) || line != noteHead) refuse();
  std::vector<NotedHive> hives;
  NotedHive hive;
  std::string beside;
  std::string target;
  while (std::getline(lines, hive.oldPrint)) {
    if (!std::getline(lines, hive.newPrint) || !std::getline(lines, beside) ||
        !std::getline(lines, target)) {
      refuse();
    }
    hive.place = root / fs::path(target).relative_path();
    hive.beside = hive.place.parent_path() / beside;
    if (!isOnDisk(root, hive)) refuse();
    hive.state = stateOf(hive);
    hives.push_back(hive);
  }
  return hives;
}

std::string namesOf(const std::vector<NotedHive>& hives, NotedHive::State state) {
  std::string names;
  for (const NotedHive& hive : hives) {
    if (hive.state == state) names += (names.empty() ? "" : ", ") + hive.place.string();
  }
  return names;
}

// A second name of a hive that stayed would be written along with it.
void dropBackupsOfItself(const std::vector<NotedHive>& hives) {
  for (const NotedHive& hive : hives) {
    const fs::path backup = backupOf(hive.place);
    if (stampOf(backup) == stampOf(hive.place)) unlink(backup.c_str());
  }
}

// What became of the save, in words.
std::string finish(const std::vector<NotedHive>& hives) {
  using State = NotedHive::State;
  const std::string added = namesOf(hives, State::New);
  const std::string waiting = namesOf(hives, State::Waiting);
  std::string others = namesOf(hives, State::Other);
  if (others.empty() && !added.empty()) others = namesOf(hives, State::Old);
  if (!others.empty()) {
    dropBackupsOfItself(hives);
    return "could not be ended, since these are not as it left them: " + others +
           (added.empty() ? "; no hive was repaired" : "; only these were repaired: " + added) +
           ", and each FILE.bak has what was there before";
  }
  if (added.empty()) {
    dropBackupsOfItself(hives);
    return "was undone: all hives are as they were before it";
  }
  for (const NotedHive& hive : hives) {
    if (hive.state == State::Waiting && rename(hive.beside.c_str(), hive.place.c_str()) != 0) {
      throw MachineError(hive.place.string() + " cannot be written: " + std::strerror(errno));
    }
  }
  return "was ended: " + (waiting.empty() ? added : added + ", " + waiting) + " hold the repair";
}

std::string nameOfSave(const fs::path& root) {
  return root.string() + ": a save that was stopped while it wrote hives ";
}

}  // namespace

void putHivesInPlace(const fs::path& root, const std::vector<WaitingHive>& hives,
                     std::size_t keptBackups) {
  if (hives.empty()) return;
  const std::vector<FileDescriptor> locks = lockAll(hives);
  Saving(root, hives).go();
  for (const WaitingHive& hive : hives) thinBackups(hive.file->place(), keptBackups);
}

InterruptedSave unfinishedSave(const fs::path& root, const std::string& reason) {
  InterruptedSave save;
  std::error_code error;
  if (fs::exists(fs::symlink_status(root / noteName, error))) {
    save.unfinished.push_back(nameOfSave(root) + "cannot be ended: " + reason);
  }
  return save;
}

InterruptedSave finishSavingHives(const fs::path& root) {
  const fs::path note = root / noteName;
  std::error_code error;
  InterruptedSave save;
  removeLeftovers(note);
  if (!fs::exists(fs::symlink_status(note, error))) return save;
  const std::vector<NotedHive> hives = readNote(root, note);
  const std::string what = nameOfSave(root);
  try {
    save.notices.push_back(what + finish(hives));
    if (unlink(note.c_str()) != 0) {
      throw MachineError(note.string() + " cannot be removed: " + std::strerror(errno));
    }
  } catch (const MachineError& failure) {
    save.notices.clear();
    save.unfinished.push_back(what + "cannot be ended: " + failure.what() +
                              "; mount the disk so that it can be written, and run this again");
  }
  return save;
}

}  // namespace zelvreg::machine
