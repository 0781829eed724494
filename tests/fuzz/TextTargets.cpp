// Texts of the registry that are read as paths and command lines: by the second look, by the scan,
// and by the search.
#include <array>

#include "evidence/CommandText.h"
#include "evidence/Launchers.h"
#include "evidence/TextLook.h"
#include "form/Form42.h"
#include "fuzz/FuzzTarget.h"
#include "scan/Resolver.h"
#include "search/DeadPath.h"
#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg::fuzz {
namespace {

// Windows folders and some programs.
class ComputerWithFiles : public fixture::MachineBuilder {
 public:
  ComputerWithFiles() {
    for (const char* path : {R"(C:\Windows\System32\rundll32.exe)", R"(C:\Windows\explorer.exe)",
                             R"(C:\Program Files\a b\c.exe)", R"(C:\a.dll)"}) {
      file(path);
    }
    folder(R"(C:\Windows\SysWOW64)");
    key(R"(HKEY_CURRENT_USER\Environment)", R"("VENDOR"="C:\\Program Files")");
    start();
  }
};

// The registry gives texts without halves of characters in their bytes.
std::string registryText(std::string_view input) { return utf8(utf16(input)); }

void readCommand(std::string_view input) {
  static const ComputerWithFiles computer;
  const std::string text = registryText(input);
  const CommandParts parts = commandParts(text);
  require(parts.program.size() + parts.arguments.size() <= text.size(),
          "a program and its arguments are parts of the text");
  launchTarget(parts.program, parts.arguments);
  for (const TextIs kind : {TextIs::Path, TextIs::Command}) {
    require(fileReadings(text, kind).size() <= mostReadings, "a text has so many readings at most");
  }
  require(guidIn(text).empty() || text.find(guidIn(text)) != std::string::npos,
          "a GUID is part of the text");
  TextLook texts(Shares::Refused, 1);
  for (const Reading reading :
       {Reading::Start, Reading::Command, Reading::Library, Reading::File}) {
    const Evidence& evidence = texts.at(text, {}, reading);
    require(!evidence.reasons.empty(), "each text is judged for a reason");
    TextLook others(Shares::Refused, 1);
    require(others.at(text, {}, reading).reasons == evidence.reasons,
            "a text is judged alike whatever came before it");
  }
}

void cutAsScan(std::string_view input) {
  static const ComputerWithFiles computer;
  Form42 form;
  std::string text = registryText(input);
  FilePath(text);
  std::string path = registryText(input);
  require(GetPath(form, path).ends_with('\0'), "a path that can be tested ends in a NUL");
  FileExists(form, registryText(input));
  FolderExists(form, registryText(input));
  std::string rule = registryText(input);
  pth(form, rule);
  const std::string once = form.FirewallPath;
  pth(form, rule);
  require(form.FirewallPath == once, "a rule in lower case says the same");
}

void cutAsSearch(std::string_view input) {
  static const ComputerWithFiles computer;
  Form42 form;
  const std::string text = registryText(input);
  const std::string resolved = resolvedText(form, text);
  for (const std::string& value : {text, resolved}) {
    const std::string_view quoted = betweenFirstQuotes(value);
    require(value.find(quoted) != std::string::npos, "what is between quotes is part of the text");
    const std::string plain = withoutQuotesAndIndex(value);
    require(plain.find_first_of("\",") == std::string::npos,
            "neither quotes nor an index are left");
    require(programOf(value).size() <= value.size(), "a program is part of its command line");
    if (isTestablePath(plain)) {
      isDeadPath(form, plain);
    }
  }
}

constexpr std::array<FuzzTarget, 3> targets{{
    {.name = "command", .run = readCommand},
    {.name = "scan-text", .run = cutAsScan},
    {.name = "search-text", .run = cutAsSearch},
}};

}  // namespace

std::span<const FuzzTarget> textTargets() { return targets; }

}  // namespace zelvreg::fuzz
