// Other names for computers and users, so that a report can be shown to others.
#ifndef ZELVREG_FLEET_PSEUDONYMS_H
#define ZELVREG_FLEET_PSEUDONYMS_H

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fleet/Merged.h"

namespace zelvreg::fleet {

// Computers become "computer-1" and so on, users "user-1". Within one report a name has the same
// number wherever it stands: as a name, in a path, in a file's name, in a warning; so have a user's
// name and SID. The numbers follow the order of digests that are made with a key, so who does not
// know it can neither guess names and test them nor tell anything from the order.
class Pseudonyms {
 public:
  // The key must be random, and used for nothing else.
  explicit Pseudonyms(std::string randomKey) : key(std::move(randomKey)) {}

  void addUser(const std::string& name, const std::string& sid);

  // Replaces all names in a merged result, and takes out what tells a computer without its name.
  // The lists are sorted anew.
  void applyTo(Merged& merged);

 private:
  using Pseudonym = std::pair<std::u32string, std::string>;  // of a name

  void gather(const Merged& merged);
  void gatherFrom(const std::string& text);
  void numberAll();
  void know(const std::string& name, const std::string& pseudonym);
  [[nodiscard]] std::string userOf(const std::string& folder) const;
  [[nodiscard]] std::string ofComputer(const std::string& name, const std::string& file) const;
  [[nodiscard]] std::string replaced(const std::string& text) const;
  void replaceIn(ComputerSummary& computer) const;

  std::string key;
  // All names are in lower case.
  std::map<std::string, std::string> computers;  // pseudonyms by name
  std::map<std::string, std::string> files;      // names of computers by those of their files
  std::map<std::string, std::string> users;      // pseudonyms by name, by SID where it has none
  std::map<std::string, std::string> nameOfSid;  // the SID itself where it has none
  std::set<std::string> folders;                 // of profiles
  // By the first word of the name, the longest names first.
  std::map<std::u32string, std::vector<Pseudonym>> known;
};

}  // namespace zelvreg::fleet

#endif
