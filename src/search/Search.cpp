#include "search/Search.h"

#include <array>
#include <limits>

#include "form/Form42.h"
#include "keys/DirectText.h"
#include "keys/RootHandles.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "search/KeyLister.h"
#include "search/KeyTreeWalk.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr int keptTexts = 19;
constexpr const char* deadPathMark = ":\\";
// In the order of cboRoot.
constexpr std::array listedRoots{HiveHandle::ClassesRoot,     HiveHandle::CurrentUser,
                                 HiveHandle::DynData,         HiveHandle::LocalMachine,
                                 HiveHandle::PerformanceData, HiveHandle::Users,
                                 HiveHandle::CurrentConfig};

std::string setting(const std::string& name, const std::string& fallback) {
  std::string text;
  DWORD type = REG_NONE;
  const LONG status = readText(HiveHandle::CurrentUser, searchSettingsKey, name, 0, text, type);
  return status == ERROR_SUCCESS && type == REG_SZ ? text : fallback;
}

// -1 for a text that is no number, which every choice refuses.
int settingNumber(const std::string& name, const std::string& fallback) {
  const double number = convertedNumber(setting(name, fallback)).value_or(-1);
  const bool fits = number >= 0 && number <= std::numeric_limits<int>::max();
  return fits ? static_cast<int>(number) : -1;
}

void setMode(Form42& form, int mode) {
  const std::array<OptionButton*, 4> options{&form.Option1, &form.Option2, &form.Option3,
                                             &form.Option4};
  const int chosen = mode >= 1 && mode <= 4 ? mode : 1;
  for (int option = 1; option <= 4; ++option) {
    options[static_cast<std::size_t>(option - 1)]->value = option == chosen;
  }
}

void applySettings(Form42& form) {
  const int area = settingNumber("lastSearchArea", "0");
  if (area > 0) {
    form.cboRoot.setListIndex(area);
  }
  setMode(form, settingNumber("lastMode", "1"));
  // A check box can be off, on or grayed; any other number is refused.
  const int matchesCase = settingNumber("lastCase", "1");
  if (matchesCase >= 0 && matchesCase <= 2) {
    form.ChCase.value = matchesCase != 0;
  }
}

// The entries are compared as they are, so that a text with capitals is added at each search.
void keepText(Form42& form) {
  const std::string text = form.cboFind.text();
  const std::string sought = lowerCase(text);
  for (int position = 0; position < form.cboFind.count(); ++position) {
    if (form.cboFind.entry(position) == sought) {
      return;
    }
  }
  form.cboFind.add(text);
  form.cboFind.setListIndex(form.cboFind.count() - 1);
}

bool standsWhereAsked(const Form42& form, std::string_view text, std::string_view sought) {
  if (form.Option1.value) {
    return contains(text, sought);
  }
  if (form.Option2.value) {
    return text.starts_with(sought);
  }
  if (form.Option3.value) {
    return text.ends_with(sought);
  }
  return form.Option4.value && text == sought;
}

int categoryOfRoot(HiveHandle root) {
  switch (root) {
    case HiveHandle::CurrentUser:
      return 2;
    case HiveHandle::Users:
      return 3;
    case HiveHandle::LocalMachine:
      return 4;
    default:
      return 0;
  }
}

void walkRoot(Form42& form, SearchState& search, const std::string& rootName) {
  search.root = HiveFromName(rootName);
  if (form.searchCategory == 0) {
    search.category = categoryOfRoot(search.root);
    search.run.found = 0;
  }
  SearchKeyTree(form, search, search.category == 1 ? "clsid" : "");
  const std::size_t row = rowOfSearchCategory(search.category);
  if (row != 0) {
    showProblems(form, row, search.run.found);
  }
}

void walkAllRoots(Form42& form, SearchState& search) {
  for (int position = 1; position < form.cboRoot.count() && !form.cancelRequested; ++position) {
    walkRoot(form, search, form.cboRoot.entry(position));
    form.messages.doEvents();
  }
}

void walk(Form42& form, SearchState& search) {
  const MemoryOfScan memory(form);
  if (form.cboRoot.listIndex() != 0) {
    walkRoot(form, search, form.cboRoot.text());
  } else {
    walkAllRoots(form, search);
  }
}

}  // namespace

void Command24(Form42& form) {
  form.cboRoot.add(allRootsName);
  for (const HiveHandle root : listedRoots) {
    if (HasSubkeys(root)) {
      form.cboRoot.add(std::string(longName(root)));
    }
  }
  for (int number = 1; number <= keptTexts; ++number) {
    const std::string text = setting(decimal(number), "");
    if (!text.empty()) {
      form.cboFind.add(text);
    }
  }
  form.cboFind.setText(deadPathMark);
  applySettings(form);
  form.ChData.value = true;
  form.cboRoot.setText(std::string(longName(HiveHandle::CurrentUser)));
}

void VerifyPattern(Form42& form, const std::string& text, bool& matched) {
  form.messages.doEvents();
  matched = form.ChCase.value
                ? standsWhereAsked(form, text, form.cboFind.text())
                : standsWhereAsked(form, lowerCase(text), lowerCase(form.cboFind.text()));
}

void cmdFind(Form42& form) {
  clearTotal(form);
  keepText(form);
  SearchState search{.testsKeys = form.ChKeys.value,
                     .testsValues = form.ChValues.value,
                     .testsData = form.ChData.value,
                     .root = {},
                     .category = form.searchCategory,
                     .run = {},
                     .lister = {}};
  walk(form, search);
  form.Label3.caption = problemsFoundText(form);
  form.Label4.caption = totalFoundCaption(form);
}

}  // namespace zelvreg
