#include "machine/TemporaryFolder.h"
#include "soak/SoakComputer.h"

namespace zelvreg::fixture {
namespace {

constexpr const char* registry = R"(Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion]
"SystemRoot"="C:\\Windows"

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Run]
"soak 1"="C:\\Gone\\gone.exe"
"soak 2"="C:\\Gone\\gone.exe /x"
"soak 3"="\"C:\\Gone\\gone.exe\""
)";

class FolderComputer : public SoakComputer {
 public:
  FolderComputer() {
    home.write("registry.reg", registry);
    home.makeFolder("C/Windows/System32");
  }

  [[nodiscard]] std::vector<std::string> target() const override {
    return {"--machine", home.path().string()};
  }
  [[nodiscard]] std::filesystem::path exports() const override {
    return home.path() / "C/Program Files (x86)/zelvreg/backup/registry";
  }

 private:
  TemporaryFolder home;
};

}  // namespace

std::unique_ptr<SoakComputer> SoakComputer::make() { return std::make_unique<FolderComputer>(); }

}  // namespace zelvreg::fixture
