#include "evidence/KindLooks.h"

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr bool namesFile = true;
constexpr bool namesNoFile = false;

constexpr std::array rules{
    KindRule{1, 1, looks::font, namesFile},
    KindRule{2, 2, looks::sharedDll, namesFile},
    KindRule{3, 3, looks::applicationPath, namesFile},
    KindRule{4, 4, looks::helpFile, namesFile},
    KindRule{5, 4, looks::helpFile, namesFile},
    KindRule{6, 5, looks::icon, namesFile},
    KindRule{7, 6, looks::command, namesFile},
    KindRule{8, 7, looks::server, namesFile},
    KindRule{9, 7, looks::reference, namesFile},
    KindRule{10, 7, looks::reference, namesFile},
    KindRule{11, 11, looks::firewallRule, namesFile},
    KindRule{12, 9, looks::server, namesFile},
    KindRule{13, 10, looks::server, namesFile},
    KindRule{55, 4, looks::helpTopic, namesFile},
    KindRule{56, 4, looks::helpFile, namesFile},
    KindRule{71, 7, looks::helpFolder, namesFile},
    KindRule{72, 7, looks::libraryReference, namesNoFile},
    KindRule{122, 12, looks::fileExtension, namesNoFile},
    KindRule{133, 13, looks::emptyRecord, namesNoFile},
    KindRule{135, 13, looks::recordValue, namesFile},
    KindRule{144, 14, looks::startupProgram, namesFile},
    KindRule{155, 15, looks::recentEntry, namesNoFile},
    KindRule{166, 16, looks::muiName, namesFile},
    KindRule{771, 6, looks::emptyCommandOrMediaType, namesNoFile},
};

// Classes of the current user have the code of firewall rules.
constexpr KindRule userClass{11, 8, looks::server, namesFile};

bool isFirewallRule(const Form42& form, std::size_t row) {
  return form.View2.text(row, subKeyColumn) == scannedKeys::firewallRules;
}

}  // namespace

const KindRule* kindRule(const Form42& form, std::size_t row) {
  const auto code = static_cast<int>(leadingNumber(form.View2.text(row, kindCodeColumn)));
  if (code == userClass.code && !isFirewallRule(form, row)) {
    return &userClass;
  }
  const auto* found = std::ranges::find(rules, code, &KindRule::code);
  return found == rules.end() ? nullptr : found;
}

const std::string& LookedAt::cell(std::size_t column) const { return form.View2.text(row, column); }

bool LookedAt::isOfPackagedClass() const {
  return lowerCase(cell(locationColumn)).starts_with("appx");
}

}  // namespace zelvreg
