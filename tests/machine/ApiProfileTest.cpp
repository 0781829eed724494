#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>

#include "support/MachineFixture.h"

namespace zelvreg::machine {
namespace {

DWORD error(LONG code) { return static_cast<DWORD>(code); }

class ApiProfileTest : public zelvreg::fixture::MachineFixture {
 protected:
  // The buffer begins as x, so that what a call writes behind the text is seen.
  std::array<char, 64> buffer{};
  void fill() { buffer.fill('x'); }
  std::string given(DWORD length) const { return {buffer.data(), length}; }

  std::string text(const char* section, const char* key, const char* fallback, DWORD size = 64) {
    fill();
    return given(GetPrivateProfileStringA(section, key, fallback, buffer.data(), size, path));
  }
  static constexpr const char* path = "C:\\x.ini";
};

TEST_F(ApiProfileTest, readsATextWithoutItsQuotes) {
  file(path, "[s]\r\na= \"in quotes \" \r\nb='single'\r\nc=\"open\r\nd=  plain text  \r\n");
  start();
  EXPECT_EQ(text("S", "A", ""), "in quotes ");
  EXPECT_EQ(text("s", "b", ""), "single");
  EXPECT_EQ(text("s", "c", ""), "\"open");
  EXPECT_EQ(text("s", "d", ""), "plain text");
  EXPECT_EQ(buffer[10], '\0');
  EXPECT_EQ(buffer[11], 'x');
}

TEST_F(ApiProfileTest, givesTheFallbackForWhatIsNotThere) {
  file(path, "[s]\r\na=\r\n");
  start();
  EXPECT_EQ(text("s", "a", "other"), "");
  EXPECT_EQ(text("s", "no", "other  "), "other");
  EXPECT_EQ(text("s", "no", nullptr), "");
  EXPECT_EQ(GetPrivateProfileStringA("s", "a", "other", buffer.data(), 64, "C:\\no.ini"), 5U);
  EXPECT_EQ(GetLastError(), error(ERROR_FILE_NOT_FOUND));
}

TEST_F(ApiProfileTest, cutsWhatIsTooLong) {
  file(path, "[s]\r\na=12345\r\nb=1\r\n");
  start();
  EXPECT_EQ(text("s", "a", "", 4), "123");
  EXPECT_EQ(buffer[3], '\0');
  EXPECT_EQ(text("s", "a", "", 6), "12345");
  EXPECT_EQ(text("s", nullptr, "", 64), std::string("a\0b\0", 4));
  EXPECT_EQ(text("s", nullptr, "", 4), std::string("a\0", 2));
  EXPECT_EQ(std::string(buffer.data(), 5), std::string("a\0\0\0x", 5));
}

TEST_F(ApiProfileTest, listsSectionsAndKeys) {
  file(path, "[one]\r\na=1\r\n[two]\r\nb=2\r\n");
  start();
  EXPECT_EQ(text(nullptr, nullptr, ""), std::string("one\0two\0", 8));
  EXPECT_EQ(std::string(buffer.data(), 10), std::string("one\0two\0\0x", 10));
  EXPECT_EQ(text("two", nullptr, ""), std::string("b\0", 2));
  EXPECT_EQ(text("none", nullptr, ""), "");
  EXPECT_EQ(std::string(buffer.data(), 3), std::string("\0\0x", 3));
}

TEST_F(ApiProfileTest, givesAWholeSection) {
  file(path, "[s]\r\n; no\r\n a = 1\r\nb=\"2\"\r\n");
  start();
  fill();
  EXPECT_EQ(given(GetPrivateProfileSectionA("S", buffer.data(), 64, path)),
            std::string("a=1\0b=\"2\"\0", 10));
  EXPECT_EQ(buffer[10], '\0');
  fill();
  EXPECT_EQ(given(GetPrivateProfileSectionA("s", buffer.data(), 8, path)),
            std::string("a=1\0b=", 6));
  EXPECT_EQ(std::string(buffer.data() + 6, 3), std::string("\0\0x", 3));
  EXPECT_EQ(GetPrivateProfileSectionA("no", buffer.data(), 64, path), 0U);
}

TEST_F(ApiProfileTest, readsANumber) {
  file(path, "[s]\r\na=12 apples\r\nb=-3\r\nc=0x1F\r\nd=none\r\ne=\"7\"\r\n");
  start();
  const auto number = [](const char* key) { return GetPrivateProfileIntA("s", key, 99, path); };
  EXPECT_EQ(number("a"), 12U);
  EXPECT_EQ(number("b"), static_cast<UINT>(-3));
  EXPECT_EQ(number("c"), 31U);
  EXPECT_EQ(number("d"), 0U);
  EXPECT_EQ(number("e"), 7U);
  EXPECT_EQ(number("no"), 99U);
}

TEST_F(ApiProfileTest, writesInPlaceAndDeletes) {
  file(path, "; top\r\n[s]\r\na=1\r\nb=2\r\n");
  start();
  EXPECT_NE(WritePrivateProfileStringA("S", "A", "new", path), FALSE);
  EXPECT_EQ(content(path), "; top\r\n[s]\r\nA=new\r\nb=2\r\n");
  EXPECT_NE(WritePrivateProfileStringA("s", "a", "", path), FALSE);
  EXPECT_EQ(content(path), "; top\r\n[s]\r\na=\r\nb=2\r\n");
  EXPECT_NE(WritePrivateProfileStringA("s", "a", nullptr, path), FALSE);
  EXPECT_EQ(content(path), "; top\r\n[s]\r\nb=2\r\n");
  EXPECT_NE(WritePrivateProfileStringA("s", nullptr, nullptr, path), FALSE);
  EXPECT_EQ(content(path), "; top\r\n");
}

TEST_F(ApiProfileTest, makesAFileInAFolderThatIsThere) {
  start();
  EXPECT_NE(WritePrivateProfileStringA("s", "a", "1", "C:\\new.ini"), FALSE);
  EXPECT_EQ(content(R"(C:\new.ini)"), "[s]\r\na=1\r\n");
  EXPECT_EQ(WritePrivateProfileStringA("s", "a", "1", "C:\\no\\new.ini"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_PATH_NOT_FOUND));
}

TEST_F(ApiProfileTest, aFileNamedWithoutAFolderLiesInTheWindowsFolder) {
  file(R"(C:\Windows\win.ini)", "[s]\r\na=1\r\n");
  start();
  EXPECT_EQ(GetPrivateProfileIntA("s", "a", 0, "WIN.INI"), 1U);
}

TEST_F(ApiProfileTest, respectsReadOnlyFilesAndLists) {
  file(path, "[s]\r\na=1\r\n");
  file(R"(C:\y.ini)", "[s]\r\na=1\r\n");
  attributes(path, FILE_ATTRIBUTE_READONLY);
  security(R"(C:\y.ini)", "D:");
  start();
  EXPECT_EQ(WritePrivateProfileStringA("s", "a", "2", path), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(GetPrivateProfileIntA("s", "a", 9, "C:\\y.ini"), 9U);
}

TEST_F(ApiProfileTest, everyCallCanBeMadeToFail) {
  file(path, "[s]\r\na=1\r\n");
  FaultPlan& faults = start().faults();
  for (std::uint64_t call = 1; call <= 4; ++call) {
    faults.fail(ApiCall::PrivateProfile, call, ERROR_SHARING_VIOLATION);
  }
  EXPECT_EQ(text("s", "a", "fallback"), "fallback");
  EXPECT_EQ(GetPrivateProfileIntA("s", "a", 9, path), 9U);
  EXPECT_EQ(GetPrivateProfileSectionA("s", buffer.data(), 64, path), 0U);
  EXPECT_EQ(WritePrivateProfileStringA("s", "a", "2", path), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_SHARING_VIOLATION));
}

}  // namespace
}  // namespace zelvreg::machine
