#include "evidence/Plausibility.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <functional>
#include <string>

#include "evidence/CommandText.h"
#include "evidence/KindLooks.h"
#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Whether somebody has copied the hives of a disk alone: then the system folder has folders in it,
// and no file.
bool isHollow(const std::string& windows) {
  const char* systemFolder = runsOn64BitWindows() ? "\\Sysnative\\*" : "\\System32\\*";
  WIN32_FIND_DATAW found{};
  HANDLE search = FindFirstFileW(Wide(windows + systemFolder).get(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return false;
  }
  std::size_t folders = 0;
  bool hasFile = false;
  do {
    const bool isItself = found.cFileName[0] == u'.';
    hasFile = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    folders += hasFile || isItself ? 0 : 1;
  } while (!hasFile && FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  return !hasFile && folders > 0;
}

// More than half of a category counts only where there are so many.
constexpr std::size_t fewestFiles = 20;

class Weighing {
 public:
  Weighing(Form42& formInUse, TextLook& textLook) : form(formInUse), texts(textLook) {}

  void run() {
    checkFolders();
    checkCategories();
  }

 private:
  using Applies = std::function<bool(const KindRule& rule, const Evidence& evidence)>;

  struct Dead {
    const KindRule* rule = nullptr;
    Evidence* evidence = nullptr;
  };

  // A row that looks dead for want of a file; without a rule for any other.
  Dead deadOf(std::size_t row) {
    const std::size_t number = form.View2.itemData(row);
    const bool isThere = number > 0 && number <= form.evidence.size();
    Evidence* evidence = isThere ? &form.evidence[number - 1] : nullptr;
    if (evidence == nullptr || evidence->confidence == Confidence::Unsure) {
      return {};
    }
    const KindRule* rule = kindRule(form, row);
    return rule != nullptr && rule->namesFile ? Dead{rule, evidence} : Dead();
  }

  // Makes the rows unsure that this is about; how many there are.
  std::size_t doubt(const Applies& applies) {
    std::size_t count = 0;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      const Dead dead = deadOf(row);
      if (dead.rule != nullptr && applies(*dead.rule, *dead.evidence)) {
        dead.evidence->reasons.add(Reason::Implausible);
        dead.evidence->confidence = confidenceOf(dead.evidence->reasons);
        ++count;
      }
      serveUntilStop(form, row);
    }
    return count;
  }

  void checkFolders() {
    constexpr std::array programFolders{"%ProgramW6432%", "%ProgramFiles(x86)%", "%ProgramFiles%"};
    const std::string windows = texts.expanded("%SystemRoot%", {});
    const Applies all = [](const KindRule& /*rule*/, const Evidence& /*evidence*/) { return true; };
    if (!isFolderThere(windows)) {
      noteGap("implausible-folder-gone", windows, doubt(all));
    } else if (isHollow(windows)) {
      noteGap("implausible-folder-hollow", windows + "\\System32", doubt(all));
    }
    for (const char* variable : programFolders) {
      const std::string folder = texts.expanded(variable, {});
      if (isDrivePath(folder) && !isFolderThere(folder)) {
        noteGap("implausible-folder-gone", folder, doubtBelow(folder));
      }
    }
  }

  std::size_t doubtBelow(const std::string& folder) {
    const std::string below = lowerCase(folder) + "\\";
    return doubt([&](const KindRule& /*rule*/, const Evidence& evidence) {
      return std::ranges::any_of(evidence.tested, [&](const std::string& path) {
        return (lowerCase(path) + "\\").starts_with(below);
      });
    });
  }

  bool isFolderThere(const std::string& folder) {
    return isFound(texts.at(folder, {}, Reading::File));
  }

  void noteGap(TextKey text, const std::string& folder, std::size_t count) {
    if (count > 0) {
      form.implausible.push_back(textOf(form, text, {folder, rowsText(count)}));
    }
  }

  void checkCategories() {
    decltype(form.filesAskedIn) dead{};
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (const KindRule* rule = deadOf(row).rule) {
        ++dead[rule->category];
      }
      serveUntilStop(form, row);
    }
    for (std::size_t category = 1; category < dead.size(); ++category) {
      const std::size_t asked = form.filesAskedIn[category];
      if (asked < fewestFiles || dead[category] * 2 <= asked) {
        continue;
      }
      const std::size_t count = doubt([&](const KindRule& rule, const Evidence& /*evidence*/) {
        return rule.category == category;
      });
      form.implausible.push_back(
          textOf(form, "implausible-category", {categoryAt(category).optionName, rowsText(count)}));
    }
  }

  [[nodiscard]] std::string rowsText(std::size_t count) const {
    return count == 1 ? textOf(form, "implausible-one-row")
                      : textOf(form, "implausible-rows", {std::to_string(count)});
  }

  Form42& form;
  TextLook& texts;
};

}  // namespace

void weighTogether(Form42& form, TextLook& texts) { Weighing(form, texts).run(); }

}  // namespace zelvreg
