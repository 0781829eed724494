// Whole files as text.
#ifndef ZELVREG_RUNTIME_FILE_TEXT_H
#define ZELVREG_RUNTIME_FILE_TEXT_H

#include <optional>
#include <string>

namespace zelvreg {

// The bytes of a file; none when it cannot be opened or read to its end.
std::optional<std::string> readFileText(const std::string& path);

}  // namespace zelvreg

#endif
