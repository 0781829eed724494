// Screen readers exist only on Windows.
#include <windows.h>

// This one needs <windows.h> before it.
#include <oleacc.h>

#include "desktop/MainWindowFixture.h"
#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

class AccessibleTest : public MainWindowTest {
 protected:
  AccessibleTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~AccessibleTest() override { CoUninitialize(); }

  struct Told {
    std::wstring name;
    std::wstring value;
    long role = 0;
    long state = 0;
  };

  static std::wstring taken(BSTR text) {
    const std::wstring result = text == nullptr ? L"" : text;
    SysFreeString(text);
    return result;
  }

  static Told told(HWND child, long number = CHILDID_SELF) {
    IAccessible* object = nullptr;
    if (AccessibleObjectFromWindow(child, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                   reinterpret_cast<void**>(&object)) != S_OK) {
      return {};
    }
    VARIANT which{};
    which.vt = VT_I4;
    which.lVal = number;
    BSTR name = nullptr;
    BSTR value = nullptr;
    VARIANT role{};
    VARIANT state{};
    object->get_accName(which, &name);
    object->get_accValue(which, &value);
    object->get_accRole(which, &role);
    object->get_accState(which, &state);
    object->Release();
    return {taken(name), taken(value), role.lVal, state.lVal};
  }
};

TEST_F(AccessibleTest, AButtonTellsItsCaptionWithoutTheMarkOfItsKey) {
  form.cmd_report.caption = "Bericht";
  serve();
  const Told report = told(windowOf(form.cmd_report, L"Button"));
  EXPECT_EQ(report.name, L"Bericht");
  EXPECT_EQ(report.role, ROLE_SYSTEM_PUSHBUTTON);
  EXPECT_NE(report.state & STATE_SYSTEM_UNAVAILABLE, 0);
  form.cmd_report.enabled = true;
  EXPECT_EQ(told(windowOf(form.cmd_report, L"Button")).state & STATE_SYSTEM_UNAVAILABLE, 0);
}

TEST_F(AccessibleTest, ALetterThatIsOnlyAKeyIsNoPartOfAName) {
  form.cmd_report.caption = "Bericht(&Y)";
  serve();
  EXPECT_EQ(told(windowOf(form.cmd_report, L"Button")).name, L"Bericht");
}

TEST_F(AccessibleTest, ACheckBoxTellsWhetherItIsTicked) {
  HWND box = windowOf(form.ChCase, L"Button");
  EXPECT_EQ(told(box).state & STATE_SYSTEM_CHECKED, 0);
  form.ChCase.value = true;
  EXPECT_NE(told(box).state & STATE_SYSTEM_CHECKED, 0);
  EXPECT_EQ(told(box).role, ROLE_SYSTEM_CHECKBUTTON);
  EXPECT_EQ(told(windowOf(form.Option2, L"Button")).role, ROLE_SYSTEM_RADIOBUTTON);
}

TEST_F(AccessibleTest, TheFieldOfAComboBoxIsCalledAsTheBoxIs) {
  form.cboFind.setText("dll");
  const Told field =
      told(FindWindowExW(windowOf(form.cboFind, L"ComboBox"), nullptr, L"Edit", nullptr));
  EXPECT_EQ(field.name, L"Text to find");
  EXPECT_EQ(field.value, L"dll");
  EXPECT_EQ(field.role, ROLE_SYSTEM_TEXT);
}

TEST_F(AccessibleTest, ProgressIsTold) {
  form.Bar1.setMaximum(8);
  form.Bar1.setValue(2);
  EXPECT_EQ(told(windowOf(form.Bar1, PROGRESS_CLASSW)).value, L"25 %");
}

TEST_F(AccessibleTest, ARowThatComesAndGoesIsTold) {
  HWND list = windowOf(form.View2, WC_LISTVIEWW);
  form.View2.add("C:\\gone.dll");
  form.View2.setChecked(1, true);
  serve();
  const Told row = told(list, 1);
  EXPECT_EQ(row.name, L"C:\\gone.dll");
  EXPECT_EQ(row.role, ROLE_SYSTEM_LISTITEM);
  EXPECT_NE(row.state & STATE_SYSTEM_CHECKED, 0);
  EXPECT_EQ(told(list, 2).role, 0);
}

TEST_F(AccessibleTest, WhoStillHoldsAnObjectOfAControlThatIsGoneGetsTheSystemsAnswer) {
  IAccessible* object = nullptr;
  {
    Form42 other;
    MainWindow gone(other);
    HWND child = FindWindowExW(gone.hwnd(), nullptr, L"Button", nullptr);
    ASSERT_EQ(AccessibleObjectFromWindow(child, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                         reinterpret_cast<void**>(&object)),
              S_OK);
  }
  VARIANT self{};
  self.vt = VT_I4;
  BSTR name = nullptr;
  object->get_accName(self, &name);
  EXPECT_EQ(taken(name), L"");
  object->Release();
}

}  // namespace
}  // namespace zelvreg::desktop
