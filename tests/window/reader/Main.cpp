// Says what is on the screen, as a screen reader does: from outside, by messages that any program
// may send to the windows of another. For each line on standard input it prints one line of JSON:
// all visible top-level windows with their controls. For the line "accessible" it also says of each
// control what the control tells screen readers.
#include <windows.h>

// These need <windows.h> before them.
#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "text/Wide.h"

namespace {

using zelvreg::roomIn;
using zelvreg::utf16;
using zelvreg::utf8;

using Json = nlohmann::ordered_json;

// Without a limit a window that is busy would be waited for endlessly.
constexpr UINT patience = 2000;
constexpr std::size_t longestText = 2048;
// As many rows of a long list as a user would read.
constexpr int mostRows = 200;
constexpr int mostRowsTold = 8;

DWORD_PTR ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, patience, &answer);
  return answer;
}

std::string textOf(HWND window) {
  std::array<char16_t, longestText> text{};
  ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return utf8(text.data());
}

std::string classOf(HWND window) {
  std::array<char16_t, 256> name{};
  GetClassNameW(window, roomIn(name), static_cast<int>(name.size()));
  return utf8(name.data());
}

Json placeOf(const RECT& place) {
  return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

// Memory of the other program, because a list writes its answer into the request.
class Letter {
 public:
  explicit Letter(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    memory = VirtualAllocEx(process, nullptr, sizeof(Content), MEM_COMMIT, PAGE_READWRITE);
  }
  ~Letter() {
    VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    CloseHandle(process);
  }
  Letter(const Letter&) = delete;
  Letter& operator=(const Letter&) = delete;

  struct Content {
    union {
      LVITEMW item;
      LVCOLUMNW column;
      RECT place;
    };
    std::array<char16_t, longestText> text;
  };

  [[nodiscard]] LPWSTR text() const { return roomIn(static_cast<Content*>(memory)->text); }

  // Afterwards the content holds the answer, if there is one.
  void send(HWND window, UINT message, WPARAM wParam, Content& content) const {
    WriteProcessMemory(process, memory, &content, sizeof(content), nullptr);
    ask(window, message, wParam, reinterpret_cast<LPARAM>(memory));
    ReadProcessMemory(process, memory, &content, sizeof(content), nullptr);
  }

 private:
  HANDLE process;
  void* memory;
};

std::string cell(HWND list, const Letter& letter, int row, int column) {
  Letter::Content content{};
  content.item.mask = LVIF_TEXT;
  content.item.iItem = row;
  content.item.iSubItem = column;
  content.item.pszText = letter.text();
  content.item.cchTextMax = static_cast<int>(longestText);
  letter.send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), content);
  return utf8(content.text.data());
}

std::string heading(HWND list, const Letter& letter, int column) {
  Letter::Content content{};
  content.column.mask = LVCF_TEXT;
  content.column.pszText = letter.text();
  content.column.cchTextMax = static_cast<int>(longestText);
  letter.send(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column), content);
  return utf8(content.text.data());
}

Json rowPlace(HWND list, const Letter& letter, int row) {
  Letter::Content content{};
  content.place.left = LVIR_BOUNDS;
  letter.send(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), content);
  // Both corners, because a list that is laid out from the right counts from there.
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&content.place), 2);
  return placeOf(content.place);
}

Json listOf(HWND list) {
  const Letter letter(list);
  const auto header = reinterpret_cast<HWND>(ask(list, LVM_GETHEADER));
  const int columns = static_cast<int>(ask(header, HDM_GETITEMCOUNT));
  const int count = static_cast<int>(ask(list, LVM_GETITEMCOUNT));
  Json headings = Json::array();
  for (int column = 0; column < columns; ++column) {
    headings.push_back(heading(list, letter, column));
  }
  Json rows = Json::array();
  for (int row = 0; row < std::min(count, mostRows); ++row) {
    Json cells = Json::array();
    for (int column = 0; column < columns; ++column) {
      cells.push_back(cell(list, letter, row, column));
    }
    const DWORD_PTR state =
        ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED | LVIS_STATEIMAGEMASK);
    rows.push_back({{"cells", cells},
                    {"ticked", (state & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2)},
                    {"selected", (state & LVIS_SELECTED) != 0},
                    {"place", rowPlace(list, letter, row)}});
  }
  return {{"headings", headings}, {"count", count}, {"rows", rows}};
}

std::string taken(BSTR text) {
  const std::string result =
      text == nullptr ? std::string() : utf8(reinterpret_cast<const char16_t*>(text));
  SysFreeString(text);
  return result;
}

// What the object of a window says of the window, or of its row with a number from 1.
Json factsOf(IAccessible& object, long child) {
  VARIANT which{};
  which.vt = VT_I4;
  which.lVal = child;
  BSTR name = nullptr;
  BSTR value = nullptr;
  BSTR description = nullptr;
  VARIANT role{};
  VARIANT state{};
  object.get_accName(which, &name);
  object.get_accValue(which, &value);
  object.get_accDescription(which, &description);
  object.get_accRole(which, &role);
  object.get_accState(which, &state);
  return {{"name", taken(name)},
          {"value", taken(value)},
          {"description", taken(description)},
          {"role", role.vt == VT_I4 ? role.lVal : 0},
          {"state", state.vt == VT_I4 ? state.lVal : 0}};
}

Json accessibleOf(HWND window) {
  IAccessible* object = nullptr;
  if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                        reinterpret_cast<void**>(&object)))) {
    return nullptr;
  }
  Json facts = factsOf(*object, CHILDID_SELF);
  if (classOf(window) == "SysListView32") {
    const int count = static_cast<int>(ask(window, LVM_GETITEMCOUNT));
    for (int row = 1; row <= std::min(count, mostRowsTold); ++row) {
      facts["rows"].push_back(factsOf(*object, row));
    }
  }
  object->Release();
  return facts;
}

bool tellsAccessible = false;

bool hasFocus(HWND window) {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread) != FALSE &&
         thread.hwndFocus == window;
}

Json describe(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  const std::string name = classOf(window);
  Json found = {{"class", name},
                {"text", textOf(window)},
                {"place", placeOf(place)},
                {"enabled", IsWindowEnabled(window) != FALSE},
                {"focused", hasFocus(window)}};
  if (name == "SysListView32") {
    found.update(listOf(window));
  } else if (name == "Button") {
    found["ticked"] = ask(window, BM_GETCHECK) == BST_CHECKED;
  }
  if (tellsAccessible) {
    found["accessible"] = accessibleOf(window);
  }
  return found;
}

BOOL CALLBACK addControl(HWND window, LPARAM list) {
  if (IsWindowVisible(window) != FALSE) {
    reinterpret_cast<Json*>(list)->push_back(describe(window));
  }
  return TRUE;
}

BOOL CALLBACK addWindow(HWND window, LPARAM list) {
  if (IsWindowVisible(window) != FALSE) {
    Json found = describe(window);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    found["process"] = process;
    Json controls = Json::array();
    EnumChildWindows(window, addControl, reinterpret_cast<LPARAM>(&controls));
    found["controls"] = controls;
    reinterpret_cast<Json*>(list)->push_back(found);
  }
  return TRUE;
}

// "resolution CLASS DPI LEFT TOP": tells a window that it is on a screen of that resolution now, as
// the system does when its user drags it there or changes the scale.
void tellResolution(const std::string& line) {
  std::istringstream words(line);
  std::string verb;
  std::string name;
  int resolution = 0;
  Letter::Content content{};
  words >> verb >> name >> resolution >> content.place.left >> content.place.top;
  const std::u16string wide = utf16(name);
  HWND window = FindWindowW(reinterpret_cast<LPCWSTR>(wide.c_str()), nullptr);
  if (window != nullptr) {
    constexpr UINT resolutionChanged = 0x02E0;
    Letter(window).send(window, resolutionChanged,
                        static_cast<WPARAM>(MAKELONG(resolution, resolution)), content);
  }
}

}  // namespace

int main() {
  std::string line;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  while (std::getline(std::cin, line)) {
    tellsAccessible = line == "accessible";
    if (line.starts_with("resolution ")) {
      tellResolution(line);
    }
    Json windows = Json::array();
    EnumWindows(addWindow, reinterpret_cast<LPARAM>(&windows));
    std::cout << windows.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
  }
  return 0;
}
