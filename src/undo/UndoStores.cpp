#include "undo/UndoStores.h"

#include <windows.h>

#include "registry/Hives.h"
#include "registry/RegistryKey.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

constexpr const char* settingsKey = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan";
constexpr const char* datesKey = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan\\dates";
constexpr const char* filesKey = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan\\file";

std::string read(const char* key, const std::string& name) {
  std::string text;
  GetRegString(HiveHandle::LocalMachine, key, name, text);
  return text;
}

void keep(const char* key, const std::string& name, const std::string& text) {
  SaveRegString(HiveHandle::LocalMachine, key, name, text);
}

}  // namespace

void registerUndoEntry(const std::string& label, const std::string& stem) {
  const std::string number = decimal(highestUndoNumber() + 1);
  keep(settingsKey, "cnt", number);
  keep(datesKey, number, label);
  keep(filesKey, label, stem);
}

std::int64_t highestUndoNumber() {
  return static_cast<std::int64_t>(leadingNumber(read(settingsKey, "cnt")));
}

std::string undoLabel(std::int64_t number) { return read(datesKey, decimal(number)); }

std::string undoStem(const std::string& label) { return read(filesKey, label); }

void removeUndoEntry(std::int64_t number) {
  const RegistryKey dates(HiveHandle::LocalMachine, datesKey, writeOn32BitView);
  if (dates.isOpen()) {
    RegDeleteValueA(dates.handle(), decimal(number).c_str());
  }
}

std::string undoSetting() { return read(settingsKey, "saveundo"); }

void keepUndoSetting(bool isOn) { keep(settingsKey, "saveundo", isOn ? "1" : "0"); }

std::string journalPath(const Form42& form, const std::string& stem) {
  return form.programFolder + "\\" + stem + ".txt";
}

}  // namespace zelvreg
