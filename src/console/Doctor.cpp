#include "console/Doctor.h"

#include <algorithm>
#include <exception>

#include "console/DisplayText.h"
#include "console/Installation.h"
#include "form/Version.h"
#include "json/JsonText.h"

namespace zelvreg::console {
namespace {

struct Answer {
  const DoctorProbe* probe;
  Fact fact;
};

Fact answerOf(const DoctorProbe& probe) {
  try {
    return probe.ask();
  } catch (const std::exception& reason) {
    return {.isThere = false, .text = reason.what()};
  }
}

void printJson(const std::vector<Answer>& answers, bool isWhole, const Streams& streams) {
  nlohmann::ordered_json facts = nlohmann::ordered_json::array();
  for (const Answer& answer : answers) {
    facts.push_back({{"name", answer.probe->name},
                     {"ok", answer.fact.isThere},
                     {"needed", answer.probe->isNeeded},
                     {"text", answer.fact.text}});
  }
  streams.out << textOfJson({{"ok", isWhole}, {"facts", facts}});
}

void printLines(const std::vector<Answer>& answers, const Streams& streams) {
  constexpr std::size_t markWidth = 9;
  constexpr std::size_t nameWidth = 12;
  for (const auto& [probe, fact] : answers) {
    const std::string mark = fact.isThere ? "ok" : "missing";
    const Ink ink = fact.isThere ? Ink::Sure : probe->isNeeded ? Ink::Error : Ink::Likely;
    std::string name = probe->name;
    name.resize(std::max(nameWidth, name.size() + 1), ' ');
    streams.out << streams.tables.paint.in(ink, mark) << std::string(markWidth - mark.size(), ' ')
                << name << printable(fact.text) << "\n";
  }
}

// "3.8 GB"
std::string gigabytes(unsigned long long bytes) {
  constexpr unsigned long long tenth = 1024ULL * 1024 * 1024 / 10;
  const unsigned long long tenths = bytes / tenth;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " GB";
}

}  // namespace

Fact factOf(const std::string& whatIsMissing, const char* whatIsThere) {
  return whatIsMissing.empty() ? Fact{.isThere = true, .text = whatIsThere}
                               : Fact{.isThere = false, .text = whatIsMissing};
}

DoctorProbe versionProbe() {
  return {.name = "program", .isNeeded = true, .ask = [] {
            return Fact{.isThere = true,
                        .text = std::string("zelvreg ") + programVersion() + ", " + programFile()};
          }};
}

DoctorProbe languagesProbe() {
  return {.name = "languages", .isNeeded = true, .ask = [] {
            return languagesFact(languageFolder(), filesIn(languageFolder()));
          }};
}

Fact languagesFact(const std::string& folder, const std::vector<std::string>& files) {
  const std::size_t count = languageTags(files).size();
  if (count == 0 || std::ranges::find(files, "data.lang") == files.end()) {
    return {
        .isThere = false,
        .text = "no language files, or no list of them, in " + folder + "; install zelvreg again"};
  }
  return {.isThere = true, .text = std::to_string(count) + " in " + folder};
}

DoctorProbe terminalProbe(const Streams& streams) {
  return {.name = "terminal", .isNeeded = false, .ask = [&streams] {
            const std::size_t width = streams.tables.width;
            const bool isColored = streams.tables.paint.isColored();
            return Fact{.isThere = true,
                        .text = (width > 0 ? std::to_string(width) + " columns"
                                           : std::string("none, so tables are not cut")) +
                                (isColored ? "; in color" : "; no color")};
          }};
}

Fact memoryFact(unsigned long long bytes, unsigned long long bytesAtHand) {
  // All hives of a computer are read into memory, and a repair writes them from there.
  constexpr unsigned long long plenty = 512ULL * 1024 * 1024;
  const std::string text = gigabytes(bytesAtHand) + " of " + gigabytes(bytes) + " are free";
  return bytesAtHand >= plenty
             ? Fact{.isThere = true, .text = text}
             : Fact{.isThere = false, .text = text + "; close other programs before a repair"};
}

int runDoctor(const std::vector<DoctorProbe>& probes, Format format, const Streams& streams) {
  std::vector<Answer> answers;
  std::ranges::transform(probes, std::back_inserter(answers), [](const DoctorProbe& probe) {
    return Answer{.probe = &probe, .fact = answerOf(probe)};
  });
  const bool isWhole = std::ranges::all_of(
      answers, [](const Answer& answer) { return answer.fact.isThere || !answer.probe->isNeeded; });
  if (format == Format::Json) {
    printJson(answers, isWhole, streams);
  } else {
    printLines(answers, streams);
  }
  return isWhole ? nothingFound : failed;
}

}  // namespace zelvreg::console
