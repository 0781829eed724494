// The second look at entries that name a file (KindLooks.h).
#include <algorithm>
#include <array>

#include "evidence/CommandText.h"
#include "evidence/KindLooks.h"
#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "roots/ValueTypes.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::looks {
namespace {

Evidence lookAt(const LookedAt& finding, const std::string& text, Reading reading) {
  return finding.texts.at(text, finding.owner, reading);
}

// The folder of Windows in the way that a text of the registry would name it.
std::string inWindows(const std::string& rest) { return "%SystemRoot%\\" + rest; }

std::string nameOf(const Entry& entry) { return utf8(entry.name.value_or(u"")); }

bool endsWith(const std::string& text, const std::string& end) {
  return lowerCase(text).ends_with(lowerCase(end));
}

// A list of texts beside the default value is the installer's: it installs the file when the class
// is first used.
bool isAdvertised(const WideKey& key, const std::u16string& name) {
  const auto value = key.value(name);
  return value && value->type == REG_MULTI_SZ;
}

// Where the code of a class lies that runs in another library; each version may have its own.
std::vector<std::string> codeBasesOf(const Entry& entry) {
  constexpr std::size_t mostVersions = 8;
  std::vector<std::string> texts;
  const auto add = [&](const std::optional<WideValue>& codeBase) {
    if (codeBase && isSingleText(codeBase->type)) {
      texts.push_back(textOf(*codeBase));
    }
  };
  const TruePlace& place = entry.key;
  add(entry.opened->value(u"CodeBase"));
  auto versions = entry.opened->subkeys();
  if (versions && versions->size() > mostVersions) {
    versions->resize(mostVersions);
  }
  for (const std::u16string& version : versions.value_or(std::vector<std::u16string>())) {
    add(valueAt(place.hive, below(place, version).path, u"CodeBase"));
  }
  std::erase(texts, std::string());
  return texts;
}

// Adds a reason to what was not found; what was found stays as it is.
Evidence unless(Evidence evidence, Reason reason) {
  if (!isFound(evidence)) {
    evidence.reasons.add(reason);
  }
  return evidence;
}

// Whether a text begins like a path or a command, and does not only mention one.
bool beginsLikePath(const std::string& text) {
  const std::string plain = lowerCase(trim(text));
  const CommandParts parts = commandParts(plain);
  if (plain.starts_with('"')) {
    return parts.program.find_first_of("\\/:%.") != std::string::npos;
  }
  const bool isProgram = plain.substr(0, plain.find(' ')).ends_with(".exe");
  const bool isPath = plain.find_first_of("%\\/@{") == 0 || plain.find(":\\") == 1;
  return isPath || isProgram || plain.starts_with("file:") ||
         launchTarget(parts.program, "x").has_value();
}

// Each part of a text that begins with a drive, the whole text first; only a few.
std::vector<std::string> pathsIn(const std::string& text) {
  constexpr std::size_t mostPaths = 16;
  std::vector<std::string> paths{text};
  // One path alone is all of the text.
  if (text.find(';') == std::string::npos && text.find(":\\") == text.rfind(":\\")) {
    return paths;
  }
  for (auto colon = text.find(":\\", 1); colon != std::string::npos && paths.size() < mostPaths;
       colon = text.find(":\\", colon + 1)) {
    const std::string path = text.substr(colon - 1);
    paths.push_back(path.substr(0, path.find_first_of("\";|\r\n")));
    if (paths.back() == text) {
      paths.pop_back();
    }
  }
  return paths;
}

}  // namespace

// The file lies in the folder of fonts, unless its path says otherwise.
Evidence font(const LookedAt& finding) {
  const std::string& file = finding.entry.text;
  if (trim(file).empty()) {
    return withReason(Reason::NoText);
  }
  const bool isWholePath = file.find_first_of(":%\\/") != std::string::npos;
  if (isWholePath) {
    return lookAt(finding, file, Reading::File);
  }
  return finding.texts.atAny({inWindows("Fonts\\" + file), inWindows("System32\\" + file)},
                             finding.owner, Reading::File);
}

Evidence sharedDll(const LookedAt& finding) {
  Evidence evidence = lookAt(finding, finding.cell(locationColumn), Reading::File);
  return finding.entry.number > 1 ? unless(std::move(evidence), Reason::SharedCount) : evidence;
}

// The path of a program, a name that is itself a path, or a value of a program's own key.
Evidence applicationPath(const LookedAt& finding) {
  const std::string& subKey = finding.cell(subKeyColumn);
  if (subKey == scannedKeys::compatibilityStore || subKey == scannedKeys::compatibilityLayers) {
    // A program on a medium, by the mark of the medium.
    const std::string name = nameOf(finding.entry);
    return findIgnoringCase(name, "sign.media=") == 0 ? withReason(Reason::DriveRemovable)
                                                      : lookAt(finding, name, Reading::Command);
  }
  if (!endsWith(subKey, "\\App Paths")) {
    return recordValue(finding);
  }
  // A name alone may be meant for the folder of another value.
  const bool hasFolder = finding.entry.text.find_first_of("\\/%") != std::string::npos;
  Evidence evidence = lookAt(finding, finding.entry.text, Reading::Command);
  return hasFolder ? evidence : unless(std::move(evidence), Reason::PlaceUnknown);
}

// The value names the folder, and the name of the value is the file.
Evidence helpFile(const LookedAt& finding) {
  const std::string& folder = finding.entry.text;
  const std::string file = nameOf(finding.entry);
  if (trim(folder).empty()) {
    return withReason(Reason::NoText);
  }
  Evidence evidence = finding.texts.atAny({folder + "\\" + file, inWindows("Help\\" + file)},
                                          finding.owner, Reading::File);
  if (isFound(evidence)) {
    return evidence;
  }
  // The folder may only lack its separator, or be the whole path already.
  std::vector<std::string> others{folder + file};
  if (endsWith(folder, "\\" + file)) {
    others.push_back(folder);
  }
  Evidence other = finding.texts.atAny(others, finding.owner, Reading::File);
  if (isFound(other)) {
    other.reasons = {Reason::FoundInsideText};
    return other;
  }
  return evidence;
}

Evidence helpTopic(const LookedAt& finding) {
  std::vector<std::string> topics;
  for (const std::string_view topic : split(finding.entry.text, ";")) {
    topics.emplace_back(topic);
  }
  Evidence evidence = finding.texts.atAny(topics, finding.owner, Reading::File);
  return topics.empty() ? withReason(Reason::NoText) : evidence;
}

// "%1" stands for the file itself.
Evidence icon(const LookedAt& finding) {
  const std::string text = replaceAll(finding.entry.text, "\"", "");
  return trim(text).starts_with("%1") ? withReason(Reason::NotAPath)
                                      : lookAt(finding, finding.entry.text, Reading::Library);
}

Evidence command(const LookedAt& finding) {
  Evidence evidence = lookAt(finding, finding.entry.text, Reading::Command);
  if (isFound(evidence)) {
    return evidence;
  }
  if (isAdvertised(*finding.entry.opened, u"command")) {
    evidence.reasons.add(Reason::InstallerOnDemand);
  }
  if (hasOtherHandler(finding.entry)) {
    evidence.reasons.add(Reason::OtherHandler);
  }
  if (finding.isOfPackagedClass()) {
    evidence.reasons.add(Reason::PackagedApp);
  }
  return evidence;
}

// A class that runs in another library, by the path of its own code.
Evidence server(const LookedAt& finding) {
  Evidence evidence = lookAt(finding, finding.entry.text, Reading::Library);
  if (isFound(evidence)) {
    return evidence;
  }
  if (isAdvertised(*finding.entry.opened, u"InprocServer32")) {
    evidence.reasons.add(Reason::InstallerOnDemand);
  }
  for (const std::string& codeBase : codeBasesOf(finding.entry)) {
    const Evidence code = lookAt(finding, codeBase, Reading::Library);
    if (isFound(code)) {
      return {.confidence = {}, .reasons = {Reason::FoundBehindLauncher}, .tested = code.tested};
    }
    for (const Reason reason : code.reasons) {
      if (ruleOf(reason).effect == Effect::Undecided) {
        evidence.reasons.add(reason);
      }
    }
  }
  return evidence;
}

Evidence reference(const LookedAt& finding) {
  return lookAt(finding, finding.entry.text, Reading::Command);
}

// "v2.10|Action=Allow|App=C:\…|Name=…|".
Evidence firewallRule(const LookedAt& finding) {
  std::string program;
  bool isOfPackage = false;
  for (const std::string_view field : split(finding.entry.text, "|")) {
    if (findIgnoringCase(field, "app=") == 0) {
      program = field.substr(4);
    }
    isOfPackage = isOfPackage || findIgnoringCase(field, "apppkgid=") == 0;
  }
  if (trim(program).empty()) {
    return withReason(isOfPackage ? Reason::PackagedApp : Reason::RuleWithoutPath);
  }
  if (lowerCase(trim(program)) == "system") {
    return withReason(Reason::NotAPath);
  }
  Evidence evidence = lookAt(finding, program, Reading::File);
  return isOfPackage ? unless(std::move(evidence), Reason::PackagedApp) : evidence;
}

Evidence helpFolder(const LookedAt& finding) {
  return lookAt(finding, finding.entry.text, Reading::File);
}

// Any value of a record may hold a path, and some only describe.
Evidence recordValue(const LookedAt& finding) {
  constexpr std::array<std::string_view, 7> descriptions{
      "displayname", "publisher",         "comments",      "contact",
      "readme url",  "parentdisplayname", "displayversion"};
  const std::string name = lowerCase(nameOf(finding.entry));
  const bool isDescription = std::ranges::find(descriptions, name) != descriptions.end();
  if (trim(finding.entry.text).empty()) {
    return withReason(Reason::NoText);
  }
  if (isDescription || !beginsLikePath(finding.entry.text)) {
    return withReason(Reason::NotAPath);
  }
  // What follows a program is not what it needs to run.
  const bool isCommand = contains(name, "uninstall") || contains(name, "modifypath");
  return isCommand ? lookAt(finding, finding.entry.text, Reading::Command)
                   : finding.texts.atAny(
                         pathsIn(finding.texts.expanded(finding.entry.text, finding.owner)),
                         finding.owner, Reading::Command);
}

Evidence startupProgram(const LookedAt& finding) {
  return lookAt(finding, finding.entry.text, Reading::Start);
}

// The name of the value is the path of a program, and what of it is kept.
Evidence muiName(const LookedAt& finding) {
  constexpr std::array<std::string_view, 2> suffixes{".friendlyappname", ".applicationcompany"};
  const std::string name = nameOf(finding.entry);
  const std::string lower = lowerCase(name);
  for (const std::string_view suffix : suffixes) {
    if (lower.ends_with(suffix)) {
      Evidence evidence =
          lookAt(finding, name.substr(0, name.size() - suffix.size()), Reading::File);
      if (isFound(evidence) && evidence.reasons.front() == Reason::Found) {
        evidence.reasons = {Reason::FoundInsideText};
      }
      return evidence;
    }
  }
  return lookAt(finding, name, Reading::File);
}

}  // namespace zelvreg::looks
