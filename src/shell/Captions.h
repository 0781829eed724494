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

// In the order in which they are applied.
std::span<const Caption> captions();

}  // namespace zelvreg

#endif
