// A form with its clicks bound, and checks of what a press shows, hides, enables and disables.
#ifndef ZELVREG_TESTS_SHELL_PRESS_FIXTURE_H
#define ZELVREG_TESTS_SHELL_PRESS_FIXTURE_H

#include <functional>
#include <string>
#include <vector>

#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {

using Controls = std::vector<Control*>;

// How controls must be after a press.
struct After {
  Controls shown = {};
  Controls hidden = {};
  Controls enabled = {};
  Controls disabled = {};
};

class PressFixture : public fixture::ComputerFixture {
 protected:
  PressFixture() { bindClicks(form); }

  // Before the press each of the controls has the opposite state, so that only the press can have
  // changed it.
  static void expectAfter(const std::function<void()>& press, const After& after) {
    using State = Property<bool, Change::Visible> Control::*;
    using Reach = Property<bool, Change::Enabled> Control::*;
    constexpr State visible = &Control::visible;
    constexpr Reach enabled = &Control::enabled;
    setAll(after.shown, visible, false);
    setAll(after.hidden, visible, true);
    setAll(after.enabled, enabled, false);
    setAll(after.disabled, enabled, true);
    press();
    expectAll(after.shown, visible, true, "shown");
    expectAll(after.hidden, visible, false, "hidden");
    expectAll(after.enabled, enabled, true, "enabled");
    expectAll(after.disabled, enabled, false, "disabled");
  }

  // The pages that are visible.
  [[nodiscard]] std::string page() const {
    std::string seen;
    seen += form.Frame1.visible ? "options " : "";
    seen += form.Frame2.visible ? "results " : "";
    seen += form.Frame3.visible ? "undo " : "";
    seen += form.Frame7.visible ? "exclusions " : "";
    return seen;
  }

  // Counts the presses of a button, which then does nothing else.
  static void count(Button& button, int& presses) {
    button.bind([&presses] { ++presses; });
  }

 private:
  template <class Member>
  static void setAll(const Controls& controls, Member member, bool value) {
    for (Control* control : controls) {
      control->*member = value;
    }
  }
  template <class Member>
  static void expectAll(const Controls& controls, Member member, bool value, const char* what) {
    for (std::size_t number = 0; number < controls.size(); ++number) {
      EXPECT_EQ((controls[number]->*member).get(), value) << what << " " << number;
    }
  }
};

}  // namespace zelvreg

#endif
