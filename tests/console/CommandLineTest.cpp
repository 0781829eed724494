#include "console/CommandLine.h"

#include <gtest/gtest.h>

namespace zelvreg::console {
namespace {

using Rows = std::set<std::size_t>;

#ifdef _WIN32
const std::vector<const char*> target;
#else
const std::vector<const char*> target{"--machine", "somewhere"};
#endif

ParsedCommandLine parse(const std::vector<const char*>& arguments, bool isTargetGiven = true) {
  std::vector<const char*> all{"zelvreg"};
  if (isTargetGiven) {
    all.insert(all.end(), target.begin(), target.end());
  }
  all.insert(all.end(), arguments.begin(), arguments.end());
  return parseCommandLine(static_cast<int>(all.size()), all.data());
}

std::string complaint(const std::vector<const char*>& arguments, bool isTargetGiven = true) {
  try {
    parse(arguments, isTargetGiven);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "(none)";
}

TEST(CommandLine, AScanTicksAllSixteenRowsUnlessSomeAreNamed) {
  EXPECT_EQ(parse({"scan"}).options.rows.size(), 16U);
  EXPECT_EQ(parse({"scan", "--only", "font,16"}).options.rows, (Rows{1, 16}));
}

TEST(CommandLine, ARowIsNamedByItsValueOrByItsWordInAnyCase) {
  EXPECT_EQ(rowsNamed("font, FONTS ,dlls,app-paths"), (Rows{1, 2, 3}));
  EXPECT_EQ(rowsNamed("8,user-classes"), (Rows{8}));
}

TEST(CommandLine, AnUnknownRowIsRefusedWithTheNamesThatThereAre) {
  const std::string line = complaint({"scan", "--only", "font,fnot"});
  EXPECT_NE(line.find("\"fnot\" is no category"), std::string::npos) << line;
  EXPECT_NE(line.find("mui-cache"), std::string::npos) << line;
  EXPECT_NE(complaint({"scan", "--only", ""}), "(none)");
  EXPECT_NE(complaint({"scan", "--only", "font,,dll"}), "(none)");
}

TEST(CommandLine, EveryComplaintIsOneLineThatSaysWhereToLook) {
  for (const auto& arguments : std::vector<std::vector<const char*>>{
           {}, {"scan", "--nonsense"}, {"nonsense"}, {"scan", "--json", "--csv"}}) {
    const std::string line = complaint(arguments);
    EXPECT_NE(line, "(none)");
    EXPECT_EQ(line.find('\n'), std::string::npos) << line;
  }
}

TEST(CommandLine, OptionsOfTheProgramMayStandBehindTheCommand) {
  EXPECT_TRUE(parse({"scan", "--yes", "--exit-zero", "--quiet"}).options.answersYes);
}

TEST(CommandLine, TheFormOfTheOutputIsChosen) {
  EXPECT_EQ(parse({"scan"}).options.format, Format::Tables);
  EXPECT_EQ(parse({"scan", "--json"}).options.format, Format::Json);
  EXPECT_EQ(parse({"scan", "--csv"}).options.format, Format::Csv);
}

TEST(CommandLine, LanguagesAreListedOrOneIsChosen) {
  EXPECT_EQ(parse({"languages"}).options.command, Command::ListLanguages);
  const Options use = parse({"languages", "use", "german"}).options;
  EXPECT_EQ(use.command, Command::UseLanguage);
  EXPECT_EQ(use.language, "german");
  EXPECT_NE(complaint({"languages", "use"}), "(none)");
}

TEST(CommandLine, ASearchGoesThroughTheDataOfAllRootsUnlessToldOtherwise) {
  const Options plain = parse({"search", "text"}).options;
  EXPECT_EQ(plain.command, Command::Search);
  EXPECT_EQ(plain.search.text, "text");
  EXPECT_EQ(plain.search.root, "My Computer");
  EXPECT_TRUE(plain.search.testsData);
  EXPECT_FALSE(plain.search.testsKeys || plain.search.testsValues || plain.search.matchesCase);
  EXPECT_EQ(plain.search.mode, SearchMode::Any);
  const Options told =
      parse({"search", "text", "--in", "hklm", "--keys", "--case", "--mode", "right", "--json"})
          .options;
  EXPECT_EQ(told.search.root, "HKEY_LOCAL_MACHINE");
  EXPECT_TRUE(told.search.testsKeys && told.search.matchesCase);
  EXPECT_FALSE(told.search.testsData || told.search.testsValues);
  EXPECT_EQ(told.search.mode, SearchMode::Right);
  EXPECT_EQ(told.format, Format::Json);
}

TEST(CommandLine, ARootIsNamedByItsLongOrItsShortNameInAnyCase) {
  EXPECT_EQ(searchRootNamed("HKEY_users"), "HKEY_USERS");
  EXPECT_EQ(searchRootNamed("hkcr"), "HKEY_CLASSES_ROOT");
  EXPECT_EQ(searchRootNamed("All"), "My Computer");
}

TEST(CommandLine, AWrongRootOrModeIsRefusedWithThoseThatThereAre) {
  const std::string root = complaint({"search", "text", "--in", "HKXX"});
  EXPECT_NE(root.find("\"HKXX\" is no root"), std::string::npos) << root;
  EXPECT_NE(root.find("HKLM"), std::string::npos) << root;
  const std::string mode = complaint({"search", "text", "--mode", "middle"});
  EXPECT_NE(mode.find("\"middle\" is no mode"), std::string::npos) << mode;
  EXPECT_NE(mode.find("exact"), std::string::npos) << mode;
  EXPECT_NE(complaint({"search"}), "(none)");
}

TEST(CommandLine, HelpIsGivenWithoutAComputer) {
  EXPECT_TRUE(parse({"--help"}, false).help.has_value());
  EXPECT_NE(parse({"scan", "--help"}, false).help->find("--only"), std::string::npos);
}

}  // namespace
}  // namespace zelvreg::console
