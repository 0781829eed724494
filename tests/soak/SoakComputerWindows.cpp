#include <windows.h>

#include "soak/SoakComputer.h"

namespace zelvreg::fixture {
namespace {

constexpr const wchar_t* startup = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const wchar_t* names[] = {L"soak 1", L"soak 2", L"soak 3"};

class ThisComputer : public SoakComputer {
 public:
  ThisComputer() {
    constexpr wchar_t dead[] = L"C:\\Gone\\gone.exe";
    for (const wchar_t* name : names) {
      RegSetKeyValueW(HKEY_CURRENT_USER, startup, name, REG_SZ, dead, sizeof dead);
    }
  }
  ThisComputer(const ThisComputer&) = delete;
  ThisComputer& operator=(const ThisComputer&) = delete;
  ~ThisComputer() override {
    for (const wchar_t* name : names) {
      RegDeleteKeyValueW(HKEY_CURRENT_USER, startup, name);
    }
  }

  [[nodiscard]] std::vector<std::string> target() const override { return {}; }
  [[nodiscard]] std::filesystem::path exports() const override {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return std::filesystem::path(program).parent_path() / L"backup" / L"registry";
  }
};

}  // namespace

std::unique_ptr<SoakComputer> SoakComputer::make() { return std::make_unique<ThisComputer>(); }

}  // namespace zelvreg::fixture
