// How much room a text has in the windows of the program.
#ifndef ZELVREG_TRANSLATION_TEXT_ROOMS_H
#define ZELVREG_TRANSLATION_TEXT_ROOMS_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "translation/TextWidth.h"

namespace zelvreg {

struct TextRoom {
  int width = 0;  // pixels at 96 dpi
  int lines = 1;
  TextSize size = {};
};

// The room of a text by its section and key; none where a control becomes as wide as its words, or
// the text stands in a message.
std::optional<TextRoom> roomOfText(std::string_view section, std::string_view key);

// Whether a text is wider than its room by more than fonts differ.
bool isTooLong(std::string_view text, const TextRoom& room);

// The page whose access keys a text's letter must differ from; none for a text without an access
// key.
enum class KeyPage : std::uint8_t { Every, Options, Results, Undo, Exclusions, Question };
std::optional<KeyPage> pageOfText(std::string_view section, std::string_view key);
// Whether controls of both are seen at once.
bool areTogether(KeyPage one, KeyPage other);

}  // namespace zelvreg

#endif
