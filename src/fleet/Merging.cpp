#include "fleet/Merging.h"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "fleet/ResultReader.h"
#include "text/Text.h"

namespace zelvreg::fleet {
namespace {

// A result by where it stands: the number of its source, and its own in it.
using ResultPlace = std::pair<std::size_t, std::size_t>;

struct FoundResult {
  ResultPlace place;
  ComputerSummary summary;
};

class Merger {
 public:
  Merger(std::vector<ResultSource>& resultSources, const MergeListener& mergeListener,
         Pseudonyms* gathered, ReferenceLimits limits)
      : sources(resultSources),
        listener(mergeListener),
        pseudonyms(gathered),
        references(limits),
        resultCounts(resultSources.size()) {}

  Merged merge() {
    for (std::size_t number = 0; number < sources.size(); ++number) {
      survey(number);
    }
    dropSuperseded();
    for (std::size_t number = 0; number < sources.size(); ++number) {
      gather(number);
    }
    for (FoundResult& found : results) {
      merged.computers.push_back(std::move(found.summary));
    }
    merged.references = references.take();
    merged.leavesReferencesOut = references.leavesOut();
    countCategories();
    sortLists(merged);
    return std::move(merged);
  }

 private:
  void survey(std::size_t number);
  void surveyNote(const ResultSource& source);
  void readAll(std::size_t number, std::istream& stream);
  void gather(std::size_t number);
  void dropSuperseded();
  void supersede(const FoundResult& older, const FoundResult& newer);
  void countCategories();
  void refuse(const ResultSource& source, const std::string& why) {
    merged.failures.push_back({.file = source.file, .why = why});
    listener.onBadSource(source.path + " " + why);
  }
  [[nodiscard]] bool counts(const ResultPlace& place) const { return !superseded.contains(place); }

  std::vector<ResultSource>& sources;
  const MergeListener& listener;
  Pseudonyms* pseudonyms;
  ReferenceTable references;
  std::vector<std::size_t> resultCounts;  // of each source, before anything in it that is none
  std::vector<FoundResult> results;
  std::set<ResultPlace> superseded;
  Merged merged;
};

void Merger::surveyNote(const ResultSource& source) {
  std::string line;
  if (const auto stream = source.open()) {
    // A line that is longer is none that this program wrote.
    line.resize(longestText + 1);
    stream->read(line.data(), static_cast<std::streamsize>(line.size()));
    line.resize(static_cast<std::size_t>(stream->gcount()));
  }
  line.resize(std::min(line.find_first_of("\r\n"), line.size()));
  merged.failures.push_back(
      {.file = source.file, .why = line.empty() ? "it does not say why" : shortText(line)});
}

void Merger::survey(std::size_t number) {
  const ResultSource& source = sources[number];
  if (source.isFailureNote) {
    surveyNote(source);
    return;
  }
  const auto stream = source.open();
  if (!stream) {
    refuse(source, "cannot be read; name a file or a folder that exists");
    return;
  }
  try {
    readAll(number, *stream);
    if (resultCounts[number] == 0) {
      throw BadResult("is empty; scan that computer again");
    }
  } catch (const BadResult& why) {
    refuse(source, why.what());
  }
}

void Merger::readAll(std::size_t number, std::istream& stream) {
  ResultListener toResult;
  if (pseudonyms != nullptr) {
    toResult.onUser = [this](const SeenUser& user) { pseudonyms->addUser(user.name, user.sid); };
  }
  JsonSource source(stream);
  while (source.findNext()) {
    ComputerSummary summary = readResult(source, toResult);
    summary.file = sources[number].file;
    results.push_back({.place = {number, resultCounts[number]}, .summary = std::move(summary)});
    ++resultCounts[number];
  }
}

void Merger::supersede(const FoundResult& older, const FoundResult& newer) {
  const ComputerSummary& old = older.summary;
  const ComputerSummary& taken = newer.summary;
  merged.superseded.push_back({.name = old.name,
                               .file = old.file,
                               .started = old.started,
                               .newerFile = taken.file,
                               .newerStarted = taken.started});
  listener.onSuperseded("of " + old.name + " the result of " + taken.started + " counts (" +
                        sources[newer.place.first].path + "), not that of " + old.started + " (" +
                        sources[older.place.first].path + ")");
  superseded.insert(older.place);
}

void Merger::dropSuperseded() {
  std::map<std::pair<std::string, std::string>, const FoundResult*> newest;
  for (const FoundResult& found : results) {
    const ComputerSummary& summary = found.summary;
    if (summary.identity.empty()) {
      continue;
    }
    const auto [at, isFirst] =
        newest.try_emplace({summary.identity, lowerCase(summary.name)}, &found);
    if (isFirst) {
      continue;
    }
    // Of two that began in the same second, the one that was read last.
    const bool isOlder = summary.started < at->second->summary.started;
    supersede(isOlder ? found : *at->second, isOlder ? *at->second : found);
    at->second = isOlder ? at->second : &found;
  }
  std::erase_if(results, [this](const FoundResult& found) { return !counts(found.place); });
}

void Merger::gather(std::size_t number) {
  if (resultCounts[number] == 0) {
    return;
  }
  const auto changed = [this, number] {
    return std::runtime_error(sources[number].path +
                              " has changed while it was read; run the command again");
  };
  const auto stream = sources[number].open();
  if (!stream) {
    throw changed();
  }
  JsonSource source(*stream);
  for (std::size_t result = 0; result < resultCounts[number]; ++result) {
    ResultListener toResult;
    if (counts({number, result})) {
      references.beginComputer();
      toResult.onFinding = [this](const SeenFinding& finding) { references.add(finding); };
    }
    try {
      if (!source.findNext()) {
        throw changed();
      }
      readResult(source, toResult);
    } catch (const BadResult&) {
      throw changed();
    }
  }
}

void Merger::countCategories() {
  std::map<std::string, CategorySummary> byKey;
  for (const ComputerSummary& computer : merged.computers) {
    for (const auto& [key, counts] : computer.byCategory) {
      CategorySummary& category = byKey[key];
      category.key = key;
      category.name = key;
      ++category.computers;
      addTo(category.byConfidence, counts);
    }
  }
  for (const auto& [key, category] : byKey) {
    merged.categories.push_back(category);
  }
}

}  // namespace

Merged mergeResults(std::vector<ResultSource> sources, const MergeListener& listener,
                    Pseudonyms* pseudonyms, ReferenceLimits limits) {
  std::ranges::sort(sources, [](const ResultSource& left, const ResultSource& right) {
    return std::tie(left.file, left.path) < std::tie(right.file, right.path);
  });
  return Merger(sources, listener, pseudonyms, limits).merge();
}

void sortLists(Merged& merged) {
  std::ranges::sort(merged.computers, {}, [](const ComputerSummary& one) {
    return std::tie(one.name, one.identity, one.started, one.file);
  });
  std::ranges::sort(
      merged.references, [](const ReferenceSummary& left, const ReferenceSummary& right) {
        return std::tie(right.computers, right.findings, left.category, left.badValue, left.place) <
               std::tie(left.computers, left.findings, right.category, right.badValue, right.place);
      });
  std::ranges::sort(merged.failures, {},
                    [](const Failure& one) { return std::tie(one.file, one.why); });
  std::ranges::sort(merged.superseded, {}, [](const Superseded& one) {
    return std::tie(one.name, one.file, one.started);
  });
}

}  // namespace zelvreg::fleet
