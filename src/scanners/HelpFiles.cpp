#include "scanners/HelpFiles.h"

#include "form/Form42.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 4;

struct Scan {
  Form42& form;
  ScannerRun run;
};

// What the findings of a section have.
struct Section {
  const char* kindCode;
  const char* iconKey;
};
// The image list has no "k", so these rows have no icon.
constexpr Section helpList{"4", "k"};
constexpr Section htmlHelpList{"5", "d"};
constexpr Section snapIns{"55", "d"};
constexpr Section joinedHtmlHelpList{"56", "d"};

void add(Scan& scan, const Section& section, const std::string& folderText,
         const std::string& fileName, const std::string& rootKey) {
  addFinding(scan.form, scan.run,
             {.location = folderText,
              .badValue = fileName,
              .kindCode = section.kindCode,
              .rootName = longName(HiveHandle::LocalMachine),
              .subKey = rootKey,
              .iconKey = section.iconKey});
}

void showCount(Scan& scan) { showProblems(scan.form, categoryRow, scan.run.found); }

bool isBlank(const std::string& text) { return trim(text).empty(); }

void beginSection(Scan& scan) {
  scan.run.row = nextRow(scan.form);
  scan.form.List1.clear();
  scan.form.List2.clear();
}

void testHelpFile(Scan& scan, const std::string& fileName) {
  std::string folderText = GetKeyValue64(scan.form, HiveHandle::LocalMachine,
                                         "SOFTWARE\\Microsoft\\Windows\\help", fileName);
  if (isBlank(folderText)) {
    folderText = GetKeyValue64(scan.form, HiveHandle::LocalMachine,
                               "SOFTWARE\\Microsoft\\Windows nt\\help", fileName);
  }
  if (isBlank(folderText)) {
    return;
  }
  if (!FileExists(scan.form, resolvedPath(scan.form, folderText + "\\" + fileName))) {
    add(scan, helpList, folderText, fileName, scannedKeys::help);
  }
  showCount(scan);
}

void scanHelpList(Scan& scan) {
  if (!RegKeyExists(HiveHandle::LocalMachine, scannedKeys::help) &&
      !RegKeyExists(HiveHandle::LocalMachine, scannedKeys::helpNt)) {
    return;
  }
  fEnumValue(scan.form, HiveHandle::LocalMachine, scannedKeys::help);
  if (scan.form.List1.count() == 0) {
    return;
  }
  scan.run.scroll = ScrollsTo::Nothing;
  walkEntries(scan.form, scan.form.List1, LastTurn::OneBeforeTheLast,
              [&](int /*index*/, const std::string& entry) {
                testHelpFile(scan, std::string(trim(entry)));
              });
  scan.run.scroll = ScrollsTo::NumberedRow;
  storeRowCount(scan.form);
}

// Whether there was something to test.
bool testHtmlHelpFile(Scan& scan, const std::string& fileName) {
  const char* rootKey = scannedKeys::htmlHelp;
  std::string folderText =
      GetKeyValue64(scan.form, HiveHandle::LocalMachine, scannedKeys::htmlHelp, fileName);
  if (isBlank(folderText)) {
    folderText =
        GetKeyValue64(scan.form, HiveHandle::LocalMachine, scannedKeys::htmlHelpNt, fileName);
    rootKey = scannedKeys::htmlHelpNt;
  }
  if (isBlank(folderText)) {
    return false;
  }
  const std::string file = folderText + "\\" + fileName;
  setArchiveOnly(scan.form, file);
  if (!FileExists(scan.form, resolvedPath(scan.form, file))) {
    add(scan, htmlHelpList, folderText, fileName, rootKey);
  }
  return true;
}

void scanHtmlHelpList(Scan& scan) {
  beginSection(scan);
  fEnumValue(scan.form, HiveHandle::LocalMachine, scannedKeys::htmlHelp);
  const ListBox& list = scan.form.List1;
  int index = 0;
  do {
    scan.form.messages.doEvents();
    scan.form.isProviderSilent = false;
    // A blank entry is skipped: it would be the same however often it is read again.
    if (testHtmlHelpFile(scan, std::string(trim(list.text(index))))) {
      showCount(scan);
    }
    ++index;
  } while (!isStopAsked(scan.form) && index < list.count() - 1);
  showNothingFound(scan.form, categoryRow, scan.run);
}

// A name that is a number of 0 or more is never tested.
bool isPassedOver(const std::string& snapIn) {
  const auto number = convertedNumber(snapIn);
  return number.has_value() && *number >= 0;
}

void testSnapIn(Scan& scan, const std::string& name) {
  if (isPassedOver(name)) {
    return;
  }
  const std::string rootKey = std::string(scannedKeys::snapIns) + "\\" + name;
  std::string topic = GetKeyValue64(scan.form, HiveHandle::LocalMachine, rootKey, "HelpTopic");
  if (topic.empty()) {
    topic = GetKeyValue64(scan.form, HiveHandle::LocalMachine, rootKey, "LinkedHelpTopics");
  }
  if (isBlank(topic)) {
    return;
  }
  if (!FileExists(scan.form, resolvedPath(scan.form, topic))) {
    add(scan, snapIns, topic, name, rootKey);
  }
  showCount(scan);
}

void scanSnapIns(Scan& scan) {
  beginSection(scan);
  const LONG status = fEnumKey(scan.form, HiveHandle::LocalMachine, scannedKeys::snapIns).rc;
  if (status != ERROR_FILE_NOT_FOUND) {
    walkEntries(scan.form, scan.form.List1, LastTurn::OneBeforeTheLast,
                [&](int /*index*/, const std::string& entry) {
                  testSnapIn(scan, std::string(trim(entry)));
                });
  }
  showNothingFound(scan.form, categoryRow, scan.run);
}

// Folder and name are joined as they are. Without a backslash at the end of the folder the path
// rarely exists.
void testJoinedHtmlHelpFile(Scan& scan, const std::string& fileName) {
  const std::string folderText =
      GetKeyValue64(scan.form, HiveHandle::LocalMachine, scannedKeys::htmlHelp, fileName);
  if (isBlank(folderText)) {
    return;
  }
  const std::string path = resolvedPath(scan.form, folderText + fileName);
  // Asked twice, and the second answer counts: at the first one a drive may still be starting.
  FileExists(scan.form, path);
  if (!FileExists(scan.form, path)) {
    add(scan, joinedHtmlHelpList, folderText, fileName, scannedKeys::htmlHelp);
  }
  showCount(scan);
}

void scanJoinedHtmlHelpList(Scan& scan) {
  beginSection(scan);
  fEnumValue(scan.form, HiveHandle::LocalMachine, scannedKeys::htmlHelp);
  walkEntries(scan.form, scan.form.List1, LastTurn::OneBeforeTheLast,
              [&](int /*index*/, const std::string& entry) {
                testJoinedHtmlHelpFile(scan, std::string(trim(entry)));
              });
  showNothingFound(scan.form, categoryRow, scan.run);
}

}  // namespace

void Command7(Form42& form) {
  showCaption(form, categoryRow);
  Scan scan{.form = form,
            .run = {.fields = FieldsGoTo::NumberedRow, .scroll = ScrollsTo::NumberedRow}};
  beginSection(scan);
  scanHelpList(scan);
  scanHtmlHelpList(scan);
  scanSnapIns(scan);
  scanJoinedHtmlHelpList(scan);
  storeRowCount(form);
}

}  // namespace zelvreg
