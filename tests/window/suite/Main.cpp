// A stand-in for the main window of the suite: zelvreg finds it by its title and tells it how many
// findings an automatic scan has so far. It writes each message to a file, as one line.
#include <windows.h>

#include <fstream>
#include <string>

namespace {

constexpr const wchar_t* title = L"Zelvane Tuner";
constexpr const wchar_t* blockName = L"MyFileMappingObject";
constexpr UINT textIsStored = WM_USER + 1;

std::ofstream& told() {
  static std::ofstream file;
  return file;
}

std::string storedText(std::size_t length) {
  std::string text;
  const HANDLE mapping = OpenFileMappingW(FILE_MAP_READ, FALSE, blockName);
  const void* view =
      mapping == nullptr ? nullptr : MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, length);
  if (view != nullptr) {
    text.assign(static_cast<const char*>(view), length);
    UnmapViewOfFile(view);
  }
  if (mapping != nullptr) {
    CloseHandle(mapping);
  }
  return text;
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == textIsStored) {
    told() << storedText(wParam) << std::endl;
    return 1;
  }
  if (message == WM_DESTROY) {
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    return 2;
  }
  told().open(arguments[1], std::ios::app);
  WNDCLASSW description{};
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = L"SuiteStandIn";
  RegisterClassW(&description);
  const HWND window =
      CreateWindowExW(0, description.lpszClassName, title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20,
                      320, 120, nullptr, nullptr, description.hInstance, nullptr);
  if (window == nullptr || !told()) {
    return 1;
  }
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    DispatchMessageW(&message);
  }
  return 0;
}
