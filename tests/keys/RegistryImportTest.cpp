#include "keys/RegistryImport.h"

#include <algorithm>

#include "runtime/CodePageText.h"
#include "support/ComputerFixture.h"
#include "support/WideValues.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using fixture::bytes;

const std::u16string place = u"SOFTWARE\\RegistryImportTest";
const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\RegistryImportTest";
const std::u16string header = u"Windows Registry Editor Version 5.00\r\n\r\n";
const std::string keyLine = "[" + key + "]\r\n";

// What follows the header goes in lines 3 and on.
std::string file(std::u16string_view lines) {
  return fixture::utf16File(header + std::u16string(lines));
}

std::string utf8File(std::string_view lines) {
  return "Windows Registry Editor Version 5.00\r\n\r\n" + std::string(lines);
}

class RegistryImportTest : public fixture::ComputerFixture {
 protected:
  RegistryImportTest() { emptyKey(key); }

  // In the order of their names: Wine lists them so, other systems as they were set.
  static std::vector<WideValue> values() {
    return sorted(WideKey(HiveHandle::LocalMachine, place, KEY_READ).values().value());
  }

  static std::vector<WideValue> sorted(std::vector<WideValue> list) {
    std::ranges::sort(list, NameOrder(), &WideValue::name);
    return list;
  }
};

TEST_F(RegistryImportTest, KeysAndValuesOfEachFormAreSet) {
  const RegistryImport result = importRegistryText(
      file(u"; a comment\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\RegistryImportTest]\r\n"
           u"@=\"default\"\r\n  \"text\" = \"C:\\\\a \\\"b\\\"\" ; and why\r\n\"\x4E2D\"=\"\x0434\""
           u"\r\n\"number\"=dword:1F\r\n\"none\"=hex(0):\r\n\"bytes\"=hex:0,ff,\\\r\n  1a ,\\\r\n\t"
           u"2b\r\n\"multi\"=hex(7):61,00,00,00,00,00\r\n\"lines\"=\"one\r\ntwo\"\r\n\r\n"
           u"[HKEY_LOCAL_MACHINE\\SOFTWARE\\RegistryImportTest\\Below]]\n@=\"\""));
  EXPECT_TRUE(result.isDone) << result.message;
  EXPECT_EQ(result.message, "Imported: 2 keys and 9 values; deleted: 0 keys and 0 values.");
  const std::vector<WideValue> expected{
      {u"", REG_SZ, bytes(u"default\0"sv)},
      {u"text", REG_SZ, bytes(u"C:\\a \"b\"\0"sv)},
      {u"\x4E2D", REG_SZ, bytes(u"\x0434\0"sv)},
      {u"number", REG_DWORD, bytes("\x1F\0\0\0"sv)},
      {u"none", REG_NONE, {}},
      {u"bytes", REG_BINARY, bytes("\0\xFF\x1A\x2B"sv)},
      {u"multi", REG_MULTI_SZ, bytes(u"a\0\0"sv)},
      {u"lines", REG_SZ, bytes(u"one\r\ntwo\0"sv)},
  };
  EXPECT_TRUE(values() == sorted(expected));
  EXPECT_EQ(bytesOf(key + "\\Below]", ""), "\0"s);
}

TEST_F(RegistryImportTest, ValuesAndKeysAreDeletedAndMayBeMissing) {
  setText(key, "gone", "x");
  setText(key, "", "x");
  setText(key + "\\Tree\\Below\\Deeper", "x", "x");
  const RegistryImport result =
      importRegistryText(utf8File(keyLine + "\"gone\"=-\r\n@=-\r\n\"none\"=-\r\n[-" + key +
                                  "\\Tree]\r\n[-" + key + "\\None]\r\n"));
  EXPECT_TRUE(result.isDone) << result.message;
  EXPECT_EQ(result.valuesDeleted, 3U);
  EXPECT_EQ(result.keysDeleted, 2U);
  EXPECT_TRUE(values().empty());
  EXPECT_FALSE(hasKey(key + "\\Tree"));
  EXPECT_TRUE(hasKey(key));
}

TEST_F(RegistryImportTest, AKeyOfTheClassesRootIsDeletedWhereverItLies) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\RegistryImportTest\\a", "", "x");
  setText("HKEY_CURRENT_USER\\Software\\Classes\\RegistryImportTest\\b", "", "x");
  const RegistryImport result =
      importRegistryText(utf8File("[-HKEY_CLASSES_ROOT\\RegistryImportTest]\r\n"));
  EXPECT_TRUE(result.isDone) << result.message;
  EXPECT_FALSE(hasKey("HKEY_CLASSES_ROOT\\RegistryImportTest"));
}

TEST_F(RegistryImportTest, ThePathIsThatOfTheTrueView) {
  const std::string narrow = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\RegistryImportTest";
  removeKey(narrow);
  EXPECT_TRUE(importRegistryText(utf8File(keyLine + "\"x\"=\"true\"\r\n")).isDone);
  EXPECT_EQ(storedText(key, "x"), "true");
  EXPECT_FALSE(hasKey(narrow));
}

TEST_F(RegistryImportTest, Utf8IsReadWithAndWithoutAMark) {
  EXPECT_TRUE(importRegistryText(utf8File(keyLine + "\"a\"=\"\xE4\xB8\xAD\"\r\n")).isDone);
  EXPECT_TRUE(
      importRegistryText("\xEF\xBB\xBF" + utf8File(keyLine + "\"b\"=\"\xD0\xB4\"\r\n")).isDone);
  const std::vector<WideValue> expected{{u"a", REG_SZ, bytes(u"\x4E2D\0"sv)},
                                        {u"b", REG_SZ, bytes(u"\x0434\0"sv)}};
  EXPECT_TRUE(values() == sorted(expected));
}

// A letter that the code page of this computer has; one with a backslash for its second byte where
// there is one.
std::string anyLetter() {
  for (const char* letter : {"ソ", "許", "ä", "д", "ה"}) {
    if (exactCodePageBytes(letter)) {
      return letter;
    }
  }
  return "?";
}

TEST_F(RegistryImportTest, TheOldFormHoldsTextInTheCodePageInItsBytesToo) {
  const std::string letter = *exactCodePageBytes(anyLetter());
  std::string hex;
  for (const char byte : letter) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto number = static_cast<unsigned char>(byte);
    hex += {digits[number / 16], digits[number % 16], ','};
  }
  const RegistryImport result = importRegistryText(
      "REGEDIT4\n\n" + keyLine + "\"" + letter + "\"=\"" + letter + "\"\n\"expand\"=hex(2):" + hex +
      "00\n\"multi\"=hex(7):61,00,00\n\"b\"=hex:e4,00\n");
  EXPECT_TRUE(result.isDone) << result.message;
  const std::u16string wide = utf16(anyLetter());
  const std::vector<WideValue> expected{{wide, REG_SZ, bytes(wide + u'\0')},
                                        {u"expand", REG_EXPAND_SZ, bytes(wide + u'\0')},
                                        {u"multi", REG_MULTI_SZ, bytes(u"a\0\0"sv)},
                                        {u"b", REG_BINARY, bytes("\xE4\0"sv)}};
  EXPECT_TRUE(values() == sorted(expected));
}

struct Broken {
  std::string lines;  // in lines 5 and on, in a key, after a sound value
  const char* message;
};

const std::vector<Broken> brokenLines{
    {"nonsense", "Line 5: this is neither a key nor a value; a line begins with [, \", @ or ;."},
    {"[HKEY_LOCAL_MACHINE\\x", "Line 5: the key is not closed; its line must end in ]."},
    {"\r\n[HKLM\\x]",
     "Line 6: the root is not known; give its long name, such as HKEY_LOCAL_MACHINE."},
    {"[]", "Line 5: the root is not known; give its long name, such as HKEY_LOCAL_MACHINE."},
    {"[HKEY_USERS\\a\\\\b]", "Line 5: the path holds an empty name."},
    {"[HKEY_USERS\\]", "Line 5: the path holds an empty name."},
    {"[HKEY_USERS\\" + std::string(256, 'x') + "]",
     "Line 5: the path is too long; a name has at most 255 characters, a path 512 names."},
    {"[HKEY_USERS\\a\0b]"s, "Line 5: the path holds a NUL character."},
    {"[-HKEY_USERS]", "Line 5: a root cannot be deleted."},
    {"[-HKEY_USERS\\none]\r\n\"x\"=\"y\"",
     "Line 6: the value belongs to no key; a line [key] must come before it."},
    {"\"x\"", "Line 5: there is no = after the value's name."},
    {"@@=\"x\"", "Line 5: there is no = after the value's name."},
    {"\"x=\"y\"", "Line 5: there is no = after the value's name."},
    {"\"" + std::string(16384, 'x') + "\"=-",
     "Line 5: the value's name is too long; it has at most 16383 characters."},
    {"\"x\"=",
     "Line 5: the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -."},
    {"\"x\"=qword:1",
     "Line 5: the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -."},
    {"\"x\"=\"y", "Line 5: the text has no closing quote."},
    {"\"x\"=\"a\0b\""s, "Line 5: the text holds a NUL character."},
    {"\"x\"=\"C:\\a\"",
     "Line 5: a backslash stands alone; write \\\\ for a backslash and \\\" for a quote."},
    {"\"x\"=\"y\" z", "Line 5: there is more after the data."},
    {"\"x\"=-1", "Line 5: there is more after the data."},
    {"\"x\"=\"one\r\ntwo\"\r\n\"y\"=?",
     "Line 7: the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -."},
    {"\"x\"=dword:", "Line 5: the number is not valid; it has one to eight hexadecimal digits."},
    {"\"x\"=dword:123456789",
     "Line 5: the number is not valid; it has one to eight hexadecimal digits."},
    {"\"x\"=dword:1g", "Line 5: there is more after the data."},
    {"\"x\"=hex(:00", "Line 5: the number is not valid; it has one to eight hexadecimal digits."},
    {"\"x\"=hex(1:00", "Line 5: the type is not closed; write hex(n): and bytes."},
    {"\"x\"=hex:00,,01", "Line 5: a byte is missing or wrong; write two hexadecimal digits."},
    {"\"x\"=hex:00,", "Line 5: a byte is missing or wrong; write two hexadecimal digits."},
    {"\"x\"=hex:00,gg", "Line 5: a byte is missing or wrong; write two hexadecimal digits."},
    {"\"x\"=hex:000", "Line 5: there is more after the data."},
    {"\"x\"=hex:00\\01", "Line 5: a backslash among the bytes; it may only end a line."},
    {"\"x\"=hex:00,\\\r\n  01,\\",
     "Line 5: the bytes break off; a line must follow the backslash."},
    {"\"x\"=\"\xFF\"", "Line 5: a character is not valid in the file's encoding."},
};

TEST_F(RegistryImportTest, AFaultNamesItsLineAndNothingIsChanged) {
  for (const Broken& broken : brokenLines) {
    const RegistryImport result =
        importRegistryText(utf8File(keyLine + "\"sound\"=\"x\"\r\n" + broken.lines));
    EXPECT_FALSE(result.isDone) << broken.lines;
    EXPECT_EQ(result.message, broken.message + " Nothing was changed."s);
    EXPECT_EQ(result.keys + result.valuesSet, 0U);
    EXPECT_TRUE(values().empty()) << broken.lines;
  }
}

TEST_F(RegistryImportTest, AFileOfAnotherKindIsRefused) {
  const std::string wrong =
      "Line 1: this is no registry file; it must begin with \"Windows Registry Editor Version "
      "5.00\" or \"REGEDIT4\". Nothing was changed.";
  EXPECT_EQ(importRegistryText("").message, wrong);
  EXPECT_EQ(importRegistryText("[Section]\r\na=b\r\n").message, wrong);
  EXPECT_EQ(importRegistryText(fixture::utf16File(u"[Section]")).message, wrong);
  EXPECT_EQ(importRegistryText(utf8File("\"x\"=\"y\"")).message,
            "Line 3: the value belongs to no key; a line [key] must come before it. Nothing was "
            "changed.");
  EXPECT_EQ(importRegistryText(file(u"[HKEY_USERS\\x]\r\n") + "x").message,
            "Line 4: the file ends in half a character. Nothing was changed.");
  EXPECT_EQ(importRegistryFile("C:\\RegistryImportTest\\none.reg").message,
            "The file cannot be read. Nothing was changed.");
}

}  // namespace
}  // namespace zelvreg
