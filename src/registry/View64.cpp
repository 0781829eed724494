#include "registry/View64.h"

#include <functional>
#include <optional>
#include <utility>

#include "form/Form42.h"
#include "keys/Deletion.h"

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

void listValueNames(Form42& form, HiveHandle root, const std::string& key, ListBox& list) {
  for (const std::string& name : valueNames(form, trueView(form), root, key)) {
    list.add(name);
  }
}

}  // namespace

void fEnumValue(Form42& form, HiveHandle root, const std::string& key) {
  listValueNames(form, root, key, form.List1);
}

void fEnumValue4(Form42& form, HiveHandle root, const std::string& key) {
  listValueNames(form, root, key, form.List7);
}

std::string GetKeyValue64(Form42& form, HiveHandle root, const std::string& key,
                          const std::string& valueName) {
  std::string value;
  ask(form, trueView(form),
      [&](StdRegProv& provider) { return provider.getStringValue(root, key, valueName, value); });
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

std::vector<std::string> subkeyNames(Form42& form, HiveHandle root, const std::string& key) {
  std::optional<std::vector<std::string>> names;
  ask(form, ProviderArchitecture::Default,
      [&](StdRegProv& provider) { return provider.enumKey(root, key, names); });
  return names.value_or(std::vector<std::string>());
}

std::vector<std::string> valueNames(Form42& form, ProviderArchitecture view, HiveHandle root,
                                    const std::string& key) {
  std::optional<std::vector<std::string>> names;
  std::vector<DWORD> types;
  const LONG status = ask(form, view, [&](StdRegProv& provider) {
    return provider.enumValues(root, key, names, types, [&form] { form.messages.doEvents(); });
  });
  return status == ERROR_SUCCESS && names ? std::move(*names) : std::vector<std::string>();
}

void DeleteSubkeys2(Form42& form, HiveHandle hive, const std::string& key) {
  for (const std::string& name : subkeyNames(form, hive, key)) {
    DeleteSubtree(hive, key + "\\" + name);
  }
  ask(form, ProviderArchitecture::Default,
      [&](StdRegProv& provider) { return provider.deleteKey(hive, key); });
}

}  // namespace zelvreg
