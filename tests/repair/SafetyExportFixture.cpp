#include "repair/SafetyExportFixture.h"

#include <algorithm>

#include "form/Form42.h"
#include "runtime/FileText.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::fixture {
namespace {

std::string narrow(const std::u16string& text) {
  std::string result;
  for (const char16_t unit : text) {
    result += unit < 0x80 ? static_cast<char>(unit) : '?';
  }
  return lowerCase(result);
}

std::string rootName(HiveHandle hive) {
  return hive == HiveHandle::LocalMachine  ? "hklm\\"
         : hive == HiveHandle::CurrentUser ? "hkcu\\"
                                           : "hku\\";
}

}  // namespace

SafetyExportFixture::SafetyExportFixture() {
  // The rows are made up, so that a repair that protects would leave them alone.
  form.safeguards = {.protects = false};
  form.programFolder = "C:\\SafetyExportTest";
  makeFolder(form.programFolder);
  for (const std::string& path : exports()) {
    DeleteFileW(Wide(path).get());
  }
}

std::size_t SafetyExportFixture::addTickedRow(const Finding& finding) {
  const std::size_t row = form.View2.add(finding.location);
  form.View2.setText(row, badValueColumn, finding.badValue);
  form.View2.setText(row, kindCodeColumn, finding.kindCode);
  form.View2.setText(row, rootNameColumn, finding.rootName);
  form.View2.setText(row, subKeyColumn, finding.subKey);
  form.View2.setChecked(row, true);
  return row;
}

std::vector<std::string> SafetyExportFixture::exports() const {
  const std::string folder = form.programFolder + "\\backup\\registry\\";
  std::vector<std::string> paths;
  WIN32_FIND_DATAW found{};
  HANDLE search = FindFirstFileW(Wide(folder + "*").get(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        paths.push_back(folder + utf8(untilNul(static_cast<LPCWSTR>(found.cFileName))));
      }
    } while (FindNextFileW(search, &found) != FALSE);
    FindClose(search);
  }
  std::ranges::sort(paths);
  return paths;
}

std::vector<RegistryChange> SafetyExportFixture::exported() const {
  const std::vector<std::string> paths = exports();
  EXPECT_EQ(paths.size(), 1U);
  RegistryChanges changes =
      readRegistryText(readFileText(paths.empty() ? "" : paths.front()).value_or(""));
  EXPECT_FALSE(changes.fault);
  return std::move(changes.list);
}

std::vector<std::string> SafetyExportFixture::exportedNames() const {
  std::vector<std::string> names;
  std::string key;
  for (const RegistryChange& change : exported()) {
    if (change.kind == RegistryChange::Kind::MakeKey) {
      key = rootName(change.hive) + narrow(change.path);
      names.push_back(key);
    } else {
      const bool isMissing = change.kind == RegistryChange::Kind::DeleteValue;
      names.push_back((isMissing ? "-" : "") + key + "|" + narrow(change.value.name));
    }
  }
  return names;
}

}  // namespace zelvreg::fixture
