#include "console/ResultOutput.h"

#include "console/HostFile.h"
#include "console/ResultPage.h"
#include "reports/Report.h"
#include "runtime/OwnText.h"

namespace zelvreg::console {

bool tellsFacts(const Options& options) {
  return options.format == Format::Json || options.format == Format::JsonLines ||
         !options.pageFile.empty();
}

void printResult(const ScanResult& result, const Options& options, const Streams& streams,
                 const std::optional<RepairResult>& repair) {
  const bool isJson = options.format == Format::Json;
  const bool hasPage = !options.pageFile.empty();
  const std::string json = isJson || hasPage ? jsonText(result, repair) : std::string();
  if (isJson) {
    streams.out << json;
  } else if (options.format == Format::JsonLines) {
    streams.out << jsonLines(result, repair);
  } else if (options.format == Format::Csv) {
    streams.out << csvText(result);
  } else if (!options.isQuiet) {
    streams.out << tableText(result, streams.tables);
    if (repair) {
      streams.out << repairText(*repair, result.findings.size());
    }
  }
  if (hasPage) {
    writeHostFile(options.pageFile, resultPage(json, result.facts.started));
  }
}

std::string reportOf(const Form42& form, const Options& options) {
  return reportText(form) + (options.reportsEvidence ? evidenceText(form) : "");
}

void writeReport(const std::string& text, const Options& options) {
  if (!options.reportFile.empty()) {
    writeHostFile(options.reportFile, ownBytes(text));
  }
}

}  // namespace zelvreg::console
