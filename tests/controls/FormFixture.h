// A window for controls, which keeps the messages that it receives.
#ifndef ZELVREG_TESTS_CONTROLS_FORM_FIXTURE_H
#define ZELVREG_TESTS_CONTROLS_FORM_FIXTURE_H

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <vector>

#include "controls/PaintBuffer.h"

namespace zelvreg::controls::fixture {

struct Message {
  UINT number = 0;
  WPARAM wParam = 0;
  LPARAM lParam = 0;
};

// Shown at (50, 40), 300 x 200 pixels, without a frame. Its ground is the usual palette's.
class Form {
 public:
  Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  ~Form();

  [[nodiscard]] HWND hwnd() const { return window; }
  // How often a message has come.
  [[nodiscard]] int count(UINT number) const;
  // Handles all messages in the queue.
  static void pump();

  // Paints the ground instead, if it is set.
  std::function<void(HDC)> paintGround;
  // Answers a message instead of the system, if it is set and returns true.
  std::function<bool(const Message&)> answer;
  std::vector<Message> messages;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window;
};

// The outline of a window; empty without one.
bool isInOutline(HWND window, int x, int y);
bool hasOutline(HWND window);

// How many graphics objects can still be made. Not every system gives the count of those in use.
int graphicsObjectsLeft();

}  // namespace zelvreg::controls::fixture

#endif
