// The management service with its methods recorded instead of run. Queries reach the real service.
#ifndef ZELVREG_TESTS_REPORTS_RECORDING_SERVICES_H
#define ZELVREG_TESTS_REPORTS_RECORDING_SERVICES_H

#include <windows.h>

// This one needs <windows.h> before it.
#include <wbemidl.h>

#include <string>
#include <vector>

namespace zelvreg::fixture {

class RecordingServices : public IWbemServices {
 public:
  struct Call {
    std::wstring object;  // its path
    std::wstring method;
  };

  // `realServices` must outlive this.
  explicit RecordingServices(IWbemServices& realServices) : real(realServices) {}

  std::vector<Call> calls;

  HRESULT WINAPI ExecQuery(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                           IEnumWbemClassObject** found) override {
    return real.ExecQuery(language, query, flags, context, found);
  }
  HRESULT WINAPI ExecMethod(const BSTR path, const BSTR method, LONG, IWbemContext*,
                            IWbemClassObject*, IWbemClassObject**, IWbemCallResult**) override {
    calls.push_back({path, method});
    return S_OK;
  }

  // Lives as long as its owner says.
  ULONG WINAPI AddRef() override { return 1; }
  ULONG WINAPI Release() override { return 1; }
  HRESULT WINAPI QueryInterface(REFIID, void** found) override {
    *found = nullptr;
    return E_NOINTERFACE;
  }

  // Nothing else of the service is used.
  HRESULT WINAPI OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**,
                               IWbemCallResult**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI CancelAsyncCall(IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT WINAPI QueryObjectSink(LONG, IWbemObjectSink**) override { return E_NOTIMPL; }
  HRESULT WINAPI GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**,
                           IWbemCallResult**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI PutClassAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI CreateClassEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI CreateClassEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI PutInstance(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*,
                                  IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI DeleteInstance(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI DeleteInstanceAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI CreateInstanceEnum(const BSTR, LONG, IWbemContext*,
                                    IEnumWbemClassObject**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*,
                                         IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*,
                                       IEnumWbemClassObject**) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                            IWbemObjectSink*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                 IWbemObjectSink*) override {
    return E_NOTIMPL;
  }

 private:
  IWbemServices& real;
};

}  // namespace zelvreg::fixture

#endif
