// Only calls to the emulated computer can be made to fail.
#include "exclusions/ExclusionFile.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/FaultSweep.h"
#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

constexpr const char* path = "C/Own/exregscan.txt";
const std::string before = "HKEY_USERS\\Before\r\nHKEY_USERS\\Other\r\n";
const std::string added = "HKEY_USERS\\Added";

// A form whose page of exclusions is open, as the user finds it.
struct Session {
  Session() {
    form.programFolder = "C:\\Own";
    bindClicks(form);
    form.dialogs.show = [this](const UserMessage& message) {
      tellings += message.isQuestion ? 0 : 1;
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
    form.chameleonButton7.click();
  }

  void clickRow(std::size_t row) {
    form.View4.select(row);
    View4_ItemClick(form, row);
  }
  void answerDialog(const std::string& text) {
    form.Form1.show = [text](ExclusionDialog& dialog) {
      dialog.Text1.setText(text);
      dialog.orubutton1.click();
    };
  }

  Form42 form;
  int tellings = 0;
};

void addByDialog(Session& session) {
  session.answerDialog(added);
  session.form.chameleonButton5.click();
}

void editFirst(Session& session) {
  if (session.form.View4.count() > 0) {
    session.clickRow(1);
    session.answerDialog(added);
    session.form.chameleonButton8.click();
  }
}

void removeFirst(Session& session) {
  if (session.form.View4.count() > 0) {
    session.clickRow(1);
    session.form.chameleonButton6.click();
  }
}

// The list could not be read, and the page shows what was added since.
void removeWhatWasAdded(Session& session) {
  addByDialog(session);
  const std::size_t last = session.form.View4.count();
  if (last > 0 && session.form.View4.text(last, 0) == added) {
    session.clickRow(last);
    session.form.chameleonButton6.click();
  }
}

void excludeFinding(Session& session) {
  Form42& form = session.form;
  ScannerRun run;
  addRow(form, run, {"location", "bad value", "2", "HKEY_USERS", "Added", "a"});
  form.View2.setSelected(1, true);
  form.chameleonButton9.click();
  EXPECT_EQ(form.View2.count(), session.tellings > 0 ? 1U : 0U);
}

struct Deed {
  const char* name;
  void (*act)(Session& session);
  std::vector<std::string> contents;  // after each of its steps
};

const std::vector<Deed>& deeds() {
  static const std::string more = before + added + "\r\n";
  static const std::vector<Deed> all{
      {"add", addByDialog, {more}},
      {"edit", editFirst, {added + "\r\nHKEY_USERS\\Other\r\n"}},
      {"remove", removeFirst, {"HKEY_USERS\\Other\r\n"}},
      {"add and remove", removeWhatWasAdded, {more, before}},
      {"exclude", excludeFinding, {more}},
      {"look", [](Session& /*session*/) {}, {before}},
  };
  return all;
}

class ExclusionFaultSweepTest : public fixture::SweptCall {
 protected:
  ExclusionFaultSweepTest() {
    first.file("C:\\Own\\exregscan.txt", before);
    first.start();
    first.computer().save();
    first.stop();
  }

  // The content of the file afterwards, which is whole.
  std::string contentAfter(const Deed& deed, const Session& session) {
    std::string content = anew.folder().read(path);
    EXPECT_FALSE(anew.hasHalfWritten());
    if (content != deed.contents.back()) {
      EXPECT_TRUE(session.tellings > 0 || session.form.areExclusionsUnread) << content;
      EXPECT_TRUE(content == before || content == deed.contents.front()) << content;
    }
    return content;
  }

  // Gives how often the call was made.
  std::uint64_t tryDeed(const Deed& deed, std::uint64_t number) {
    machine::FaultPlan& faults = anew.begin(first.machineFolder().path()).faults();
    faults.fail(call, number, ERROR_ACCESS_DENIED);
    std::string content;
    std::uint64_t made = 0;
    {
      Session session;
      deed.act(session);
      made = faults.calls(call);
      faults.clear();
      content = contentAfter(deed, session);
    }
    if (content == before) {
      Session next;
      deed.act(next);
      EXPECT_EQ(anew.folder().read(path), deed.contents.back());
      EXPECT_EQ(next.tellings, 0);
    }
    return made;
  }

  fixture::MachineBuilder first;
  fixture::MachineAnew anew;
};

TEST_P(ExclusionFaultSweepTest, NoneIsLostAndAFailureIsTold) {
  for (const Deed& deed : deeds()) {
    SCOPED_TRACE(deed.name);
    failEachOnce([&](std::uint64_t number) { return tryDeed(deed, number); });
  }
}

INSTANTIATE_TEST_SUITE_P(Calls, ExclusionFaultSweepTest, fixture::eachCall(), fixture::nameOfCall);

}  // namespace
}  // namespace zelvreg
