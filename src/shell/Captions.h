// Which control shows the text of which key of a language file.
#ifndef ZELVREG_SHELL_CAPTIONS_H
#define ZELVREG_SHELL_CAPTIONS_H

#include <span>
#include <string>
#include <string_view>

namespace zelvreg {

struct Form42;

struct Caption {
  std::string_view key;  // the control's name, with its index or column
  void (*set)(Form42& form, const std::string& text);
  std::string (*get)(const Form42& form);
};

// In the order in which they are applied. A language file without a key of these empties the text.
std::span<const Caption> captions();
// Where a file has none of these, the control has the text that it is made with.
std::span<const Caption> furtherCaptions();

}  // namespace zelvreg

#endif
