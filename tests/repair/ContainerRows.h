// Rows whose record has no name, so that the key to delete is the one that all records lie in.
#ifndef ZELVREG_TESTS_REPAIR_CONTAINER_ROWS_H
#define ZELVREG_TESTS_REPAIR_CONTAINER_ROWS_H

#include <algorithm>
#include <string>
#include <vector>

#include "repair/RepairRoutines.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

// A kind that deletes keys, and where.
struct ContainerKind {
  const char* code;
  void (*routine)(Form42& form);
  HiveHandle hive;
  const char* below;  // what the kind seeks below the key that its row names
};

inline constexpr ContainerKind containerKinds[] = {
    {"6", deleteiconref, HiveHandle::ClassesRoot, "\\DefaultIcon"},
    {"7", deleteprogref, HiveHandle::ClassesRoot, ""},
    {"8", deleteclissidref, HiveHandle::ClassesRoot, ""},
    {"71", deleteclissidref71, HiveHandle::ClassesRoot, "\\HELPDIR"},
    {"72", deleteclissidref72, HiveHandle::ClassesRoot, ""},
    {"122", deletefileext, HiveHandle::CurrentUser, ""},
    {"133", deleteuninstall, HiveHandle::LocalMachine, ""},
};

struct ContainerRow {
  ContainerKind kind;
  std::string key;  // of the hive that the kind deletes in

  // Where the key lies in the 64-bit view, and what it is for a 32-bit process there; the second is
  // the same where the views do not differ.
  [[nodiscard]] std::string place() const { return placeOf(""); }
  [[nodiscard]] std::string otherPlace() const { return placeOf("Wow6432Node\\"); }

 private:
  [[nodiscard]] std::string placeOf(const std::string& view) const {
    constexpr std::size_t software = 9;  // "Software\"
    if (kind.hive == HiveHandle::ClassesRoot) {
      const std::string classes = "HKEY_LOCAL_MACHINE\\Software\\Classes";
      // The views share all other classes.
      const bool isTwice = key == scannedKeys::classIds;
      return key.empty() ? classes : classes + "\\" + (isTwice ? view : "") + key;
    }
    if (kind.hive == HiveHandle::CurrentUser) {
      return "HKEY_CURRENT_USER\\" + key;
    }
    const bool isApart = key.size() > software && (key[1] == 'o' || key[1] == 'O') &&
                         key.find("Wow6432Node") == std::string::npos &&
                         key.find("Classes") == std::string::npos;
    return "HKEY_LOCAL_MACHINE\\" +
           (isApart ? key.substr(0, software) + view + key.substr(software) : key);
  }
};

// All kinds with all keys that the scanners walk in their hive. The extensions' kind has its keys
// built in.
inline std::vector<ContainerRow> containerRows() {
  std::vector<ContainerRow> rows;
  for (const ContainerKind& kind : containerKinds) {
    for (const auto& [hive, key] : scannedKeys::all) {
      const bool isExtensions = key == std::string_view(scannedKeys::fileExtensions);
      if (hive == kind.hive && (hive != HiveHandle::CurrentUser || isExtensions)) {
        rows.push_back({kind, key});
      }
    }
  }
  return rows;
}

// Those whose key is elsewhere in the other view, not below itself.
inline std::vector<ContainerRow> rowsOfBothViews() {
  std::vector<ContainerRow> rows = containerRows();
  std::erase_if(rows, [](const ContainerRow& row) {
    return row.key == scannedKeys::software || row.place() == row.otherPlace();
  });
  return rows;
}

inline std::string nameOfRow(const ::testing::TestParamInfo<ContainerRow>& row) {
  std::string name = std::string(row.param.kind.code) + "_" + row.param.key;
  std::ranges::replace_if(
      name, [](unsigned char letter) { return std::isalnum(letter) == 0; }, '_');
  return name + "_" + std::to_string(row.index);
}

class ContainerRowsFixture : public ComputerFixture,
                             public ::testing::WithParamInterface<ContainerRow> {
 protected:
  // A record and a value of its own, in both views; the list of the row's kind with that row alone.
  ContainerRowsFixture() {
    form.safeguards = {};
    if (row.kind.hive == HiveHandle::ClassesRoot && !row.key.empty()) {
      // A class of the user's would hide the computer's.
      removeKey("HKEY_CURRENT_USER\\Software\\Classes\\" + row.key);
    }
    for (const std::string& place : places) {
      setText(place + "\\ContainerTest\\Below", "x", "y");
      setText(place, "ContainerTest", "stays");
    }
    const std::string nameless = row.key + "\\";
    form.View2.add(nameless);
    form.View2.setText(1, kindCodeColumn, row.kind.code);
    form.View2.setText(1, rootNameColumn, "HKEY_LOCAL_MACHINE");
    form.View2.setText(1, subKeyColumn, nameless);
    form.View2.setChecked(1, true);
  }

  // Not one below it.
  [[nodiscard]] bool seeksTheKeyItself() const { return row.kind.below[0] == '\0'; }

  const ContainerRow row = GetParam();
  const std::vector<std::string> places{row.place(), row.otherPlace()};
};

}  // namespace zelvreg::fixture

#endif
