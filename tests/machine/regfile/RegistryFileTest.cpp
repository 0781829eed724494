#include "machine/regfile/RegistryFile.h"

#include <gtest/gtest.h>

#include <array>

#include "machine/base/MachineError.h"
#include "machine/regfile/LoadedRegistry.h"

namespace zelvreg::fixture {
namespace {

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
