#include "undo/UndoStores.h"

#include <windows.h>

#include "registry/Hives.h"
#include "registry/RegistryKey.h"
#include "scan/Settings.h"
#include "text/Numbers.h"

namespace zelvreg {

void registerUndoEntry(const std::string& label, const std::string& stem) {
  const std::string number = decimal(highestUndoNumber() + 1);
  keepSetting(settings::regscan, "cnt", number);
  keepSetting(settings::dates, number, label);
  keepSetting(settings::files, label, stem);
}

std::int64_t highestUndoNumber() { return leadingInteger(readSetting(settings::regscan, "cnt")); }

std::string undoLabel(std::int64_t number) { return readSetting(settings::dates, decimal(number)); }

std::string undoStem(const std::string& label) { return readSetting(settings::files, label); }

void removeUndoEntry(std::int64_t number) {
  const RegistryKey dates(HiveHandle::LocalMachine, settings::dates, writeOn32BitView);
  if (dates.isOpen()) {
    RegDeleteValueA(dates.handle(), decimal(number).c_str());
  }
}

std::string undoSetting() { return readSetting(settings::regscan, "saveundo"); }

void keepUndoSetting(bool isOn) { keepSetting(settings::regscan, "saveundo", isOn ? "1" : "0"); }

std::string journalPath(const Form42& form, const std::string& stem) {
  return form.programFolder + "\\" + stem + ".txt";
}

}  // namespace zelvreg
