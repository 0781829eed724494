#include <gtest/gtest.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "machine/registry/Registry.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using Names = std::vector<std::string>;

class RegistryValueCallsTest : public MachineFixture {
 protected:
  // Starts with one key that has these value lines and opens it.
  OpenedKey open(std::string_view values) {
    key(R"(HKEY_CURRENT_USER\Software\Vendor)", values);
    start();
    return {HKEY_CURRENT_USER, R"(Software\Vendor)", all32};
  }
};

TEST_F(RegistryValueCallsTest, ValuesAreListedInTheOrderOfTheirMaking) {
  const OpenedKey key = open("\"z\"=\"1\"\n\"a\"=\"2\"\n@=\"3\"");
  setText(key, "m", "4");
  setText(key, "Z", "5");
  EXPECT_EQ(valueNames(key), Names({"z", "a", "", "m"}));
  EXPECT_EQ(text(key, "z"), "5");
}

TEST_F(RegistryValueCallsTest, ThousandsOfValuesAreFoundListedAndDeleted) {
  const OpenedKey key = open("");
  constexpr int count = 3000;
  for (int number = 0; number < count; ++number) {
    ASSERT_EQ(setText(key, ("Value" + std::to_string(number)).c_str(), "x"), ERROR_SUCCESS);
  }
  for (int number = 0; number < count; number += 3) {
    ASSERT_EQ(RegDeleteValueW(key, Wide("VALUE" + std::to_string(number)).get()), ERROR_SUCCESS);
  }
  setText(key, "Value0", "again");
  const Names names = valueNames(key);
  ASSERT_EQ(names.size(), 2001U);
  EXPECT_EQ(names.front(), "Value1");
  EXPECT_EQ(names[1], "Value2");
  EXPECT_EQ(names.back(), "Value0");
  EXPECT_EQ(text(key, "value2998"), "x");
  EXPECT_EQ(text(key, "value3"), "(error 2)");
}

TEST_F(RegistryValueCallsTest, AQueryWithoutABufferGivesTypeAndSize) {
  const OpenedKey key = open("\"text\"=\"abc\"\n\"number\"=dword:00000001");
  DWORD type = 0;
  DWORD size = 0;
  EXPECT_EQ(RegQueryValueExW(key, u"text", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(RegQueryValueExW(key, u"number", nullptr, &type, nullptr, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(type, REG_DWORD);
}

TEST_F(RegistryValueCallsTest, ABufferThatIsTooSmallIsLeftAloneAndTheSizeNeededGiven) {
  const OpenedKey key = open(R"("text"="abc")");
  std::array<BYTE, 3> buffer{'-', '-', '-'};
  DWORD size = 3;
  DWORD type = 0;
  EXPECT_EQ(RegQueryValueExW(key, u"text", nullptr, &type, buffer.data(), &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(buffer[0], '-');
}

TEST_F(RegistryValueCallsTest, UnterminatedTextGetsATerminatorOnlyWhereThereIsRoom) {
  const OpenedKey key = open(R"("text"=hex(1):61,00,62,00)");
  std::array<BYTE, 8> buffer{};
  buffer.fill('-');
  DWORD size = 5;
  EXPECT_EQ(RegQueryValueExW(key, u"text", nullptr, nullptr, buffer.data(), &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(buffer[4], '-');
  size = 8;
  EXPECT_EQ(RegQueryValueExW(key, u"text", nullptr, nullptr, buffer.data(), &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(buffer[4], '\0');
  EXPECT_EQ(buffer[5], '\0');
  EXPECT_EQ(buffer[6], '-');
}

TEST_F(RegistryValueCallsTest, TextOfEveryScriptIsReadAsItWasSet) {
  setting("codepage", "932");
  const OpenedKey key = open("");
  const std::string text = "\u30BD\u4E2D\u0416\U0001F600\xED\xA0\x80";  // half of a pair at its end
  EXPECT_EQ(setText(key, text.c_str(), text), ERROR_SUCCESS);
  EXPECT_EQ(fixture::text(key, text.c_str()), text);
  EXPECT_EQ(valueNames(key), Names({text}));
}

TEST_F(RegistryValueCallsTest, AnEnumerationGivesNameTypeAndData) {
  const OpenedKey key = open(R"("name"="abc")");
  std::array<char16_t, 8> name{};
  std::array<BYTE, 16> bytes{};
  DWORD nameSize = 5;
  DWORD size = 16;
  DWORD type = 0;
  EXPECT_EQ(RegEnumValueW(key, 0, name.data(), &nameSize, nullptr, &type, bytes.data(), &size),
            ERROR_SUCCESS);
  EXPECT_EQ(std::u16string(name.data()), u"name");
  EXPECT_EQ(nameSize, 4U);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(type, REG_SZ);
  nameSize = 4;
  EXPECT_EQ(RegEnumValueW(key, 0, name.data(), &nameSize, nullptr, nullptr, nullptr, nullptr),
            ERROR_MORE_DATA);
  nameSize = 8;
  size = 3;
  EXPECT_EQ(RegEnumValueW(key, 0, name.data(), &nameSize, nullptr, &type, bytes.data(), &size),
            ERROR_MORE_DATA);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(RegEnumValueW(key, 1, name.data(), &nameSize, nullptr, nullptr, nullptr, nullptr),
            ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryValueCallsTest, AbsentValuesAndWrongArgumentsAreNamed) {
  const OpenedKey key = open("");
  EXPECT_EQ(text(key, "x"), "(error 2)");
  EXPECT_EQ(RegDeleteValueW(key, u"x"), ERROR_FILE_NOT_FOUND);
  DWORD reserved = 0;
  std::array<BYTE, 1> byte{};
  EXPECT_EQ(RegQueryValueExW(key, u"x", &reserved, nullptr, nullptr, nullptr),
            ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegQueryValueExW(key, u"x", nullptr, nullptr, byte.data(), nullptr),
            ERROR_INVALID_PARAMETER);
  const std::string tooLong(16384, 'x');
  EXPECT_EQ(setText(key, tooLong.c_str(), "x"), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(setText(key, tooLong.c_str() + 1, "x"), ERROR_SUCCESS);
}

TEST_F(RegistryValueCallsTest, AHandleGivesOnlyTheRightsItWasOpenedWith) {
  key(R"(HKEY_CURRENT_USER\Software\Vendor\a)", R"(@="x")");
  start();
  const auto opened = [](REGSAM access) {
    return OpenedKey(HKEY_CURRENT_USER, R"(Software\Vendor)", access);
  };
  std::array<char16_t, 8> name{};
  EXPECT_EQ(text(opened(KEY_ENUMERATE_SUB_KEYS), ""), "(error 5)");
  EXPECT_EQ(RegEnumKeyW(opened(KEY_QUERY_VALUE), 0, name.data(), 8), ERROR_ACCESS_DENIED);
  EXPECT_EQ(setText(opened(KEY_READ), "", "y"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteValueW(opened(KEY_READ), u""), ERROR_ACCESS_DENIED);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, "Software", 0), ERROR_ACCESS_DENIED);
}

TEST_F(RegistryValueCallsTest, AValueIsTheSameAfterARestart) {
  open("");
  {
    const OpenedKey key(HKEY_CURRENT_USER, R"(Software\Vendor)", all32);
    setText(key, "open", "abc");
    setText(key, "quote\"d\\", std::string_view("a\"\\\0", 4));
  }
  restart();
  const OpenedKey key(HKEY_CURRENT_USER, R"(Software\Vendor)", read32);
  EXPECT_EQ(text(key, "open"), "abc");
  EXPECT_EQ(data(key, "quote\"d\\"), std::string("a\"\\\0", 4));
}

}  // namespace
}  // namespace zelvreg::fixture
