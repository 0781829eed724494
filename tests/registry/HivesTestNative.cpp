// Wine opens every key for an administrator and fails no write, so only the emulated computer can
// show which rights are asked for and what a refusal comes to.
#include <array>
#include <cstdio>

#include "machine/Machine.h"
#include "machine/computer/Requests.h"
#include "machine/registry/Registry.h"
#include "registry/Hives.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string settings = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\HivesTest";
const std::string place = "SOFTWARE\\HivesTest";

class HivesAccessTest : public fixture::ComputerFixture {
 protected:
  HivesAccessTest() {
    emptyKey(settings);
    setText(settings, "Name", "text");
  }
  ~HivesAccessTest() override { allow(KEY_ALL_ACCESS); }

  // Just these rights, to everybody. An owner could read the list whatever it says.
  static void allow(REGSAM rights) {
    std::array<char, 32> number{};
    std::snprintf(number.data(), number.size(), "0x%X", static_cast<unsigned>(rights));
    machine::Machine::current()->registry().setSecurity(
        settings, machine::parseSddl(std::string("O:SYD:(A;;") + number.data() + ";;;WD)"));
  }
  static bool isRead() {
    std::string result = "before";
    const bool isDone = GetRegString(HiveHandle::LocalMachine, place, "Name", result);
    EXPECT_EQ(result, isDone ? "text" : "");
    return isDone;
  }
  static bool isSaved() { return SaveRegString(HiveHandle::LocalMachine, place, "Name", "text"); }
};

TEST_F(HivesAccessTest, ReadingAndSavingAskForTheSameRightsAndForAllOfThem) {
  constexpr REGSAM asked = 0x2003F;
  allow(asked);
  EXPECT_TRUE(isRead());
  EXPECT_TRUE(isSaved());
  for (REGSAM right = 1; right <= asked; right <<= 1) {
    if ((asked & right) != 0) {
      allow(asked & ~right);
      EXPECT_FALSE(isRead()) << right;
      EXPECT_FALSE(isSaved()) << right;
    }
  }
}

TEST_F(HivesAccessTest, SavingPassesAClassAndARecordOfAnOddLength) {
  ASSERT_TRUE(isSaved());
  const machine::KeyRequest& request = machine::Machine::current()->requests().newestKey;
  EXPECT_EQ(request.path, place);
  EXPECT_EQ(request.className, "1");
  EXPECT_EQ(request.options, static_cast<DWORD>(REG_OPTION_NON_VOLATILE));
  ASSERT_TRUE(request.hasAttributes);
  EXPECT_EQ(request.attributesLength, 50U);
  EXPECT_TRUE(request.inheritsHandle);
  EXPECT_FALSE(request.hasDescriptor);
}

TEST_F(HivesAccessTest, AWriteThatFailsIsNoSaving) {
  auto& faults = machine::Machine::current()->faults();
  faults.fail(machine::ApiCall::RegSetValue, 1, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(isSaved());
  faults.clear();
  EXPECT_TRUE(isSaved());
}

}  // namespace
}  // namespace zelvreg
