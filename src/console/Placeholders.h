// What stands for a value in the help, and what a shell can offer in its place.
#ifndef ZELVREG_CONSOLE_PLACEHOLDERS_H
#define ZELVREG_CONSOLE_PLACEHOLDERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvreg::console {

// The kind of value: words that are known, one of them or several with commas between; names of the
// file system; a drive, as D=DIR; or what only the user knows.
enum class Offered : std::uint8_t { Words, List, Files, Folders, Drive, Nothing };

struct Offer {
  Offered kind = Offered::Nothing;
  std::vector<std::string> words = {};
};

// A placeholder is a name in capitals that is known here, or a choice of such names and of values
// with bars between, as in "NAME|all"; a single value is in small letters. None for any other.
std::optional<Offer> offerFor(const std::string& placeholder);

}  // namespace zelvreg::console

#endif
