#include <algorithm>
#include <optional>
#include <stdexcept>

#include "console/Computer.h"
#include "console/RunningComputer.h"
#include "runtime/SingleInstance.h"

namespace zelvreg::console {
namespace {

class RunningComputer : public Computer {
 public:
  RunningComputer(const Target& target, Access access, const ProfileCalls& calls) : hives(calls) {
    if (access == Access::Alone && !instance.emplace().isFirst()) {
      throw std::runtime_error(
          "another copy of the program is working on this computer's registry, perhaps another "
          "user's; "
          "close its window or wait until it ends");
    }
    if (access == Access::Alone) {
      hives.removeLeftovers();
    }
    ProfileList list = listProfiles();
    profiles = std::move(list.profiles);
    if (target.everyUser) {
      leftOut = std::move(list.leftOut);
    }
  }
  [[nodiscard]] std::vector<ComputerUser> users() const override {
    std::vector<ComputerUser> users;
    std::ranges::transform(profiles, std::back_inserter(users), &ListedProfile::user);
    return users;
  }
  void actAs(const ComputerUser& user, UserWork work) override {
    endActing();
    const auto profile = std::ranges::find_if(
        profiles, [&](const ListedProfile& one) { return one.user.sid == user.sid; });
    // The first is who runs the program.
    if (profile != profiles.begin()) {
      acting.emplace(*profile, work, hives);
    }
  }
  void endActing() override { acting.reset(); }
  [[nodiscard]] std::vector<std::string> faultsOf(const ComputerUser& /*user*/) const override {
    return {};
  }
  [[nodiscard]] std::vector<std::string> faultsOfComputer() const override { return {}; }
  [[nodiscard]] std::vector<std::string> damage() const override { return {}; }
  [[nodiscard]] std::vector<std::string> unclean() const override { return {}; }
  [[nodiscard]] std::vector<std::string> unsaved() const override { return {}; }
  [[nodiscard]] std::vector<std::string> notices() const override { return leftOut; }
  void save() override {}
  void close() override {
    endActing();
    hives.unloadAll();
    if (const auto lines = hives.stillLoaded(); !lines.empty()) {
      throw std::runtime_error(lines.front());
    }
  }
  [[nodiscard]] bool keepsAtOnce() const override { return true; }

 private:
  std::optional<SingleInstance> instance;
  LoadedHives hives;
  std::vector<ListedProfile> profiles;
  std::vector<std::string> leftOut;
  std::optional<ActingProfile> acting;
};

}  // namespace

std::unique_ptr<Computer> openRunningComputer(const Target& target, Access access,
                                              const ProfileCalls& calls) {
  return std::make_unique<RunningComputer>(target, access, calls);
}

std::unique_ptr<Computer> Computer::open(const Target& target, Access access) {
  return openRunningComputer(target, access, systemProfileCalls());
}

}  // namespace zelvreg::console
