#include "console/UserTurns.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "console/DisplayText.h"
#include "console/FormUse.h"
#include "console/ResultOutput.h"
#include "console/TimeArguments.h"
#include "form/Form42.h"
#include "roots/Roots.h"
#include "scan/CategoryTable.h"
#include "shell/ResultsFilter.h"
#include "text/Numbers.h"

namespace zelvreg::console {
namespace {

UserScope scopeOf(const ComputerUser& user, const std::vector<ComputerUser>& all, bool isFirst) {
  UserScope scope{.currentUser = user.key, .otherUsers = {}, .listsComputers = isFirst};
  for (const ComputerUser& other : all) {
    if (other.key != user.key) {
      scope.otherUsers.push_back(other.key);
    }
  }
  return scope;
}

void addCounts(std::vector<CategoryResult>& sums, const std::vector<CategoryResult>& counts) {
  for (std::size_t index = 0; index < sums.size(); ++index) {
    std::string& sum = sums[index].problems;
    const std::string& count = counts[index].problems;
    sum = sum.empty() || count.empty() ? sum + count
                                       : decimal(leadingInteger(sum) + leadingInteger(count));
  }
}

// The cells of the list count otherwise: some go on from the row above, some stay empty.
void noteCategories(const Form42& form, const std::optional<ComputerUser>& user,
                    const Streams& streams) {
  const auto found = countByCategory(form);
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    if (form.View1.isChecked(row)) {
      const bool isFinished = form.View1.text(row, statusColumn) == "Finished";
      note(streams, "scanned " + std::string(categoryAt(row).optionName) +
                        (user ? " of " + user->name : std::string()) + ": " +
                        std::to_string(found[row - 1]) + " found" +
                        (isFinished ? "" : ", not to its end"));
    }
  }
  note(streams, "found " + std::to_string(form.View2.count()) + " in all");
}

}  // namespace

UserTurns::UserTurns(const Options& optionsInUse, Computer& computerInUse,
                     const Streams& streamsInUse)
    : options(optionsInUse),
      computer(computerInUse),
      streams(streamsInUse),
      started(options.now.empty() ? utcNow() : options.now) {}

UserTurns::~UserTurns() = default;

void UserTurns::leaveOut(const std::string& line) {
  isIncomplete = true;
  if (told.insert(line).second) {
    tell({line}, streams);
  }
}

std::vector<ComputerUser> UserTurns::usersToRepair() {
  std::vector<std::string> nobodys = computer.damage();
  std::vector<ComputerUser> users = computer.users();
  std::erase_if(users, [&](const ComputerUser& user) {
    const auto faults = computer.faultsOf(user);
    std::erase_if(nobodys, [&](const std::string& line) {
      return std::ranges::find(faults, line) != faults.end();
    });
    if (!faults.empty()) {
      leaveOut(faults.front() + "; nothing of " + user.name + " is repaired");
    }
    return !faults.empty();
  });
  std::ranges::for_each(nobodys, [this](const std::string& line) { leaveOut(line); });
  return users;
}

bool UserTurns::scan(const std::vector<ComputerUser>& users) {
  turns.clear();
  refused.clear();
  if (users.empty()) {
    return scanAs(std::nullopt);
  }
  const bool isComplete =
      std::ranges::all_of(users, [&](const ComputerUser& user) { return scanAs(user); });
  computer.endActing();
  if (turns.empty()) {
    throw std::runtime_error("no user could be scanned");
  }
  return isComplete;
}

bool UserTurns::scanAs(const std::optional<ComputerUser>& user) {
  UserTurn turn{.user = user, .form = std::make_unique<Form42>()};
  if (!take(turn, UserWork::Scan)) {
    return true;
  }
  Form42& form = *turn.form;
  if (user) {
    form.userScope = scopeOf(*user, computer.users(), turns.empty());
  }
  prepareForm(form, options, streams);
  if (user && computer.keepsAtOnce() && form.safeguards.asksService) {
    throw std::runtime_error(
        "the management service knows only the user who asks it; for --user all let the program "
        "read by itself (--provider direct)");
  }
  form.dialogs.show = [this, user, show = form.dialogs.show](const UserMessage& message) {
    if (message.isQuestion) {
      answer = answer ? answer : show(message);
      return *answer;
    }
    UserMessage named = message;
    named.text.insert(0, user ? user->name + ": " : std::string());
    return show(named);
  };
  turns.push_back(std::move(turn));
  const bool isComplete = scanNotingRefusals(form);
  requireExclusions(form);
  noteCategories(form, user, streams);
  return isComplete;
}

// As described, a key is opened for changes or not at all.
bool UserTurns::scanNotingRefusals(Form42& form) {
  if (form.safeguards == asDescribed()) {
    return runScanOn(form, options, streams);
  }
  const RefusedKeys noted;
  const bool isComplete = runScanOn(form, options, streams);
  refused.insert(noted.paths().begin(), noted.paths().end());
  return isComplete;
}

std::vector<std::string> UserTurns::unseen() const {
  if (refused.empty()) {
    return {};
  }
  const std::string& first = *refused.begin();
  const std::string keys = refused.size() == 1
                               ? first
                               : std::to_string(refused.size()) + " keys, such as " + first + ",";
  return {keys + " could not be read by this user; an administrator may see more"};
}

bool UserTurns::take(const UserTurn& turn, UserWork work) {
  if (!turn.user) {
    return true;
  }
  try {
    computer.actAs(*turn.user, work);
    return true;
  } catch (const std::runtime_error& error) {
    leaveOut(error.what());
    return false;
  }
}

ScanResult UserTurns::result() const {
  return together(options.target.everyUser ? computer.users() : std::vector<ComputerUser>());
}

ScanResult UserTurns::resultToPrint(const std::vector<std::string>& gaps) const {
  if (!tellsFacts(options)) {
    return result();
  }
  const std::vector<ComputerUser> everyone = computer.users();
  ScanResult all = together(everyone);
  ResultFacts& facts = all.facts;
  facts.command = options.command == Command::Fix ? "fix" : "scan";
  facts.computer = factsOfComputer();
  for (const UserTurn& turn : turns) {
    if (turn.user) {
      facts.users.push_back(*turn.user);
    } else if (!everyone.empty()) {
      facts.users.push_back(everyone.front());
    }
  }
  facts.warnings = *streams.told;
  const auto unseenLine = unseen();
  facts.warnings.insert(facts.warnings.end(), gaps.begin(), gaps.end());
  facts.warnings.insert(facts.warnings.end(), unseenLine.begin(), unseenLine.end());
  facts.unseen.assign(refused.begin(), refused.end());
  facts.started = started;
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - startedAt;
  facts.seconds = options.now.empty() ? std::round(taken.count() * 1000) / 1000 : 0;
  facts.isComplete = gaps.empty() && !isIncomplete;
  return all;
}

ScanResult UserTurns::together(const std::vector<ComputerUser>& everyone) const {
  ScanResult all;
  for (const UserTurn& turn : turns) {
    ScanResult one = scanResultOf(*turn.form, computer, everyone);
    all.tellsUsers = turn.user.has_value();
    if (all.categories.empty()) {
      all.categories = std::move(one.categories);
    } else {
      addCounts(all.categories, one.categories);
    }
    all.hives = std::move(one.hives);
    std::ranges::move(one.findings, std::back_inserter(all.findings));
    for (std::string& line : one.implausible) {
      all.implausible.push_back((turn.user ? turn.user->name + ": " : "") + line);
    }
  }
  return all;
}

void UserTurns::writeReport() const {
  std::string text;
  for (const UserTurn& turn : turns) {
    const std::string heading =
        turn.user ? "User " + turn.user->name + " (" + turn.user->sid + ")\r\n\r\n" : "";
    text += (text.empty() ? "" : "\r\n") + heading + reportOf(*turn.form, options);
  }
  console::writeReport(text, options);
}

std::string placeOf(const std::optional<ComputerUser>& user, const std::string& place) {
  const std::string_view root = longName(HiveHandle::CurrentUser);
  const bool isUsers = user && place.starts_with(std::string(root) + "\\");
  return isUsers ? std::string(longName(HiveHandle::Users)) + "\\" + user->key +
                       place.substr(root.size())
                 : place;
}

}  // namespace zelvreg::console
