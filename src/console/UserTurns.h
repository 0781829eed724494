// The scans that a command makes: one of the computer as its current user sees it, or one as each
// of its users.
#ifndef ZELVREG_CONSOLE_USER_TURNS_H
#define ZELVREG_CONSOLE_USER_TURNS_H

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "console/Commands.h"
#include "console/Computer.h"
#include "console/ScanResult.h"
#include "keys/RefusedKeys.h"
#include "widgets/Dialogs.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

// One scan and what it has found. Of several, the first lists also what is the computer's.
struct UserTurn {
  std::optional<ComputerUser> user;  // none for the one scan as the current user
  std::unique_ptr<Form42> form;
};

class UserTurns {
 public:
  // All that is given must outlive it.
  UserTurns(const Options& optionsInUse, Computer& computerInUse, const Streams& streamsInUse);
  ~UserTurns();
  UserTurns(const UserTurns&) = delete;
  UserTurns& operator=(const UserTurns&) = delete;

  // All users but those whose keys must not be written. These are named.
  [[nodiscard]] std::vector<ComputerUser> usersToRepair();

  // A turn for each of the users; for none of them one as the current user. Who cannot be scanned
  // is named. False if the user has interrupted it; what was found so far is there. Throws
  // std::runtime_error as the commands do.
  bool scan(const std::vector<ComputerUser>& users);

  // Those of the last scan.
  [[nodiscard]] const std::vector<UserTurn>& all() const { return turns; }
  // Makes the turn's user the current one again. False if that is not possible: why was said.
  bool take(const UserTurn& turn, UserWork work);
  // Whether somebody was left out, so that the command has not done all.
  [[nodiscard]] bool isAnybodyLeftOut() const { return isIncomplete; }

  // A line about what the last scan could not see for lack of rights; none if it saw all.
  [[nodiscard]] std::vector<std::string> unseen() const;

  // Of all turns together.
  [[nodiscard]] ScanResult result() const;
  // The same with what the chosen format needs besides. `gaps` are lines that will be told of it
  // afterwards: why part of it was not looked at.
  [[nodiscard]] ScanResult resultToPrint(const std::vector<std::string>& gaps = {}) const;
  // Writes the text report if it was asked for.
  void writeReport() const;

 private:
  bool scanAs(const std::optional<ComputerUser>& user);
  bool scanNotingRefusals(Form42& form);
  [[nodiscard]] ScanResult together(const std::vector<ComputerUser>& everyone) const;
  void leaveOut(const std::string& line);

  const Options& options;
  Computer& computer;
  const Streams& streams;
  std::vector<UserTurn> turns;
  std::optional<Answer> answer;  // to the question before a repair, which is asked once
  std::set<std::string> told;    // why somebody was left out
  KeyPaths refused;              // keys that the scans could not open for lack of rights
  bool isIncomplete = false;
  std::string started;  // in UTC
  std::chrono::steady_clock::time_point startedAt = std::chrono::steady_clock::now();
};

// A place as a result for several users tells it: by the user's own key, since they all have a
// HKEY_CURRENT_USER.
std::string placeOf(const std::optional<ComputerUser>& user, const std::string& place);

}  // namespace zelvreg::console

#endif
