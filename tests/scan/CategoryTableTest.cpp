#include "scan/CategoryTable.h"

#include <gtest/gtest.h>

#include <set>

#include "form/Form42.h"

namespace zelvreg {
namespace {

// One line for each row: keys, icon, value, word, caption.
constexpr std::string_view expected[] = {
    "a1 b1 a font fonts Invalid Font Reference",
    "a2 b2 b dll dlls Invalid Shared Dll's",
    "a3 b3 c app app-paths Invalid Application path",
    "a4 b4 d help help-files Invalid Help files",
    "a5 b5 e icons icons Invalid Icon Reference",
    "a6 b6 f file file-classes Invalid Files extintion",
    "a7 b7 g class com-classes Invalid ClassId Configuration",
    "a8 b8 h 8 user-classes Current user settings",
    "a9 b9 i 9 global-classes Global user settings",
    "a10 b10 j 10 machine-classes Computer settings",
    "a11 b11 l 11 firewall Invalid Firewall settings",
    "a12 b12 m 12 file-extensions Invalid File Extensions",
    "a13 b13 re 13 uninstall Add/Remove programs",
    "a14 b14 ru 14 startup Startup programs",
    "a15 b15 mr 15 recent-lists Startup programs",
    "a16 b16 mui 16 mui-cache Missing Mui cache reference",
};

std::string lineOf(const Category& category) {
  std::string line;
  for (const std::string_view part : {category.nameKey, category.textKey, category.icon,
                                      category.valueName, category.optionName}) {
    line.append(part).append(" ");
  }
  return line.append(englishOf(category.caption));
}

TEST(CategoryTable, HasItsSixteenRowsInTheOrderOfAScan) {
  std::size_t row = 0;
  for (const Category& category : categories()) {
    EXPECT_EQ(lineOf(category), expected[row++]);
  }
}

TEST(CategoryTable, EveryRoutineBelongsToOneRowOnly) {
  const Form42 form;
  std::set<const EntryPoint*> seen;
  for (const Category& category : categories()) {
    for (const EntryPointOf routine : category.routines) {
      if (routine != nullptr) {
        EXPECT_TRUE(seen.insert(&routine(form)).second) << category.valueName;
      }
    }
  }
  EXPECT_EQ(seen.size(), 19U);
}

}  // namespace
}  // namespace zelvreg
