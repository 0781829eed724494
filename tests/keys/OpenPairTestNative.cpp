// The classes of another user than the one who runs the process. Only on the emulated computer can
// anybody be that one, so that what the system merges can be compared.
#include "keys/OpenPair.h"

#include <gtest/gtest.h>

#include <array>

#include "keys/ActingUser.h"
#include "keys/Deletion.h"
#include "keys/DirectText.h"
#include "keys/OpenKey.h"
#include "keys/StdRegProv.h"
#include "keys/WideKey.h"
#include "machine/computer/MachineUser.h"
#include "registry/RegistryValues.h"
#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

class OpenPairTest : public fixture::MachineFixture {
 protected:
  static constexpr const char* other = "S-1-5-21-7-7-7-1005";
  static constexpr const char* server = R"(CLSID\{6B29FC40-CA47-1067-B31D-00DD010662DA})";

  void SetUp() override {
    const std::string computers = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\)";
    const std::string users = std::string(R"(HKEY_USERS\)") + other + R"(_Classes\)";
    key(computers + ".txt", "@=\"txtfile\"\n\"Both\"=\"computer's\"\n\"Only\"=\"computer's\"");
    key(computers + R"(.txt\OpenWithList\b.exe)");
    key(computers + R"(txtfile\shell\open\command)", R"(@="notepad")");
    key(computers + server, R"(@="computer's")");
    key(computers + server + R"(\InprocServer32)", R"(@="C:\\computers.dll")");
    key(computers + R"(Wow6432Node\CLSID\{32})", R"(@="computer's")");
    key(users + ".TXT", "\"both\"=\"user's\"\n\"Own\"=\"user's\"");
    key(users + R"(.txt\OpenWithList\A.exe)");
    key(users + R"(.txt\OpenWithList\c.exe)");
    key(users + server + R"(\TreatAs)", R"(@="user's")");
    key(users + R"(Wow6432Node\CLSID\{32}\ProgID)", R"(@="user's")");
    key(users + "ownfile", R"(@="user's")");
    key(std::string(R"(HKEY_USERS\)") + other);
    key(R"(HKEY_CURRENT_USER\Software\Classes\runs)", R"(@="who runs the process")");
    start();
  }
  ~OpenPairTest() override { setActingUser(std::nullopt); }

  // Makes the other user the current one for the system itself.
  void become() {
    const auto& users = computer().users();
    for (std::size_t index = 0; index < users.size(); ++index) {
      if (users[index].key == other) {
        computer().actAs(index);
      }
    }
  }

  // Makes the other user's classes stand in.
  static void standIn() {
    HKEY classes = nullptr;
    const std::u16string path = utf16(other) + u"_Classes";
    EXPECT_EQ(RegOpenKeyExW(HKEY_USERS, wideText(path), 0, KEY_ALL_ACCESS, &classes), 0);
    setActingUser(ActingUser{.sid = other, .key = other, .account = "User", .classes = classes});
  }

  using Lines = std::vector<std::string>;

  // All that the classes root shows, by the keys' full paths and by their subkeys.
  static void addExact(Lines& lines, const WideKey& key, const std::string& path) {
    const auto values = key.values();
    for (const WideValue& value : values.value()) {
      EXPECT_EQ(key.value(value.name)->data, value.data);
      EXPECT_EQ(key.presenceOf(value.name), Presence::Open);
      lines.push_back(path + "|" + utf8(value.name) + "=" + textOf(value));
    }
    const auto names = key.subkeys();
    for (const std::u16string& name : names.value()) {
      lines.push_back(path + "\\" + utf8(name));
      addExact(lines, WideKey::openBelow(key, name, KEY_READ), path + "\\" + utf8(name));
    }
  }
  static Lines exact() {
    Lines lines;
    addExact(lines, WideKey(HiveHandle::ClassesRoot, u"", KEY_READ), "");
    return lines;
  }

  // The same by the provider, as scans see it.
  static void addShown(Lines& lines, ProviderArchitecture view, const std::string& path) {
    const auto provider = makeDirectProvider(view);
    std::optional<std::vector<std::string>> names;
    std::vector<DWORD> types;
    provider->enumValues(HiveHandle::ClassesRoot, path, names, types, [] {});
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
      std::string text;
      provider->getStringValue(HiveHandle::ClassesRoot, path, name, text);
      lines.push_back(path + "|" + name + "=" + text);
    }
    const auto text = GetRegistryValue(HiveHandle::ClassesRoot, path, "", "");
    lines.push_back(path + "|=" + textOf(text.value));
    names.reset();
    provider->enumKey(HiveHandle::ClassesRoot, path, names);
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
      addShown(lines, view, path.empty() ? name : path + "\\" + name);
    }
  }
  static Lines shown(ProviderArchitecture view) {
    Lines lines;
    addShown(lines, view, "");
    return lines;
  }
};

TEST_F(OpenPairTest, TheyAreMergedAsTheSystemMergesThem) {
  become();
  const Lines expected = exact();
  const Lines expected64 = shown(ProviderArchitecture::Bits64);
  const Lines expected32 = shown(ProviderArchitecture::Bits32);
  computer().actAs(0);
  EXPECT_NE(exact(), expected);
  standIn();
  EXPECT_EQ(exact(), expected);
  EXPECT_EQ(shown(ProviderArchitecture::Bits64), expected64);
  EXPECT_EQ(shown(ProviderArchitecture::Bits32), expected32);
}

TEST_F(OpenPairTest, OnlyTheUsersAreDeletedAndWritten) {
  standIn();
  const std::string computers = "SOFTWARE\\Classes\\";
  EXPECT_EQ(fDeleteValue("HKCR", ".txt", "Only"), 0);
  EXPECT_EQ(fDeleteValue("HKCR", ".txt", "Both"), 0);
  fDeleteKey("HKCR", R"(txtfile\shell\open)", "command");
  DeleteRegistryTree(HiveHandle::ClassesRoot, server);
  SetRegistryValue(HiveHandle::ClassesRoot, "txtfile", "New", "text");
  SetRegistryValue(HiveHandle::ClassesRoot, "ownfile", "New", "text");
  const auto read = [](HiveHandle root, const std::string& key, const std::string& name) {
    std::string text;
    DWORD type = REG_NONE;
    readText(root, key, name, KEY_WOW64_64KEY, text, type);
    return text;
  };
  const auto textIn = [&](const std::string& key, const std::string& name) {
    return read(HiveHandle::LocalMachine, computers + key, name);
  };
  EXPECT_EQ(textIn(".txt", "Both"), "computer's");
  EXPECT_EQ(textIn(".txt", "Only"), "computer's");
  EXPECT_EQ(textIn("txtfile", "New"), "");
  EXPECT_EQ(textIn(R"(txtfile\shell\open\command)", ""), "notepad");
  EXPECT_EQ(textIn(server, ""), "computer's");
  EXPECT_EQ(read(HiveHandle::ClassesRoot, "ownfile", "New"), "text");
  EXPECT_EQ(read(HiveHandle::ClassesRoot, ".txt", "Both"), "computer's");
  EXPECT_FALSE(RegKeyExists(HiveHandle::Users, other + std::string("_Classes\\") + server));
}

TEST_F(OpenPairTest, WhoHasNoClassesSeesTheComputers) {
  setActingUser(ActingUser{.sid = other, .key = other, .account = "User", .classes = nullptr});
  EXPECT_TRUE(RegKeyExists(HiveHandle::ClassesRoot, "txtfile"));
  EXPECT_FALSE(RegKeyExists(HiveHandle::ClassesRoot, "ownfile"));
  EXPECT_FALSE(RegKeyExists(HiveHandle::ClassesRoot, "runs"));
  DeleteRegistryTree(HiveHandle::ClassesRoot, "txtfile");
  EXPECT_TRUE(RegKeyExists(HiveHandle::ClassesRoot, "txtfile"));
}

class RefusedPairTest : public OpenPairTest {
 protected:
  RefusedPairTest() {
    security(std::string(R"(HKEY_USERS\)") + other + R"(_Classes\.txt)", "D:P(A;;KA;;;SY)");
  }
};

TEST_F(RefusedPairTest, WhatIsRefusedHidesWhatItCovers) {
  standIn();
  EXPECT_EQ(WideKey(HiveHandle::ClassesRoot, u".txt", KEY_READ).presence(), Presence::Refused);
  EXPECT_EQ(WideKey(HiveHandle::ClassesRoot, u"nowhere", KEY_READ).presence(), Presence::Absent);
}

}  // namespace
}  // namespace zelvreg
