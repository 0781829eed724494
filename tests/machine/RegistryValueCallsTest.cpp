#include <gtest/gtest.h>
#include <windows.h>

#include "machine/Registry.h"
#include "machine/RegistryCalls.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

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
    ASSERT_EQ(RegDeleteValueA(key, ("VALUE" + std::to_string(number)).c_str()), ERROR_SUCCESS);
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
  EXPECT_EQ(RegQueryValueExA(key, "text", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(RegQueryValueExA(key, "number", nullptr, &type, nullptr, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(type, REG_DWORD);
}

TEST_F(RegistryValueCallsTest, ABufferThatIsTooSmallIsLeftAloneAndTheSizeNeededGiven) {
  const OpenedKey key = open(R"("text"="abc")");
  std::array<BYTE, 3> buffer{'-', '-', '-'};
  DWORD size = 3;
  DWORD type = 0;
  EXPECT_EQ(RegQueryValueExA(key, "text", nullptr, &type, buffer.data(), &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(buffer[0], '-');
}

TEST_F(RegistryValueCallsTest, UnterminatedTextGetsATerminatorOnlyWhereThereIsRoom) {
  const OpenedKey key = open(R"("text"=hex(1):61,00,62,00)");
  std::array<BYTE, 4> buffer{'-', '-', '-', '-'};
  DWORD size = 2;
  EXPECT_EQ(RegQueryValueExA(key, "text", nullptr, nullptr, buffer.data(), &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 2U);
  EXPECT_EQ(buffer[2], '-');
  size = 4;
  EXPECT_EQ(RegQueryValueExA(key, "text", nullptr, nullptr, buffer.data(), &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 2U);
  EXPECT_EQ(buffer[2], '\0');
  EXPECT_EQ(buffer[3], '-');
}

TEST_F(RegistryValueCallsTest, TextIsStoredAsLongAsItIsGivenButForATerminatorRightBehindIt) {
  const OpenedKey key = open("");
  EXPECT_EQ(setText(key, "open", std::string_view("abcd", 3)), ERROR_SUCCESS);
  EXPECT_EQ(setText(key, "uncounted", std::string_view("abc", 3)), ERROR_SUCCESS);
  EXPECT_EQ(setText(key, "closed", "abc\0"sv), ERROR_SUCCESS);
  EXPECT_EQ(setText(key, "inner", std::string_view("a\0bc", 3)), ERROR_SUCCESS);
  EXPECT_EQ(setText(key, "empty", ""), ERROR_SUCCESS);
  EXPECT_EQ(data(key, "open"), "abc");
  EXPECT_EQ(data(key, "uncounted"), "abc\0"s);
  EXPECT_EQ(data(key, "closed"), "abc\0"s);
  EXPECT_EQ(data(key, "inner"), std::string("a\0b", 3));
  EXPECT_EQ(data(key, "empty"), "");
}

TEST_F(RegistryValueCallsTest, TextOfAllThreeTypesGoesThroughTheCodePageAndBytesDoNot) {
  const OpenedKey key = open(
      "\"sz\"=hex(1):e4,00,00,00\n\"expand\"=hex(2):e4,00,00,00\n"
      "\"multi\"=hex(7):e4,00,00,00,00,00\n\"binary\"=hex:e4,00,00,00\n\"none\"=hex(0):e4,00\n"
      "\"odd\"=hex(1):61,00,62\n\"chinese\"=hex(1):2d,4e,00,00");
  EXPECT_EQ(data(key, "sz"), std::string("\xE4\0", 2));
  EXPECT_EQ(data(key, "expand"), std::string("\xE4\0", 2));
  EXPECT_EQ(data(key, "multi"), std::string("\xE4\0\0", 3));
  EXPECT_EQ(data(key, "binary"), std::string("\xE4\0\0\0", 4));
  EXPECT_EQ(data(key, "none"), std::string("\xE4\0", 2));
  EXPECT_EQ(data(key, "odd"), "a");
  EXPECT_EQ(data(key, "chinese"), std::string("?\0", 2));
}

TEST_F(RegistryValueCallsTest, TextOfATwoByteCodePageComesBackAsItWasSet) {
  setting("codepage", "932");
  const OpenedKey key = open("");
  const std::string narrow =
      "\x83\x5C\x83\x74";  // two characters, one with a trailing backslash byte
  EXPECT_EQ(setText(key, narrow.c_str(), narrow), ERROR_SUCCESS);
  EXPECT_EQ(text(key, narrow.c_str()), narrow);
  EXPECT_EQ(valueNames(key), Names({narrow}));
}

TEST_F(RegistryValueCallsTest, AnEnumerationGivesNameTypeAndData) {
  const OpenedKey key = open(R"("name"="abc")");
  std::array<char, 8> name{};
  std::array<BYTE, 8> bytes{};
  DWORD nameSize = 5;
  DWORD size = 8;
  DWORD type = 0;
  EXPECT_EQ(RegEnumValueA(key, 0, name.data(), &nameSize, nullptr, &type, bytes.data(), &size),
            ERROR_SUCCESS);
  EXPECT_STREQ(name.data(), "name");
  EXPECT_EQ(nameSize, 4U);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(type, REG_SZ);
  nameSize = 4;
  EXPECT_EQ(RegEnumValueA(key, 0, name.data(), &nameSize, nullptr, nullptr, nullptr, nullptr),
            ERROR_MORE_DATA);
  nameSize = 8;
  size = 3;
  EXPECT_EQ(RegEnumValueA(key, 0, name.data(), &nameSize, nullptr, &type, bytes.data(), &size),
            ERROR_MORE_DATA);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(RegEnumValueA(key, 1, name.data(), &nameSize, nullptr, nullptr, nullptr, nullptr),
            ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryValueCallsTest, AbsentValuesAndWrongArgumentsAreNamed) {
  const OpenedKey key = open("");
  EXPECT_EQ(text(key, "x"), "(error 2)");
  EXPECT_EQ(RegDeleteValueA(key, "x"), ERROR_FILE_NOT_FOUND);
  DWORD reserved = 0;
  std::array<BYTE, 1> byte{};
  EXPECT_EQ(RegQueryValueExA(key, "x", &reserved, nullptr, nullptr, nullptr),
            ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegQueryValueExA(key, "x", nullptr, nullptr, byte.data(), nullptr),
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
  std::array<char, 8> name{};
  EXPECT_EQ(text(opened(KEY_ENUMERATE_SUB_KEYS), ""), "(error 5)");
  EXPECT_EQ(RegEnumKeyA(opened(KEY_QUERY_VALUE), 0, name.data(), 8), ERROR_ACCESS_DENIED);
  EXPECT_EQ(setText(opened(KEY_READ), "", "y"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteValueA(opened(KEY_READ), ""), ERROR_ACCESS_DENIED);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, "Software", 0), ERROR_ACCESS_DENIED);
}

TEST_F(RegistryValueCallsTest, AValueIsTheSameAfterARestart) {
  open("");
  {
    const OpenedKey key(HKEY_CURRENT_USER, R"(Software\Vendor)", all32);
    setText(key, "open", std::string_view("abcd", 3));
    setText(key, "quote\"d\\", std::string_view("a\"\\\0", 4));
  }
  restart();
  const OpenedKey key(HKEY_CURRENT_USER, R"(Software\Vendor)", read32);
  EXPECT_EQ(data(key, "open"), "abc");
  EXPECT_EQ(data(key, "quote\"d\\"), std::string("a\"\\\0", 4));
}

}  // namespace
}  // namespace zelvreg::fixture
