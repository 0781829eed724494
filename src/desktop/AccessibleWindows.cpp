#include "desktop/Accessible.h"

// These need <windows.h> before them.
#include <commctrl.h>
#include <oleacc.h>

#include <atomic>

#include "desktop/Peer.h"
#include "libraries/SystemLibrary.h"

namespace zelvreg::desktop {
namespace {

BSTR textOf(const std::string& text) {
  const std::u16string wide = utf16(text);
  return SysAllocStringLen(wideText(wide), static_cast<UINT>(wide.size()));
}

// Of a window whose peer may be gone by the time that somebody asks.
class Accessible : public IAccessible {
 public:
  // Takes over one reference to the system's object.
  Accessible(HWND ofWindow, IAccessible* ofSystem) : window(ofWindow), standard(ofSystem) {}
  Accessible(const Accessible&) = delete;
  Accessible& operator=(const Accessible&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible) {
      *object = static_cast<IAccessible*>(this);
      AddRef();
      return S_OK;
    }
    return standard->QueryInterface(id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return standard->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return standard->GetTypeInfo(index, locale, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return standard->GetIDsOfNames(id, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override {
    return standard->Invoke(member, id, locale, flags, parameters, result, exception, argument);
  }

  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
    return told(child, &AccessibleFacts::name, name, &IAccessible::get_accName);
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
    return told(child, &AccessibleFacts::value, value, &IAccessible::get_accValue);
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* text) override {
    return told(child, &AccessibleFacts::description, text, &IAccessible::get_accDescription);
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
    const auto facts = factsOf(child);
    if (!facts || facts->role == 0) {
      return standard->get_accRole(child, role);
    }
    role->vt = VT_I4;
    role->lVal = facts->role;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
    VariantInit(state);
    const auto facts = factsOf(child);
    const HRESULT result = standard->get_accState(child, state);
    if (!facts) {
      return result;
    }
    const bool isKnown = SUCCEEDED(result) && state->vt == VT_I4;
    state->lVal = (isKnown ? state->lVal : 0) | facts->states;
    state->vt = VT_I4;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
    return standard->get_accParent(parent);
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
    return standard->get_accChildCount(count);
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override {
    return standard->get_accChild(child, object);
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override {
    return standard->get_accHelp(child, help);
  }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
    return standard->get_accHelpTopic(file, child, topic);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* keys) override {
    return standard->get_accKeyboardShortcut(child, keys);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
    return standard->get_accFocus(child);
  }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override {
    return standard->get_accSelection(children);
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override {
    return standard->get_accDefaultAction(child, action);
  }
  HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override {
    return standard->accSelect(flags, child);
  }
  HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                        VARIANT child) override {
    return standard->accLocation(left, top, width, height, child);
  }
  HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override {
    return standard->accNavigate(direction, start, end);
  }
  HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override {
    return standard->accHitTest(left, top, child);
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
    return standard->accDoDefaultAction(child);
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override {
    return standard->put_accName(child, name);
  }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
    return standard->put_accValue(child, value);
  }

 private:
  virtual ~Accessible() { standard->Release(); }

  [[nodiscard]] std::optional<AccessibleFacts> factsOf(const VARIANT& child) const {
    if (child.vt != VT_I4) {
      return std::nullopt;
    }
    const Peer* peer = Peer::of(window);
    if (peer == nullptr) {
      return factsOfField();
    }
    return child.lVal == CHILDID_SELF ? std::optional(peer->facts())
                                      : peer->factsOfRow(static_cast<std::size_t>(child.lVal));
  }

  // The field of a combo box has the focus in its place, and is called as the box is.
  [[nodiscard]] std::optional<AccessibleFacts> factsOfField() const {
    const Peer* box = Peer::of(GetParent(window));
    if (box == nullptr) {
      return std::nullopt;
    }
    AccessibleFacts facts = box->facts();
    facts.role = 0;
    return facts;
  }

  HRESULT told(const VARIANT& child, std::string AccessibleFacts::*fact, BSTR* text,
               HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, BSTR*)) const {
    const auto facts = factsOf(child);
    if (!facts || (*facts.*fact).empty()) {
      return (standard->*ask)(child, text);
    }
    *text = textOf(*facts.*fact);
    return *text == nullptr ? E_OUTOFMEMORY : S_OK;
  }

  HWND window;
  IAccessible* standard;
  std::atomic<ULONG> references{1};
};

constexpr const wchar_t* library = L"oleacc.dll";

LRESULT answer(HWND window, WPARAM wParam) {
  static const auto createStandard =
      systemFunction<decltype(CreateStdAccessibleObject)>(library, "CreateStdAccessibleObject");
  static const auto resultFrom =
      systemFunction<decltype(LresultFromObject)>(library, "LresultFromObject");
  IAccessible* standard = nullptr;
  if (createStandard == nullptr || resultFrom == nullptr ||
      FAILED(createStandard(window, OBJID_CLIENT, IID_IAccessible,
                            reinterpret_cast<void**>(&standard)))) {
    return 0;
  }
  auto* own = new Accessible(window, standard);
  const LRESULT result = resultFrom(IID_IAccessible, wParam, own);
  own->Release();
  return result;
}

// Newer than the oldest Windows that the program runs on, which passes it on like any other.
constexpr DWORD liveRegionChanged = 0x8019;
// LiveSetting_Property_GUID of the system's header for UI Automation, and its value "polite".
constexpr GUID liveSetting{
    0xC12BCD8E, 0x2A8E, 0x4950, {0x8A, 0xE7, 0x36, 0x25, 0x11, 0x1D, 0x58, 0xEB}};
constexpr LONG polite = 1;

LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR /*reference*/) {
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
  } else if (message == WM_GETOBJECT &&
             static_cast<DWORD>(lParam) == static_cast<DWORD>(OBJID_CLIENT)) {
    if (const LRESULT result = answer(hwnd, wParam); result != 0) {
      return result;
    }
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace

void tellFacts(HWND window) {
  constexpr UINT_PTR subclassId = 19;
  SetWindowSubclass(window, procedure, subclassId, 0);
}

void makeLive(HWND window) {
  IAccPropServices* services = nullptr;
  if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IAccPropServices, reinterpret_cast<void**>(&services)))) {
    return;
  }
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = polite;
  services->SetHwndProp(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, liveSetting, value);
  services->Release();
}

void tellChange(HWND window) {
  NotifyWinEvent(liveRegionChanged, window, OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace zelvreg::desktop
