#include "shell/SuiteBridge.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "form/ProcessEnd.h"
#include "runtime/CodePageText.h"
#include "scan/Findings.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr const char* blockName = "MyFileMappingObject";
constexpr DWORD blockSize = 256;
constexpr const char* suiteTitle = "Zelvane Tuner";
constexpr UINT countMessage = WM_USER + 1;

// Whether the block can be written to its end. If somebody else has made a block of this name, of
// whatever size and kind, that one is mapped instead of ours.
bool isWritable(const void* view) {
  MEMORY_BASIC_INFORMATION region{};
  return VirtualQuery(view, &region, sizeof region) != 0 && region.State == MEM_COMMIT &&
         region.Protect == PAGE_READWRITE && region.RegionSize >= blockSize;
}

// A named block that other processes can map for as long as this lives.
class SharedText {
 public:
  explicit SharedText(const std::string& bytes)
      : mapping(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, blockSize,
                                   Wide(blockName).get())),
        view(mapping == nullptr ? nullptr
                                : MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, blockSize)) {
    if (view == nullptr || !isWritable(view)) {
      close();
      return;
    }
    // Without a terminator: the message tells the window the length.
    const std::size_t size = std::min<std::size_t>(bytes.size(), blockSize);
    std::copy_n(bytes.begin(), size, static_cast<char*>(view));
    FlushViewOfFile(view, size);
  }
  SharedText(const SharedText&) = delete;
  SharedText& operator=(const SharedText&) = delete;
  ~SharedText() { close(); }

 private:
  void close() {
    if (view != nullptr) {
      UnmapViewOfFile(std::exchange(view, nullptr));
    }
    if (mapping != nullptr) {
      CloseHandle(std::exchange(mapping, nullptr));
    }
  }

  HANDLE mapping;
  void* view;
};

}  // namespace

void parentBridge(const Form42& form, const std::string& text) {
  const std::string bytes = codePageBytes(text);
  const SharedText block(bytes);
  HWND window = FindWindowW(nullptr, Wide(suiteTitle).get());
  if (window == nullptr) {
    endProcess(form);
  }
  SendMessageW(window, countMessage, bytes.size(), reinterpret_cast<LPARAM>(&window));
}

void Timer2_Timer(Form42& form) { parentBridge(form, "r|" + rowCountText(form)); }

}  // namespace zelvreg
