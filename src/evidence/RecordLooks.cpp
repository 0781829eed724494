// The second look at entries that name no file (KindLooks.h): whether they are as empty as they
// seem, and whether anything else depends on them.
#include <algorithm>
#include <array>

#include "evidence/CommandText.h"
#include "evidence/KindLooks.h"
#include "scan/Findings.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg::looks {
namespace {

constexpr int levelsLookedAt = 3;

Evidence gone(Reason reason, const Entry& entry) {
  return {.confidence = {}, .reasons = {reason}, .tested = {utf8(entry.key.fullPath())}};
}

bool holdsMore(const LookedAt& finding, const KeyContent& content) {
  return std::ranges::any_of(content.subkeys, [&](const std::u16string& name) {
    return holdsValues(below(finding.entry.key, name), levelsLookedAt);
  });
}

Evidence emptyCommand(const LookedAt& finding) {
  const KeyContent content = contentOf(finding.entry.key);
  if (content.isDenied) {
    return withReason(Reason::AccessDenied);
  }
  if (hasOtherHandler(finding.entry)) {
    return withReason(Reason::OtherHandler);
  }
  if (finding.isOfPackagedClass()) {
    return withReason(Reason::PackagedApp);
  }
  return content.hasNamedValue() || holdsMore(finding, content)
             ? withReason(Reason::HoldsRecords)
             : gone(Reason::EmptyRecord, finding.entry);
}

}  // namespace

// A class says which type library describes it.
Evidence libraryReference(const LookedAt& finding) {
  const std::u16string name = utf16(trim(finding.entry.text));
  if (name.empty()) {
    return withReason(Reason::NoText);
  }
  InstalledProducts& products = finding.texts.products;
  const bool isThere =
      products.isRegistered(u"TypeLib", name) || products.isRegistered(u"CLSID", name);
  return isThere ? withReason(Reason::FoundInOtherView)
                 : Evidence{.confidence = {},
                            .reasons = {Reason::NotRegistered},
                            .tested = {"TypeLib\\" + utf8(name), "CLSID\\" + utf8(name)}};
}

// What the shell keeps for an extension. Only an extension without any program is empty.
Evidence fileExtension(const LookedAt& finding) {
  const KeyContent content = contentOf(finding.entry.key);
  if (content.isDenied) {
    return withReason(Reason::AccessDenied);
  }
  const bool hasChoice = std::ranges::any_of(content.subkeys, [](const std::u16string& name) {
    return lowerCase(utf8(name)).starts_with("userchoice");
  });
  if (hasChoice || content.hasNamedValue() || holdsMore(finding, content)) {
    return withReason(Reason::UserChoice);
  }
  return gone(Reason::EmptyRecord, finding.entry);
}

Evidence emptyRecord(const LookedAt& finding) {
  const KeyContent content = contentOf(finding.entry.key);
  if (content.isDenied) {
    return withReason(Reason::AccessDenied);
  }
  const std::string& name = finding.cell(badValueColumn);
  if (content.hasNamedValue() || holdsMore(finding, content)) {
    return withReason(Reason::HoldsRecords);
  }
  const std::string_view code = guidIn(name);
  return !code.empty() && finding.texts.products.isProduct(code)
             ? withReason(Reason::InstallerOnDemand)
             : gone(Reason::EmptyRecord, finding.entry);
}

// Lists keep binary records, which name nothing that could be looked for, and a few texts.
Evidence recentEntry(const LookedAt& finding) {
  std::string text(trim(finding.entry.text));
  // The list of what was run ends each entry so.
  constexpr std::string_view endOfRun = "\\1";
  if (text.ends_with(endOfRun)) {
    text.resize(text.size() - endOfRun.size());
  }
  const std::string_view path = std::string_view(text).substr(text.starts_with('"') ? 1 : 0);
  return isDrivePath(path) ? finding.texts.at(text, finding.owner, Reading::Command)
                           : withReason(Reason::History);
}

// A command without a text; or a media type whose extension no class has.
Evidence emptyCommandOrMediaType(const LookedAt& finding) {
  if (finding.cell(badValueColumn).empty()) {
    return emptyCommand(finding);
  }
  const std::string extension(trim(finding.entry.text));
  if (extension.empty()) {
    return withReason(Reason::NoText);
  }
  return finding.texts.products.isRegistered(u"", utf16(extension))
             ? withReason(Reason::FoundInOtherView)
             : Evidence{.confidence = {},
                        .reasons = {Reason::NotRegistered},
                        .tested = {"HKEY_CLASSES_ROOT\\" + extension}};
}

}  // namespace zelvreg::looks
