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
  // The buffer begins as x, so that what a call writes after the text is seen.
  std::array<char16_t, 64> buffer{};
  void fill() { buffer.fill(u'x'); }
  std::u16string given(DWORD length) const { return {buffer.data(), length}; }

  std::u16string text(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, DWORD size = 64) {
    fill();
    return given(GetPrivateProfileStringW(section, key, fallback, buffer.data(), size, widePath));
  }
  static constexpr const char* path = "C:\\x.ini";
  static constexpr const char16_t* widePath = u"C:\\x.ini";
};

TEST_F(ApiProfileTest, ReadsATextWithoutItsQuotes) {
  file(path, "[s]\r\na= \"in quotes \" \r\nb='single'\r\nc=\"open\r\nd=  plain text  \r\n");
  start();
  EXPECT_EQ(text(u"S", u"A", u""), u"in quotes ");
  EXPECT_EQ(text(u"s", u"b", u""), u"single");
  EXPECT_EQ(text(u"s", u"c", u""), u"\"open");
  EXPECT_EQ(text(u"s", u"d", u""), u"plain text");
  EXPECT_EQ(buffer[10], u'\0');
  EXPECT_EQ(buffer[11], u'x');
}

TEST_F(ApiProfileTest, GivesTheFallbackForWhatIsNotThere) {
  file(path, "[s]\r\na=\r\n");
  start();
  EXPECT_EQ(text(u"s", u"a", u"other"), u"");
  EXPECT_EQ(text(u"s", u"no", u"other  "), u"other");
  EXPECT_EQ(text(u"s", u"no", nullptr), u"");
  EXPECT_EQ(GetPrivateProfileStringW(u"s", u"a", u"other", buffer.data(), 64, u"C:\\no.ini"), 5U);
  EXPECT_EQ(GetLastError(), error(ERROR_FILE_NOT_FOUND));
}

TEST_F(ApiProfileTest, CutsWhatIsTooLong) {
  file(path, "[s]\r\na=12345\r\nb=1\r\n");
  start();
  EXPECT_EQ(text(u"s", u"a", u"", 4), u"123");
  EXPECT_EQ(buffer[3], u'\0');
  EXPECT_EQ(text(u"s", u"a", u"", 6), u"12345");
  EXPECT_EQ(text(u"s", nullptr, u"", 64), std::u16string(u"a\0b\0", 4));
  EXPECT_EQ(text(u"s", nullptr, u"", 4), std::u16string(u"a\0", 2));
  EXPECT_EQ(std::u16string(buffer.data(), 5), std::u16string(u"a\0\0\0x", 5));
}

TEST_F(ApiProfileTest, ListsSectionsAndKeys) {
  file(path, "[one]\r\na=1\r\n[two]\r\nb=2\r\n");
  start();
  EXPECT_EQ(text(nullptr, nullptr, u""), std::u16string(u"one\0two\0", 8));
  EXPECT_EQ(std::u16string(buffer.data(), 10), std::u16string(u"one\0two\0\0x", 10));
  EXPECT_EQ(text(u"two", nullptr, u""), std::u16string(u"b\0", 2));
  EXPECT_EQ(text(u"none", nullptr, u""), u"");
  EXPECT_EQ(std::u16string(buffer.data(), 3), std::u16string(u"\0\0x", 3));
}

TEST_F(ApiProfileTest, GivesAWholeSection) {
  file(path, "[s]\r\n; no\r\n a = 1\r\nb=\"2\"\r\n");
  start();
  fill();
  EXPECT_EQ(given(GetPrivateProfileSectionW(u"S", buffer.data(), 64, widePath)),
            std::u16string(u"a=1\0b=\"2\"\0", 10));
  EXPECT_EQ(buffer[10], u'\0');
  fill();
  EXPECT_EQ(given(GetPrivateProfileSectionW(u"s", buffer.data(), 8, widePath)),
            std::u16string(u"a=1\0b=", 6));
  EXPECT_EQ(std::u16string(buffer.data() + 6, 3), std::u16string(u"\0\0x", 3));
  EXPECT_EQ(GetPrivateProfileSectionW(u"no", buffer.data(), 64, widePath), 0U);
}

TEST_F(ApiProfileTest, ReadsANumber) {
  file(path, "[s]\r\na=12 apples\r\nb=-3\r\nc=0x1F\r\nd=none\r\ne=\"7\"\r\n");
  start();
  const auto number = [](LPCWSTR key) { return GetPrivateProfileIntW(u"s", key, 99, widePath); };
  EXPECT_EQ(number(u"a"), 12U);
  EXPECT_EQ(number(u"b"), static_cast<UINT>(-3));
  EXPECT_EQ(number(u"c"), 31U);
  EXPECT_EQ(number(u"d"), 0U);
  EXPECT_EQ(number(u"e"), 7U);
  EXPECT_EQ(number(u"no"), 99U);
}

TEST_F(ApiProfileTest, WritesInPlaceAndDeletes) {
  file(path, "; top\r\n[s]\r\na=1\r\nb=2\r\n");
  start();
  EXPECT_NE(WritePrivateProfileStringW(u"S", u"A", u"new", widePath), FALSE);
  EXPECT_EQ(content(path), "; top\r\n[s]\r\nA=new\r\nb=2\r\n");
  EXPECT_NE(WritePrivateProfileStringW(u"s", u"a", u"", widePath), FALSE);
  EXPECT_EQ(content(path), "; top\r\n[s]\r\na=\r\nb=2\r\n");
  EXPECT_NE(WritePrivateProfileStringW(u"s", u"a", nullptr, widePath), FALSE);
  EXPECT_EQ(content(path), "; top\r\n[s]\r\nb=2\r\n");
  EXPECT_NE(WritePrivateProfileStringW(u"s", nullptr, nullptr, widePath), FALSE);
  EXPECT_EQ(content(path), "; top\r\n");
}

TEST_F(ApiProfileTest, TextIsInTheCodePageOrInUtf16) {
  setting("codepage", "932");
  file(path, "[s]\r\na=\x83\x5C\r\n");
  file(R"(C:\y.ini)", std::string("\xFF\xFE[\0s\0]\0\r\0\n\0a\0=\0\x16\4", 18));
  start();
  EXPECT_EQ(text(u"s", u"a", u""), u"\u30BD");
  EXPECT_NE(WritePrivateProfileStringW(u"s", u"a", u"\u30BE\u05D0", widePath), FALSE);
  EXPECT_EQ(content(path), "[s]\r\na=\x83\x5D?\r\n");
  fill();
  EXPECT_EQ(given(GetPrivateProfileStringW(u"s", u"a", u"", buffer.data(), 64, u"C:\\y.ini")),
            u"\u0416");
}

TEST_F(ApiProfileTest, MakesAFileInAFolderThatIsThere) {
  start();
  EXPECT_NE(WritePrivateProfileStringW(u"s", u"a", u"1", u"C:\\new.ini"), FALSE);
  EXPECT_EQ(content(R"(C:\new.ini)"), "[s]\r\na=1\r\n");
  EXPECT_EQ(WritePrivateProfileStringW(u"s", u"a", u"1", u"C:\\no\\new.ini"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_PATH_NOT_FOUND));
}

TEST_F(ApiProfileTest, AFileNamedWithoutAFolderLiesInTheWindowsFolder) {
  file(R"(C:\Windows\win.ini)", "[s]\r\na=1\r\n");
  start();
  EXPECT_EQ(GetPrivateProfileIntW(u"s", u"a", 0, u"WIN.INI"), 1U);
}

TEST_F(ApiProfileTest, RespectsReadOnlyFilesAndLists) {
  file(path, "[s]\r\na=1\r\n");
  file(R"(C:\y.ini)", "[s]\r\na=1\r\n");
  attributes(path, FILE_ATTRIBUTE_READONLY);
  security(R"(C:\y.ini)", "D:");
  start();
  EXPECT_EQ(WritePrivateProfileStringW(u"s", u"a", u"2", widePath), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(GetPrivateProfileIntW(u"s", u"a", 9, u"C:\\y.ini"), 9U);
}

TEST_F(ApiProfileTest, EveryCallCanBeMadeToFail) {
  file(path, "[s]\r\na=1\r\n");
  FaultPlan& faults = start().faults();
  for (std::uint64_t call = 1; call <= 4; ++call) {
    faults.fail(ApiCall::PrivateProfile, call, ERROR_SHARING_VIOLATION);
  }
  EXPECT_EQ(text(u"s", u"a", u"fallback"), u"fallback");
  EXPECT_EQ(GetPrivateProfileIntW(u"s", u"a", 9, widePath), 9U);
  EXPECT_EQ(GetPrivateProfileSectionW(u"s", buffer.data(), 64, widePath), 0U);
  EXPECT_EQ(WritePrivateProfileStringW(u"s", u"a", u"2", widePath), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_SHARING_VIOLATION));
}

}  // namespace
}  // namespace zelvreg::machine
