#include "undo/FixListBackup.h"

#include "form/Form42.h"
#include "registry/Hives.h"
#include "runtime/DateTime.h"
#include "runtime/FileSystemObject.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "runtime/PrivateFiles.h"
#include "scan/Findings.h"
#include "text/Text.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

// Nothing is quoted. The end of the line is followed by that of the print statement.
std::string lineOf(const Form42& form, std::size_t row) {
  return form.View2.text(row, rootNameColumn) + "," + form.View2.text(row, subKeyColumn) + "," +
         form.View2.text(row, badValueColumn) + "," + form.View2.text(row, locationColumn) +
         "\r\n\r\n";
}

std::string partAt(const std::vector<std::string_view>& parts, std::size_t index) {
  return std::string(index < parts.size() ? parts[index] : std::string_view());
}

}  // namespace

void Command30_Click(Form42& form) {
  const std::string folder = form.programFolder + "\\backup";
  makePrivateFolder(folder);
  makePrivateFolder(folder + "\\fixreg");
  const DateTime now = localDateTime();
  const std::string stamp = dateText(now, "_") + "_" + timeText(now, ".") + userSuffix(form);
  registerUndoEntry(stamp, stamp);
  std::string lines;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    if (form.View2.isChecked(row)) {
      lines += lineOf(form, row);
    }
  }
  replaceFileText(folder + "\\fixreg\\" + stamp + ".txt", ownBytes(lines),
                  FileReaders::Administrators);
}

void Command31_Click(Form42& form) {
  auto stream = fileSystemObject::TextStream::openTextFile(
      form.programFolder + "\\backup\\fixreg\\23_03_2005_13.04.13.txt");
  while (!stream.atEndOfStream()) {
    const std::string line = stream.readLine();
    if (!trim(line).empty()) {
      const auto parts = split(line, ",");
      SetRegStringValue(form, partAt(parts, 0) + "\\" + partAt(parts, 1), partAt(parts, 2),
                        partAt(parts, 3));
    }
  }
}

}  // namespace zelvreg
