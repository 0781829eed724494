// Of Windows alone: elsewhere there is no library to be loaded.
#include "libraries/SystemLibrary.h"

#include <gtest/gtest.h>
#include <uxtheme.h>

#include <array>
#include <string>

namespace zelvreg {
namespace {

std::wstring folderOf(const wchar_t* library) {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(GetModuleHandleW(library), path.data(), MAX_PATH);
  const std::wstring text = path.data();
  return text.substr(0, text.rfind(L'\\'));
}

TEST(SystemLibrary, AFunctionComesFromTheSystemsFolder) {
  auto* const call = systemFunction<decltype(SetWindowTheme)>(L"uxtheme.dll", "SetWindowTheme");
  ASSERT_NE(call, nullptr);
  std::array<wchar_t, MAX_PATH> system{};
  GetSystemDirectoryW(system.data(), MAX_PATH);
  EXPECT_EQ(lstrcmpiW(folderOf(L"uxtheme.dll").c_str(), system.data()), 0);
  EXPECT_EQ(call(nullptr, L"", L""), E_HANDLE);
}

TEST(SystemLibrary, WhatIsNotThereIsNull) {
  EXPECT_EQ(systemFunction(L"uxtheme.dll", "NoSuchFunction"), nullptr);
  EXPECT_EQ(systemFunction(L"no-such-library.dll", "SetWindowTheme"), nullptr);
}

TEST(SystemLibrary, ALibraryBesideTheProgramIsNotTaken) {
  // A copy of one that is loaded has all that it takes, but for its place.
  std::array<wchar_t, MAX_PATH> program{};
  GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
  const std::wstring file = program.data();
  const std::wstring planted = file.substr(0, file.rfind(L'\\')) + L"\\planted.dll";
  ASSERT_NE(
      CopyFileW((folderOf(L"shlwapi.dll") + L"\\shlwapi.dll").c_str(), planted.c_str(), FALSE),
      FALSE);
  EXPECT_EQ(systemFunction(L"planted.dll", "PathFileExistsW"), nullptr);
  // It could have been.
  HMODULE loaded = LoadLibraryW(planted.c_str());
  EXPECT_NE(loaded, nullptr);
  FreeLibrary(loaded);
  DeleteFileW(planted.c_str());
}

}  // namespace
}  // namespace zelvreg
