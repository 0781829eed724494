// Shows the progress of a scan on the error stream: the bar and captions of the form, redrawn when
// they change, and erased when the scan is done.
#ifndef ZELVREG_CONSOLE_PROGRESS_H
#define ZELVREG_CONSOLE_PROGRESS_H

#include <chrono>
#include <ostream>

#include "widgets/Control.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

class Progress : public ControlPeer {
 public:
  // Both outlive this.
  Progress(Form42& shownForm, std::ostream& terminal);
  ~Progress() override;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void changed(const Control& control, Change what, std::size_t row) override;

 private:
  void draw();

  Form42& form;
  std::ostream& out;
  std::chrono::steady_clock::time_point lastDrawn;
};

// The line as it is drawn: a bar of `value` out of `maximum`, and the caption.
std::string progressLine(int value, int maximum, const std::string& caption);

}  // namespace zelvreg::console

#endif
