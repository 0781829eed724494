// Which keys and values the repair of a list of findings may take.
#ifndef ZELVREG_TESTS_REPAIR_REACH_OF_REPAIR_H
#define ZELVREG_TESTS_REPAIR_REACH_OF_REPAIR_H

#include <set>
#include <string>

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::fixture {

class ReachOfRepair {
 public:
  // Of all rows. `userSid` names the current user's key.
  ReachOfRepair(const Form42& form, const std::string& userSid);

  // Whether this entry of a RegistryContent lies in it. Both views, each control set and the
  // classes of the machine and of the user count as the same.
  [[nodiscard]] bool holds(const std::string& entry) const;

 private:
  void addRow(const Form42& form, std::size_t row);
  [[nodiscard]] std::string plain(const std::string& path) const;

  std::string user;
  std::set<std::string> trees;
  std::set<std::string> values;
};

}  // namespace zelvreg::fixture

#endif
