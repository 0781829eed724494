#include <algorithm>
#include <array>
#include <cwctype>
#include <filesystem>
#include <regex>
#include <sstream>

#include "keys/RootHandles.h"
#include "keys/WideKey.h"
#include "repair/FaultSweepFixture.h"
#include "roots/Roots.h"
#include "runtime/Environment.h"
#include "runtime/FileText.h"
#include "support/FaultyCalls.h"
#include "text/Wide.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

const std::string machineWindows =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
const std::string userWindows = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion";
const std::string machineStartup = machineWindows + "\\Run";
const std::string userStartup = userWindows + "\\Run";
// Where a journal restores what was in the other view.
const std::string machineStartup32 =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run";
const std::string dlls = machineWindows + "\\SharedDLLs";
const std::string dlls32 =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\SharedDLLs";
const std::string extensions = userWindows + "\\Explorer\\FileExts";
const std::string own = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane";
const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane";
const std::array places{machineStartup, machineStartup32, userStartup, dlls,
                        dlls32,         extensions,       own,         policies};

constexpr const char* folder = "C:\\FaultSweepTest";
const std::string living = std::string(folder) + "\\living.exe";
const std::string gone = std::string(folder) + "\\gone.exe";

// The settings that a scan or a repair counts with change each time.
bool isCounter(const std::string& path) {
  const std::string below = path.substr(own.size());
  return below.ends_with("\\real") || below.ends_with("\\statics") || below.ends_with("\\wizard");
}

struct Place {
  HiveHandle hive;
  std::u16string path;
};

Place placeOf(const std::string& path) {
  const auto backslash = path.find('\\');
  return {GetHiveHandle(path.substr(0, backslash)), utf16(path.substr(backslash + 1))};
}

void addKey(Picture& picture, const std::string& path) {
  const Place place = placeOf(path);
  const WideKey key(place.hive, place.path, KEY_READ);
  if (!key.isOpen() || (path.starts_with(own) && isCounter(path))) {
    return;
  }
  picture[path];
  const auto values = key.values().value_or(std::vector<WideValue>());
  for (const WideValue& value : values) {
    picture[path + "|" + utf8(value.name)] =
        std::to_string(value.type) + ":" + std::string(value.data.begin(), value.data.end());
  }
  const auto names = key.subkeys().value_or(std::vector<std::u16string>());
  for (const std::u16string& name : names) {
    addKey(picture, path + "\\" + utf8(name));
  }
}

void putBack(const std::string& entry, const std::string& content) {
  const auto bar = entry.find('|');
  const Place place = placeOf(entry.substr(0, bar));
  const WideKey key = WideKey::make(place.hive, place.path, KEY_SET_VALUE);
  if (bar != std::string::npos) {
    const auto colon = content.find(':');
    EXPECT_TRUE(key.setValue(
        {.name = utf16(entry.substr(bar + 1)),
         .type = static_cast<DWORD>(std::stoul(content)),
         .data = {content.begin() + static_cast<std::ptrdiff_t>(colon) + 1, content.end()}}));
  }
}

void addFile(Picture& picture, const fs::path& path) {
  const std::string text = utf8(reinterpret_cast<const char16_t*>(path.c_str()));
  picture["file " + text] = readFileText(text).value_or("unreadable");
}

// What the program writes into its folder: exclusions and journals, whose names begin with a day,
// and what is to replace them. In the folder of a build there is more.
bool isProgramsFile(const fs::path& path) {
  const std::wstring name = path.filename().wstring();
  return name == L"exregscan.txt" || path.extension() == L".new" ||
         (std::iswdigit(name.front()) != 0 && path.extension() == L".txt");
}

void addFiles(Picture& picture) {
  const fs::path above = Wide(programFolder()).get();
  for (const auto& entry : fs::directory_iterator(above)) {
    if (isProgramsFile(entry.path())) {
      addFile(picture, entry.path());
    }
  }
  std::error_code none;
  for (const auto& entry : fs::recursive_directory_iterator(above / L"backup", none)) {
    if (entry.is_regular_file()) {
      addFile(picture, entry.path());
    }
  }
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

bool isOwn(const std::string& entry) { return entry.starts_with(own); }
bool isFile(const std::string& entry) { return entry.starts_with("file "); }

std::string withoutTimes(const std::string& text) {
  static const std::regex times(R"(\d{8}-\d{6}(-\d)?|\d\d_\d\d_\d{4}_\d\d\.\d\d\.\d\d|)"
                                R"(\d\d\.\d\d\.\d{4} t [\d.]{8}( [\d:]{8})?)");
  return std::regex_replace(text, times, "TIME");
}

Picture withoutTimes(const Picture& picture) {
  Picture result;
  for (const auto& [entry, content] : picture) {
    // The registry's texts have a zero after each of these letters.
    std::string letters = content;
    if (isOwn(entry)) {
      std::erase(letters, '\0');
    }
    result[withoutTimes(entry)] = withoutTimes(letters);
  }
  return result;
}

const std::vector<std::string> FaultSweepFixture::dead{
    userStartup + "|dead 1",
    userStartup + "|dead 2",
    dlls32 + "|C:\\FaultSweepTest\\gone.dll",
    extensions + "\\.faultsweepgone",
};

FaultSweepFixture::FaultSweepFixture() : found(picture()) {
  restore({});
  // Made once: an earlier repair must not have the time of the next.
  static Picture made;
  if (made.empty()) {
    make();
    made = picture();
  }
  restore(made);
}

void FaultSweepFixture::make() {
  makeFile(living);
  makeFile(std::string(folder) + "\\living.dll");
  setText(machineStartup, "earlier", gone);
  EXPECT_EQ(run({"undo", "on"}).status, console::nothingFound);
  EXPECT_EQ(run({"fix", "--yes", "--only", "startup"}).status, console::nothingFound);
  EXPECT_EQ(storedText(machineStartup, "earlier"), "(none)");
  Sleep(1100);
  setText(userStartup, "dead 1", gone);
  setText(userStartup, "dead 2", gone + " /quiet");
  setText(userStartup, "living", living);
  setText(machineStartup, "excluded", gone);
  setNumber(dlls32, "C:\\FaultSweepTest\\gone.dll", 1);
  setNumber(dlls32, "C:\\FaultSweepTest\\living.dll", 1);
  makeKey(extensions + "\\.faultsweepgone\\OpenWithProgids");
  makeKey(extensions + "\\.faultsweepkept\\OpenWithProgids");
  setText(extensions + "\\.faultsweepliving\\OpenWithList", "a", "x");
  setText(extensions + "\\.faultsweepliving\\OpenWithProgids", "faultsweep", "");
  setText("HKEY_CURRENT_USER\\Software\\Classes\\faultsweep", "", "x");
  EXPECT_EQ(run({"exclude", "add", machineStartup}).status, console::nothingFound);
  setText(policies + "\\zelvreg\\Exclusions", "1", extensions + "\\.faultsweepkept");
}

FaultSweepFixture::~FaultSweepFixture() { restore(found); }

Ended FaultSweepFixture::run(const Arguments& arguments) {
  Ended result;
  result.status = ended(arguments);
  result.out = out.str();
  result.lines = linesOf(error.str());
  return result;
}

Ended FaultSweepFixture::runFailing(const Arguments& arguments, machine::FaultPlan& plan) {
  const FaultyCalls faulty(plan);
  return run(arguments);
}

Picture FaultSweepFixture::picture() {
  Picture result;
  for (const std::string& place : places) {
    addKey(result, place);
  }
  addFiles(result);
  return result;
}

void FaultSweepFixture::restore(const Picture& before) {
  const Picture now = picture();
  if (now == before) {
    return;
  }
  for (const std::string& place : places) {
    const auto isBelow = [&](const auto& entry) { return entry.first.starts_with(place); };
    const auto count = std::ranges::count_if(before, isBelow);
    const bool isSame = count == std::ranges::count_if(now, isBelow) &&
                        std::ranges::all_of(before, [&](const auto& entry) {
                          return !isBelow(entry) ||
                                 (now.contains(entry.first) && now.at(entry.first) == entry.second);
                        });
    if (!isSame) {
      removeKey(place);
      for (const auto& [entry, content] : before) {
        if (entry.starts_with(place)) {
          putBack(entry, content);
        }
      }
    }
  }
  for (const auto& [entry, content] : now) {
    if (isFile(entry) && !before.contains(entry)) {
      DeleteFileW(Wide(entry.substr(5)).get());
    }
  }
  for (const auto& [entry, content] : before) {
    if (isFile(entry) && (!now.contains(entry) || now.at(entry) != content)) {
      EXPECT_TRUE(replaceFileText(entry.substr(5), content, FileReaders::Administrators)) << entry;
    }
  }
}

std::string FaultSweepFixture::newestExport() {
  std::string newest;
  for (const auto& [entry, content] : picture()) {
    if (isFile(entry) && entry.ends_with(".reg")) {
      newest = std::max(newest, entry.substr(5));
    }
  }
  return newest;
}

}  // namespace zelvreg::fixture
