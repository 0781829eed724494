// Only the emulated computer can be asked how many keys are open.
#include <array>
#include <functional>

#include "keys/Deletion.h"
#include "keys/OpenPair.h"
#include "machine/Machine.h"
#include "machine/registry/Registry.h"
#include "registry/KeptRoutines.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/SafeguardSources.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\OpenHandlesTest";
const std::string place = "SOFTWARE\\OpenHandlesTest";

// How many keys a routine leaves open where that is how it is to be.
struct Routine {
  const char* name;
  std::function<void(Form42& form, const std::string& path)> run;
  std::size_t left;
  std::size_t leftAfterStop;
};

using SubkeyRoutine = void (*)(Form42& form, const std::string& hive, const std::string& key,
                               std::string& names, LONG& rc);

auto enumerator(SubkeyRoutine routine) {
  return [routine](Form42& form, const std::string& path) {
    std::string names;
    LONG rc = 0;
    routine(form, "HKLM", path, names, rc);
  };
}

const std::array<Routine, 8> routines{{
    {"fEnumKey",
     [](Form42& form, const std::string& path) { fEnumKey(form, HiveHandle::LocalMachine, path); },
     0, 0},
    // The only walk that leaves its key open when it is stopped.
    {"fEnumKeyno", enumerator(fEnumKeyno), 0, 1},
    {"fEnumKey1",
     [](Form42& form, const std::string& path) { fEnumKey1(form, HiveHandle::LocalMachine, path); },
     0, 0},
    {"fEnumKey5", enumerator(fEnumKey5), 0, 0},
    {"fEnumKey6", enumerator(fEnumKey6), 0, 0},
    {"fEnumValue_old", enumerator(fEnumValue_old), 0, 0},
    // Deletions leave their key open, whatever comes of them.
    {"fDeleteKey",
     [](Form42& /*form*/, const std::string& path) { fDeleteKey("HKLM", path, "None"); }, 1, 1},
    {"fDeleteValue",
     [](Form42& /*form*/, const std::string& path) { fDeleteValue("HKLM", path, "None"); }, 1, 1},
}};

class OpenHandlesTest : public fixture::ComputerFixture {
 protected:
  OpenHandlesTest() {
    leaveKeysOpen(true);
    makeKey(key + "\\Below");
    makeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\OpenHandlesTest\\Below");
    setText(key, "Value", "text");
  }

  ~OpenHandlesTest() override { leaveKeysOpen(false); }

  static std::size_t open() { return machine::Machine::current()->registry().handles().size(); }
  std::size_t leftBy(const Routine& routine, const std::string& path) {
    const std::size_t before = open();
    routine.run(form, path);
    return open() - before;
  }
};

TEST_F(OpenHandlesTest, AWalkToTheEndClosesItsKey) {
  for (const Routine& routine : routines) {
    EXPECT_EQ(leftBy(routine, place), routine.left) << routine.name;
  }
}

TEST_F(OpenHandlesTest, AStopIsNotTheSameForAll) {
  form.Text2.setText("2");
  for (const Routine& routine : routines) {
    EXPECT_EQ(leftBy(routine, place), routine.leftAfterStop) << routine.name;
  }
}

TEST_F(OpenHandlesTest, WithASafeguardInForceEachClosesItsKey) {
  leaveKeysOpen(false);
  for (const char* stop : {"", "2"}) {
    form.Text2.setText(stop);
    for (const Routine& routine : routines) {
      EXPECT_EQ(leftBy(routine, place), 0U) << routine.name;
    }
  }
}

TEST_F(OpenHandlesTest, WhetherTheyStayOpenIsDecidedWithTheSafeguards) {
  const auto left = [this](bool isToTheLetter) {
    form.safeguardChoices = isToTheLetter ? choicesAsDescribed() : std::vector<SafeguardChoice>();
    decideSafeguards(form);
    const std::size_t before = open();
    fDeleteValue("HKLM", place, "None");
    return open() - before;
  };
  EXPECT_EQ(left(false), 0U);
  EXPECT_EQ(left(true), 1U);
  EXPECT_EQ(left(false), 0U);
}

TEST_F(OpenHandlesTest, AKeyThatIsMissingIsNotOpen) {
  for (const Routine& routine : routines) {
    EXPECT_EQ(leftBy(routine, place + "\\None"), 0U) << routine.name;
  }
}

TEST_F(OpenHandlesTest, AReadingThatFailsLeavesItsKeyOpen) {
  makeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\OpenHandlesTest");
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\OpenHandlesTest", "Value", "text");
  const auto read = [](const char* name) {
    return Routine{"fReadValue",
                   [name](Form42& /*form*/, const std::string& path) {
                     Variant value;
                     LONG rc = 0;
                     fReadValue("HKLM", path, name, "S", "", value, rc);
                   },
                   0, 0};
  };
  EXPECT_EQ(leftBy(read("Value"), place), 0U);
  EXPECT_EQ(leftBy(read("None"), place), 1U);
}

TEST_F(OpenHandlesTest, AListOfValuesOfWhichOneCannotBeReadLeavesItsKeyOpen) {
  auto& faults = machine::Machine::current()->faults();
  faults.fail(machine::ApiCall::RegQueryValue, 1, ERROR_ACCESS_DENIED);
  EXPECT_EQ(leftBy({"fEnumValue_old", enumerator(fEnumValue_old), 0, 0}, place), 1U);
  faults.clear();
}

}  // namespace
}  // namespace zelvreg
