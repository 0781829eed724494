#include "console/Progress.h"

#include "console/DisplayText.h"
#include "form/Form42.h"

namespace zelvreg::console {
namespace {

constexpr int barWidth = 32;
// A scan changes its captions far more often than anybody can read.
constexpr std::chrono::milliseconds drawInterval{50};
constexpr std::string_view clearLine = "\r\x1b[K";

}  // namespace

Progress::Progress(Form42& shownForm, std::ostream& terminal) : form(shownForm), out(terminal) {
  form.Bar1.attach(this);
  form.Label4.attach(this);
}

Progress::~Progress() {
  form.Bar1.attach(nullptr);
  form.Label4.attach(nullptr);
  out << clearLine << std::flush;
}

void Progress::changed(const Control& /*control*/, Change /*what*/, std::size_t /*row*/) {
  const auto now = std::chrono::steady_clock::now();
  if (now - lastDrawn >= drawInterval) {
    lastDrawn = now;
    draw();
  }
}

void Progress::draw() {
  out << clearLine
      << progressLine(form.Bar1.value(), form.Bar1.maximum(), printable(form.Label4.caption.get()))
      << std::flush;
}

std::string progressLine(int value, int maximum, const std::string& caption) {
  const int filled = maximum > 0 ? barWidth * value / maximum : 0;
  std::string line = "[";
  line.append(static_cast<std::size_t>(filled), '#');
  line.append(static_cast<std::size_t>(barWidth - filled), '.');
  line += "] " + std::to_string(value) + "/" + std::to_string(maximum) + " " + caption;
  return line;
}

}  // namespace zelvreg::console
