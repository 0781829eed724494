#include "machine/computer/MachineSettings.h"

#include <charconv>

#include "machine/base/CodePage.h"
#include "machine/base/HostName.h"
#include "machine/base/MachineError.h"
#include "machine/base/Trimming.h"
#include "machine/computer/Clock.h"

namespace zelvreg::machine {

namespace {

enum class Section { None, Machine, Environment };

constexpr std::string_view blanks = " \t";

std::optional<unsigned> number(std::string_view text) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// "2026-01-31T13:45:06"
std::optional<SYSTEMTIME> parseTime(std::string_view text) {
  constexpr std::string_view form = "dddd-dd-ddTdd:dd:dd";
  if (text.size() != form.size()) return std::nullopt;
  for (std::size_t at = 0; at < form.size(); ++at) {
    const bool isDigit = text[at] >= '0' && text[at] <= '9';
    if (form[at] == 'd' ? !isDigit : text[at] != form[at]) return std::nullopt;
  }
  const auto part = [&](std::size_t at, std::size_t size) {
    return static_cast<WORD>(number(text.substr(at, size)).value_or(0));
  };
  const SYSTEMTIME time{part(0, 4),  part(5, 2),  0,           part(8, 2),
                        part(11, 2), part(14, 2), part(17, 2), 0};
  if (!isRealTime(time)) return std::nullopt;
  return time;
}

bool isUserName(std::string_view text) {
  return !text.empty() && text.find_first_of("\\/:*?\"<>|") == std::string_view::npos;
}

class Reader {
 public:
  void readLine(std::string_view line) {
    ++lineNumber;
    line = trimmed(line, blanks);
    if (!isUtf8(line)) refuse("the line is not UTF-8", "save the file as UTF-8");
    if (line.empty() || line[0] == ';' || line[0] == '#') return;
    if (line[0] == '[') {
      openSection(line);
      return;
    }
    const std::size_t equals = line.find('=');
    if (section == Section::None) refuse("a line before any section", "put it under [machine]");
    if (equals == std::string_view::npos || trimmed(line.substr(0, equals), blanks).empty()) {
      refuse("\"" + std::string(line) + "\" is not NAME=value", "write it so, or begin it with ;");
    }
    const std::string name(trimmed(line.substr(0, equals), blanks));
    const std::string value(trimmed(line.substr(equals + 1), blanks));
    if (section == Section::Environment) {
      settings.environment.emplace_back(name, value);
    } else {
      set(name, value);
    }
  }

  MachineSettings settings;

 private:
  [[noreturn]] void refuse(const std::string& what, const std::string& whatToDo) const {
    throw MachineError("machine.ini:" + std::to_string(lineNumber) + ": " + what + "; " + whatToDo);
  }

  void openSection(std::string_view line) {
    if (line == "[machine]") {
      section = Section::Machine;
    } else if (line == "[environment]") {
      section = Section::Environment;
    } else {
      refuse("there is no section " + std::string(line), "use [machine] or [environment]");
    }
  }

  void set(const std::string& name, const std::string& value) {
    const std::string refused = name + "=" + value + " is not understood";
    if (name == "bits") {
      if (value != "64" && value != "32") refuse(refused, "write 64 or 32");
      settings.is64Bit = value == "64";
    } else if (name == "codepage") {
      settings.codePage = codePage(value);
    } else if (name == "user") {
      if (!isUserName(value)) refuse(refused, "a user's name has none of \\ / : * ? \" < > |");
      settings.user = value;
    } else if (name == "now") {
      settings.now = parseTime(value);
      if (!settings.now) refuse(refused, "write a time as 2026-01-31T13:45:06");
    } else if (name == "suite") {
      if (value != "1" && value != "0") refuse(refused, "write 1 or 0");
      settings.hasSuite = value == "1";
    } else {
      refuse("there is no setting \"" + name + "\"", "use bits, codepage, user, now or suite");
    }
  }

  [[nodiscard]] unsigned codePage(const std::string& value) const {
    try {
      return sharedCodePage(number(value).value_or(0)).number();
    } catch (const MachineError&) {
      refuse("code page " + value + " is not known",
             "use one of 874, 932, 936, 949, 950, 1250 to 1258, 65001");
    }
  }

  Section section = Section::None;
  int lineNumber = 0;
};

}  // namespace

std::vector<std::string_view> linesOf(std::string_view content) {
  if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
  std::vector<std::string_view> lines;
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    std::string_view line = content.substr(0, end);
    content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

MachineSettings parseMachineSettings(std::string_view content) {
  Reader reader;
  for (const std::string_view line : linesOf(content)) reader.readLine(line);
  return std::move(reader.settings);
}

}  // namespace zelvreg::machine
