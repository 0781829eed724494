#include "support/WideValues.h"

#include <gtest/gtest.h>

#include <cstring>

namespace zelvreg::fixture {

using namespace std::string_view_literals;

std::vector<BYTE> bytes(std::u16string_view text) {
  std::vector<BYTE> result(text.size() * sizeof(char16_t));
  std::memcpy(result.data(), text.data(), result.size());
  return result;
}

std::vector<KeyContent> contentOf(HiveHandle hive, const std::u16string& path) {
  const WideKey key(hive, path, KEY_READ);
  if (!key.isOpen()) {
    return {};
  }
  std::vector<KeyContent> content{{path, key.values().value()}};
  const std::vector<std::u16string> names = key.subkeys().value();
  for (const std::u16string& name : names) {
    const std::vector<KeyContent> below = contentOf(hive, path + u"\\" + name);
    content.insert(content.end(), below.begin(), below.end());
  }
  return content;
}

void setValues(HiveHandle hive, const std::u16string& path, const std::vector<WideValue>& values) {
  const WideKey key = WideKey::make(hive, path, KEY_ALL_ACCESS);
  for (const WideValue& value : values) {
    ASSERT_TRUE(key.setValue(value));
  }
}

std::string utf16File(std::u16string_view text) {
  const std::vector<BYTE> content = bytes(text);
  return "\xFF\xFE" + std::string(content.begin(), content.end());
}

std::u16string textOfUtf16File(std::string_view file) {
  EXPECT_TRUE(file.starts_with("\xFF\xFE"));
  std::u16string text(file.size() / sizeof(char16_t) - 1, u'\0');
  std::memcpy(text.data(), file.data() + 2, text.size() * sizeof(char16_t));
  return text;
}

std::vector<WideValue> unusualValues() {
  std::vector<WideValue> values{
      {u"closed", REG_SZ, bytes(u"text\0"sv)},
      {u"", REG_SZ, bytes(u"a \"quoted\" C:\\path\\\0"sv)},
      {u"open", REG_SZ, bytes(u"text"sv)},
      {u"two ends", REG_SZ, bytes(u"text\0\0"sv)},
      {u"inner end", REG_SZ, bytes(u"te\0xt\0"sv)},
      {u"only an end", REG_SZ, bytes(u"\0"sv)},
      {u"no bytes", REG_SZ, {}},
      {u"odd", REG_SZ, bytes("t\0e\0x"sv)},
      {u"odd and closed", REG_SZ, bytes("t\0\0\0\0"sv)},
      {u"one byte", REG_SZ, bytes("t"sv)},
      {u"line ends", REG_SZ, bytes(u"one\r\ntwo\nthree\rfour\0"sv)},
      {u"tab", REG_SZ, bytes(u"one\ttwo\0"sv)},
      {u"half a pair", REG_SZ, bytes(u"a\xD83D\0"sv)},
      {u"a pair \xD83D\xDE00", REG_SZ, bytes(u"\xD83D\xDE00\0"sv)},
      {u"beyond the code page \x4E2D\x0434", REG_SZ, bytes(u"\x4E2D\x0434\0"sv)},
      {u"quote\"back\\slash", REG_SZ, bytes(u"x\0"sv)},
      {u"first line\r\nsecond\nthird", REG_SZ, bytes(u"x\0"sv)},
      {u"@", REG_SZ, bytes(u"x\0"sv)},
      {u"expand", REG_EXPAND_SZ, bytes(u"%windir%\0"sv)},
      {u"open expand", REG_EXPAND_SZ, bytes(u"%windir%"sv)},
      {u"multi", REG_MULTI_SZ, bytes(u"one\0two\0\0"sv)},
      {u"open multi", REG_MULTI_SZ, bytes(u"one\0two"sv)},
      {u"odd multi", REG_MULTI_SZ, bytes("o\0\0"sv)},
      {u"number", REG_DWORD, bytes("\x78\x56\x34\x92"sv)},
      {u"short number", REG_DWORD, bytes("\x01\x02\x03"sv)},
      {u"long number", REG_DWORD, bytes("\x01\x02\x03\x04\x05"sv)},
      {u"empty number", REG_DWORD, {}},
      {u"other end first", REG_DWORD_BIG_ENDIAN, bytes("\0\0\0\x01"sv)},
      {u"empty binary", REG_BINARY, {}},
      {u"none", REG_NONE, bytes("\xFF"sv)},
      {u"a link's type", REG_LINK, bytes(u"\\Registry\\Machine"sv)},
      {u"resources", REG_RESOURCE_LIST, bytes("\x01\x02"sv)},
      {u"descriptor", REG_FULL_RESOURCE_DESCRIPTOR, bytes("\x01"sv)},
      {u"requirements", REG_RESOURCE_REQUIREMENTS_LIST, bytes("\x01"sv)},
      {u"long", REG_QWORD, bytes("\x01\x02\x03\x04\x05\x06\x07\x08"sv)},
      {u"short long", REG_QWORD, bytes("\x01\x02"sv)},
      {u"a type of its own", 0x20000, bytes("own"sv)},
      {u"a high type", 0xFFFFFFFF, bytes("\x80"sv)},
  };
  WideValue large{u"20 KB", REG_BINARY, std::vector<BYTE>(20 * 1024)};
  for (std::size_t index = 0; index < large.data.size(); ++index) {
    large.data[index] = static_cast<BYTE>(index * 7);
  }
  values.push_back(large);
  return values;
}

}  // namespace zelvreg::fixture
