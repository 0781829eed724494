#include "registry/View64.h"

#include <functional>
#include <optional>
#include <vector>

#include "form/Form42.h"
#include "keys/Deletion.h"
#include "keys/RootHandles.h"
#include "keys/StdRegProv.h"
#include "registry/Hives.h"

namespace zelvreg {
namespace {

// Calls the provider by the road that is in force. Where that fails, nothing can be said of the
// key.
LONG ask(Form42& form, ProviderArchitecture architecture,
         const std::function<LONG(StdRegProv& provider)>& method) {
  if (form.providers == nullptr) {
    form.providers = std::make_shared<StdRegProvPool>();
  }
  const auto road = form.safeguards.asksService ? ProviderRoad::Service : ProviderRoad::Direct;
  const LONG status = form.providers->call(road, architecture, method);
  form.isProviderSilent = form.isProviderSilent || status == providerFailed;
  return status;
}

ProviderArchitecture trueView(const Form42& form) {
  return form.Is64BitOS ? ProviderArchitecture::Bits64 : ProviderArchitecture::Bits32;
}

void listValueNames(Form42& form, const std::string& hive, const std::string& key, ListBox& list) {
  const HiveHandle handle = HiveFromShortName(hive, sharesOf(form));
  std::optional<std::vector<std::string>> names;
  std::vector<DWORD> types;
  const LONG status = ask(form, trueView(form), [&](StdRegProv& provider) {
    return provider.enumValues(handle, key, names, types);
  });
  if (status != ERROR_SUCCESS || !names) {
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
  const HiveHandle handle = HiveFromShortName(hive, sharesOf(form));
  std::string value;
  ask(form, trueView(form),
      [&](StdRegProv& provider) { return provider.getStringValue(handle, key, valueName, value); });
  return value;
}

std::string readSuiteColor(Form42& form) {
  std::string value;
  ask(form, ProviderArchitecture::Default, [&](StdRegProv& provider) {
    return provider.getExpandedStringValue(HiveHandle::LocalMachine,
                                           "SOFTWARE\\zelvane\\zelvane tuner", "color", value);
  });
  return value;
}

void DeleteSubkeys2(Form42& form, HiveHandle hive, const std::string& key) {
  std::optional<std::vector<std::string>> names;
  ask(form, ProviderArchitecture::Default,
      [&](StdRegProv& provider) { return provider.enumKey(hive, key, names); });
  for (const std::string& name : names.value_or(std::vector<std::string>{})) {
    DeleteSubtree(hive, key + "\\" + name);
  }
  ask(form, ProviderArchitecture::Default,
      [&](StdRegProv& provider) { return provider.deleteKey(hive, key); });
}

void EnumerateKeys(Form42& form, HiveHandle hive, const std::string& key) {
  std::optional<std::vector<std::string>> names;
  ask(form, ProviderArchitecture::Default,
      [&](StdRegProv& provider) { return provider.enumKey(hive, key, names); });
  for (const std::string& name : names.value_or(std::vector<std::string>{})) {
    EnumerateKeys(form, hive, key + "\\" + name);
  }
}

void test(Form42& form, const std::string& hive, const std::string& key, LONG& /*rc*/) {
  const HiveHandle handle = HiveFromShortName(hive, sharesOf(form));
  std::optional<std::vector<std::string>> names;
  std::vector<DWORD> types;
  ask(form, ProviderArchitecture::Bits64,
      [&](StdRegProv& provider) { return provider.enumValues(handle, key, names, types); });
}

}  // namespace zelvreg
