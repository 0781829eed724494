#include "evidence/SecondLook.h"

#include "evidence/Reasons.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string run = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
const std::string users = "HKEY_CURRENT_USER\\" + run;

class SecondLookTest : public fixture::ComputerFixture {
 protected:
  SecondLookTest() {
    emptyKey(users);
    makeFile("C:\\EvidenceTest\\there.exe");
    form.safeguards = {};
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message.text);
      return Answer::Ok;
    };
  }
  ~SecondLookTest() override { emptyKey(users); }

  void add(const std::string& name, const char* kind = "144") {
    ScannerRun counts;
    addRow(form, counts,
           {.location = "Startup programs",
            .badValue = name,
            .kindCode = kind,
            .rootName = "HKEY_CURRENT_USER",
            .subKey = run,
            .iconKey = ""});
  }
  void addProgram(const std::string& name, const std::string& command) {
    setText(users, name, command);
    add(name);
  }
  std::string reasonsOf(std::size_t row) { return reasonCodes(*evidenceOf(form, row)); }

  std::vector<std::string> messages;
};

TEST_F(SecondLookTest, EachRowHasItsEvidenceAlsoAfterOthersHaveLeft) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  addProgram("b", "C:\\EvidenceTest\\there.exe");
  EXPECT_EQ(evidenceOf(form, 1), nullptr);
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent");
  EXPECT_EQ(reasonsOf(2), "found");
  form.View2.remove(1);
  EXPECT_EQ(reasonsOf(1), "found");
  EXPECT_EQ(evidenceOf(form, 2), nullptr);
}

TEST_F(SecondLookTest, ChangesNoRow) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  const auto before = fixture::findingOf(form, 1);
  lookAgain(form);
  EXPECT_EQ(fixture::findingOf(form, 1), before);
  EXPECT_EQ(storedText(users, "a"), "C:\\EvidenceTest\\gone.exe");
}

TEST_F(SecondLookTest, TicksWhatIsAtLeastLikelyDead) {
  addProgram("sure", "C:\\EvidenceTest\\gone.exe");
  addProgram("likely", "evidencegone.exe");
  addProgram("unsure", "\\\\server\\x.exe");
  lookAgain(form);
  const auto ticks = [&] {
    tickByConfidence(form);
    return std::vector<bool>{form.View2.isChecked(1), form.View2.isChecked(2),
                             form.View2.isChecked(3)};
  };
  EXPECT_EQ(ticks(), (std::vector<bool>{true, true, false}));
  form.leastTicked = Confidence::Sure;
  EXPECT_EQ(ticks(), (std::vector<bool>{true, false, false}));
  form.leastTicked = Confidence::Unsure;
  EXPECT_EQ(ticks(), (std::vector<bool>{true, true, true}));
  form.leastTicked = Confidence::Sure;
  form.safeguards.careful = false;
  EXPECT_EQ(ticks(), (std::vector<bool>{true, true, true}));
}

TEST_F(SecondLookTest, ARowWithoutEvidenceIsUnsure) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  form.View2.setChecked(1, true);
  tickByConfidence(form);
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(SecondLookTest, AnEntryThatIsGoneByNowIsUnsure) {
  add("not there");
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "entry-gone");
}

TEST_F(SecondLookTest, ANumberNamesNoFile) {
  setNumber(users, "number", 7);
  add("number");
  setBytes(users, "bytes", REG_BINARY, "C:\\x.exe");
  add("bytes");
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "no-text");
  EXPECT_EQ(reasonsOf(2), "no-text");
}

TEST_F(SecondLookTest, ASharedLibraryIsInDoubtFromItsSecondUserOn) {
  const std::string key = "Software\\Microsoft\\windows\\currentversion\\SharedDlls";
  const std::string list = "HKEY_LOCAL_MACHINE\\" + key;
  emptyKey(list);
  const auto addLibrary = [&](const std::string& path) {
    ScannerRun counts;
    addRow(form, counts, {path, path, "2", "HKEY_LOCAL_MACHINE", key, ""});
  };
  setNumber(list, "C:\\EvidenceTest\\one.dll", 1);
  addLibrary("C:\\EvidenceTest\\one.dll");
  setNumber(list, "C:\\EvidenceTest\\two.dll", 2);
  addLibrary("C:\\EvidenceTest\\two.dll");
  setNumber(list, "C:\\EvidenceTest\\many.dll", 0x10000);
  addLibrary("C:\\EvidenceTest\\many.dll");
  // A count that was cut short is none.
  setBytes(list, "C:\\EvidenceTest\\short.dll", REG_DWORD, "\1");
  addLibrary("C:\\EvidenceTest\\short.dll");
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent");
  EXPECT_EQ(reasonsOf(2), "absent shared-count");
  EXPECT_EQ(reasonsOf(3), "absent shared-count");
  EXPECT_EQ(reasonsOf(4), "absent");
  emptyKey(list);
}

TEST_F(SecondLookTest, RowsWithoutAKindAreNotExamined) {
  ScannerRun counts;
  addRow(form, counts, {"C:\\x.dll", "", "", "", "", ""});
  add("a", "");
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "own-shadow-row");
  EXPECT_EQ(reasonsOf(2), "not-examined");
}

TEST_F(SecondLookTest, ARecordWithoutANameStandsForItsList) {
  const std::string list =
      "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\"
      "Uninstall";
  const auto look = [&] {
    form.View2.clear();
    ScannerRun counts;
    addRow(form, counts,
           {"x", "", "133", "HKEY_CURRENT_USER",
            "Software\\Microsoft\\windows\\currentversion\\Uninstall\\", ""});
    lookAgain(form);
    return reasonsOf(1);
  };
  removeKey(list);
  EXPECT_EQ(look(), "list-without-record");
  makeKey(list);
  EXPECT_EQ(look(), "record-without-name");
}

TEST_F(SecondLookTest, ACancelEndsTheLookButNotWhatItHasFound) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  addProgram("b", "C:\\EvidenceTest\\gone.exe");
  int served = 0;
  form.messages.serveHost = [&] {
    if (++served == 2) {
      form.Text2.setText("2");
    }
  };
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent");
  EXPECT_EQ(reasonsOf(2), "not-examined");
}

TEST_F(SecondLookTest, TheQueueIsServedWhileAllRowsAreWeighedTogetherUntilCancel) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  for (std::size_t row = 2; row <= 2 * mostUnservedRows; ++row) {
    add("a");
  }
  std::size_t served = 0;
  std::size_t cancelAt = 0;
  form.messages.serveHost = [&] {
    if (++served == cancelAt) {
      form.Text2.setText("2");
    }
  };
  lookAgain(form);
  EXPECT_GE(served, form.View2.count() + 2);
  served = 0;
  cancelAt = form.View2.count() + 1;
  lookAgain(form);
  EXPECT_EQ(served, form.View2.count() + 1);
}

TEST_F(SecondLookTest, MoreThanHalfOfManyIsImplausible) {
  for (int number = 0; number < 11; ++number) {
    addProgram("program " + std::to_string(number), "C:\\EvidenceTest\\gone.exe");
  }
  form.filesAskedIn[14] = 22;
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent");
  EXPECT_TRUE(messages.empty());
  form.filesAskedIn[14] = 21;
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent implausible");
  ASSERT_EQ(form.implausible.size(), 1U);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].find('\n'), std::string::npos);
  EXPECT_NE(messages[0].find("\"startup\""), std::string::npos) << messages[0];
  form.filesAskedIn[14] = 20;
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent implausible");
  form.filesAskedIn[14] = 19;
  lookAgain(form);
  EXPECT_EQ(reasonsOf(1), "absent");
  EXPECT_TRUE(form.implausible.empty());
}

TEST_F(SecondLookTest, ACategoryThatLosesTheComputersRowsCountsTheUsers) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  addProgram("b", "C:\\EvidenceTest\\gone.exe");
  ScannerRun counts;
  addRow(form, counts, {"Startup programs", "c", "144", "HKEY_LOCAL_MACHINE", run, ""});
  form.userScope = {.currentUser = "S-1-5-21-1", .otherUsers = {}, .listsComputers = false};
  for (const Category& category : categories()) {
    form.View1.add(category.valueName);
  }
  showProblems(form, 14, 3);
  lookAgain(form);
  EXPECT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(form.View1.text(14, problemsColumn), "2");
}

TEST_F(SecondLookTest, OneRowCanBeLookedAtByItself) {
  addProgram("a", "C:\\EvidenceTest\\gone.exe");
  const Evidence evidence = lookAtRow(form, 1);
  EXPECT_EQ(evidence.confidence, Confidence::Sure);
  EXPECT_EQ(evidenceOf(form, 1), nullptr);
}

}  // namespace
}  // namespace zelvreg
