#include "machine/computer/MachineSettings.h"

#include <gtest/gtest.h>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {
namespace {

std::string refusalOf(std::string_view content) {
  try {
    parseMachineSettings(content);
  } catch (const MachineError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(MachineSettings, AreOfA64BitComputerWhenNothingIsSaid) {
  const MachineSettings settings = parseMachineSettings("");
  EXPECT_TRUE(settings.is64Bit);
  EXPECT_EQ(settings.codePage, 1252U);
  EXPECT_EQ(settings.user, "User");
  EXPECT_FALSE(settings.now);
  EXPECT_FALSE(settings.hasSuite);
  EXPECT_TRUE(settings.environment.empty());
}

TEST(MachineSettings, ReadsEverySetting) {
  const MachineSettings settings = parseMachineSettings(
      "\xEF\xBB\xBF; a comment\r\n[machine]\r\nbits = 32\r\ncodepage=932\r\nuser=J\xC3\xB6rg\r\n"
      "now=2026-01-31T13:45:06\r\nsuite=1\r\n\r\n[environment]\r\nTEMP = D:\\a=b\r\nEMPTY=\r\n");
  EXPECT_FALSE(settings.is64Bit);
  EXPECT_EQ(settings.codePage, 932U);
  EXPECT_EQ(settings.user, "J\xC3\xB6rg");
  EXPECT_EQ(settings.now->wYear, 2026);
  EXPECT_EQ(settings.now->wSecond, 6);
  EXPECT_TRUE(settings.hasSuite);
  const std::vector<std::pair<std::string, std::string>> expected{{"TEMP", "D:\\a=b"},
                                                                  {"EMPTY", ""}};
  EXPECT_EQ(settings.environment, expected);
}

TEST(MachineSettings, ReadsNamesOfEveryScript) {
  const MachineSettings settings = parseMachineSettings(
      "[machine]\nuser=\u0418\u0432\u0430\u043D\n[environment]\n\u30BD=C:"
      "\\\U0001F600\xED\xA0\x80\n");
  EXPECT_EQ(settings.user, "\u0418\u0432\u0430\u043D");
  EXPECT_EQ(settings.environment.front().second, "C:\\\U0001F600\xED\xA0\x80");
}

TEST(MachineSettings, RefusesAWrongLineWithItsNumberAndWhatToDo) {
  EXPECT_EQ(refusalOf("[machine]\nbits=16\n"),
            "machine.ini:2: bits=16 is not understood; write 64 or 32");
  EXPECT_EQ(refusalOf("[machine]\n\ncolor=red\n"),
            "machine.ini:3: there is no setting \"color\"; use bits, codepage, user, now or suite");
  EXPECT_EQ(refusalOf("[machine]\nuser=J\xF6rg\n"),
            "machine.ini:2: the line is not UTF-8; save the file as UTF-8");
  for (const char* content :
       {"bits=64\n", "[other]\n", "[machine]\nbits\n", "[machine]\n=1\n", "[machine]\ncodepage=1\n",
        "[machine]\ncodepage=x\n", "[machine]\nuser=\n", "[machine]\nuser=a\\b\n",
        "[machine]\nnow=2026-02-30T00:00:00\n", "[machine]\nnow=2026-01-31 13:45:06\n",
        "[machine]\nsuite=yes\n", "[environment]\nTEMP\n"}) {
    EXPECT_TRUE(refusalOf(content).starts_with("machine.ini:")) << content << refusalOf(content);
  }
}

}  // namespace
}  // namespace zelvreg::machine
