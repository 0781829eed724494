#include "SearchBench.h"

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "OpenMachine.h"
#include "form/Form42.h"
#include "shell/StartUp.h"

namespace zelvreg::bench {
namespace {

enum class Reads : bool { Keys, KeysAndTexts };

// Plain loops: each key is opened by its path once for its subkeys and, where texts are read, once
// for its values; each text is read by an open of its own.
class Enumeration {
 public:
  explicit Enumeration(Reads whatIsRead) : reads(whatIsRead) {}

  double walk(const std::u16string& path) {
    ++keys;
    std::vector<std::u16string> names;
    HKEY key = nullptr;
    if (RegOpenKeyW(HKEY_LOCAL_MACHINE, path.c_str(), &key) != ERROR_SUCCESS) {
      return keys;
    }
    std::array<char16_t, 256> name;
    for (DWORD index = 0;
         RegEnumKeyW(key, index, name.data(), static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
         ++index) {
      names.emplace_back(name.data());
    }
    RegCloseKey(key);
    for (const std::u16string& below : names) {
      walk(path.empty() ? below : path + u"\\" + below);
    }
    if (reads == Reads::KeysAndTexts) {
      readTexts(path);
    }
    return keys;
  }

 private:
  void readTexts(const std::u16string& path) {
    HKEY key = nullptr;
    RegOpenKeyW(HKEY_LOCAL_MACHINE, path.c_str(), &key);
    auto size = static_cast<DWORD>(valueName.size());
    DWORD type = REG_NONE;
    for (DWORD index = 0; RegEnumValueW(key, index, valueName.data(), &size, nullptr, &type,
                                        nullptr, nullptr) == ERROR_SUCCESS;
         ++index) {
      if (type == REG_SZ) {
        readText(path);
      }
      size = static_cast<DWORD>(valueName.size());
    }
    RegCloseKey(key);
  }

  void readText(const std::u16string& path) {
    HKEY key = nullptr;
    auto size = static_cast<DWORD>(data.size());
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, &key);
    RegQueryValueExW(key, valueName.data(), nullptr, nullptr, data.data(), &size);
    RegCloseKey(key);
  }

  Reads reads;
  double keys = 0;
  std::vector<char16_t> valueName = std::vector<char16_t>(16384);
  std::vector<BYTE> data = std::vector<BYTE>(65536);
};

// The second look at what was found is measured with the scan.
double searchSeconds(double& findings) {
  Form42 form;
  Form_Load(form);
  form.lookAgain.bind({});
  form.cboRoot.setText("HKEY_LOCAL_MACHINE");
  const double seconds = secondsOf([&form] { form.cmdFind.click(); });
  findings = static_cast<double>(form.View2.count());
  return seconds;
}

std::vector<double> measureHere(const std::filesystem::path& folder, std::size_t pairs) {
  const auto computer = openMachine(folder);
  SearchFigures figures;
  // The first search reads the folders of the disk, which are kept from then on.
  searchSeconds(figures.findings);
  figures.loadedMemory = memoryNow();
  resetMemoryPeak();
  figures.times = compare(
      pairs,
      [&] { return secondsOf([&] { figures.keys = Enumeration(Reads::KeysAndTexts).walk(u""); }); },
      [&] { return searchSeconds(figures.findings); });
  figures.keysOnly =
      compare(
          pairs, [] { return secondsOf([] { Enumeration(Reads::Keys).walk(u""); }); },
          [] { return 1.0; })
          .first;
  figures.searchPeak = memoryPeak();
  return {figures.times.first, figures.times.second, figures.times.ratio,  figures.keysOnly,
          figures.keys,        figures.findings,     figures.loadedMemory, figures.searchPeak};
}

}  // namespace

SearchFigures measureSearch(const std::filesystem::path& folder, std::size_t pairs) {
  const std::vector<double> numbers = runInChild([&] { return measureHere(folder, pairs); });
  return {.times = {numbers.at(0), numbers.at(1), numbers.at(2)},
          .keysOnly = numbers.at(3),
          .keys = numbers.at(4),
          .findings = numbers.at(5),
          .loadedMemory = numbers.at(6),
          .searchPeak = numbers.at(7)};
}

}  // namespace zelvreg::bench
