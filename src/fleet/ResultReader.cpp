#include "fleet/ResultReader.h"

#include <algorithm>

#include "fleet/ResultEvents.h"
#include "json/JsonText.h"
#include "text/Characters.h"

namespace zelvreg::fleet {
namespace {

using Json = nlohmann::json;

// Of a long list only the first lines are kept.
constexpr std::size_t mostLines = 20;

void parse(JsonSource& source, ResultEvents& events) {
  // Without the last argument what follows the value would be an error.
  if (!Json::sax_parse(JsonPlace(source), JsonPlace(), &events, Json::input_format_t::json,
                       false)) {
    throw BadResult(!events.reason().empty() ? events.reason()
                    : source.atEnd()         ? cutShort
                                             : notAResult);
  }
}

std::string textOf(const Json& object, const char* name) {
  return shortText(textIn(object.at(name)));
}

std::uint64_t numberOf(const Json& object, const char* name) {
  return object.contains(name) ? object.at(name).get<std::uint64_t>() : 0;
}

std::vector<std::string> linesOf(const Json& object, const char* name) {
  std::vector<std::string> lines;
  for (const Json& line : object.at(name)) {
    if (lines.size() < mostLines) {
      lines.push_back(shortText(textIn(line)));
    }
  }
  return lines;
}

void readHead(const Json& head, ComputerSummary& summary) {
  const Json& computer = head.at("computer");
  summary.name = textOf(computer, "name");
  summary.identity = textOf(computer, "identity");
  summary.product = textOf(computer.at("windows"), "product");
  summary.version = textOf(computer.at("windows"), "version");
  summary.bits = computer.at("bits").get<unsigned>();
  summary.command = textOf(head, "command");
  summary.started = textOf(head, "started");
  summary.seconds = head.at("seconds").get<double>();
  summary.isComplete = head.at("complete").get<bool>();
  summary.repaired = numberOf(head, "repaired");
  summary.warnings = linesOf(head, "warnings");
  summary.implausible = linesOf(head, "implausible");
  for (const Json& hive : head.at("hives")) {
    ++summary.hives[textOf(hive, "state")];
  }
}

void readUsers(const Json& head, const OnUser& onUser, ComputerSummary& summary) {
  for (const Json& user : head.at("users")) {
    ++summary.users;
    onUser({.name = textOf(user, "name"), .sid = textOf(user, "sid")});
  }
}

void count(const SeenFinding& finding, ComputerSummary& summary) {
  ++summary.findings;
  ++summary.byConfidence[finding.confidence];
  if (summary.byCategory.size() < mostCategories || summary.byCategory.contains(finding.category)) {
    ++summary.byCategory[finding.category][finding.confidence];
  }
}

// The findings of a stream stand behind its head, one a line.
void readFindings(JsonSource& source, std::uint64_t total, const OnFinding& onFinding) {
  for (std::uint64_t number = 0; number < total; ++number) {
    if (!source.findNext()) {
      throw BadResult(cutShort);
    }
    ResultEvents events(ResultEvents::Kind::Finding, onFinding);
    parse(source, events);
  }
}

}  // namespace

std::string shortText(std::string text) {
  if (text.size() > longestText) {
    text = std::string(firstBytes(text, longestText)) + "…";
  }
  return text;
}

ComputerSummary readResult(JsonSource& source, const ResultListener& listener) {
  ComputerSummary summary;
  const OnFinding onFinding = [&](const SeenFinding& finding) {
    count(finding, summary);
    listener.onFinding(finding);
  };
  ResultEvents events(ResultEvents::Kind::Result, onFinding);
  parse(source, events);
  const Json& head = events.head();
  if (!head.contains("schema")) {
    throw BadResult(notAResult);
  }
  try {
    const std::uint64_t total = head.at("total").get<std::uint64_t>();
    readHead(head, summary);
    readUsers(head, listener.onUser, summary);
    if (head.contains("stream")) {
      readFindings(source, total, onFinding);
    }
    if (summary.findings != total) {
      throw BadResult(cutShort);
    }
  } catch (const Json::exception&) {
    throw BadResult(notAResult);
  }
  return summary;
}

}  // namespace zelvreg::fleet
