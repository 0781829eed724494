#include <windows.h>

// This one needs <windows.h> before it.
#include <shlwapi.h>

#include <cstdlib>
#include <stdexcept>

#include "support/ComputerFixture.h"

namespace zelvreg::fixture {
namespace {

// An emulated computer begins anew with each test. Here all tests share one registry, and what one
// of them sets (a font, a theme, a size) would decide what the next one sees.
class SettingsOfOneTest : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    SHDeleteKeyW(HKEY_LOCAL_MACHINE, L"Software\\zelvane");
    SHDeleteKeyW(HKEY_CURRENT_USER,
                 L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize");
  }
};

const bool isListening = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new SettingsOfOneTest);
  return true;
}();

}  // namespace

std::unique_ptr<RunningComputer> RunningComputer::start(int /*bits*/) {
  // The tests delete and write where a real computer keeps its own.
  if (std::getenv("ZELVREG_THROW_AWAY_PREFIX") == nullptr) {
    throw std::runtime_error("these tests change the registry; run them with ./test");
  }
  return std::make_unique<RunningComputer>();
}

}  // namespace zelvreg::fixture
