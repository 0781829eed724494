#include "fleet/MergedText.h"

#include "json/JsonText.h"
#include "text/CsvField.h"

namespace zelvreg::fleet {
namespace {

using Json = nlohmann::ordered_json;

constexpr int schemaVersion = 1;

Json countsOf(const ConfidenceCounts& counts) {
  Json object;
  for (std::size_t index = 0; index < confidences.size(); ++index) {
    object[std::string(confidences[index])] = counts[index];
  }
  return object;
}

Json objectOf(const ComputerSummary& computer) {
  Json categories = Json::object();
  for (const auto& [key, counts] : computer.byCategory) {
    categories[key] = sumOf(counts);
  }
  return {{"name", computer.name},
          {"identity", computer.identity},
          {"windows", {{"product", computer.product}, {"version", computer.version}}},
          {"bits", computer.bits},
          {"file", computer.file},
          {"command", computer.command},
          {"started", computer.started},
          {"seconds", computer.seconds},
          {"complete", computer.isComplete},
          {"users", computer.users},
          {"findings", computer.findings},
          {"repaired", computer.repaired},
          {"confidence", countsOf(computer.byConfidence)},
          {"categories", std::move(categories)},
          {"hives", computer.hives},
          {"warnings", computer.warnings},
          {"implausible", computer.implausible}};
}

Json objectOf(const CategorySummary& category) {
  return {{"key", category.key},
          {"name", category.name},
          {"computers", category.computers},
          {"findings", sumOf(category.byConfidence)},
          {"confidence", countsOf(category.byConfidence)}};
}

Json objectOf(const ReferenceSummary& reference) {
  return {{"category", reference.category}, {"badValue", reference.badValue},
          {"place", reference.place},       {"computers", reference.computers},
          {"findings", reference.findings}, {"confidence", countsOf(reference.byConfidence)}};
}

Json objectOf(const Failure& failure) { return {{"file", failure.file}, {"why", failure.why}}; }

Json objectOf(const Superseded& one) {
  return {{"name", one.name},
          {"file", one.file},
          {"started", one.started},
          {"newerFile", one.newerFile},
          {"newerStarted", one.newerStarted}};
}

// Written member by member: as one object the references of a fleet would take several times the
// memory of their text.
class Writer {
 public:
  void member(const char* name, const Json& value) {
    begin(name);
    text += line(value);
  }

  template <typename Element>
  void list(const char* name, const std::vector<Element>& elements) {
    begin(name);
    text += "[";
    const char* between = "\n    ";
    for (const Element& element : elements) {
      text += between + line(objectOf(element));
      between = ",\n    ";
    }
    text += elements.empty() ? "]" : "\n  ]";
  }

  std::string take() { return std::move(text) + "\n}\n"; }

 private:
  void begin(const char* name) {
    text += (text.empty() ? "{\n  \"" : ",\n  \"") + std::string(name) + "\": ";
  }
  static std::string line(const Json& value) {
    std::string json = lineOfJson(value);
    json.pop_back();
    return json;
  }

  std::string text;
};

}  // namespace

std::string jsonText(const Merged& merged) {
  const Totals totals = totalsOf(merged);
  Writer writer;
  writer.member("schema", schemaVersion);
  writer.member("program", {{"name", "zelvreg"}, {"version", merged.version}});
  writer.member("command", "merge");
  writer.member("made", merged.made);
  writer.member("anonymous", merged.isAnonymous);
  writer.member("counts", {{"computers", merged.computers.size()},
                           {"incomplete", totals.incomplete},
                           {"failed", merged.failures.size()},
                           {"superseded", merged.superseded.size()},
                           {"findings", totals.findings},
                           {"repaired", totals.repaired},
                           {"references", merged.references.size()}});
  writer.member("confidence", countsOf(totals.byConfidence));
  writer.list("categories", merged.categories);
  writer.list("computers", merged.computers);
  writer.member("referencesLeftOut", merged.leavesReferencesOut);
  writer.list("references", merged.references);
  writer.list("failed", merged.failures);
  writer.list("superseded", merged.superseded);
  return writer.take();
}

std::string csvText(const Merged& merged) {
  std::string text = "category,badValue,computers,findings,sure,likely,unsure,place\n";
  for (const ReferenceSummary& reference : merged.references) {
    text +=
        csvField(nameOfCategory(merged, reference.category)) + "," + csvField(reference.badValue);
    for (const std::uint64_t number : {reference.computers, reference.findings}) {
      text += "," + std::to_string(number);
    }
    for (const std::uint64_t number : reference.byConfidence) {
      text += "," + std::to_string(number);
    }
    text += "," + csvField(reference.place) + "\n";
  }
  return text;
}

}  // namespace zelvreg::fleet
