#include "regfile/Reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "unicode/Unicode.h"

namespace zelvreg::regfile {
namespace {

using namespace std::string_literals;

const std::string version5 = "Windows Registry Editor Version 5.00\r\n";

std::optional<std::u16string> decodeLetters(std::string_view narrow) {
  std::u16string wide;
  for (const char byte : narrow) {
    if (byte == '\x81') {
      return std::nullopt;
    }
    wide += byte == '\xE4' ? u'\x434' : static_cast<char16_t>(byte);
  }
  return wide;
}

// Writes the statements down, with the lines in which they begin. The bytes must outlive it.
class Listener : public Receiver {
 public:
  explicit Listener(std::string_view bytes, Nuls nuls = Nuls::Refused)
      : reader(bytes, decodeLetters, nuls) {}

  std::vector<std::string> listen() {
    fault = reader.read(*this);
    return heard;
  }
  // "LINE: what"; empty if all is well.
  std::string faultText() {
    listen();
    return fault ? std::to_string(fault->line) + ": " + fault->what : "";
  }

  Objection comment(std::u16string_view text) override { return hear("comment " + utf8(text)); }
  Objection makeKey(std::u16string_view path) override {
    return path == u"refused" ? "nobody wants it" : hear("key " + utf8(path));
  }
  Objection deleteKey(std::u16string_view path) override { return hear("no key " + utf8(path)); }
  Objection setValue(std::u16string_view name, std::uint32_t type,
                     std::span<const std::byte> data) override {
    std::string text = "value " + utf8(name) + " " + std::to_string(type);
    for (const std::byte byte : data) {
      text += " " + std::to_string(std::to_integer<int>(byte));
    }
    return hear(text);
  }
  Objection deleteValue(std::u16string_view name) override {
    return hear("no value " + utf8(name));
  }

  Objection hear(const std::string& what) {
    heard.push_back(std::to_string(reader.line()) + " " + what);
    return none;
  }

  Reader reader;
  std::vector<std::string> heard;
  std::optional<Fault> fault;
};

using Heard = std::vector<std::string>;

TEST(RegfileReader, GivesTheStatementsWithTheLinesInWhichTheyBegin) {
  EXPECT_EQ(Listener(version5 + "\r\n  ; note \t\r\n[K] \r\n\"a\r\nb\"=hex:1,\\\r\n 2 ; why\r\n"
                                "@ = dword:2\r\n[-K]\n\"c\"=-")
                .listen(),
            (Heard{"3 comment ; note", "4 key K", "5 value a\r\nb 3 1 2", "8 value  4 2 0 0 0",
                   "9 no key K", "10 no value c"}));
}

TEST(RegfileReader, TellsHowTheFileIsWritten) {
  const std::u16string wide = utf16(version5);
  const std::string wideFile =
      "\xFF\xFE" + std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
  using Encoding = Form::Encoding;
  const std::vector<std::pair<std::string, Form>> files{
      {wideFile, {Encoding::Utf16, true, true}},
      {version5, {Encoding::Utf8, false, true}},
      {"\xEF\xBB\xBF" + version5, {Encoding::Utf8, true, true}},
      {"REGEDIT4 \n", {Encoding::Regedit4, false, false}}};
  for (const auto& [file, form] : files) {
    Listener listener(file);
    EXPECT_EQ(listener.faultText(), "");
    EXPECT_TRUE(listener.reader.form() == form) << file;
  }
}

TEST(RegfileReader, Utf16IsReadFromAnyAddress) {
  const std::u16string text = utf16(version5 + "[\u4E2D]\r\n");
  std::vector<char> memory(3 + text.size() * 2);
  for (const std::size_t start : {0U, 1U}) {
    std::memcpy(memory.data() + start, "\xFF\xFE", 2);
    std::memcpy(memory.data() + start + 2, text.data(), text.size() * 2);
    EXPECT_EQ(Listener({memory.data() + start, 2 + text.size() * 2}).listen(),
              Heard{"2 key \u4E2D"});
  }
}

// Half of a unit may be the byte of a line feed.
TEST(RegfileReader, ALineOfUtf16EndsAtAWholeLineFeed) {
  const std::u16string text = utf16(version5) + u"[\x0A0D\x0D0A\x410A\x0A41]\n[K]";
  const std::string file =
      "\xFF\xFE" + std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
  EXPECT_EQ(Listener(file).listen(),
            (Heard{"2 key " + utf8(u"\x0A0D\x0D0A\x410A\x0A41"), "3 key K"}));
}

// What is quoted is read in the line itself, in blocks.
TEST(RegfileReader, AQuotedTextIsReadWhateverItsLengthAndWhereverABackslashStands) {
  for (std::size_t length = 0; length < 40; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      std::string name(length, 'n');
      const std::string plain = name + "x";
      name.insert(place, place % 2 == 0 ? R"(\\)" : R"(\")");
      std::string expected = plain;
      expected.insert(place, place % 2 == 0 ? "\\" : "\"");
      std::string bytes;
      for (const char letter : expected) {
        bytes += " " + std::to_string(static_cast<int>(letter)) + " 0";
      }
      const std::string quoted = "\"" + name + "x\"";
      ASSERT_EQ(Listener(version5 + quoted + "=" + quoted).listen(),
                Heard{"2 value " + expected + " 1" + bytes + " 0 0"});
    }
  }
}

TEST(RegfileReader, ANameOutlivesTheLinesThatItsDataTake) {
  const std::string file = version5 +
                           "[K]\n\"a\\\\name\"=hex:01,\\\n02,\\\n03\n\"b\nname\"=\"c\nd\"\n" +
                           "@=\"e\n\"\n\"f\"=hex(2):66,00,\\\n00,00\n";
  EXPECT_EQ(Listener(file).listen(),
            (Heard{"2 key K", "3 value a\\name 3 1 2 3", "6 value b\nname 1 99 0 10 0 100 0 0 0",
                   "9 value  1 101 0 10 0 0 0", "11 value f 2 102 0 0 0"}));
}

TEST(RegfileReader, BytesAreReadWithAnyNumberOfDigitsAndBlanks) {
  const std::string file = version5 + "\"a\"=hex:1,02, 3 ,0A,\\\n  0b,c,\\ \n\\\n0D , e\n";
  EXPECT_EQ(Listener(file).listen(), Heard{"2 value a 3 1 2 3 10 11 12 13 14"});
  for (const char* wrong : {"1,,2", "1,", "01,02,", "g1,02", "0g,02", "001,02", "01,02;3,"}) {
    const std::string line = version5 + "\"a\"=hex:" + wrong + "\n";
    EXPECT_EQ(Listener(line).listen().empty(), std::string_view(wrong) != "01,02;3,") << wrong;
  }
}

TEST(RegfileReader, TheTextOfTheOldFormIsNarrowInItsBytesToo) {
  Listener listener("REGEDIT4\n[\xE4]\n\"a\"=hex(2):e4,0\n\"b\"=hex:e4,0\n\"c\"=hex(7):81\n");
  EXPECT_EQ(listener.listen(),
            (Heard{"2 key \u0434", "3 value a 2 52 4 0 0", "4 value b 3 228 0"}));
  EXPECT_EQ(listener.fault->line, 5U);
  EXPECT_EQ(listener.fault->what, "the bytes are no text of the code page");
}

TEST(RegfileReader, TheKindOfDataMayBeWrittenInEitherCase) {
  const std::string bytes = version5 + "[K]\r\n\"a\"=DWORD:0000000A\r\n\"b\"=Hex(2):4a,00\r\n";
  EXPECT_EQ(Listener(bytes).listen(),
            (Heard{"2 key K", "3 value a 4 10 0 0 0", "4 value b 2 74 0"}));
}

TEST(RegfileReader, AnObjectionIsAFaultOfItsStatement) {
  const std::string file = version5 + "[K]\n[refused]\n[L]\n";
  Listener listener(file);
  EXPECT_EQ(listener.faultText(), "3: nobody wants it");
  EXPECT_EQ(listener.heard, Heard{"2 key K"});
}

TEST(RegfileReader, ANulBetweenQuotesIsTakenByThoseWhoAskForIt) {
  const std::string file = version5 + "[K]\n\"a\0b\"=\"\0\"\n"s;
  EXPECT_EQ(Listener(file).faultText(), "3: the text holds a NUL character");
  EXPECT_EQ(Listener(file, Nuls::Taken).listen(), (Heard{"2 key K", "3 value a\0b 1 0 0 0 0"s}));
}

// What breaks off is a fault of the line in which it begins, all else of the line where it stands.
TEST(RegfileReader, AFaultOfSeveralLinesNamesTheOneToMend) {
  const std::vector<std::pair<std::string, std::string>> faults{
      {"\"a\"=\"b\nc\n", "2: the text has no closing quote"},
      {"\"a\"=\"b\nc\\d\"",
       "3: a backslash stands alone; write \\\\ for a backslash and \\\" for a quote"},
      {"\"a\"=hex:1,\\\n2,\\", "2: the bytes break off; a line must follow the backslash"},
      {"\"a\"=hex:1,\\\n2,\\\n", "2: the bytes break off; a line must follow the backslash"},
      {"\"a\"=hex:1,\\\nx", "3: a byte is missing or wrong; write two hexadecimal digits"},
      {"\"a\"=\"b\n\xE4\"", "3: a character is not valid in the file's encoding"},
      {"\"a\"=word:1",
       "2: the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -"},
      {"\"a\"=hex: zz", "2: a byte is missing or wrong; write two hexadecimal digits"}};
  for (const auto& [lines, fault] : faults) {
    EXPECT_EQ(Listener(version5 + lines).faultText(), fault) << lines;
  }
}

TEST(RegfileReader, AFileOfAnotherFormIsRefused) {
  const std::string header =
      "1: this is no registry file; it must begin with \"Windows Registry Editor Version 5.00\" or "
      "\"REGEDIT4\"";
  const std::u16string old = u"REGEDIT4\r\n";
  const std::string wideOld(reinterpret_cast<const char*>(old.data()), old.size() * 2);
  for (const std::string& file :
       {""s, "\xEF\xBB\xBFREGEDIT4\r\n"s, "\xFF\xFE" + wideOld, "REGEDIT42\r\n"s}) {
    EXPECT_EQ(Listener(file).faultText(), header) << file;
  }
  EXPECT_EQ(Listener("\xFE\xFF\0W"s).faultText(),
            "1: the file is UTF-16 with the high byte first; save it as UTF-16LE or as UTF-8");
  EXPECT_EQ(Listener("\xFF\xFEW\0\n\0x"s).faultText(), "2: the file ends in half a character");
}

TEST(RegfileReader, AListOfBytesIsReadWholeOrNotAtAll) {
  std::vector<std::byte> bytes;
  EXPECT_TRUE(readByteList(u"0,Ab,ff", bytes));
  EXPECT_EQ(bytes, (std::vector{std::byte{0}, std::byte{0xAB}, std::byte{0xFF}}));
  for (const char16_t* text : {u"", u"1,", u",1", u"1 2", u"123", u"1,x", u"1, 2"}) {
    EXPECT_FALSE(readByteList(text, bytes)) << utf8(text);
  }
}

}  // namespace
}  // namespace zelvreg::regfile
