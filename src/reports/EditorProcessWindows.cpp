#include <windows.h>

// These two need <windows.h> before them.
#include <objbase.h>
#include <wbemidl.h>

#include "keys/ComSupport.h"
#include "keys/ManagementService.h"
#include "reports/EditorProcess.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

std::string property(IWbemClassObject& object, const wchar_t* name) {
  ComVariant value;
  const bool isText =
      SUCCEEDED(object.Get(name, 0, value.get(), nullptr, nullptr)) && (*value).vt == VT_BSTR;
  return isText ? textOf((*value).bstrVal) : std::string();
}

void terminate(IWbemServices& services, IWbemClassObject& process) {
  ComVariant path;
  if (SUCCEEDED(process.Get(L"__PATH", 0, path.get(), nullptr, nullptr)) && (*path).vt == VT_BSTR) {
    services.ExecMethod((*path).bstrVal, ComText(L"Terminate").get(), 0, nullptr, nullptr, nullptr,
                        nullptr);
  }
}

}  // namespace

void endEditor(IWbemServices& services) {
  IEnumWbemClassObject* found = nullptr;
  if (FAILED(services.ExecQuery(
          ComText(L"WQL").get(), ComText(L"Select * from Win32_Process").get(),
          WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &found))) {
    return;
  }
  const ComPointer<IEnumWbemClassObject> processes(found);
  lendRightsOfUser(*processes);
  for (;;) {
    IWbemClassObject* next = nullptr;
    ULONG count = 0;
    if (processes->Next(static_cast<LONG>(WBEM_INFINITE), 1, &next, &count) != S_OK ||
        next == nullptr) {
      return;
    }
    const ComPointer<IWbemClassObject> process(next);
    if (lowerCase(property(*process, L"Name")) == "regedit.exe") {
      terminate(services, *process);
      return;
    }
  }
}

void killprocess() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const ComPointer<IWbemServices> services = connectManagementService(L"root\\cimv2");
  if (services != nullptr) {
    endEditor(*services);
  }
}

}  // namespace zelvreg
