// The provider through the system's management service.
#include <windows.h>

// These two need the one before.
#include <objbase.h>
#include <wbemidl.h>

#include "keys/ComSupport.h"
#include "keys/DirectText.h"
#include "keys/ManagementService.h"
#include "keys/StdRegProv.h"

namespace zelvreg {
namespace {

constexpr const wchar_t* className = L"StdRegProv";

// The service, and the view that it is asked for; null for its own default.
struct Connection {
  ComPointer<IWbemServices> services;
  ComPointer<IWbemContext> context;

  // A new record for the arguments of a method; null if the service does not answer.
  [[nodiscard]] ComPointer<IWbemClassObject> argumentsOf(const wchar_t* method) const {
    IWbemClassObject* prototype = nullptr;
    if (FAILED(
            services->GetObject(ComText(className).get(), 0, context.get(), &prototype, nullptr))) {
      return nullptr;
    }
    const ComPointer<IWbemClassObject> owned(prototype);
    IWbemClassObject* signature = nullptr;
    if (FAILED(prototype->GetMethod(method, 0, &signature, nullptr)) || signature == nullptr) {
      return nullptr;
    }
    const ComPointer<IWbemClassObject> ownedSignature(signature);
    IWbemClassObject* instance = nullptr;
    return ComPointer<IWbemClassObject>(
        SUCCEEDED(signature->SpawnInstance(0, &instance)) ? instance : nullptr);
  }

  // The results of a method; null if the call failed.
  ComPointer<IWbemClassObject> execute(const wchar_t* method, IWbemClassObject& arguments) const {
    IWbemClassObject* results = nullptr;
    const HRESULT executed = services->ExecMethod(ComText(className).get(), ComText(method).get(),
                                                  0, context.get(), &arguments, &results, nullptr);
    return ComPointer<IWbemClassObject>(SUCCEEDED(executed) ? results : nullptr);
  }
};

// One method call, which is made at once.
class Call {
 public:
  Call(const Connection& connection, const wchar_t* method, HiveHandle hive, const std::string& key,
       const std::string* valueName = nullptr) {
    const auto arguments = connection.argumentsOf(method);
    if (arguments == nullptr) {
      return;
    }
    ComVariant root(static_cast<LONG>(hive));
    arguments->Put(L"hDefKey", 0, root.get(), 0);
    ComVariant path(comText(key));
    arguments->Put(L"sSubKeyName", 0, path.get(), 0);
    if (valueName != nullptr) {
      ComVariant name(comText(*valueName));
      arguments->Put(L"sValueName", 0, name.get(), 0);
    }
    results = connection.execute(method, *arguments);
  }

  // What the method returned; without results the call itself has failed.
  [[nodiscard]] LONG status() const {
    ComVariant value;
    if (!get(L"ReturnValue", value) || (*value).vt != VT_I4) {
      return providerFailed;
    }
    return (*value).lVal;
  }

  [[nodiscard]] std::string text(const wchar_t* name) const {
    ComVariant value;
    return get(name, value) && (*value).vt == VT_BSTR ? textOf((*value).bstrVal) : std::string();
  }

  [[nodiscard]] std::optional<std::vector<std::string>> texts(const wchar_t* name) const {
    ComVariant value;
    if (!get(name, value) || (*value).vt != (VT_ARRAY | VT_BSTR)) {
      return std::nullopt;
    }
    std::vector<std::string> all;
    for (BSTR entry : elements<BSTR>(*value)) {
      all.push_back(textOf(entry));
      SysFreeString(entry);
    }
    return all;
  }

  [[nodiscard]] std::vector<DWORD> numbers(const wchar_t* name) const {
    ComVariant value;
    if (!get(name, value) || (*value).vt != (VT_ARRAY | VT_I4)) {
      return {};
    }
    return elements<DWORD>(*value);
  }

 private:
  bool get(const wchar_t* name, ComVariant& value) const {
    return results != nullptr && SUCCEEDED(results->Get(name, 0, value.get(), nullptr, nullptr));
  }

  // Copies of an array's elements, owned by the caller.
  template <class Element>
  static std::vector<Element> elements(const VARIANT& value) {
    LONG last = -1;
    SafeArrayGetUBound(value.parray, 1, &last);
    std::vector<Element> all;
    for (LONG index = 0; index <= last; ++index) {
      Element element{};
      if (SUCCEEDED(SafeArrayGetElement(value.parray, &index, &element))) {
        all.push_back(element);
      }
    }
    return all;
  }

  ComPointer<IWbemClassObject> results;
};

class ServiceProvider : public StdRegProv {
 public:
  ServiceProvider(Connection made, REGSAM viewFlag) : connection(std::move(made)), view(viewFlag) {}

  LONG enumKey(HiveHandle hive, const std::string& key,
               std::optional<std::vector<std::string>>& names) override {
    const Call call(connection, L"EnumKey", hive, key);
    return ifNotEmpty(call.status(), [&] { names = call.texts(L"sNames"); });
  }

  LONG enumValues(HiveHandle hive, const std::string& key,
                  std::optional<std::vector<std::string>>& names, std::vector<DWORD>& types,
                  const std::function<void()>& /*serve*/) override {
    const Call call(connection, L"EnumValues", hive, key);
    return ifNotEmpty(call.status(), [&] {
      const auto all = call.texts(L"sNames").value_or(std::vector<std::string>{});
      const auto allTypes = call.numbers(L"Types");
      for (std::size_t index = 0; index < all.size(); ++index) {
        // The unnamed default value is listed too, where only named ones are wanted.
        if (!all[index].empty()) {
          (names ? *names : names.emplace()).push_back(all[index]);
          types.push_back(index < allTypes.size() ? allTypes[index] : REG_NONE);
        }
      }
    });
  }

  LONG getStringValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                      std::string& value) override {
    // The service expands the variables of a REG_EXPAND_SZ, and what it makes of other types
    // differs: only a REG_SZ is left to it.
    DWORD type = REG_NONE;
    const LONG status = readText(hive, key, valueName, view, value, type);
    if (status != ERROR_SUCCESS || type != REG_SZ) {
      return status;
    }
    // After a text without a terminator the service reads on: none is longer than its data.
    const std::size_t length = value.size();
    const Call call(connection, L"GetStringValue", hive, key, &valueName);
    return ifNotEmpty(call.status(), [&] { value = call.text(L"sValue").substr(0, length); });
  }

  LONG getExpandedStringValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                              std::string& value) override {
    const Call call(connection, L"GetExpandedStringValue", hive, key, &valueName);
    const LONG status = call.status();
    if (status == ERROR_SUCCESS) {
      value = call.text(L"sValue");
      return status;
    }
    return readExpandedText(hive, key, valueName, view, value);
  }

  LONG deleteKey(HiveHandle hive, const std::string& key) override {
    return Call(connection, L"DeleteKey", hive, key).status();
  }

 private:
  // A list with nothing in it is answered as its end by some versions of the service.
  static LONG ifNotEmpty(LONG status, auto take) {
    if (status == ERROR_SUCCESS) {
      take();
    }
    return status == ERROR_NO_MORE_ITEMS ? ERROR_SUCCESS : status;
  }

  Connection connection;
  REGSAM view;
};

// The named value set that chooses the view; null for the service's own default.
ComPointer<IWbemContext> contextFor(ProviderArchitecture architecture) {
  if (architecture == ProviderArchitecture::Default) {
    return nullptr;
  }
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WbemContext, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemContext,
                              &made))) {
    return nullptr;
  }
  ComPointer<IWbemContext> context(static_cast<IWbemContext*>(made));
  ComVariant bits(static_cast<LONG>(architecture));
  context->SetValue(L"__ProviderArchitecture", 0, bits.get());
  return context;
}

}  // namespace

std::unique_ptr<StdRegProv> connectService(ProviderArchitecture architecture) {
  // Initialised once more for each connection and never undone: the connections live as long as
  // the process.
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  auto context = contextFor(architecture);
  auto services = connectManagementService(L"root\\default", context.get());
  if (services == nullptr) {
    return nullptr;
  }
  return std::make_unique<ServiceProvider>(
      Connection{std::move(services), std::move(context)},
      architecture == ProviderArchitecture::Bits64 ? KEY_WOW64_64KEY : 0);
}

}  // namespace zelvreg
