#include "console/SearchArguments.h"

#include <algorithm>
#include <array>

#include "console/SafeguardArguments.h"
#include "search/Search.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

struct RootName {
  const char* listed;     // in cboRoot
  const char* shortName;  // on the command line
};

constexpr std::array<RootName, 6> searchRoots{{{allRootsName, "all"},
                                               {"HKEY_CLASSES_ROOT", "HKCR"},
                                               {"HKEY_CURRENT_USER", "HKCU"},
                                               {"HKEY_LOCAL_MACHINE", "HKLM"},
                                               {"HKEY_USERS", "HKU"},
                                               {"HKEY_CURRENT_CONFIG", "HKCC"}}};

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
  search.add_option("text", given.text, "the text to look for")->required();
  search.add_option("--in", root,
                    "the root to look in: HKCR, HKCU, HKLM, HKU, HKCC, or all; all by default");
  search.add_flag("--keys", given.testsKeys, "list keys whose names match");
  search.add_flag("--values", given.testsValues, "list values whose names match");
  search.add_flag("--data", given.testsData,
                  "list texts that match and name a file that is gone; the default");
  search.add_flag("--case", given.matchesCase, "match upper and lower case");
  search.add_option("--mode", mode,
                    "where the text stands: any, left, right, or exact; any by default");
  search.add_flag("--json", isJson, "print one JSON object, in UTF-8");
  search.add_flag("--quiet", options.isQuiet, "print nothing but messages");
  search.add_flag("--exit-zero", options.exitsZero, "end with 0 even if something was found");
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
  for (const RootName& root : searchRoots) {
    if (wanted == lowerCase(root.listed) || wanted == lowerCase(root.shortName)) {
      return root.listed;
    }
  }
  throw UsageError("\"" + name +
                   "\" is not a root; choose from: all, HKCR, HKCU, HKLM, HKU, HKCC, or their long "
                   "names");
}

}  // namespace zelvreg::console
