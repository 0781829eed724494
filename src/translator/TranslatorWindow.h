// The window of the program for translators.
#ifndef ZELVREG_TRANSLATOR_TRANSLATOR_WINDOW_H
#define ZELVREG_TRANSLATOR_TRANSLATOR_WINDOW_H

#include <windows.h>

#include <memory>
#include <string>

#include "desktop/Desk.h"
#include "desktop/SmallWindow.h"
#include "translation/Translator.h"

namespace zelvreg::desktop {

class TranslatorWindow {
 public:
  // The form gives language, colors and messages; it must outlive the window.
  explicit TranslatorWindow(Form42& programForm);
  TranslatorWindow(const TranslatorWindow&) = delete;
  TranslatorWindow& operator=(const TranslatorWindow&) = delete;
  ~TranslatorWindow();

  // Shows it, with this file if there is a name, until the user closes it.
  void run(const std::string& file);

  [[nodiscard]] HWND hwnd() const { return window->hwnd(); }
  [[nodiscard]] Translator& translator() { return shown; }

 private:
  void addControls();
  void addFileControls();
  void addList();
  void addTextControls();
  void addLabel(Label& label, const Place& place, LabelLook look);
  void serve();
  bool shortcut(const MSG& message);
  std::string askForFile(bool isToSave, const std::string& suggested);

  Form42& form;
  Translator shown;
  Desk desk;
  std::unique_ptr<SmallWindow> window;
};

}  // namespace zelvreg::desktop

#endif
