#include "console/SearchArguments.h"

#include <algorithm>
#include <array>

#include "console/OptionGroups.h"
#include "console/SafeguardArguments.h"
#include "roots/Roots.h"
#include "search/Search.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

// Those of cboRoot that the command line knows.
constexpr std::array searchRoots{HiveHandle::ClassesRoot, HiveHandle::CurrentUser,
                                 HiveHandle::LocalMachine, HiveHandle::Users,
                                 HiveHandle::CurrentConfig};
constexpr std::string_view allRoots = "all";

std::string shortNames() {
  std::string names;
  for (const HiveHandle root : searchRoots) {
    names += std::string(shortName(root)) + ", ";
  }
  return names;
}

// "HKCR|…|all"
std::string rootChoice() {
  std::string names;
  for (const HiveHandle root : searchRoots) {
    names += std::string(shortName(root)) + "|";
  }
  return names.append(allRoots);
}

constexpr const char* whereGroup = "What to look at";

SearchMode searchModeNamed(const std::string& name) {
  constexpr std::array<const char*, 4> names{"any", "left", "right", "exact"};
  const auto* const found = std::ranges::find(names, lowerCase(name));
  if (found == names.end()) {
    throw UsageError("\"" + name + "\" is not a mode; choose from: any, left, right, exact");
  }
  return static_cast<SearchMode>(found - names.begin());
}

}  // namespace

void SearchArguments::addTo(CLI::App& search, Options& options) {
  SearchOptions& given = options.search;
  search.add_option("TEXT", given.text, "the text to look for")->required();
  search
      .add_option("--in", root,
                  "the root to look in, by its short or its long name; all by default")
      ->type_name(rootChoice())
      ->group(whereGroup);
  search.add_flag("--keys", given.testsKeys, "list keys whose names match")->group(whereGroup);
  search.add_flag("--values", given.testsValues, "list values whose names match")
      ->group(whereGroup);
  search
      .add_flag("--data", given.testsData,
                "list texts that match and name a file that is gone; the default")
      ->group(whereGroup);
  search.add_flag("--case", given.matchesCase, "match upper and lower case")->group(whereGroup);
  search
      .add_option("--mode", mode,
                  "where the text stands: anywhere (the default), at the start, at the end, or "
                  "alone")
      ->type_name("any|left|right|exact")
      ->group(whereGroup);
  search.add_flag("--json", isJson, "print one JSON object, in UTF-8")->group(outputGroup);
  search.add_flag("--quiet", options.isQuiet, "print nothing but messages")->group(outputGroup);
  search.add_flag("--exit-zero", options.exitsZero, "end with 0 even if something was found")
      ->group(outputGroup);
  time.addTo(search);
  SafeguardArguments::addTo(search, {&Safeguards::touches, &Safeguards::asksShares}, options);
}

void SearchArguments::applyTo(Options& options) const {
  time.applyTo(options);
  SearchOptions& given = options.search;
  // Any bytes may come in as an argument.
  given.text = utf8(utf16(given.text));
  given.root = searchRootNamed(root);
  given.mode = searchModeNamed(mode);
  given.testsData = given.testsData || (!given.testsKeys && !given.testsValues);
  options.format = isJson ? Format::Json : Format::Tables;
}

std::string searchRootNamed(const std::string& name) {
  const std::string wanted = lowerCase(name);
  if (wanted == allRoots || wanted == lowerCase(allRootsName)) {
    return allRootsName;
  }
  for (const HiveHandle root : searchRoots) {
    if (root == rootWithShortName(name) || root == rootWithLongName(name)) {
      return std::string(longName(root));
    }
  }
  throw UsageError("\"" + name + "\" is not a root; choose from: all, " + shortNames() +
                   "or their long names");
}

}  // namespace zelvreg::console
