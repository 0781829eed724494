// Only calls to the emulated computer can be made to fail.
#include "form/Form42.h"
#include "shell/StartUp.h"
#include "support/FaultSweep.h"
#include "support/MachineFixture.h"
#include "support/RegistryContent.h"
#include "undo/JournalFile.h"
#include "undo/UndoPage.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

using fixture::RegistryContent;

const std::string settings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";

std::string journalOf(const std::string& name) {
  return journalFile({{"3", "1", "Software\\UndoSweep", name + ".exe", "C:\\" + name + ".exe"}}) +
         journalFile({{"3", "1", "Software\\UndoSweep", name + " too", "C:\\too.exe"}});
}

// The page of repairs to undo, as the user finds it.
struct Session {
  Session() {
    form.programFolder = "C:\\Own";
    bindClicks(form);
    form.dialogs.show = [this](const UserMessage& message) {
      (message.icon == MessageIcon::Information ? finished : refused) += 1;
      return Answer::Ok;
    };
    form.chameleonButton1.click();
  }

  // Clicks on the entry and on a button, if the entry is listed.
  void press(const std::string& label, const EntryPoint& button) {
    for (std::size_t row = 1; row <= form.View3.count(); ++row) {
      if (form.View3.text(row, 0) == label) {
        View3_ItemClick(form, row);
        button.run();
        isPressed = true;
        return;
      }
    }
  }
  [[nodiscard]] bool isTold() const { return finished + refused == 1; }

  Form42 form;
  int finished = 0;
  int refused = 0;
  bool isPressed = false;
};

class UndoFaultSweepTest : public fixture::SweptCall {
 protected:
  UndoFaultSweepTest() {
    first.key(settings, "\"cnt\"=\"2\"\n\"saveundo\"=\"1\"");
    first.key(settings + "\\dates", "\"1\"=\"first\"\n\"2\"=\"second\"");
    first.key(settings + "\\file", "\"first\"=\"one\"\n\"second\"=\"two\"");
    first.file("C:\\Own\\one.txt", journalOf("a"));
    first.file("C:\\Own\\two.txt", journalOf("b"));
    first.start();
    first.computer().save();
    pristine = fixture::registryContent(first.computer());
    first.stop();
    fixture::MachineAnew undisturbed;
    undisturbed.begin(first.machineFolder().path());
    Session session;
    session.press("second", session.form.chameleonButton2);
    restored = fixture::registryContent(undisturbed.computer());
  }

  machine::FaultPlan& begin(std::uint64_t number) {
    machine::FaultPlan& faults = anew.begin(first.machineFolder().path()).faults();
    faults.fail(call, number, ERROR_ACCESS_DENIED);
    return faults;
  }
  [[nodiscard]] RegistryContent content() const {
    return fixture::registryContent(anew.computer());
  }
  [[nodiscard]] std::string journal(const std::string& stem) const {
    return anew.folder().read("C/Own/" + stem + ".txt");
  }

  // The entry and the journal that nobody asked for are as they were.
  void expectOtherEntry() const {
    EXPECT_EQ(undoLabel(1), "first");
    EXPECT_EQ(undoStem("first"), "one");
    EXPECT_EQ(journal("one"), journalOf("a"));
    EXPECT_EQ(highestUndoNumber(), 2);
    EXPECT_FALSE(anew.hasHalfWritten());
  }

  std::uint64_t tryRestoring(std::uint64_t number) {
    machine::FaultPlan& faults = begin(number);
    std::uint64_t made = 0;
    {
      Session session;
      session.press("second", session.form.chameleonButton2);
      made = faults.calls(call);
      faults.clear();
      for (const std::string& entry : fixture::changedEntries(content(), restored)) {
        EXPECT_FALSE(pristine.contains(entry)) << entry;
      }
      EXPECT_EQ(session.isTold(), session.isPressed);
      if (session.finished > 0) {
        EXPECT_EQ(content(), restored);
      }
    }
    expectOtherEntry();
    EXPECT_EQ(journal("two"), journalOf("b"));
    Session next;
    next.press("second", next.form.chameleonButton2);
    EXPECT_EQ(next.finished, 1);
    EXPECT_EQ(content(), restored);
    return made;
  }

  std::uint64_t tryRemoving(std::uint64_t number) {
    machine::FaultPlan& faults = begin(number);
    Session session;
    session.press("second", session.form.chameleonButton3);
    const std::uint64_t made = faults.calls(call);
    faults.clear();
    expectOtherEntry();
    EXPECT_EQ(content(), pristine);
    const bool isRemoved = undoLabel(2).empty();
    const bool hasJournal = anew.folder().has("C/Own/two.txt");
    if (session.isPressed && session.refused == 0) {
      EXPECT_TRUE(isRemoved && !hasJournal);
    }
    if (!isRemoved) {
      EXPECT_EQ(journal("two"), journalOf("b"));
      Session next;
      next.press("second", next.form.chameleonButton3);
      EXPECT_EQ(next.refused, 0);
      EXPECT_EQ(undoLabel(2), "");
      EXPECT_FALSE(anew.folder().has("C/Own/two.txt"));
    }
    return made;
  }

  fixture::MachineBuilder first;
  fixture::MachineAnew anew;
  RegistryContent pristine;
  RegistryContent restored;
};

TEST_P(UndoFaultSweepTest, WhatIsToldToBeBackIsBackAndNoJournalIsLost) {
  EXPECT_EQ(fixture::changedEntries(pristine, restored).size(), 5U);
  failEachOnce([this](std::uint64_t number) { return tryRestoring(number); });
}

TEST_P(UndoFaultSweepTest, AnEntryIsRemovedWithItsJournalOrNothingIsAndThatIsTold) {
  failEachOnce([this](std::uint64_t number) { return tryRemoving(number); });
}

INSTANTIATE_TEST_SUITE_P(Calls, UndoFaultSweepTest, fixture::eachCall(), fixture::nameOfCall);

}  // namespace
}  // namespace zelvreg
