#include "reports/Report.h"

#include <windows.h>
// shellapi needs windows.h before it.
#include <shellapi.h>

#include "evidence/Reasons.h"
#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "runtime/DateTime.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "scan/Findings.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr const char* lineEnd = "\r\n";
constexpr std::size_t printZone = 14;
constexpr const char* columnBar = "  |  ";
constexpr const char* indent = "    ";
constexpr const char* maker = "https://zelvane.example || support@zelvane.example";

std::string ruleLine() { return std::string(59, '-') + lineEnd; }

// The print separator goes on to the next zone.
std::string toNextZone(std::string line) {
  line.resize((line.size() / printZone + 1) * printZone, ' ');
  return line;
}

// Names of keys may contain anything, including commands to a terminal.
std::string withoutControls(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    const bool isControl = next.code < 0x20 || (next.code >= 0x7F && next.code < 0xA0);
    result += isControl ? " " : text.substr(0, next.size);
    text.remove_prefix(next.size);
  }
  return result;
}

std::string rowLine(const Form42& form, std::size_t row) {
  std::string line;
  for (const std::size_t column : {locationColumn, rootNameColumn, subKeyColumn, badValueColumn}) {
    line += line.empty() && column == locationColumn ? "" : columnBar;
    line += trim(form.View2.text(row, column));
  }
  return withoutControls(line);
}

// A row, its reason as a sentence, and the places that were looked for.
std::string evidenceLines(const Form42& form, std::size_t row) {
  const Evidence& evidence = evidenceAt(form, row);
  std::string heading = decimal(static_cast<std::int64_t>(row)) + columnBar;
  heading += trim(form.View2.text(row, locationColumn));
  heading.append(columnBar).append(codeOf(evidence.confidence)).append(columnBar);
  heading += reasonCodes(evidence);
  std::vector<std::string> lines{heading, indent + sentenceOf(form, evidence)};
  for (const std::string& place : evidence.tested) {
    lines.push_back(indent + place);
  }
  std::string text;
  for (const std::string& line : lines) {
    text += withoutControls(line) + lineEnd;
  }
  return text;
}

}  // namespace

std::string evidenceText(const Form42& form) {
  std::string text = lineEnd + std::string("How Sure Each Bad Entry Is") + lineEnd + ruleLine();
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    text += evidenceLines(form, row);
  }
  return text + ruleLine();
}

std::string reportText(const Form42& form) {
  const DateTime now = localDateTime();
  std::string text = "Report For registry bad entries  At   " + dateText(now, ",") + "   " +
                     timeText(now, ":") + lineEnd;
  text += toNextZone("Total bad entries found = " + rowCountText(form)) + lineEnd;
  text += ruleLine() + "\r" + lineEnd;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    text += rowLine(form, row) + lineEnd;
  }
  return text + ruleLine() + "This Report Made by Zelvane Tuner" + lineEnd + maker + lineEnd;
}

void saverep(Form42& form) {
  if (form.View2.count() < 1) {
    return;
  }
  form.dlg1.filter = textOf(form, "report-filter") + "|*.txt";
  form.dlg1.defaultExtension = "*.txt";
  form.dlg1.title = textOf(form, "report-title");
  form.dlg1.showSave();
  const std::string& file = form.dlg1.fileName;
  if (trim(file).empty()) {
    return;
  }
  replaceFileText(file, ownBytes(reportText(form)));
  ShellExecuteW(nullptr, nullptr, Wide(file).get(), nullptr, nullptr, SW_SHOWNORMAL);
}

void StartDoc(const std::string& file, long& result) {
  HINSTANCE answer = ShellExecuteW(GetDesktopWindow(), Wide("Open").get(), Wide(file).get(),
                                   Wide("").get(), Wide("C:\\").get(), SW_SHOWNORMAL);
  result = static_cast<long>(reinterpret_cast<INT_PTR>(answer));
}

}  // namespace zelvreg
