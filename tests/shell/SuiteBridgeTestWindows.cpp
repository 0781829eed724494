// Only Windows has blocks of memory that other processes can create.
#include <windows.h>

#include "shell/SuiteBridge.h"

#include <gtest/gtest.h>

#include <string>

#include "form/Form42.h"
#include "form/ProcessEnd.h"

namespace zelvreg {
namespace {

constexpr const wchar_t* blockName = L"MyFileMappingObject";
constexpr const wchar_t* fileName = L"suite-bridge-test.bin";

// What the block held when the suite's window was told of it.
std::string heard;
// The handle that the second parameter of the message pointed to.
HWND pointedTo = nullptr;

std::string firstBytes(void* view, std::size_t length) {
  MEMORY_BASIC_INFORMATION region{};
  VirtualQuery(view, &region, sizeof region);
  if (region.State == MEM_RESERVE) {
    VirtualAlloc(view, length, MEM_COMMIT, PAGE_READWRITE);
  }
  return {static_cast<const char*>(view), length};
}

LRESULT CALLBACK listen(HWND window, UINT message, WPARAM length, LPARAM parameter) {
  if (message != WM_USER + 1) {
    return DefWindowProcW(window, message, length, parameter);
  }
  pointedTo = parameter == 0 ? nullptr : *reinterpret_cast<const HWND*>(parameter);
  heard = "(no block)";
  if (HANDLE block = OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, blockName)) {
    if (void* view = MapViewOfFile(block, FILE_MAP_ALL_ACCESS, 0, 0, 0)) {
      heard = firstBytes(view, length);
      UnmapViewOfFile(view);
    }
    CloseHandle(block);
  }
  return 0;
}

class SuiteBridgeTest : public ::testing::Test {
 protected:
  SuiteBridgeTest() {
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(listen));
    heard = "(nothing)";
  }
  ~SuiteBridgeTest() override {
    DestroyWindow(window);
    if (block != nullptr) {
      CloseHandle(block);
    }
    DeleteFileW(fileName);
  }

  // Another process may have created the block first.
  void makeBlock(DWORD sort, DWORD size, HANDLE file = INVALID_HANDLE_VALUE) {
    block = CreateFileMappingW(file, nullptr, sort, 0, size, blockName);
    ASSERT_NE(block, nullptr);
  }

  HWND window = CreateWindowW(L"STATIC", L"Zelvane Tuner", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                              nullptr, nullptr);
  HANDLE block = nullptr;
  Form42 form;
};

TEST_F(SuiteBridgeTest, TheWindowReadsTheNumberOfFindings) {
  form.View2.add("a");
  Timer2_Timer(form);
  EXPECT_EQ(heard, "r|1");
  EXPECT_EQ(OpenFileMappingW(FILE_MAP_READ, FALSE, blockName), nullptr);
}

TEST_F(SuiteBridgeTest, TheMessagePointsToTheHandleOfTheWindow) {
  pointedTo = nullptr;
  Timer2_Timer(form);
  EXPECT_EQ(pointedTo, window);
}

TEST_F(SuiteBridgeTest, AGoodBlockThatExistsIsUsed) {
  makeBlock(PAGE_READWRITE, 256);
  Timer2_Timer(form);
  EXPECT_EQ(heard, "r|0");
}

TEST_F(SuiteBridgeTest, ABlockThatHasNoMemoryYetIsNotTouched) {
  makeBlock(PAGE_READWRITE | SEC_RESERVE, 0x10000);
  Timer2_Timer(form);
  EXPECT_EQ(heard, std::string(3, '\0'));
}

TEST_F(SuiteBridgeTest, ABlockThatIsTooSmallIsNotTouched) {
  HANDLE file = CreateFileW(fileName, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  WriteFile(file, "0123456789", 10, &written, nullptr);
  makeBlock(PAGE_READWRITE, 10, file);
  CloseHandle(file);
  parentBridge(form, "r|1");
  EXPECT_EQ(heard, "012");
}

TEST_F(SuiteBridgeTest, ANameThatMeansSomethingElseIsNoBlock) {
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, blockName);
  Timer2_Timer(form);
  EXPECT_EQ(heard, "(no block)");
  CloseHandle(event);
}

TEST_F(SuiteBridgeTest, WithoutTheWindowTheProcessEnds) {
  DestroyWindow(window);
  EXPECT_THROW(Timer2_Timer(form), ProcessEnd);
}

}  // namespace
}  // namespace zelvreg
