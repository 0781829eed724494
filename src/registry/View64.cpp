#include "registry/View64.h"

#include <optional>
#include <vector>

#include "registry/Deletion.h"
#include "registry/StdRegProv.h"

namespace zelvreg {
namespace {

StdRegProv* connect(Form42& form, ProviderArchitecture architecture) {
  if (form.providers == nullptr) {
    form.providers = std::make_shared<StdRegProvPool>();
  }
  return form.providers->connect(architecture);
}

StdRegProv* connectTrueView(Form42& form) {
  return connect(form,
                 form.Is64BitOS ? ProviderArchitecture::Bits64 : ProviderArchitecture::Bits32);
}

void listValueNames(Form42& form, const std::string& hive, const std::string& key, ListBox& list) {
  const HiveHandle handle = HiveFromShortName(hive);
  StdRegProv* provider = connectTrueView(form);
  std::optional<std::vector<std::string>> names;
  std::vector<DWORD> types;
  if (provider == nullptr || provider->enumValues(handle, key, names, types) != ERROR_SUCCESS ||
      !names) {
    return;
  }
  for (const std::string& name : *names) {
    list.add(name);
  }
}

}  // namespace

void fEnumValue(Form42& form, const std::string& hive, const std::string& key,
                std::string& /*values*/, LONG& /*rc*/) {
  listValueNames(form, hive, key, form.List1);
}

void fEnumValue4(Form42& form, const std::string& hive, const std::string& key,
                 std::string& /*values*/, LONG& /*rc*/) {
  listValueNames(form, hive, key, form.List7);
}

std::string GetKeyValue64(Form42& form, const std::string& hive, const std::string& key,
                          const std::string& valueName) {
  const HiveHandle handle = HiveFromShortName(hive);
  std::string value;
  if (StdRegProv* provider = connectTrueView(form)) {
    provider->getStringValue(handle, key, valueName, value);
  }
  return value;
}

std::string readSuiteColor(Form42& form) {
  std::string value;
  if (StdRegProv* provider = connect(form, ProviderArchitecture::Default)) {
    provider->getExpandedStringValue(HiveHandle::LocalMachine, "SOFTWARE\\zelvane\\zelvane tuner",
                                     "color", value);
  }
  return value;
}

void DeleteSubkeys2(Form42& form, HiveHandle hive, const std::string& key) {
  StdRegProv* provider = connect(form, ProviderArchitecture::Default);
  if (provider == nullptr) {
    return;
  }
  std::optional<std::vector<std::string>> names;
  provider->enumKey(hive, key, names);
  for (const std::string& name : names.value_or(std::vector<std::string>{})) {
    DeleteSubtree(hive, key + "\\" + name);
  }
  provider->deleteKey(hive, key);
}

void EnumerateKeys(Form42& form, HiveHandle hive, const std::string& key) {
  StdRegProv* provider = connect(form, ProviderArchitecture::Default);
  std::optional<std::vector<std::string>> names;
  if (provider != nullptr) {
    provider->enumKey(hive, key, names);
  }
  for (const std::string& name : names.value_or(std::vector<std::string>{})) {
    EnumerateKeys(form, hive, key + "\\" + name);
  }
}

void test(Form42& form, const std::string& hive, const std::string& key, LONG& /*rc*/) {
  const HiveHandle handle = HiveFromShortName(hive);
  std::optional<std::vector<std::string>> names;
  std::vector<DWORD> types;
  if (StdRegProv* provider = connect(form, ProviderArchitecture::Bits64)) {
    provider->enumValues(handle, key, names, types);
  }
}

}  // namespace zelvreg
