// What saving an offline disk writes into its hives, read again with libhivex.
#include <gtest/gtest.h>
#include <windows.h>

#include "machine/OfflineDiskFixture.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;

constexpr const char* vendor = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)";

class OfflineSaveTest : public OfflineDiskTest {
 protected:
  void SetUp() override {
    {
      HiveBuilder machine = hive(software);
      machine.text("Vendor", "", "default");
      machine.text("Vendor", "old", "text");
      machine.number("Vendor", "number", 7);
      machine.value("Vendor", "strange", 0x12345, "\0\1odd"s);
      machine.value("Vendor", "\xC3\x84rger", 3, "");
      machine.text(R"(Vendor\Product\Deep)", "x", "y");
      machine.text(R"(Vendor\Other\Deep)", "x", "y");
      machine.key(R"(Classes\.txt)");
      machine.key(R"(Classes\Wow6432Node\CLSID)");
      machine.key(R"(Wow6432Node\Vendor)");
      HiveBuilder control = hive(system);
      control.number("Select", "Current", 1);
      control.key(R"(ControlSet001\Services\One)");
      hive(anna).text(R"(Software\Vendor)", "user", "anna");
      hive(annasClasses).text(".doc", "", "class");
    }
    disk.makeFolder("Windows/SysWOW64");
    open();
    for (const char* file : {software, system, anna, annasClasses}) {
      before[file] = content(file);
    }
  }

  // What is other in a hive now.
  Lines changes(const char* file) { return differences(before[file], content(file)); }

  // The value of a key in a hive, as HiveContent has it.
  std::string valueIn(const char* file, const std::string& name) { return content(file)[name]; }

  std::map<std::string, HiveContent> before;
};

TEST_F(OfflineSaveTest, WithoutAChangeNothingIsWritten) {
  const auto files = allFiles();
  static_cast<void>(registry().count());
  computer->save();
  registry().makeChild(key(vendor), u"passing");
  registry().erase(key(std::string(vendor) + R"(\passing)"));
  setValue(vendor, u"number", REG_DWORD, "\1\0\0\0"s);
  setValue(vendor, u"number", REG_DWORD, "\7\0\0\0"s);
  computer->save();
  EXPECT_TRUE(allFiles() == files);
  EXPECT_TRUE(computer->unsavedChanges().empty());
}

TEST_F(OfflineSaveTest, ADeletedValueGoesAndAllElseStays) {
  EXPECT_TRUE(registry().eraseValue(key(vendor), u"OLD"));
  computer->save();
  EXPECT_EQ(changes(software), Lines{R"(-\Vendor|old)"});
  EXPECT_EQ(changes(system), Lines{});
}

TEST_F(OfflineSaveTest, TheLastValueOfAKeyCanGo) {
  EXPECT_TRUE(registry().eraseValue(key(std::string(vendor) + R"(\Product\Deep)"), u"x"));
  computer->save();
  EXPECT_EQ(changes(software), Lines{R"(-\Vendor\Product\Deep|x)"});
}

TEST_F(OfflineSaveTest, ADeletedKeyTakesWhatWasNeverReadWithIt) {
  registry().erase(key(std::string(vendor) + R"(\Product)"));
  computer->save();
  EXPECT_EQ(changes(software), (Lines{R"(-\Vendor\Product)", R"(-\Vendor\Product\Deep)",
                                      R"(-\Vendor\Product\Deep|x)"}));
}

TEST_F(OfflineSaveTest, AKeyDeletedAfterItsSubkeysGoesToo) {
  registry().erase(key(std::string(vendor) + R"(\Product\Deep)"));
  registry().erase(key(std::string(vendor) + R"(\Product)"));
  registry().erase(key(std::string(vendor) + R"(\Other\Deep)"));
  computer->save();
  EXPECT_EQ(changes(software),
            (Lines{R"(-\Vendor\Product)", R"(-\Vendor\Product\Deep)", R"(-\Vendor\Product\Deep|x)",
                   R"(-\Vendor\Other\Deep)", R"(-\Vendor\Other\Deep|x)"}));
}

TEST_F(OfflineSaveTest, AKeyThatIsMadeAgainHasOnlyItsNewContent) {
  registry().erase(key(std::string(vendor) + R"(\Product)"));
  registry().makeChild(registry().makeChild(key(vendor), u"PRODUCT"), u"New");
  computer->save();
  EXPECT_EQ(changes(software),
            (Lines{R"(-\Vendor\Product)", R"(-\Vendor\Product\Deep)", R"(-\Vendor\Product\Deep|x)",
                   R"(+\Vendor\PRODUCT)", R"(+\Vendor\PRODUCT\New)"}));
}

TEST_F(OfflineSaveTest, ChangedValuesKeepTheOthersOfTheirKeyAsTheyWere) {
  setValue(vendor, u"NUMBER", REG_DWORD, "\1\2\3\4");
  setValue(vendor, u"", REG_SZ, "d\0"s);
  setValue(vendor, u"added", REG_BINARY, "new");
  computer->save();
  EXPECT_EQ(changes(software), (Lines{R"(*\Vendor|)", R"(*\Vendor|number)", R"(+\Vendor|added)"}));
  EXPECT_EQ(valueIn(software, R"(\Vendor|number)"), "4:\1\2\3\4");
  EXPECT_EQ(valueIn(software, R"(\Vendor|)"), "1:d\0"s);
}

TEST_F(OfflineSaveTest, NewKeysHoldEveryKindOfValueAsItIs) {
  machine::RegistryKey& made = registry().makeChild(key(vendor), u"Made");
  registry().makeChild(registry().makeChild(made, u"\u00C4\u0416\u4E2D"), u"leer");
  const std::string path = std::string(vendor) + R"(\Made)";
  const std::map<std::u16string, std::pair<DWORD, std::string>> values{
      {u"", {REG_SZ, "d\0e\0f\0\0\0"s}},
      {u"none", {REG_NONE, ""}},
      {u"empty", {REG_SZ, ""}},
      {u"no terminator", {REG_SZ, "a\0b\0"s}},
      {u"odd", {REG_EXPAND_SZ, "a\0b"s}},
      {u"inner zero", {REG_MULTI_SZ, "a\0\0\0b\0\0\0\0\0"s}},
      {u"dword", {REG_DWORD, "\1\2\3\4"}},
      {u"short dword", {REG_DWORD, "\1"}},
      {u"big endian", {REG_DWORD_BIG_ENDIAN, "\1\2\3\4"}},
      {u"link", {REG_LINK, "x\0"s}},
      {u"list", {8, std::string(17, '\0')}},
      {u"qword", {11, "12345678"}},
      {u"any type", {0xFFFF0012, "\xFF\xFE"}},
      {u"large", {REG_BINARY, std::string(20'000, 'x') + "end"}},
      {u"\u00E4\u00FF", {REG_BINARY, "latin"}},
      {u"\u0416\u4E2D\U0001F600", {REG_BINARY, "wide"}},
      {std::u16string(300, u'n'), {REG_BINARY, "long name"}},
  };
  for (const auto& [name, value] : values) {
    setValue(path, name, value.first, value.second);
  }
  computer->save();
  open();
  const machine::ValueList& read = registry().values(key(path));
  ASSERT_EQ(read.size(), values.size());
  for (const auto& [name, value] : values) {
    const machine::RegistryValue* found = read.find(name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->name(), name);
    EXPECT_EQ(found->type, value.first);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(found->data), found->dataSize),
              value.second);
  }
  EXPECT_EQ(changes(software).size(), 3 + values.size());
  EXPECT_TRUE(content(software).contains("\\Vendor\\Made\\\xC3\x84\xD0\x96\xE4\xB8\xAD\\leer"));
}

TEST_F(OfflineSaveTest, ChangesGoThroughLinksIntoTheHiveThatHasTheKey) {
  registry().makeChild(key(R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services)"), u"Two");
  registry().makeChild(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Classes\CLSID)"), u"{1}");
  setValue(R"(HKEY_CLASSES_ROOT\.doc)", u"a", REG_BINARY, "a");
  registry().makeChild(key(R"(HKEY_CURRENT_USER\Software\Classes)"), u".new");
  setValue(R"(HKEY_CLASSES_ROOT\.txt)", u"b", REG_BINARY, "b");
  setValue(R"(HKEY_CURRENT_USER\Software\Vendor)", u"c", REG_BINARY, "c");
  computer->save();
  EXPECT_EQ(changes(system), Lines{R"(+\ControlSet001\Services\Two)"});
  EXPECT_EQ(changes(software),
            (Lines{R"(+\Classes\Wow6432Node\CLSID\{1})", R"(+\Classes\.txt|b)"}));
  EXPECT_EQ(changes(annasClasses), (Lines{R"(+\.doc|a)", R"(+\.new)"}));
  EXPECT_EQ(changes(anna), Lines{R"(+\Software\Vendor|c)"});
  EXPECT_TRUE(computer->unsavedChanges().empty());
}

TEST_F(OfflineSaveTest, TheCallsOf32BitProgramsReachTheirKeysToo) {
  const machine::Running running(*computer);
  HKEY made = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, u"Software\\Vendor\\Of32", 0, nullptr, 0,
                            KEY_ALL_ACCESS, nullptr, &made, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(made);
  computer->save();
  EXPECT_EQ(changes(software), Lines{R"(+\Wow6432Node\Vendor\Of32)"});
}

TEST_F(OfflineSaveTest, WhatAHiveHoldsBehindABuiltInLinkStays) {
  computer.reset();
  hive(anna).text(R"(Software\Classes\.hidden)", "", "old");
  open();
  EXPECT_EQ(registry().find(R"(HKEY_CURRENT_USER\Software\Classes\.hidden)"), nullptr);
  registry().makeChild(key(R"(HKEY_CURRENT_USER\Software)"), u"New");
  computer->save();
  const HiveContent after = content(anna);
  EXPECT_TRUE(after.contains(R"(\Software\New)"));
  EXPECT_TRUE(after.contains(R"(\Software\Classes\.hidden|)"));
}

TEST_F(OfflineSaveTest, SavingTwiceWritesOnceAndLaterChangesAreWrittenAgain) {
  registry().makeChild(key(vendor), u"Made");
  computer->save();
  const auto files = allFiles();
  computer->save();
  EXPECT_TRUE(allFiles() == files);
  registry().makeChild(key(std::string(vendor) + R"(\Made)"), u"Below");
  setValue(std::string(vendor) + R"(\Made)", u"x", REG_BINARY, "x");
  registry().erase(key(std::string(vendor) + R"(\Other)"));
  computer->save();
  EXPECT_TRUE(disk.read(software + ".bak"s) == files.at(software));
  EXPECT_EQ(changes(software),
            (Lines{R"(+\Vendor\Made)", R"(+\Vendor\Made\Below)", R"(+\Vendor\Made|x)",
                   R"(-\Vendor\Other)", R"(-\Vendor\Other\Deep)", R"(-\Vendor\Other\Deep|x)"}));
}

TEST_F(OfflineSaveTest, ANewKeyThatWasSavedCanBeDeletedAgain) {
  registry().makeChild(registry().makeChild(key(vendor), u"Made"), u"Below");
  computer->save();
  registry().erase(key(std::string(vendor) + R"(\Made)"));
  computer->save();
  EXPECT_EQ(changes(software), Lines{});
}

TEST_F(OfflineSaveTest, ANameThatNoHiveCanHoldIsRefusedBeforeAnythingIsWritten) {
  const auto files = allFiles();
  setValue(R"(HKEY_CURRENT_USER\Software\Vendor)", u"fine", REG_BINARY, "");
  for (const std::u16string& name : {u"a\0b"s, u"half \xD83D pair"s}) {
    setValue(vendor, name, REG_BINARY, "");
    const std::string line = refusal();
    EXPECT_NE(line.find(std::string(vendor) + ": the name"), std::string::npos) << line;
    EXPECT_TRUE(allFiles() == files);
    registry().eraseValue(key(vendor), name);
  }
  registry().makeChild(key(vendor), u"\xDC00");
  EXPECT_NE(refusal().find("no proper Unicode"), std::string::npos);
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(OfflineSaveTest, WhatIsNamedByHalfOfACharacterStaysAsItIs) {
  computer.reset();
  {
    HiveBuilder machine = hive(software);
    machine.text("Vendor", "old", "text");
    machine.text("Vendor\\\u4E2D\u4E2D", "x", "y");
    machine.text("Vendor\\Odd", "\u8868\u8868", "y");
    machine.text("Vendor\\Odd", "x", "y");
  }
  std::string bytes = disk.read(software);
  bytes.replace(bytes.rfind("\x2D\x4E\x2D\x4E"), 4, std::string("\0\xD8x\0", 4));
  bytes.replace(bytes.rfind("\x68\x88\x68\x88"), 4, std::string("\0\xDCx\0", 4));
  disk.write(software, bytes);
  const std::string oddKey = std::string(vendor) + "\\\xED\xA0\x80x";
  open();
  registry().erase(key(oddKey));
  EXPECT_NE(refusal().find("no proper Unicode text"), std::string::npos) << refusal();
  open();
  // The values of one key are written together.
  registry().eraseValue(key(std::string(vendor) + "\\Odd"), u"x");
  EXPECT_NE(refusal().find("cannot be read and would be lost"), std::string::npos) << refusal();
  EXPECT_TRUE(disk.read(software) == bytes);
  open();
  registry().eraseValue(key(vendor), u"old");
  computer->save();
  open();
  EXPECT_EQ(registry().values(key(vendor)).find(u"old"), nullptr);
  EXPECT_EQ(registry().values(key(oddKey)).size(), 1U);
  EXPECT_NE(registry().values(key(std::string(vendor) + "\\Odd")).find(u"\xDC00x"), nullptr);
}

TEST_F(OfflineSaveTest, AValueThatCannotBeReadIsNotLostForTheSakeOfAnother) {
  computer.reset();
  // Latin-1 knows no end of a name, libhivex ends it at the NUL.
  std::string bytes = disk.read(software);
  const std::size_t name = bytes.rfind("strange");
  ASSERT_NE(name, std::string::npos);
  bytes[name + 3] = '\0';
  disk.write(software, bytes);
  open();
  registry().eraseValue(key(vendor), u"old");
  EXPECT_NE(refusal().find("cannot be read and would be lost"), std::string::npos) << refusal();
  EXPECT_TRUE(disk.read(software) == bytes);
}

TEST_F(OfflineSaveTest, WhatHasNoHiveIsDroppedAndTold) {
  computer.reset();
  std::filesystem::remove(disk.path() / system);
  std::filesystem::remove(disk.path() / annasClasses);
  open();
  registry().makeChild(registry().makeChild(registry().machineRoot(), u"SYSTEM"), u"Select");
  registry().makeChild(registry().makeChild(key(R"(HKEY_CURRENT_USER\Software)"), u"Classes"),
                       u".x");
  registry().makeChild(key(vendor), u"Made");
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes)"));
  computer->save();
  ASSERT_EQ(computer->unsavedChanges().size(), 2U);
  EXPECT_TRUE(computer->unsavedChanges()[0].starts_with(R"(HKEY_LOCAL_MACHINE\SYSTEM: )"));
  EXPECT_NE(computer->unsavedChanges()[1].find("_Classes: "), std::string::npos);
  EXPECT_TRUE(content(software).contains(R"(\Vendor\Made)"));
  computer->save();
  EXPECT_TRUE(computer->unsavedChanges().empty());
}

TEST_F(OfflineSaveTest, AWholeHiveCannotBeDeletedButAllInIt) {
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Select)"));
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SYSTEM)"));
  computer->save();
  ASSERT_EQ(computer->unsavedChanges().size(), 1U);
  EXPECT_NE(computer->unsavedChanges()[0].find("whole hive"), std::string::npos);
  EXPECT_EQ(changes(system), (Lines{R"(-\Select)", R"(-\Select|Current)"}));
}

}  // namespace
}  // namespace zelvreg::fixture
