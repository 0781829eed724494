#include "fleet/Page.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "fleet/PageParts.h"
#include "json/JsonText.h"
#include "runtime/Sha256.h"
#include "text/Text.h"

namespace zelvreg::fleet {
namespace {

using Json = nlohmann::ordered_json;

// Tables of computers and of failures leave room for that of references.
constexpr std::size_t mostComputers = mostRows / 2;
constexpr std::size_t mostFailures = mostRows / 10;
// The reasons that are drawn; the others are in the table.
constexpr std::size_t mostReasons = 12;

std::string base64(const Digest& digest) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < digest.size(); at += 3) {
    const std::size_t size = std::min<std::size_t>(3, digest.size() - at);
    std::uint32_t bits = 0;
    for (std::size_t byte = 0; byte < 3; ++byte) {
      bits = bits << 8U | (byte < size ? digest.at(at + byte) : 0U);
    }
    for (std::size_t digit = 0; digit < 4; ++digit) {
      text += digit <= size ? digits[bits >> (18 - 6 * digit) & 0x3FU] : '=';
    }
  }
  return text;
}

// Nothing is loaded from anywhere, and only this very script and style work.
std::string policy() {
  return "default-src 'none'; script-src 'sha256-" + base64(sha256(pageParts::js)) +
         "'; style-src 'sha256-" + base64(sha256(pageParts::css)) +
         "'; base-uri 'none'; form-action 'none'";
}

std::string withSeparators(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, ",");
  }
  return digits;
}

struct Figure {
  const char* name;
  const char* kind;  // its class
  std::uint64_t number;
};

std::string figures(const Merged& merged) {
  const Totals totals = totalsOf(merged);
  const std::array figures{Figure{"Computers", "plain", merged.computers.size()},
                           Figure{"Findings", "plain", totals.findings},
                           Figure{"Surely dead", "sure", totals.byConfidence[0]},
                           Figure{"Likely dead", "likely", totals.byConfidence[1]},
                           Figure{"Unsure", "unsure", totals.byConfidence[2]},
                           Figure{"References", "plain", merged.references.size()},
                           Figure{"Incomplete", "likely", totals.incomplete},
                           Figure{"Failed", "failed", merged.failures.size()}};
  std::string html;
  for (const Figure& figure : figures) {
    // What did not happen is no news.
    html += std::string("      <div class=\"") + (figure.number == 0 ? "plain" : figure.kind) +
            "\"><dt>" + figure.name + "</dt><dd>" + withSeparators(figure.number) + "</dd></div>\n";
  }
  return html;
}

Json sureties(const ConfidenceCounts& counts) { return {counts[0], counts[1], counts[2]}; }

// How many computers have how many findings.
struct Size {
  const char* label;
  std::uint64_t least;
};
constexpr std::array sizes{Size{"0", 0},
                           Size{"1 to 10", 1},
                           Size{"11 to 25", 11},
                           Size{"26 to 50", 26},
                           Size{"51 to 100", 51},
                           Size{"101 to 250", 101},
                           Size{"251 to 500", 251},
                           Size{"501 to 1,000", 501},
                           Size{"more", 1001}};

Json sizesOf(const Merged& merged) {
  std::array<std::uint64_t, sizes.size()> counts{};
  for (const ComputerSummary& computer : merged.computers) {
    const auto* const above = std::ranges::upper_bound(sizes, computer.findings, {}, &Size::least);
    ++counts.at(static_cast<std::size_t>(above - sizes.begin()) - 1);
  }
  Json list = Json::array();
  for (std::size_t at = 0; at < sizes.size(); ++at) {
    list.push_back({sizes.at(at).label, counts.at(at)});
  }
  return list;
}

// Why, without the name of the one that it is told of: then many have the same reason.
std::string reasonOf(const Failure& failure) {
  const std::string name = failure.file.substr(0, failure.file.find_last_of('.'));
  return name.empty() ? failure.why : replaceAll(failure.why, name, "NAME");
}

// The failures of each reason, the most frequent reason first.
Json reasonsOf(const Merged& merged) {
  std::map<std::string, std::uint64_t> counts;
  for (const Failure& failure : merged.failures) {
    ++counts[reasonOf(failure)];
  }
  std::vector<std::pair<std::string, std::uint64_t>> order(counts.begin(), counts.end());
  std::ranges::stable_sort(order, std::ranges::greater(),
                           &std::pair<std::string, std::uint64_t>::second);
  order.resize(std::min(order.size(), mostReasons));
  Json list = Json::array();
  for (const auto& [why, count] : order) {
    list.push_back({why, count});
  }
  return list;
}

Json rowOf(const ComputerSummary& computer) {
  const std::string between = computer.product.empty() || computer.version.empty() ? "" : ", ";
  std::vector<std::string> remarks = computer.warnings;
  remarks.insert(remarks.end(), computer.implausible.begin(), computer.implausible.end());
  return {computer.name,
          computer.product + between + computer.version,
          computer.started,
          sureties(computer.byConfidence),
          computer.repaired,
          computer.isComplete,
          remarks};
}

Json computerRows(const Merged& merged) {
  std::vector<const ComputerSummary*> order;
  for (const ComputerSummary& computer : merged.computers) {
    order.push_back(&computer);
  }
  std::ranges::stable_sort(order, std::ranges::greater(),
                           [](const ComputerSummary* computer) { return computer->findings; });
  order.resize(std::min(order.size(), mostComputers));
  Json rows = Json::array();
  for (const ComputerSummary* computer : order) {
    rows.push_back(rowOf(*computer));
  }
  return rows;
}

Json failureRows(const Merged& merged) {
  Json rows = Json::array();
  for (const Failure& failure : merged.failures) {
    if (rows.size() < mostFailures) {
      rows.push_back({failure.file, failure.why});
    }
  }
  return rows;
}

Json referenceRows(const Merged& merged, std::size_t most) {
  std::map<std::string, std::size_t> numbers;
  for (const CategorySummary& category : merged.categories) {
    numbers.emplace(category.key, numbers.size());
  }
  Json rows = Json::array();
  for (const ReferenceSummary& reference : merged.references) {
    if (rows.size() == most) {
      break;
    }
    const ConfidenceCounts& counts = reference.byConfidence;
    rows.push_back({numbers[reference.category], reference.badValue, reference.computers,
                    reference.findings, counts[0], counts[1], counts[2], reference.place});
  }
  return rows;
}

Json categoryRows(const Merged& merged) {
  Json rows = Json::array();
  for (const CategorySummary& category : merged.categories) {
    const ConfidenceCounts& counts = category.byConfidence;
    rows.push_back({category.name, category.computers, counts[0], counts[1], counts[2]});
  }
  return rows;
}

// As JSON in a script element that is no script. No text can end that element.
std::string dataOf(const Merged& merged, const std::string& csvFile) {
  Json data;
  data["totals"] = {{"computers", merged.computers.size()},
                    {"references", merged.references.size()},
                    {"failed", merged.failures.size()}};
  data["csv"] = csvFile;
  data["leavesOut"] = merged.leavesReferencesOut;
  data["confidence"] = sureties(totalsOf(merged).byConfidence);
  data["categories"] = categoryRows(merged);
  data["sizes"] = sizesOf(merged);
  data["reasons"] = reasonsOf(merged);
  data["computers"] = computerRows(merged);
  data["failed"] = failureRows(merged);
  data["references"] =
      referenceRows(merged, mostRows - data["computers"].size() - data["failed"].size());
  std::string json = lineOfJson(std::move(data));
  for (const auto& [character, escape] :
       {std::pair{"<", "\\u003c"}, std::pair{">", "\\u003e"}, std::pair{"&", "\\u0026"}}) {
    json = replaceAll(json, character, escape);
  }
  return json;
}

// Of its own facts, which need no escape.
std::string filledIn(const std::map<std::string_view, std::string>& values) {
  std::string page;
  std::string_view rest = pageParts::html;
  for (std::size_t start = rest.find("{{"); start != std::string_view::npos;
       start = rest.find("{{")) {
    const std::size_t end = rest.find("}}", start);
    page.append(rest.substr(0, start)).append(values.at(rest.substr(start + 2, end - start - 2)));
    rest.remove_prefix(end + 2);
  }
  return page.append(rest);
}

std::string countOf(std::uint64_t number, const char* one, const char* many) {
  return withSeparators(number) + " " + (number == 1 ? one : many);
}

}  // namespace

std::string pageText(const Merged& merged, const std::string& csvFile) {
  const std::string computers = countOf(merged.computers.size(), "computer", "computers");
  return filledIn(
      {{"POLICY", policy()},
       {"STYLE", pageParts::css},
       {"SCRIPT", pageParts::js},
       {"TITLE", "Dead registry references on " + computers},
       {"SUBTITLE", "Made " + replaceAll(replaceAll(merged.made, "T", " "), "Z", " UTC") +
                        (merged.isAnonymous ? "; computers and users have other names here" : "")},
       {"FIGURES", figures(merged)},
       {"FOOTER", "zelvreg " + merged.version +
                      ". This page is one file. It loads nothing from anywhere and sends nothing."},
       {"DATA", dataOf(merged, csvFile)}});
}

}  // namespace zelvreg::fleet
