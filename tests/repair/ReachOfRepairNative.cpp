// Goes by the paths that the emulated registry gives its keys.
#include "repair/ReachOfRepair.h"

#include <utility>

#include "form/Form42.h"
#include "keys/RootHandles.h"
#include "repair/ProtectedKeys.h"
#include "scan/Findings.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg::fixture {
namespace {

// A key whose tree may go, or a value of it that may. "{L}", "{B}", "{R}" and "{S}" stand for the
// location, the bad value, the root and the subkey of the row.
struct Reached {
  int kind;
  const char* key;
  const char* value;  // null for the whole tree
};

constexpr Reached reached[] = {
    {1, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\Fonts)", "{L}"},
    {1, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Fonts)", "{L}"},
    {2, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\SharedDlls)", "{L}"},
    {2, R"(HKEY_LOCAL_MACHINE\{S})", "{L}"},
    {3, R"({R}\{S})", "{B}"},
    {4, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\Help)", "{B}"},
    {4, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\Help)", "{B}"},
    {5, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\HTML Help)", "{B}"},
    {5, R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\HTML Help)", "{B}"},
    {6, R"(HKEY_CLASSES_ROOT\{L}\DefaultIcon)", nullptr},
    {7, R"(HKEY_CLASSES_ROOT\{S})", nullptr},
    {8, R"(HKEY_CLASSES_ROOT\{S})", nullptr},
    {8, R"(HKEY_CLASSES_ROOT\{L})", nullptr},
    {8, R"(HKEY_CLASSES_ROOT\{L})", ""},
    {9, R"(HKEY_CLASSES_ROOT\{L})", ""},
    {10, R"(HKEY_CLASSES_ROOT\{L})", ""},
    {11,
     R"(HKEY_LOCAL_MACHINE\System\CurrentControlSet\Services\SharedAccess\Parameters)"
     R"(\FirewallPolicy\FirewallRules)",
     "{B}"},
    {12, R"(HKEY_USERS\{S})", "{B}"},
    {13, R"(HKEY_LOCAL_MACHINE\{S})", "{B}"},
    {55, R"(HKEY_LOCAL_MACHINE\{S})", "HelpTopic"},
    {55, R"(HKEY_LOCAL_MACHINE\{S})", "LinkedHelpTopics"},
    {56, R"(HKEY_LOCAL_MACHINE\{S})", "{B}"},
    {71, R"(HKEY_CLASSES_ROOT\{S}\HELPDIR)", nullptr},
    {71, R"(HKEY_CLASSES_ROOT\{L}\HELPDIR)", nullptr},
    {72, R"(HKEY_CLASSES_ROOT\{S})", nullptr},
    {122, R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\{B})",
     nullptr},
    {122, R"(HKEY_CURRENT_USER\Software\Microsoft\Windows NT\CurrentVersion\Explorer\FileExts\{B})",
     nullptr},
    {133, R"(HKEY_LOCAL_MACHINE\{S})", nullptr},
    {135, R"({R}\{S})", "{B}"},
    {144, R"({R}\{S})", "{B}"},
    {155, R"(HKEY_CURRENT_USER\{S})", "{B}"},
    {166, R"({R}\{S})", "{B}"},
    {771, R"({R}\{S})", "{B}"},
};

std::string filled(const Form42& form, std::size_t row, std::string text) {
  for (const auto& [mark, column] :
       {std::pair{"{L}", locationColumn}, std::pair{"{B}", badValueColumn},
        std::pair{"{R}", rootNameColumn}, std::pair{"{S}", subKeyColumn}}) {
    text = replaceAll(text, mark, trim(form.View2.text(row, column)));
  }
  return text;
}

bool isBelow(const std::string& path, const std::string& tree) {
  return path.starts_with(tree) && (path.size() == tree.size() || path[tree.size()] == '\\');
}

bool isSpared(const std::string& path) {
  const auto backslash = path.find('\\');
  return isProtectedKey(GetHiveHandle(path.substr(0, backslash)), path.substr(backslash + 1));
}

}  // namespace

ReachOfRepair::ReachOfRepair(const Form42& form, const std::string& userSid)
    : user("hkey_users\\" + lowerCase(userSid)) {
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    addRow(form, row);
  }
}

void ReachOfRepair::addRow(const Form42& form, std::size_t row) {
  const double kind = leadingNumber(form.View2.text(row, kindCodeColumn));
  for (const Reached& place : reached) {
    if (place.kind != kind) {
      continue;
    }
    const std::string key = filled(form, row, place.key);
    if (place.value != nullptr) {
      values.insert(plain(key) + "|" + lowerCase(filled(form, row, place.value)));
    } else if (!isSpared(key)) {
      trees.insert(plain(key));
    }
  }
}

std::string ReachOfRepair::plain(const std::string& path) const {
  const std::string lower = lowerCase(path);
  std::string joined;
  for (const std::string_view name : split(lower, "\\")) {
    if (!name.empty() && name != "wow6432node") {
      joined.append(joined.empty() ? "" : "\\").append(name);
    }
  }
  const std::pair<std::string, const char*> spellings[] = {
      {user + "_classes", "hkey_classes_root"},
      {user, "hkey_current_user"},
      {R"(hkey_current_user\software\classes)", "hkey_classes_root"},
      {R"(hkey_local_machine\software\classes)", "hkey_classes_root"},
      {R"(hkey_local_machine\system\controlset001)",
       R"(hkey_local_machine\system\currentcontrolset)"},
  };
  for (const auto& [from, to] : spellings) {
    if (isBelow(joined, from)) {
      joined.replace(0, from.size(), to);
    }
  }
  return joined;
}

bool ReachOfRepair::holds(const std::string& entry) const {
  const auto bar = entry.find('|');
  const std::string path = plain(entry.substr(0, bar));
  if (bar != std::string::npos && values.contains(path + "|" + lowerCase(entry.substr(bar + 1)))) {
    return true;
  }
  for (const std::string& tree : trees) {
    if (isBelow(path, tree)) {
      return true;
    }
  }
  return false;
}

}  // namespace zelvreg::fixture
