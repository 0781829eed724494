#include "machine/regfile/RegistryFile.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>

#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {
namespace {

using machine::Registry;
using machine::RegistryFileForm;
using machine::RegistryKey;
using machine::RegistryValue;
using Encoding = regfile::Form::Encoding;

constexpr const char* sid = "S-1-5-21-1-1-1-1001";
constexpr const char* version5 = "Windows Registry Editor Version 5.00\n\n";

// A registry read from the bytes of a file.
struct Loaded {
  explicit Loaded(std::string_view bytes, int bits = 64) : registry(bits, sid) {
    const TemporaryFolder folder;
    folder.write("registry.reg", bytes);
    form = readRegistryFile(folder.path() / "registry.reg", registry);
  }

  // Type and bytes of a value, as "type:xx xx"; empty if it is not there.
  std::string value(std::string_view path, std::string_view name) {
    RegistryKey* key = registry.find(path);
    const RegistryValue* found = key == nullptr ? nullptr : registry.values(*key).find(utf16(name));
    if (found == nullptr) {
      return {};
    }
    std::ostringstream text;
    text << std::hex << found->type << ":";
    for (const std::byte byte : found->bytes()) {
      text << " " << std::to_integer<int>(byte);
    }
    return text.str();
  }

  std::string written() { return written(form); }
  std::string written(const RegistryFileForm& used) {
    std::ostringstream output;
    writeRegistryFile(output, registry, used);
    return output.str();
  }

  Registry registry;
  RegistryFileForm form;
};

std::string utf16File(std::string_view text) {
  const std::u16string wide = utf16(text);
  return "\xFF\xFE" + std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
}

constexpr const char* keyPath = R"(HKEY_LOCAL_MACHINE\K)";

TEST(RegistryFileTest, AWriteChangesNoOtherValueWithTheSameData) {
  Loaded loaded(std::string(version5) +
                "[HKEY_LOCAL_MACHINE\\K]\n\"a\"=hex:01,02\n\"b\"=hex:01,02\n");
  RegistryKey& key = *loaded.registry.find(keyPath);
  const std::array written{std::byte{3}, std::byte{4}};
  loaded.registry.setValue(key, u"a", REG_BINARY, written);
  EXPECT_EQ(loaded.value(keyPath, "a"), "3: 3 4");
  EXPECT_EQ(loaded.value(keyPath, "b"), "3: 1 2");
}

// Counted where the key lies, whichever link its path leads through.
TEST(RegistryFileTest, AKeyLiesAtMost512LevelsDeep) {
  const auto fileOf = [](std::string path, std::size_t names) {
    for (std::size_t name = 0; name < names; ++name) {
      path += "\\n";
    }
    return version5 + ("[" + path + "]\n[" + path + "\\last]\n");
  };
  // The user's classes lie one level below HKEY_USERS.
  for (const auto& [path, depth] : {std::pair("HKEY_LOCAL_MACHINE", 0),
                                    std::pair(R"(HKEY_CURRENT_USER\Software\Classes)", 1)}) {
    const std::size_t names = 511 - static_cast<std::size_t>(depth);
    EXPECT_NO_THROW(Loaded(fileOf(path, names))) << path;
    try {
      const Loaded tooDeep(fileOf(path, names + 1));
      ADD_FAILURE() << path;
    } catch (const machine::MachineError& error) {
      EXPECT_NE(std::string(error.what()).find("registry.reg:4: the key cannot be made"),
                std::string::npos)
          << error.what();
    }
  }
}

// In whatever order a file lists them; most list them sorted.
TEST(RegistryFileTest, SubkeysAreSortedHoweverTheFileListsThem) {
  Loaded loaded(std::string(version5) + R"([HKEY_LOCAL_MACHINE\K\b\x]
[HKEY_LOCAL_MACHINE\K\d]
[HKEY_LOCAL_MACHINE\K\c]
[HKEY_LOCAL_MACHINE\K\B\w]
[HKEY_LOCAL_MACHINE\k\D\y]
[HKEY_LOCAL_MACHINE\K\E]
)");
  EXPECT_NE(loaded.written().find(R"([HKEY_LOCAL_MACHINE\K\b]

[HKEY_LOCAL_MACHINE\K\b\w]

[HKEY_LOCAL_MACHINE\K\b\x]

[HKEY_LOCAL_MACHINE\K\c]

[HKEY_LOCAL_MACHINE\K\d]

[HKEY_LOCAL_MACHINE\K\d\y]

[HKEY_LOCAL_MACHINE\K\E]
)"),
            std::string::npos)
      << loaded.written();
}

TEST(RegistryFileTest, ReadsEveryKindOfValue) {
  Loaded loaded(std::string(version5) + R"([HKEY_LOCAL_MACHINE\K]
; a comment
@="default"
"text"="a\\b\"c"
"number"=dword:0000ABcd
"binary"=hex:01,02,\
  03
"none"=hex(0):
"expand"=hex(2):25,00,00,00
"multi"=hex(7):61,00,00,00,00,00
"quad"=hex(b):01,00,00,00,00,00,00,00
"odd type"=hex(12345):ff
  "indented" = dword:1 ; and a comment
)");
  EXPECT_EQ(loaded.value(keyPath, ""), "1: 64 0 65 0 66 0 61 0 75 0 6c 0 74 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "text"), "1: 61 0 5c 0 62 0 22 0 63 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "number"), "4: cd ab 0 0");
  EXPECT_EQ(loaded.value(keyPath, "binary"), "3: 1 2 3");
  EXPECT_EQ(loaded.value(keyPath, "none"), "0:");
  EXPECT_EQ(loaded.value(keyPath, "expand"), "2: 25 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "multi"), "7: 61 0 0 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "quad"), "b: 1 0 0 0 0 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "odd type"), "12345: ff");
  EXPECT_EQ(loaded.value(keyPath, "indented"), "4: 1 0 0 0");
  EXPECT_FALSE(loaded.registry.contentChanged());
}

TEST(RegistryFileTest, DeletionsTakeAwayWhatCameBefore) {
  Loaded loaded(std::string(version5) + R"([HKEY_LOCAL_MACHINE\K]
"a"="1"
"a"=-
"b"="2"
"never there"=-
[HKEY_LOCAL_MACHINE\Gone\Below]
[-HKEY_LOCAL_MACHINE\Gone]
[-HKEY_LOCAL_MACHINE\Never There]
)");
  EXPECT_EQ(loaded.value(keyPath, "a"), "");
  EXPECT_EQ(loaded.value(keyPath, "b"), "1: 32 0 0 0");
  EXPECT_EQ(loaded.registry.find(R"(HKEY_LOCAL_MACHINE\Gone)"), nullptr);
}

TEST(RegistryFileTest, InRegedit4TextIsInCodePage1252EvenInHexadecimal) {
  Loaded loaded(
      "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\K]\r\n\"\xE4\"=\"\x80\"\r\n"
      "\"expand\"=hex(2):e4,00\r\n\"multi\"=hex(7):61,00,00\r\n\"binary\"=hex:e4,00\r\n");
  EXPECT_EQ(loaded.form.text.encoding, Encoding::Regedit4);
  EXPECT_EQ(loaded.value(keyPath, "\xC3\xA4"), "1: ac 20 0 0");
  EXPECT_EQ(loaded.value(keyPath, "expand"), "2: e4 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "multi"), "7: 61 0 0 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "binary"), "3: e4 0");
}

TEST(RegistryFileTest, ATextMayHoldLineBreaks) {
  Loaded loaded(std::string(version5) +
                "[HKEY_LOCAL_MACHINE\\K]\n\"a\nb\"=\"c\nd\"\n\"e\"=\"f\"\n");
  EXPECT_EQ(loaded.value(keyPath, "a\nb"), "1: 63 0 a 0 64 0 0 0");
  EXPECT_EQ(loaded.value(keyPath, "e"), "1: 66 0 0 0");
}

TEST(RegistryFileTest, KeysOfTheClassesRootAreTheMachinesUnlessTheUserHasThem) {
  Loaded loaded(std::string(version5) + R"([HKEY_CURRENT_USER\Software\Classes\.u]
[HKEY_CLASSES_ROOT\.u]
@="user"
[HKEY_CLASSES_ROOT\.m]
@="machine"
)");
  EXPECT_NE(loaded.value(R"(HKEY_CURRENT_USER\Software\Classes\.u)", ""), "");
  EXPECT_NE(loaded.value(R"(HKEY_LOCAL_MACHINE\Software\Classes\.m)", ""), "");
  EXPECT_EQ(loaded.registry.find(R"(HKEY_LOCAL_MACHINE\Software\Classes\.u)"), nullptr);
}

TEST(RegistryFileTest, AFileIsWrittenBackInItsOwnForm) {
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

TEST(RegistryFileTest, LinksAreNotWrittenAsCopies) {
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

TEST(RegistryFileTest, LongBytesAreBrokenIntoLinesLikeTheEditorsOwn) {
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

TEST(RegistryFileTest, EveryValueOfEveryTypeSurvivesEveryForm) {
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

TEST(RegistryFileTest, OddNamesSurvive) {
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

TEST(RegistryFileTest, AFormThatCannotHoldTheContentGivesWayToUtf16) {
  Registry registry(64, sid);
  RegistryKey& key = registry.makeChild(registry.machineRoot(), u"K");
  const std::u16string text{u'\u4E2D', u'\0'};
  registry.setValue(key, u"a", REG_EXPAND_SZ, std::as_bytes(std::span(text)));
  std::ostringstream output;
  writeRegistryFile(output, registry, {.text = {.encoding = Encoding::Regedit4}});
  EXPECT_TRUE(output.str().starts_with("\xFF\xFE"));
}

TEST(RegistryFileTest, AKeyWithALineBreakInItsNameCannotBeWritten) {
  Registry registry(64, sid);
  registry.makeChild(registry.machineRoot(), u"a\nb");
  std::ostringstream output;
  EXPECT_THROW(writeRegistryFile(output, registry, {}), machine::MachineError);
}

struct Malformed {
  const char* lines;    // after the header and an empty line, so they begin in line 3
  const char* message;  // how the error begins
};

class MalformedRegistryFileTest : public ::testing::TestWithParam<Malformed> {};

TEST_P(MalformedRegistryFileTest, NamesTheLineAndWhatIsExpected) {
  try {
    const Loaded loaded(std::string(version5) + GetParam().lines);
    FAIL() << "it was read";
  } catch (const machine::MachineError& error) {
    const std::string message = error.what();
    EXPECT_EQ(message.substr(0, std::string_view(GetParam().message).size()), GetParam().message);
    EXPECT_NE(message.find("; "), std::string::npos) << "nothing is said to be expected";
    EXPECT_EQ(message.find('\n'), std::string::npos);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, MalformedRegistryFileTest,
    ::testing::Values(
        Malformed{"[HKLM\\K]", "registry.reg:3: \"HKLM\" is no root key"},
        Malformed{"[HKEY_PERFORMANCE_DATA\\K]", "registry.reg:3: \"HKEY_PERFORMANCE_DATA\""},
        Malformed{"[-HKCU\\K]", "registry.reg:3: \"HKCU\" is no root key"},
        Malformed{"[-HKEY_CURRENT_USER]", "registry.reg:3: a root key cannot be deleted"},
        Malformed{"[HKEY_LOCAL_MACHINE\\K", "registry.reg:3: the key is not closed"},
        Malformed{"[HKEY_LOCAL_MACHINE\\\\K]", "registry.reg:3: the path holds an empty name"},
        Malformed{"[HKEY_LOCAL_MACHINE\\K\\]", "registry.reg:3: the path holds an empty name"},
        Malformed{"\n\"a\"=\"b\"", "registry.reg:4: a value before the first key"},
        Malformed{"[-HKEY_USERS\\K]\n@=\"\"", "registry.reg:4: a value in a deleted key"},
        Malformed{"[HKEY_USERS\\K]\nwhat", "registry.reg:4: this is neither"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"", "registry.reg:4: there is no ="},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=", "registry.reg:4: the data are of no known kind"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=qword:1", "registry.reg:4: the data are of no known"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=\"b\nc\n", "registry.reg:4: the text has no closing"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=\"C:\\x\"", "registry.reg:4: a backslash stands alone"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=\"b\"c", "registry.reg:4: there is more after"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=dword:", "registry.reg:4: the number is not valid"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=dword:123456789", "registry.reg:4: the number is"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex(z):00", "registry.reg:4: the number is not valid"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex(2:00", "registry.reg:4: the type is not closed"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex:0g", "registry.reg:4: there is more after"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex:00,,01", "registry.reg:4: a byte is missing"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex:00,\\\n  zz", "registry.reg:5: a byte is missing"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex:00,\\", "registry.reg:4: the bytes break off"},
        Malformed{"[HKEY_USERS\\K]\n\"a\"=hex:00,\\01", "registry.reg:4: a backslash among"},
        Malformed{"[HKEY_USERS\\K]\n\"\xE4\"=\"\"", "registry.reg:4: a character is not valid"}));

TEST(RegistryFileHeaderTest, MustBeOneOfTheKnown) {
  const TemporaryFolder folder;
  for (const std::string& bytes :
       {std::string(), std::string("[HKEY_USERS]\n"), std::string("Regedit5\n"),
        utf16File("REGEDIT4\n"), std::string("\xFE\xFF\0W", 4), utf16File("Windows") + "x"}) {
    folder.write("registry.reg", bytes);
    Registry registry(64, sid);
    try {
      readRegistryFile(folder.path() / "registry.reg", registry);
      ADD_FAILURE() << "it was read";
    } catch (const machine::MachineError& error) {
      EXPECT_TRUE(std::string_view(error.what()).starts_with("registry.reg:1: ")) << error.what();
    }
  }
}

TEST(RegistryFileHeaderTest, TooLongNamesAreRefused) {
  const std::string longName(256, 'k');
  EXPECT_THROW(Loaded(version5 + ("[HKEY_USERS\\" + longName + "]\n")), machine::MachineError);
  EXPECT_THROW(Loaded(version5 + ("[HKEY_CLASSES_ROOT\\" + longName + "]\n")),
               machine::MachineError);
  EXPECT_THROW(Loaded(version5 + ("[HKEY_USERS\\K]\n\"" + std::string(16384, 'v') + "\"=\"\"\n")),
               machine::MachineError);
}

}  // namespace
}  // namespace zelvreg::fixture
