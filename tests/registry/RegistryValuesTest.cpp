#include "registry/RegistryValues.h"

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string place = "SOFTWARE\\ValuesTest";
const std::string key64 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\ValuesTest";
const std::string key32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\ValuesTest";
const std::string iniFile = "C:\\ValuesTest\\settings.ini";

class RegistryValuesTest : public fixture::ComputerFixture {
 protected:
  RegistryValuesTest() {
    emptyKey(key64);
    emptyKey(key32);
  }

  static ReadResult get(const std::string& name, Variant fallback = {}) {
    return GetRegistryValue(HiveHandle::LocalMachine, place, name, std::move(fallback));
  }
};

TEST_F(RegistryValuesTest, AMissingKeyGivesTheFallbackAndRaisesNothing) {
  const auto read = GetRegistryValue(HiveHandle::LocalMachine, place + "\\None", "", "fallback");
  EXPECT_EQ(read.value, Variant("fallback"));
  EXPECT_FALSE(read.error.has_value());
}

TEST_F(RegistryValuesTest, AMissingValueGivesTheFallbackAndRaisesAFault) {
  const auto read = get("None", "fallback");
  EXPECT_EQ(read.value, Variant("fallback"));
  ASSERT_TRUE(read.error.has_value());
  EXPECT_EQ(read.error->number, 1001);
  EXPECT_EQ(read.error->text, "Unsupported value type");
}

TEST_F(RegistryValuesTest, ATextLosesOneCharacterAndKeepsItsVariables) {
  setText(key64, "Text", "abc");
  setText(key64, "Expand", "%windir%", REG_EXPAND_SZ);
  setBytes(key64, "Unterminated", REG_SZ, "abc");
  EXPECT_EQ(get("Text").value, Variant("abc"));
  EXPECT_EQ(get("Expand").value, Variant("%windir%"));
  EXPECT_EQ(get("Unterminated").value, Variant("ab"));
}

TEST_F(RegistryValuesTest, ATextOfNothingButItsTerminatorIsEmpty) {
  setText(key64, "Empty", "");
  EXPECT_EQ(get("Empty").value, Variant(""));
}

TEST_F(RegistryValuesTest, ATextOfNoLengthIsEmpty) {
  setBytes(key64, "Nothing", REG_SZ, "");
  EXPECT_EQ(get("Nothing").value, Variant(""));
}

TEST_F(RegistryValuesTest, ALongTextIsReadWhole) {
  setText(key64, "Long", std::string(5000, 'x'));
  EXPECT_EQ(get("Long").value, Variant(std::string(5000, 'x')));
}

TEST_F(RegistryValuesTest, OtherTypesComeAsWhatTheyAre) {
  setBytes(key64, "Binary", REG_BINARY, std::string("\1\0\2", 3));
  setNumber(key64, "Number", 0xFFFFFFFF);
  setBytes(key64, "Multi", REG_MULTI_SZ, std::string("a\0b\0\0", 5));
  EXPECT_EQ(get("Binary").value, Variant(std::vector<BYTE>{1, 0, 2}));
  EXPECT_EQ(get("Number").value, Variant(std::int32_t{-1}));
  EXPECT_EQ(get("Multi").value, Variant(std::string("a\0b", 3)));
}

TEST_F(RegistryValuesTest, ATypeThatIsNotSupportedRaisesAFault) {
  setBytes(key64, "Quad", REG_QWORD, std::string(8, '\1'));
  EXPECT_TRUE(get("Quad").error.has_value());
}

TEST_F(RegistryValuesTest, TheTrueViewIsRead) {
  setText(key64, "View", "64");
  setText(key32, "View", "32");
  EXPECT_EQ(get("View").value, Variant("64"));
}

TEST_F(RegistryValuesTest, AValuePutIntoATextIsConverted) {
  EXPECT_EQ(textOf({}), "");
  EXPECT_EQ(textOf("text"), "text");
  EXPECT_EQ(textOf(std::int32_t{-1}), "-1");
  EXPECT_EQ(textOf(std::int16_t{7}), "7");
  EXPECT_EQ(textOf(true), "True");
  EXPECT_EQ(textOf(false), "False");
  EXPECT_EQ(textOf(std::vector<BYTE>{'h', 0, 'i', 0, 9}), "hi");
  EXPECT_EQ(textOf(std::vector<BYTE>{9}), "");
}

TEST_F(RegistryValuesTest, ATextIsWritten) {
  const auto write = SetRegistryValue(HiveHandle::LocalMachine, place, "Text", "abc");
  EXPECT_TRUE(write.isWritten);
  EXPECT_EQ(storedText(key32, "Text"), "abc");
}

TEST_F(RegistryValuesTest, ANumberIsWrittenAsTheCharactersOfItsDecimalText) {
  SetRegistryValue(HiveHandle::LocalMachine, place, "Long", std::int32_t{123456});
  SetRegistryValue(HiveHandle::LocalMachine, place, "Short", std::int16_t{7});
  EXPECT_EQ(bytesOf(key32, "Long"), "1234");
  EXPECT_EQ(bytesOf(key32, "Short"), std::string("7\0\0\0", 4));
}

TEST_F(RegistryValuesTest, BytesAreWrittenAsTheDecimalTextOfTheFirst) {
  SetRegistryValue(HiveHandle::LocalMachine, place, "Bytes", std::vector<BYTE>{200, 1, 2, 3, 4});
  SetRegistryValue(HiveHandle::LocalMachine, place, "Two", std::vector<BYTE>{200, 1});
  EXPECT_EQ(bytesOf(key32, "Bytes"), std::string("200\0\0", 5));
  EXPECT_EQ(bytesOf(key32, "Two"), "20");
}

TEST_F(RegistryValuesTest, OtherTypesAreNotWrittenAndRaiseAFault) {
  const auto write = SetRegistryValue(HiveHandle::LocalMachine, place, "Flag", true);
  EXPECT_FALSE(write.isWritten);
  EXPECT_TRUE(write.error.has_value());
  EXPECT_EQ(bytesOf(key32, "Flag"), "(none)");
}

TEST_F(RegistryValuesTest, WritingNeedsAnExistingKey) {
  EXPECT_FALSE(
      SetRegistryValue(HiveHandle::LocalMachine, place + "\\None", "Text", "abc").isWritten);
}

TEST_F(RegistryValuesTest, AKeyExistsInTheTrueView) {
  makeKey(key64 + "\\Only64");
  EXPECT_TRUE(RegKeyExists(HiveHandle::LocalMachine, place + "\\Only64"));
  makeKey(key32 + "\\Only32");
  EXPECT_FALSE(RegKeyExists(HiveHandle::LocalMachine, place + "\\Only32"));
  EXPECT_FALSE(RegKeyExists(HiveHandle::Unknown, place));
}

class ReadValueTest : public RegistryValuesTest {
 protected:
  Variant read(const std::string& name, const std::string& kind, const std::string& hive = "HKLM",
               const std::string& section = place) {
    Variant result;
    fReadValue(hive, section, name, kind, "fallback", result, rc);
    return result;
  }
  LONG rc = -1;
};

TEST_F(ReadValueTest, ReadsTextNumberAndBooleanInThe32BitView) {
  setText(key64, "Text", "64");
  setText(key32, "Text", "32");
  setNumber(key32, "Number", 5);
  setBytes(key32, "Flag", REG_BINARY, "\1");
  EXPECT_EQ(read("Text", "s"), Variant("32"));
  EXPECT_EQ(read("Number", "D"), Variant(std::int32_t{5}));
  EXPECT_EQ(read("Flag", "b"), Variant(true));
  EXPECT_EQ(rc, 0);
}

TEST_F(ReadValueTest, GivesTheFallbackWithTheCodeOfWhatFailed) {
  EXPECT_EQ(read("None", "S"), Variant("fallback"));
  EXPECT_EQ(rc, 2);
  EXPECT_EQ(read("Text", "S", "HKLM", place + "\\None"), Variant("fallback"));
  EXPECT_EQ(rc, 2);
  EXPECT_EQ(read("Text", "S", "HKCC"), Variant("fallback"));
  EXPECT_EQ(rc, 99);
}

TEST_F(ReadValueTest, ABooleanOfMoreThanTwoBytesIsNotRead) {
  setBytes(key32, "Flags", REG_BINARY, "\1\1\1");
  EXPECT_EQ(read("Flags", "B"), Variant("fallback"));
  EXPECT_EQ(rc, ERROR_MORE_DATA);
}

TEST_F(ReadValueTest, AnEmptyTextLeavesTheFallback) {
  setBytes(key32, "Nothing", REG_SZ, "");
  EXPECT_EQ(read("Nothing", "S"), Variant("fallback"));
  EXPECT_EQ(rc, 0);
}

TEST_F(ReadValueTest, AnUnknownKindLeavesTheFallback) {
  setText(key32, "Text", "32");
  EXPECT_EQ(read("Text", "X"), Variant("fallback"));
  EXPECT_EQ(rc, 0);
}

TEST_F(ReadValueTest, ReadsFromAnIniFile) {
  makeFile(iniFile, "[Section]\r\nText=some text\r\nNumber=12\r\n");
  EXPECT_EQ(read("Text", "S", iniFile, "Section"), Variant("some text"));
  EXPECT_EQ(rc, 0);
  EXPECT_EQ(read("None", "S", iniFile, "Section"), Variant("fallback"));
  EXPECT_EQ(read("Number", "D", iniFile, "Section"), Variant("fallback"));
  EXPECT_EQ(rc, 12);
}

}  // namespace
}  // namespace zelvreg
