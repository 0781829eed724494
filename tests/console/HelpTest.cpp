#include "console/Help.h"

#include <gtest/gtest.h>

#include "console/CommandLine.h"
#include "console/CompletionTable.h"
#include "console/DisplayText.h"
#include "scan/CategoryTable.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

std::string printed(std::vector<const char*> arguments, const HelpLayout& layout = {}) {
  arguments.insert(arguments.begin(), "zelvreg");
  return parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), layout)
      .help.value_or("(none)");
}

const std::vector<std::vector<const char*>> everyCommand{
    {},
    {"scan"},
    {"detect"},
    {"fix"},
    {"search"},
    {"undo"},
    {"undo", "list"},
    {"undo", "restore"},
    {"undo", "restore-export"},
    {"undo", "remove"},
    {"undo", "on"},
    {"undo", "off"},
    {"exclude"},
    {"exclude", "add"},
    {"languages"},
    {"languages", "use"},
    {"doctor"},
    {"completions"},
    {"help"},
    {"w4"},
    {"w4-c4"},
    {"r"},
    {"r-c"},
};

TEST(Help, NoLineIsLongerThanTheTerminalIsWide) {
  for (const std::size_t width : {60U, 80U, 120U}) {
    for (auto arguments : everyCommand) {
      arguments.push_back("--help");
      const std::string help = printed(arguments, {.width = width});
      for (const std::string_view line : split(help, "\n")) {
        // Examples of completions hold one long word.
        EXPECT_TRUE(displayWidth(line) <= width || trim(line).find(' ') == std::string_view::npos)
            << line;
      }
    }
  }
}

TEST(Help, HasItsCommandsAndOptionsInGroups) {
  const std::string help = printed({"--help"});
  std::size_t place = 0;
  for (const char* heading :
       {"\nUsage\n", "\nLook\n", "\nRepair\n", "\nUndo and exclusions\n",
        "\nLanguages and this installation\n", "\nModes that a suite starts\n",
        "\nQuestions and tables\n", "\nHelp\n", "\nExamples\n", "\nExit status\n", "\nMore\n"}) {
    const std::size_t found = help.find(heading);
    ASSERT_NE(found, std::string::npos) << heading << help;
    EXPECT_GT(found, place) << heading;
    place = found;
  }
  for (const char* mode : {"\n  w4 ", "\n  w4-c4 ", "\n  r ", "\n  r-c "}) {
    EXPECT_NE(help.find(mode), std::string::npos) << mode;
  }
}

TEST(Help, NamesWhatAnOptionTakes) {
  const std::string fix = printed({"fix", "--help"});
  for (const char* entry :
       {"--only NAMES", "--kinds CODES", "--max N", "--report FILE", "--timeout SECONDS",
        "--from RESULT.json", "--min-confidence sure|likely|unsure", "--provider direct|service"}) {
    EXPECT_NE(fix.find(entry), std::string::npos) << entry;
  }
  EXPECT_NE(printed({"search", "--help"}).find("search [OPTIONS] TEXT"), std::string::npos);
  EXPECT_NE(printed({"languages", "use", "--help"}).find("languages use TAG\n"), std::string::npos);
  EXPECT_NE(printed({"merge", "--help"}).find("merge [OPTIONS] RESULT..."), std::string::npos);
}

TEST(Help, OfACommandIsItsOwnHoweverItIsAskedFor) {
  const std::string restore = printed({"undo", "restore", "--help"});
  EXPECT_NE(restore.find("undo restore [OPTIONS] N"), std::string::npos) << restore;
  EXPECT_NE(restore.find("--journal"), std::string::npos);
  EXPECT_EQ(restore, printed({"help", "undo", "restore"}));
  EXPECT_EQ(printed({"help"}), printed({"--help"}));
  EXPECT_EQ(printed({"scan", "-h"}), printed({"help", "scan"}));
}

TEST(Help, HeadingsAreBoldWhereThereAreColors) {
  EXPECT_NE(printed({"--help"}, {.paint = Paint(true)}).find("\x1b[1mLook\x1b[0m"),
            std::string::npos);
  EXPECT_EQ(printed({"--help"}).find('\x1b'), std::string::npos);
}

TEST(Help, EachCommandHasAnExampleOrSaysWhereToReadOn) {
  for (auto arguments : everyCommand) {
    arguments.push_back("--help");
    const std::string help = printed(arguments);
    EXPECT_NE(help.find("\nMore\n"), std::string::npos) << help;
  }
}

TEST(Completions, OfferWhatTheParserKnows) {
  for (const char* shell : {"bash", "zsh", "fish"}) {
    const std::string script = printed({"completions", shell});
    for (const Category& category : categories()) {
      EXPECT_NE(script.find(std::string(category.optionName)), std::string::npos)
          << shell << category.optionName;
    }
    for (const char* word : {"restore-export", "w4-c4", "min-confidence", "likely", "always"}) {
      EXPECT_NE(script.find(word), std::string::npos) << shell << word;
    }
  }
}

TEST(Completions, APlaceholderIsANameOrAChoice) {
  EXPECT_EQ(offerFor("DIR")->kind, Offered::Folders);
  EXPECT_EQ(offerFor("FILE")->kind, Offered::Files);
  EXPECT_EQ(offerFor("NAMES")->words.size(), categories().size());
  EXPECT_EQ(offerFor("any|left")->words, (std::vector<std::string>{"any", "left"}));
  EXPECT_EQ(offerFor("NAME|all")->words, std::vector<std::string>{"all"});
  EXPECT_EQ(offerFor("all")->words, std::vector<std::string>{"all"});
  EXPECT_FALSE(offerFor("THING"));
  EXPECT_FALSE(offerFor(""));
}

TEST(Completions, NoPlaceholderIsUnknown) {
  CLI::App app("", "program");
  std::string text;
  app.add_option("--what", text)->type_name("THING");
  EXPECT_THROW(completionTable(app), std::logic_error);
}

}  // namespace
}  // namespace zelvreg::console
