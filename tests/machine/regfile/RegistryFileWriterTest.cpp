#include <gtest/gtest.h>

#include <sstream>

#include "machine/base/MachineError.h"
#include "machine/regfile/LoadedRegistry.h"

namespace zelvreg::fixture {
namespace {

TEST(RegistryFileWriterTest, AFileIsWrittenBackInItsOwnForm) {
  const std::string body =
      "\r\n[HKEY_CURRENT_USER\\Software]\r\n\r\n[HKEY_CURRENT_USER\\Software\\K]\r\n"
      "@=\"text\"\r\n\"n\"=dword:0000000f\r\n\"b\"=hex:01,02\r\n\"e\"=hex(2):25,00,00,00\r\n\r\n";
  const std::string lineFeeds = [&] {
    std::string text = body;
    std::erase(text, '\r');
    return text;
  }();
  const std::string bySid = [&] {
    std::string text = body;
    for (std::size_t at = 0; (at = text.find("HKEY_CURRENT_USER", at)) != std::string::npos;) {
      text.replace(at, 17, std::string("HKEY_USERS\\") + sid);
    }
    return text;
  }();
  const std::string header = "Windows Registry Editor Version 5.00";
  const std::string regedit4 =
      "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\K]\r\n\"\xE4\"=hex(2):25,e4,00\r\n\r\n";
  for (const std::string& file :
       {utf16File(header + "\r\n" + body), header + "\r\n" + body, header + "\n" + lineFeeds,
        "\xEF\xBB\xBF" + header + "\r\n" + body, header + "\r\n" + bySid, regedit4}) {
    EXPECT_EQ(Loaded(file).written(), file);
  }
}

TEST(RegistryFileWriterTest, LinksAreNotWrittenAsCopies) {
  const std::string file = std::string(version5) + R"([HKEY_CURRENT_USER\Software\Classes]

[HKEY_CURRENT_USER\Software\Classes\.u]

[HKEY_LOCAL_MACHINE\SOFTWARE]

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes]

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node]

[HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\CLSID]

[HKEY_LOCAL_MACHINE\SYSTEM]

[HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001]

[HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001\A]

[HKEY_LOCAL_MACHINE\SYSTEM\Select]
"Current"=dword:00000001

)";
  EXPECT_EQ(Loaded(file).written(), file);
}

TEST(RegistryFileWriterTest, LongBytesAreBrokenIntoLinesLikeTheEditorsOwn) {
  std::string file = std::string(version5) + "[HKEY_LOCAL_MACHINE\\K]\n\"b\"=hex:00";
  for (int index = 1; index < 60; ++index) {
    file += ",00";
  }
  const std::string written = Loaded(file + "\n").written();
  std::istringstream lines(written);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 78U);
  }
  EXPECT_NE(written.find(",\\\n  00,"), std::string::npos);
  EXPECT_EQ(Loaded(written).value(keyPath, "b"), Loaded(file + "\n").value(keyPath, "b"));
}

// Bytes that no well-behaved program stores, of every type, and whether REGEDIT4 can hold them.
std::vector<std::string> malformedData() {
  using namespace std::string_literals;
  return {""s,
          "\0"s,
          "\0\0"s,
          "a"s,
          "a\0"s,
          "a\0\0"s,
          "a\0\0\0"s,
          "a\0b\0"s,
          "a\0b\0\0"s,
          "\0\0a\0"s,
          "\0\0\0\0"s,
          "a\0\0\0b\0\0\0"s,
          "\r\0\n\0\0\0"s,
          "\"\0\\\0\0\0"s,
          "\x00\xD8\0\0"s,
          "\xFF\xFF\0\0"s,
          "\x2D\x4E\0\0"s,
          "\x81\0\0\0"s,
          "\xE4\0\0\0"s,
          "123"s,
          "1234"s,
          "12345"s,
          std::string(200, '\xAB')};
}

TEST(RegistryFileWriterTest, EveryValueOfEveryTypeSurvivesEveryForm) {
  for (const Encoding encoding : {Encoding::Regedit4, Encoding::Utf16, Encoding::Utf8}) {
    for (DWORD type = 0; type <= 13; ++type) {
      Registry registry(64, sid);
      RegistryKey& key = registry.makeChild(registry.machineRoot(), u"K");
      int number = 0;
      for (const std::string& bytes : malformedData()) {
        const std::u16string name = utf16(std::to_string(number++));
        registry.setValue(key, name, type, std::as_bytes(std::span(bytes)));
      }
      std::ostringstream output;
      writeRegistryFile(output, registry, {.text = {.encoding = encoding}});
      Loaded again(output.str());
      RegistryKey* read = again.registry.find(keyPath);
      ASSERT_NE(read, nullptr);
      for (std::size_t index = 0; index < registry.values(key).size(); ++index) {
        const RegistryValue& before = *registry.values(key).at(index);
        const RegistryValue* after = again.registry.values(*read).at(index);
        ASSERT_NE(after, nullptr);
        EXPECT_EQ(after->type, before.type);
        EXPECT_TRUE(std::ranges::equal(after->bytes(), before.bytes()))
            << "type " << type << ", value " << index;
      }
    }
  }
}

TEST(RegistryFileWriterTest, OddNamesSurvive) {
  Registry registry(64, sid);
  RegistryKey& key = registry.makeChild(registry.machineRoot(), u"K] [x");
  const std::u16string names[] = {u"@",
                                  u"quote\"",
                                  u"back\\slash",
                                  u"line\r\nbreak",
                                  u"\u4E2D",
                                  {u'n', u'u', u'l', u'\0'},
                                  {char16_t{0xD800}},
                                  u"a=b",
                                  u";"};
  for (const std::u16string& name : names) {
    registry.setValue(key, name, REG_SZ, {});
  }
  registry.makeChild(key, u" blanks ");
  for (const Encoding encoding : {Encoding::Regedit4, Encoding::Utf16, Encoding::Utf8}) {
    std::ostringstream output;
    writeRegistryFile(output, registry, {.text = {.encoding = encoding}});
    Loaded again(output.str());
    RegistryKey* read = again.registry.find(R"(HKEY_LOCAL_MACHINE\K] [x)");
    ASSERT_NE(read, nullptr);
    for (const std::u16string& name : names) {
      EXPECT_NE(again.registry.values(*read).find(name), nullptr);
    }
    EXPECT_NE(again.registry.child(*read, u" blanks "), nullptr);
  }
}

TEST(RegistryFileWriterTest, AFormThatCannotHoldTheContentGivesWayToUtf16) {
  Registry registry(64, sid);
  RegistryKey& key = registry.makeChild(registry.machineRoot(), u"K");
  const std::u16string text{u'\u4E2D', u'\0'};
  registry.setValue(key, u"a", REG_EXPAND_SZ, std::as_bytes(std::span(text)));
  std::ostringstream output;
  writeRegistryFile(output, registry, {.text = {.encoding = Encoding::Regedit4}});
  EXPECT_TRUE(output.str().starts_with("\xFF\xFE"));
}

TEST(RegistryFileWriterTest, AKeyWithALineBreakInItsNameCannotBeWritten) {
  Registry registry(64, sid);
  registry.makeChild(registry.machineRoot(), u"a\nb");
  std::ostringstream output;
  EXPECT_THROW(writeRegistryFile(output, registry, {}), machine::MachineError);
}

}  // namespace
}  // namespace zelvreg::fixture
