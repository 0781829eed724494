// Only on Windows do programs share one registry.
#include "runtime/SingleInstance.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace zelvreg {
namespace {

TEST(SingleInstance, TheFirstKeepsOthersOutUntilItIsGone) {
  std::optional<SingleInstance> first(std::in_place);
  EXPECT_TRUE(first->isFirst());
  {
    const SingleInstance second;
    EXPECT_FALSE(second.isFirst());
    EXPECT_TRUE(first->isFirst());
  }
  EXPECT_FALSE(SingleInstance().isFirst());
  first.reset();
  EXPECT_TRUE(SingleInstance().isFirst());
  EXPECT_TRUE(SingleInstance().isFirst());
}

std::wstring lockFile() {
  std::array<wchar_t, MAX_PATH> folder{};
  GetSystemWindowsDirectoryW(folder.data(), MAX_PATH);
  return folder.data() + std::wstring(L"\\zelvreg.lock");
}

TEST(SingleInstance, ANameThatAStrangerHasTakenFirstKeepsNobodyOut) {
  // Any user may make an object of this kind and name.
  HANDLE mutex = CreateMutexW(nullptr, TRUE, L"Global\\ZelvaneFixRegistryProblems");
  ASSERT_NE(mutex, nullptr);
  EXPECT_TRUE(SingleInstance().isFirst());
  CloseHandle(mutex);
}

TEST(SingleInstance, NobodyOpensItsFileMeanwhileAndNothingIsLeftOfIt) {
  {
    const SingleInstance first;
    ASSERT_TRUE(first.isFirst());
    constexpr DWORD sharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    EXPECT_EQ(CreateFileW(lockFile().c_str(), GENERIC_READ, sharedWithAll, nullptr, OPEN_EXISTING,
                          0, nullptr),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
  }
  EXPECT_EQ(GetFileAttributesW(lockFile().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(SingleInstance, AFileThatAnEndedProcessHasLeftKeepsNobodyOut) {
  HANDLE left = CreateFileW(lockFile().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_HIDDEN, nullptr);
  ASSERT_NE(left, INVALID_HANDLE_VALUE);
  CloseHandle(left);
  EXPECT_TRUE(SingleInstance().isFirst());
  EXPECT_EQ(GetFileAttributesW(lockFile().c_str()), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
}  // namespace zelvreg
