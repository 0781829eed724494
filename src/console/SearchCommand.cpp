#include "console/SearchCommand.h"

#include <array>
#include <chrono>
#include <optional>
#include <stdexcept>

#include "console/DisplayText.h"
#include "console/FormUse.h"
#include "console/ScanResult.h"
#include "console/Table.h"
#include "form/Form42.h"

namespace zelvreg::console {
namespace {

// Shows the current key on the error stream, and erases it when the search is done.
class KeyProgress : public ControlPeer {
 public:
  KeyProgress(Form42& shownForm, std::ostream& terminal) : form(shownForm), out(terminal) {
    form.Label3.attach(this);
  }
  ~KeyProgress() override {
    form.Label3.attach(nullptr);
    out << clearLine << std::flush;
  }
  KeyProgress(const KeyProgress&) = delete;
  KeyProgress& operator=(const KeyProgress&) = delete;

  void changed(const Control& /*control*/, Change /*what*/, std::size_t /*row*/) override {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastDrawn >= drawInterval) {
      lastDrawn = now;
      const std::string key = printable(form.Label3.caption.get());
      out << clearLine << form.View2.count() << " found  " << shortened(key, lineWidth)
          << std::flush;
    }
  }

 private:
  static constexpr std::chrono::milliseconds drawInterval{50};
  static constexpr std::string_view clearLine = "\r\x1b[K";
  static constexpr std::size_t lineWidth = 60;

  Form42& form;
  std::ostream& out;
  std::chrono::steady_clock::time_point lastDrawn;
};

void setControls(Form42& form, const SearchOptions& wanted) {
  form.cboFind.setText(wanted.text);
  form.cboRoot.setText(wanted.root);
  if (form.cboRoot.text() != wanted.root) {
    throw std::runtime_error(wanted.root + " has no keys on this computer; choose another root");
  }
  form.ChKeys.value = wanted.testsKeys;
  form.ChValues.value = wanted.testsValues;
  form.ChData.value = wanted.testsData;
  form.ChCase.value = wanted.matchesCase;
  const std::array<OptionButton*, 4> options{&form.Option1, &form.Option2, &form.Option3,
                                             &form.Option4};
  for (std::size_t option = 0; option < options.size(); ++option) {
    options[option]->value = option == static_cast<std::size_t>(wanted.mode);
  }
}

// False if the user has interrupted it.
bool pressFind(Form42& form, const Options& options, const Streams& streams) {
  bool isCancelled = false;
  form.messages.serveHost = [&form, &options, &isCancelled] {
    if (!isCancelled && isGivenUp(options)) {
      isCancelled = true;
      form.cmd_cancel.click();
    }
  };
  std::optional<KeyProgress> progress;
  if (streams.showsProgress && !options.isQuiet) {
    progress.emplace(form, streams.error);
  }
  form.cmdFind.click();
  form.messages.serveHost = nullptr;
  return !isCancelled;
}

}  // namespace

int search(const Options& options, const Computer& computer, const Streams& streams) {
  Form42 form;
  prepareForm(form, options, streams);
  setControls(form, options.search);
  const bool isComplete = pressFind(form, options, streams);
  requireExclusions(form);
  const ScanResult result = scanResultOf(form, computer);
  note(streams, "searched " + options.search.root + ": " + std::to_string(result.findings.size()) +
                    " found");
  if (options.format == Format::Json) {
    streams.out << searchJsonText(result);
  } else if (!options.isQuiet) {
    streams.out << searchTableText(result, streams.tables);
  }
  if (!isComplete) {
    throw std::runtime_error(std::string("the search was ") + howGivenUp() +
                             "; what was found so far is listed");
  }
  const auto damage = computer.damage();
  tell(damage, streams);
  if (!damage.empty()) {
    return failed;
  }
  return result.findings.empty() || options.exitsZero ? nothingFound : problemsFound;
}

}  // namespace zelvreg::console
