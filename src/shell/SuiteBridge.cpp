#include "shell/SuiteBridge.h"

#include <windows.h>

#include <algorithm>

#include "form/ProcessEnd.h"
#include "scan/Findings.h"

namespace zelvreg {
namespace {

constexpr const char* blockName = "MyFileMappingObject";
constexpr DWORD blockSize = 256;
constexpr const char* suiteTitle = "Zelvane Tuner";
constexpr UINT countMessage = WM_USER + 1;

// A named block that other processes can map for as long as this lives.
class SharedText {
 public:
  explicit SharedText(const std::string& text)
      : mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, blockSize,
                                   blockName)),
        view(mapping == nullptr ? nullptr : MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0)) {
    if (view != nullptr) {
      // Without a terminator: the window learns the length by the message.
      const std::size_t size = std::min<std::size_t>(text.size(), blockSize);
      std::copy_n(text.begin(), size, static_cast<char*>(view));
      FlushViewOfFile(view, size);
    }
  }
  SharedText(const SharedText&) = delete;
  SharedText& operator=(const SharedText&) = delete;
  ~SharedText() {
    if (view != nullptr) {
      UnmapViewOfFile(view);
    }
    if (mapping != nullptr) {
      CloseHandle(mapping);
    }
  }

 private:
  HANDLE mapping;
  void* view;
};

}  // namespace

void reportToSuite(const Form42& form, const std::string& text) {
  const SharedText block(text);
  HWND window = FindWindowA(nullptr, suiteTitle);
  if (window == nullptr) {
    endProcess(form);
  }
  SendMessageA(window, countMessage, text.size(), reinterpret_cast<LPARAM>(&window));
}

void Timer2_Timer(Form42& form) { reportToSuite(form, "r|" + rowCountText(form)); }

}  // namespace zelvreg
