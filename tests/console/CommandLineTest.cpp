#include "console/CommandLine.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "form/Version.h"

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

TEST(CommandLine, ACheckOfALanguageFileNeedsNoComputer) {
  const Options options =
      parse({"languages", "check", "x.lang", "--charset", "238", "--json"}, false).options;
  EXPECT_EQ(options.command, Command::CheckLanguage);
  EXPECT_TRUE(needsNoComputer(options.command));
  EXPECT_EQ(options.languageFile, "x.lang");
  EXPECT_EQ(options.charset, 238);
  EXPECT_EQ(options.format, Format::Json);
  EXPECT_NE(complaint({"languages", "check"}, false), "(none)");
  EXPECT_NE(complaint({"languages", "check", "x.lang", "--charset", "256"}, false), "(none)");
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
  EXPECT_NE(line.find("\"fnot\" is not a category"), std::string::npos) << line;
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

TEST(CommandLine, WithoutACommandALineIsFollowedByAShortHelp) {
  try {
    parse({}, false);
    ADD_FAILURE();
  } catch (const UsageError& error) {
    EXPECT_TRUE(std::string_view(error.what()).starts_with("no command is given; try "));
    for (const char* text : {" scan\n", " fix\n", " undo list\n", "--help lists all commands"}) {
      EXPECT_NE(error.below.find(text), std::string::npos) << text;
    }
    EXPECT_LE(std::ranges::count(error.below, '\n'), 12);
  }
}

TEST(CommandLine, AMistypedNameIsAnsweredWithTheNearestOne) {
  for (const auto& [arguments, meant] :
       std::vector<std::pair<std::vector<const char*>, const char*>>{
           {{"scna"}, "there is no command \"scna\"; did you mean scan? See "},
           {{"undo", "lits"}, "there is no command \"lits\"; did you mean list? See "},
           {{"scan", "--quite"}, "there is no option --quite; did you mean --quiet? See "},
           {{"--colour=never", "scan"}, "there is no option --colour; did you mean --color? See "},
           {{"fix", "--nonsense"}, "there is no option --nonsense; see "},
           {{"scan", "more"}, "\"more\" is one argument too many; see "}}) {
    const std::string line = complaint(arguments);
    EXPECT_TRUE(line.starts_with(meant)) << line;
    EXPECT_NE(line.find(" --help"), std::string::npos) << line;
  }
  EXPECT_NE(complaint({"help", "undo", "lits"}).find("did you mean list? See "), std::string::npos);
}

TEST(CommandLine, AnOptionOfAnotherCommandIsToldFromAWrongOne) {
  // Images are scanned on Linux alone.
  EXPECT_TRUE(complaint({"--only", "fonts", "scan"})
                  .starts_with("--only is an option of scan, detect, fix"));
  EXPECT_EQ(complaint({"scan", "--dry-run"}),
            "--dry-run is an option of fix; give it behind that command");
}

TEST(CommandLine, ATextMayBeCalledLikeACommand) {
  EXPECT_EQ(parse({"search", "scan"}).options.search.text, "scan");
  EXPECT_EQ(parse({"exclude", "add", "fix"}).options.exclusion, "fix");
}

TEST(CommandLine, ColorIsAskedForAnywhere) {
  const auto asked = [](const std::vector<std::string>& arguments) {
    return colorAskedFor(arguments);
  };
  EXPECT_EQ(asked({"zelvreg", "scan"}), ColorUse::Auto);
  EXPECT_EQ(asked({"zelvreg", "--color", "never", "scan"}), ColorUse::Never);
  EXPECT_EQ(asked({"zelvreg", "scan", "--color=always"}), ColorUse::Always);
  EXPECT_EQ(asked({"zelvreg", "scan", "--color"}), ColorUse::Auto);
  EXPECT_EQ(asked({"zelvreg", "search", "--", "--color=always"}), ColorUse::Auto);
  EXPECT_NE(complaint({"scan", "--color", "pink"}), "(none)");
}

TEST(CommandLine, TheDoctorNeedsNoComputer) {
  EXPECT_EQ(parse({"doctor"}, false).options.command, Command::Doctor);
  EXPECT_EQ(parse({"doctor", "--json"}, false).options.format, Format::Json);
}

TEST(CommandLine, OptionsOfTheProgramMayFollowTheCommand) {
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
  EXPECT_EQ(searchRootNamed("my computer"), "My Computer");
}

TEST(CommandLine, AWrongRootOrModeIsRefusedWithThoseThatThereAre) {
  const std::string root = complaint({"search", "text", "--in", "HKXX"});
  EXPECT_NE(root.find("\"HKXX\" is not a root"), std::string::npos) << root;
  EXPECT_NE(root.find("all, HKCR, HKCU, HKLM, HKU, HKCC, or their long names"), std::string::npos)
      << root;
  // There is such a root, but it cannot be searched from here.
  EXPECT_THROW(searchRootNamed("HKEY_DYN_DATA"), UsageError);
  const std::string mode = complaint({"search", "text", "--mode", "middle"});
  EXPECT_NE(mode.find("\"middle\" is not a mode"), std::string::npos) << mode;
  EXPECT_NE(mode.find("exact"), std::string::npos) << mode;
  EXPECT_NE(complaint({"search"}), "(none)");
}

std::vector<std::string> choicesOf(const std::vector<const char*>& arguments) {
  std::vector<std::string> options;
  for (const SafeguardChoice& choice : parse(arguments).options.safeguardChoices) {
    options.emplace_back(choice.option);
  }
  return options;
}

TEST(CommandLine, EachCommandTakesTheSwitchesOfTheSafeguardsThatItMeets) {
  using Names = std::vector<std::string>;
  EXPECT_TRUE(choicesOf({"fix"}).empty());
  EXPECT_EQ(choicesOf({"fix", "--no-protect", "--no-backup", "--touch", "--ask-shares", "--all"}),
            (Names{"--no-protect", "--no-backup", "--touch", "--ask-shares", "--all"}));
  EXPECT_EQ(choicesOf({"scan", "--touch", "--provider", "service"}),
            (Names{"--touch", "--provider service"}));
  EXPECT_EQ(choicesOf({"search", "x", "--ask-shares"}), (Names{"--ask-shares"}));
  EXPECT_EQ(choicesOf({"undo", "restore", "1", "--journal"}), (Names{"--journal"}));
  EXPECT_EQ(choicesOf({"scan", "--as-described"}).size(), 7U);
  for (const char* option : {"--no-protect", "--no-backup", "--all", "--min-confidence"}) {
    EXPECT_NE(complaint({"scan", option}), "(none)") << option;
    EXPECT_NE(complaint({"search", "x", option}), "(none)") << option;
  }
  EXPECT_NE(complaint({"search", "x", "--provider", "service"}), "(none)");
  EXPECT_NE(complaint({"scan", "--provider", "other"}), "(none)");
}

TEST(CommandLine, AChoiceForOneComesBeforeTheChoiceForAll) {
  const auto choices =
      parse({"scan", "--as-described", "--provider", "direct"}).options.safeguardChoices;
  ASSERT_EQ(choices.size(), 8U);
  EXPECT_EQ(choices.front().safeguard, &Safeguards::asksService);
  EXPECT_FALSE(choices.front().value);
}

TEST(CommandLine, ARepairTakesWhatIsAtLeastAsSureAsAskedFor) {
  EXPECT_FALSE(parse({"fix"}).options.leastSure);
  for (const auto& [code, confidence] : {std::pair{"sure", Confidence::Sure},
                                         {"likely", Confidence::Likely},
                                         {"unsure", Confidence::Unsure}}) {
    EXPECT_EQ(parse({"fix", "--min-confidence", code}).options.leastSure, confidence);
  }
  EXPECT_NE(complaint({"fix", "--min-confidence", "maybe"}).find("{sure,likely,unsure}"),
            std::string::npos);
}

TEST(CommandLine, ToTakeUnsureFindingsIsAChoiceAgainstTheSafeguard) {
  EXPECT_TRUE(choicesOf({"fix", "--min-confidence", "sure"}).empty());
  EXPECT_TRUE(choicesOf({"fix", "--min-confidence", "likely"}).empty());
  const auto choices = parse({"fix", "--min-confidence", "unsure"}).options.safeguardChoices;
  ASSERT_EQ(choices.size(), 1U);
  EXPECT_EQ(choices[0].safeguard, &Safeguards::careful);
  EXPECT_FALSE(choices[0].value);
  EXPECT_STREQ(choices[0].option, "--min-confidence unsure");
}

TEST(CommandLine, AllAndOnlySomeContradictEachOther) {
  for (const char* code : {"sure", "likely"}) {
    EXPECT_EQ(complaint({"fix", "--all", "--min-confidence", code}),
              "--all takes every finding, and --min-confidence " + std::string(code) +
                  " does not; give one of them");
  }
  EXPECT_EQ(complaint({"fix", "--all", "--min-confidence", "unsure"}), "(none)");
  EXPECT_EQ(complaint({"fix", "--as-described", "--min-confidence", "sure"}), "(none)");
}

TEST(CommandLine, HowSureTheFindingsAreIsReportedOnlyInAReport) {
  for (const char* command : {"scan", "fix"}) {
    EXPECT_TRUE(parse({command, "--report", "x", "--report-evidence"}).options.reportsEvidence);
    EXPECT_FALSE(parse({command, "--report", "x"}).options.reportsEvidence);
    const std::string line = complaint({command, "--report-evidence"});
    EXPECT_NE(line.find("--report-evidence requires --report"), std::string::npos) << line;
  }
}

TEST(CommandLine, TheHelpNamesEachSwitch) {
  const std::string help = *parse({"fix", "--help"}, false).help;
  for (const char* option :
       {"--no-protect", "--no-backup", "--touch", "--ask-shares", "--provider", "--all",
        "--min-confidence", "--as-described", "--report-evidence", "--timeout"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
}

TEST(CommandLine, ATimeIsANumberOfSecondsAboveNothing) {
  EXPECT_FALSE(parse({"scan"}).options.deadline);
  for (const char* command : {"scan", "fix"}) {
    EXPECT_TRUE(parse({command, "--timeout", "1.5"}).options.deadline) << command;
  }
  EXPECT_TRUE(parse({"search", "x", "--timeout", "1e300"}).options.deadline);
  for (const char* time : {"0", "-1", "soon", "nan"}) {
    EXPECT_NE(complaint({"scan", "--timeout", time}), "(none)") << time;
  }
}

TEST(CommandLine, HelpIsGivenWithoutAComputer) {
  EXPECT_TRUE(parse({"--help"}, false).help.has_value());
  EXPECT_NE(parse({"scan", "--help"}, false).help->find("--only"), std::string::npos);
}

TEST(CommandLine, TheVersionIsGivenWithoutAComputer) {
  EXPECT_EQ(parse({"--version"}, false).help, std::string("zelvreg ") + programVersion() + "\n");
}

TEST(CommandLine, TextsOfAnyScriptComeInAsTheyWereTyped) {
  for (const char* text : {"サーバー", "C:\\Users\\Иван", "e\u0301", "\U0001F600"}) {
    EXPECT_EQ(parse({"exclude", "add", text}).options.exclusion, text);
    EXPECT_EQ(parse({"search", text}).options.search.text, text);
  }
}

TEST(CommandLine, BytesThatAreNoTextBecomeText) {
  EXPECT_EQ(parse({"exclude", "add", "a\xFF"}).options.exclusion, "a\uFFFD");
  EXPECT_EQ(parse({"search", "\xE3\x82"}).options.search.text, "\uFFFD\uFFFD");
}

}  // namespace
}  // namespace zelvreg::console
