// Random computers, on which the same names are in both views, with both users and in
// lists of the same sort, some of them dead and some in use.
#ifndef ZELVREG_TESTS_REPAIR_RANDOM_MACHINE_H
#define ZELVREG_TESTS_REPAIR_RANDOM_MACHINE_H

#include <map>
#include <random>
#include <string>

#include "support/MachineFixture.h"

namespace zelvreg::fixture {

// What a text refers to on these computers, as their maker knows.
enum class Fate {
  Dead,
  InUse,      // it is there, or nobody can tell from here
  Describes,  // it refers to nothing
};

// How many computers a test is to make: as many as are asked for; some at any rate.
std::uint32_t randomMachineCount();

class RandomMachine {
 public:
  // Describes the computer; the builder starts it.
  RandomMachine(MachineBuilder& builder, std::uint32_t seed);

  // Of a text of this computer, by its bytes in the registry.
  [[nodiscard]] Fate fateOf(const std::string& text) const { return fates.at(text); }

  static constexpr const char* otherUser = "S-1-5-21-1-1-1-1002";

 private:
  bool chance(int percent);
  std::string anyText();
  std::string valueLine(const std::string& name, const std::string& text);
  void addKey(const std::string& path, const std::string& lines);
  // A key with a default value, by chance with others and with keys below it.
  void addRecord(const std::string& path, int percent);
  void addValues(const std::string& path, int percent, const std::string& ending);
  void addClasses(const std::string& classes);
  void addSoftware(const std::string& root);
  void addExtensions();
  void addHelp();
  void addFirewall();

  MachineBuilder& machine;
  std::mt19937 random;
  std::map<std::string, Fate> fates;
};

}  // namespace zelvreg::fixture

#endif
