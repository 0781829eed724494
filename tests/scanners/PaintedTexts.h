// The texts of a label each time that it was painted.
#ifndef ZELVREG_TESTS_SCANNERS_PAINTED_TEXTS_H
#define ZELVREG_TESTS_SCANNERS_PAINTED_TEXTS_H

#include <string>
#include <vector>

#include "widgets/SimpleControls.h"

namespace zelvreg::fixture {

// It takes the place of the label's peer, for as long as it lives.
class PaintedTexts : public ControlPeer {
 public:
  explicit PaintedTexts(Label& painted) : label(painted) { label.attach(this); }
  PaintedTexts(const PaintedTexts&) = delete;
  PaintedTexts& operator=(const PaintedTexts&) = delete;
  ~PaintedTexts() override { label.attach(nullptr); }

  void changed(const Control& /*control*/, Change what, std::size_t /*row*/) override {
    if (what == Change::Repaint) {
      texts.push_back(label.caption);
    }
  }

  std::vector<std::string> texts;

 private:
  Label& label;
};

}  // namespace zelvreg::fixture

#endif
