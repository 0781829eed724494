#include "console/ScanCommands.h"

#include <stdexcept>

#include "console/DisplayText.h"
#include "console/FormUse.h"
#include "console/HostFile.h"
#include "console/ScanResult.h"
#include "console/Terminal.h"
#include "form/ProcessEnd.h"
#include "reports/Report.h"
#include "runtime/Directory.h"
#include "runtime/Environment.h"
#include "scan/Findings.h"
#include "shell/CommandModes.h"
#include "text/Numbers.h"

namespace zelvreg::console {
namespace {

void print(const ScanResult& result, const Options& options, const Streams& streams,
           std::optional<std::int64_t> repaired = {}) {
  if (options.format == Format::Json) {
    streams.out << jsonText(result, repaired);
  } else if (options.format == Format::Csv) {
    streams.out << csvText(result);
  } else if (!options.isQuiet) {
    streams.out << tableText(result, streams.width);
    if (repaired) {
      streams.out << *repaired << " repaired, " << result.findings.size() << " left.\n";
    }
  }
}

void writeReport(const Form42& form, const Options& options) {
  if (!options.reportFile.empty()) {
    writeHostFile(options.reportFile, reportText(form));
  }
}

int statusFor(const ScanResult& result, const Options& options) {
  return result.findings.empty() || options.exitsZero ? nothingFound : problemsFound;
}

// A repair must not start from half of a registry, nor write to one that others still hold news of.
void refuseUnlessWhole(const Computer& computer) {
  for (const auto& lines : {computer.damage(), computer.unclean()}) {
    if (!lines.empty()) {
      throw std::runtime_error(lines.front() + "; nothing was repaired");
    }
  }
}

std::size_t tickKinds(Form42& form, const std::set<int>& kinds) {
  std::size_t ticked = 0;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const double kind = leadingNumber(form.View2.text(row, kindCodeColumn));
    const bool isWanted = kinds.empty() || kinds.contains(static_cast<int>(kind));
    form.View2.setChecked(row, isWanted);
    ticked += isWanted ? 1 : 0;
  }
  return ticked;
}

void pressFix(Form42& form, const Computer& computer) {
  // The disk of another computer need not have it.
  makeFolder(form.programFolder);
  form.messages.serveHost = [&computer] {
    if (isStopRequested()) {
      throw std::runtime_error(computer.keepsAtOnce()
                                   ? "the repair was interrupted; what it had done stays done"
                                   : "the repair was interrupted; nothing of it was saved");
    }
  };
  form.cmd_fix.click();
  form.messages.serveHost = nullptr;
}

void tellSparedKeys(const Form42& form, const Streams& streams) {
  for (const std::string& key : form.sparedKeys) {
    streams.error << "zelvreg: spared " << printable(registryText(key))
                  << ": records of other programs lie in it (fix --no-protect deletes it)\n";
  }
}

}  // namespace

int scan(const Options& options, const Computer& computer, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  const bool isComplete = runScanOn(form, options, streams);
  const ScanResult result = scanResultOf(form);
  print(result, options, streams);
  writeReport(form, options);
  if (!isComplete) {
    throw std::runtime_error("the scan was cancelled; what was found so far is listed");
  }
  const auto damage = computer.damage();
  tell(damage, streams);
  return damage.empty() ? statusFor(result, options) : failed;
}

int fix(const Options& options, Computer& computer, const Streams& streams) {
  refuseUnlessWhole(computer);
  Form42 form;
  prepareForm(form, options, streams);
  if (!runScanOn(form, options, streams)) {
    throw std::runtime_error("the scan was cancelled; nothing was repaired");
  }
  writeReport(form, options);
  const std::size_t found = form.View2.count();
  if (found > 0 && tickKinds(form, options.kinds) > 0) {
    pressFix(form, computer);
    if (form.isRepairStopped) {
      return failed;  // the form has said so
    }
    saveAndTell(computer, streams);
    tellSparedKeys(form, streams);
  }
  const ScanResult left = scanResultOf(form);
  print(left, options, streams, static_cast<std::int64_t>(found - left.findings.size()));
  return statusFor(left, options);
}

int runAutomatically(const Options& options, Computer& computer, const Streams& streams) {
  refuseUnlessWhole(computer);
  Form42 form;
  readCommandLine(form, options.mode);
  makeFolder(programFolder());
  try {
    prepareForm(form, options, streams);
  } catch (const ProcessEnd&) {
    saveAndTell(computer, streams);
    tellSparedKeys(form, streams);
    return nothingFound;
  }
  throw std::runtime_error("no category is ticked, so that nothing was scanned");
}

}  // namespace zelvreg::console
