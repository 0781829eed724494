#include "console/ListCommands.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

#include "console/DisplayText.h"
#include "console/ExportTrust.h"
#include "console/FormUse.h"
#include "console/HostFile.h"
#include "console/Table.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "keys/AccountSids.h"
#include "keys/RegistryImport.h"
#include "runtime/Directory.h"
#include "runtime/FileText.h"
#include "scan/OwnPaths.h"
#include "scan/Policies.h"
#include "shell/Languages.h"
#include "text/Numbers.h"
#include "undo/UndoContent.h"
#include "undo/UndoPage.h"
#include "undo/UndoStores.h"

namespace zelvreg::console {
namespace {

// Who has set an exclusion is told where a policy has set one.
void printExclusions(const ListView& list, const Streams& streams) {
  bool tellsWho = false;
  for (std::size_t row = 1; row <= list.count(); ++row) {
    tellsWho = tellsWho || list.isLocked(row);
  }
  std::vector<TableColumn> columns{{"No.", true}, {"Exclusion", false, true}, {"Set by"}};
  columns.resize(tellsWho ? 3 : 2);
  Table table(columns);
  for (std::size_t row = 1; row <= list.count(); ++row) {
    std::vector<std::string> cells{std::to_string(row), list.text(row, 0),
                                   list.isLocked(row) ? "a policy" : ""};
    cells.resize(columns.size());
    table.addRow(cells);
  }
  streams.out << table.text(streams.tables);
}

void requireRow(const ListView& list, std::size_t row, const char* what) {
  if (row < 1 || row > list.count()) {
    throw std::runtime_error("there is no row " + std::to_string(row) + "; the list of " + what +
                             " has " + std::to_string(list.count()));
  }
}

std::string restorableText(const Form42& form, const UndoContent& content) {
  if (form.safeguards.undoesByExport && !content.exportPath.empty()) {
    return content.isExportOpen ? "nothing: others could have written its safety export"
                                : "all, from its safety export";
  }
  if (content.isJournalUnreadable) {
    return "nothing: its journal cannot be read";
  }
  return content.restorable == 0 ? "nothing"
                                 : std::to_string(content.restorable) + " of " +
                                       std::to_string(content.records) + " rows, from its journal";
}

std::string nameOf(const Computer& computer, const std::string& sid) {
  const auto users = computer.users();
  const auto found = std::ranges::find(users, sid, &ComputerUser::sid);
  return found == users.end() ? sid : found->name;
}

// With an entry that is missing, a number would be that of another one.
void requireUndoList() {
  if (isUndoListUnread()) {
    throw std::runtime_error(
        "the list of repairs in the registry cannot be read as a whole; nothing was done, try "
        "again");
  }
}

// Whose an entry is, is told where one is not the current user's.
void printUndo(const Form42& form, const Computer& computer, const Streams& streams) {
  const std::string current = currentUserSid();
  std::vector<std::vector<std::string>> rows;
  bool tellsUsers = false;
  for (std::size_t row = 1; row <= form.View3.count(); ++row) {
    const std::string& label = form.View3.text(row, 0);
    const UndoContent content = undoContent(form, label);
    tellsUsers = tellsUsers || (!content.user.empty() && content.user != current);
    rows.push_back({std::to_string(row), label, restorableText(form, content),
                    nameOf(computer, content.user)});
  }
  std::vector<TableColumn> columns{
      {"No.", true}, {"Journal", false, true}, {"Can be restored", false, true}, {"User"}};
  columns.resize(tellsUsers ? 4 : 3);
  Table table(columns);
  for (auto& cells : rows) {
    cells.resize(columns.size());
    table.addRow(cells);
  }
  requireUndoList();
  streams.out << table.text(streams.tables);
}

void refuseAgainstPolicy(const Form42& form, bool writesJournals) {
  if (undoByPolicy(form).value_or(writesJournals) != writesJournals) {
    throw UsageError(policyRefusal(writesJournals ? "undo on" : "undo off", "leave it as it is"));
  }
}

// Makes the user the current one whose keys a repair has taken. False if that is somebody else who
// is not known here.
bool becomeOwner(Computer& computer, const std::string& sid) {
  const auto users = computer.users();
  const auto owner = std::ranges::find(users, sid, &ComputerUser::sid);
  if (owner != users.end()) {
    computer.actAs(*owner, UserWork::Repair);
    return true;
  }
  return sid.empty() || sid == currentUserSid();
}

// An export says itself where its keys belong; a journal would restore them to the current user.
void becomeOwnerOf(const Form42& form, std::size_t row, Computer& computer) {
  const UndoContent content = undoContent(form, form.View3.text(row, 0));
  const bool restoresExport = form.safeguards.undoesByExport && !content.exportPath.empty();
  if (!becomeOwner(computer, content.user) && !restoresExport) {
    throw std::runtime_error("the journal is of a user who is not known on this computer, " +
                             content.user + "; nothing was restored");
  }
}

void warnOfJournal(const Form42& form, std::size_t row, const Streams& streams) {
  const UndoContent content = undoContent(form, form.View3.text(row, 0));
  if (form.safeguards.undoesByExport && !content.exportPath.empty()) {
    return;
  }
  if (content.isJournalUnreadable) {
    return;  // the form refuses it
  }
  if (!content.isJournalThere) {
    streams.error << "zelvreg: this entry has no journal; nothing can be restored from it\n";
  } else if (content.isJournalTorn) {
    streams.error
        << "zelvreg: the journal ends within a record; the last one may be restored only in part\n";
  }
}

// What the form would tell of a failure the caller tells in its own words; questions are asked.
void withoutTellings(Form42& form, const std::function<void()>& act) {
  const auto show = form.dialogs.show;
  form.dialogs.show = [&show](const UserMessage& message) {
    return message.isQuestion ? show(message) : Answer::Ok;
  };
  act();
  form.dialogs.show = show;
}

// The dialog closes whether or not its entry could be kept.
void addExclusion(Form42& form, const std::string& entry) {
  const std::size_t before = form.View4.count();
  form.Form1.show = [&entry](ExclusionDialog& dialog) {
    dialog.Text1.setText(entry);
    dialog.orubutton1.click();
  };
  withoutTellings(form, [&form] { form.chameleonButton5.click(); });
  loadExclusions(form);
  if (form.View4.count() <= before) {
    throw std::runtime_error(
        "the exclusion has no effect; give a text of at least 8 characters, and check that " +
        exclusionPath(form) + " can be written");
  }
}

void keepUndo(Form42& form, bool isOn) {
  form.Check1.value = isOn;
  form.Check1.click();
  if ((leadingNumber(undoSetting()) == 1) != isOn) {
    throw std::runtime_error("the setting could not be stored in the registry; try again");
  }
}

// False if the question was answered No.
bool removeExclusion(Form42& form, std::size_t row) {
  const std::size_t before = form.View4.count();
  form.View4.select(row);
  View4_ItemClick(form, row);
  ListChange change{};
  withoutTellings(form, [&] { change = removeHighlightedExclusions(form); });
  if (change == ListChange::Declined) {
    return false;
  }
  loadExclusions(form);
  requireExclusions(form);
  if (form.View4.count() == before) {
    throw std::runtime_error("the exclusion is still there; check that " + exclusionPath(form) +
                             " can be written");
  }
  return true;
}

// What Windows would call a file of its own.
bool isOnTheDisk(const std::string& file) {
  return file.size() > 2 && file[1] == ':' && file[2] == '\\';
}

int restoreExport(const Options& options, Computer& computer, const Streams& streams) {
  if (!options.target.image.empty() && isOnTheDisk(options.exportFile)) {
    throw std::runtime_error(options.exportFile +
                             " is on the disk in the image; restore it with undo restore N, where "
                             "undo list tells the number N");
  }
  requireTrustedFile(options.exportFile);
  const std::string text = readHostFile(options.exportFile);
  // Of somebody who is not known the import says itself what is wrong.
  becomeOwner(computer, userOfRegistryText(text));
  const RegistryImport import = importRegistryText(text);
  if (!import.isDone) {
    throw std::runtime_error(options.exportFile + ": " + import.message);
  }
  saveAndTell(computer, streams);
  note(streams, "restored " + options.exportFile);
  if (!options.isQuiet) {
    streams.out << printable(import.message) << "\n";
  }
  return nothingFound;
}

}  // namespace

int workOnUndo(const Options& options, Computer& computer, const Streams& streams) {
  if (options.command == Command::RestoreExport) {
    return restoreExport(options, computer, streams);
  }
  Form42 form;
  prepareForm(form, options, streams);
  form.chameleonButton1.click();
  requireUndoList();
  switch (options.command) {
    case Command::RestoreUndo:
      requireRow(form.View3, options.entry, "journals");
      warnOfJournal(form, options.entry, streams);
      becomeOwnerOf(form, options.entry, computer);
      View3_ItemClick(form, options.entry);
      form.chameleonButton2.click();
      if (form.isUndoRefused) {
        return failed;  // the form has said so
      }
      note(streams, "restored entry " + std::to_string(options.entry) + ": " +
                        form.View3.text(options.entry, 0));
      break;
    case Command::RemoveUndo:
      requireRow(form.View3, options.entry, "journals");
      View3_ItemClick(form, options.entry);
      form.chameleonButton3.click();
      saveAndTell(computer, streams);
      return form.isUndoRefused ? failed : nothingFound;
    case Command::UndoOn:
    case Command::UndoOff:
      refuseAgainstPolicy(form, options.command == Command::UndoOn);
      keepUndo(form, options.command == Command::UndoOn);
      break;
    default:
      printUndo(form, computer, streams);
      return nothingFound;
  }
  saveAndTell(computer, streams);
  return nothingFound;
}

int workOnExclusions(const Options& options, Computer& computer, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  form.chameleonButton7.click();
  requireExclusions(form);
  switch (options.command) {
    case Command::AddExclusion:
      makeFolder(form.programFolder);
      addExclusion(form, options.exclusion);
      break;
    case Command::RemoveExclusion:
      requireRow(form.View4, options.entry, "exclusions");
      if (form.View4.isLocked(options.entry)) {
        throw UsageError(
            policyRefusal("exclude remove " + std::to_string(options.entry), "leave it"));
      }
      if (!removeExclusion(form, options.entry)) {
        return nothingFound;
      }
      break;
    default:
      printExclusions(form.View4, streams);
      return nothingFound;
  }
  saveAndTell(computer, streams);
  return nothingFound;
}

int workOnLanguages(const Options& options, Computer& computer, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  if (options.command == Command::ListLanguages) {
    Table table({{""}, {"Tag"}, {"Language", false, true}});
    for (const auto& entry : form.lbllanguage) {
      const bool isUsed = form.langFileName == "zelvreg-" + entry->tag.get() + ".lang";
      table.addRow({isUsed ? "*" : "", entry->tag.get(), entry->caption.get()});
    }
    streams.out << table.text(streams.tables);
    return nothingFound;
  }
  std::string known;
  for (std::size_t entry = 0; entry < form.lbllanguage.size(); ++entry) {
    const std::string& tag = form.lbllanguage[entry]->tag;
    if (tag == options.language) {
      lbllanguage_Click(form, entry);
      saveAndTell(computer, streams);
      return nothingFound;
    }
    known += (known.empty() ? "" : ", ") + tag;
  }
  throw std::runtime_error("\"" + options.language + "\" is not a language; choose from: " + known);
}

}  // namespace zelvreg::console
