#include "KnownReferences.h"

#include <array>
#include <vector>

#include "form/Form42.h"
#include "scan/Findings.h"
#include "text/Text.h"

namespace zelvreg::bench {
namespace {

constexpr const char* fonts =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Fonts";
constexpr std::array sharedDlls{
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\SharedDLLs",
    "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\SharedDLLs",
};
constexpr const char* fileExtensions =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\";

std::string identity(std::string_view kind, std::string_view key, std::string_view value) {
  return lowerCase(std::string(kind).append("\t").append(key).append("\t").append(value));
}

struct KeyAndValue {
  std::string key;
  std::string value;
};

struct Row {
  std::string kind;
  std::string location;
  std::string badValue;
  std::string root;
  std::string key;
};

// What a row may name: more than one place where its key is not always that of its value.
using Places = std::vector<KeyAndValue>;

Places ofFont(const Row& row) { return {{fonts, row.location}}; }

Places ofSharedDll(const Row& row) {
  return {{sharedDlls[0], row.location}, {sharedDlls[1], row.location}};
}

Places ofProgram(const Row& row) {
  return {{row.key, row.badValue}, {row.key + "\\" + row.badValue, ""}};
}

Places ofIcon(const Row& row) { return {{row.root + "\\" + row.location + "\\DefaultIcon", ""}}; }

Places ofSnapIn(const Row& row) { return {{row.key, "HelpTopic"}, {row.key, "LinkedHelpTopics"}}; }

Places ofHelpFolder(const Row& row) { return {{row.key + "\\HELPDIR", ""}}; }

Places ofExtension(const Row& row) { return {{fileExtensions + row.badValue, ""}}; }

Places ofKey(const Row& row) { return {{row.key, ""}}; }

Places ofValue(const Row& row) { return {{row.key, row.badValue}}; }

struct Naming {
  std::string_view kind;
  Places (*places)(const Row& row);
};
// All other kinds name a value, or the default value.
constexpr std::array namings{
    Naming{"1", ofFont},        Naming{"2", ofSharedDll}, Naming{"3", ofProgram},
    Naming{"6", ofIcon},        Naming{"7", ofKey},       Naming{"55", ofSnapIn},
    Naming{"71", ofHelpFolder}, Naming{"72", ofKey},      Naming{"122", ofExtension},
    Naming{"133", ofKey},
};

Places placesOf(const Row& row) {
  for (const Naming& naming : namings) {
    if (naming.kind == row.kind) {
      return naming.places(row);
    }
  }
  return ofValue(row);
}

}  // namespace

void KnownReferences::add(const Label& label) {
  const std::string key = std::string(label.root).append("\\").append(label.key);
  const std::string place = std::string("kind ")
                                .append(label.kind)
                                .append(": ")
                                .append(key)
                                .append(", value \"")
                                .append(label.value)
                                .append("\"");
  known.insert_or_assign(identity(label.kind, key, label.value),
                         KnownReference{place, label.family, label.truth});
}

const KnownReference* KnownReferences::find(const Form42& form, std::size_t row) const {
  const ListView& list = form.View2;
  Row cells{.kind = std::string(list.text(row, kindCodeColumn)),
            .location = std::string(list.text(row, locationColumn)),
            .badValue = std::string(list.text(row, badValueColumn)),
            .root = std::string(list.text(row, rootNameColumn)),
            .key = fullKey(form, row)};
  for (const auto& [key, value] : placesOf(cells)) {
    const auto found = known.find(identity(cells.kind, key, value));
    if (found != known.end()) {
      return &found->second;
    }
  }
  return nullptr;
}

}  // namespace zelvreg::bench
