// The arithmetic of an owner-drawn menu entry: its caption, its size, where its parts are.
#ifndef ZELVREG_CONTROLS_MENU_ENTRY_H
#define ZELVREG_CONTROLS_MENU_ENTRY_H

#include <string>
#include <string_view>
#include <vector>

#include "controls/Canvas.h"
#include "controls/Color.h"
#include "controls/MenuItemData.h"

namespace zelvreg::controls {

// Instead of the system's colors of menus.
struct MenuColors {
  Rgb ground;
  Rgb chosen;  // the ground of the entry that is chosen
  Rgb text;
  Rgb disabledText;
  Rgb line;
};

// The flag of an entry that is a separator.
inline constexpr std::uint32_t menuSeparator = 0x800;

struct MenuCaption {
  std::string_view text;  // with its "&"
  std::string_view keys;  // such as "Ctrl+S"; often empty
};

MenuCaption splitCaption(std::string_view menuText);

// A caption without the "&" that marks its access key; "&&" is a plain "&". The picture of an entry
// is found by this name.
std::string plainCaption(std::string_view menuText);

// The access key as written in the caption: the marked character, or the first one, as in the
// system's own menus. 0 for a caption without text.
char32_t accessKey(std::string_view menuText);

// The positions, from 0, of the entries whose access key is one of `keys`.
std::vector<int> entriesWithKey(const std::vector<const CMyItemData*>& entries,
                                std::u32string_view keys);

struct MenuMetrics {
  int dpi = 96;
  int menuHeight = 19;  // the system's height of an entry in the menu bar, in pixels
  Size picture = {16, 16};
};

// The size of an entry, for the system. `text` and `keys` are the sizes of its two texts.
Size entrySize(const CMyItemData& entry, Size text, Size keys, const MenuMetrics& metrics);

// Where the parts are in the rectangle of an entry.
struct MenuEntryPlaces {
  Rectangle highlight;  // drawn when the entry is chosen
  Rectangle picture;
  Rectangle frame;  // around the picture of a checked entry
  Rectangle text;
  Rectangle separator;
};

MenuEntryPlaces placeEntry(const CMyItemData& entry, const Rectangle& whole,
                           const MenuMetrics& metrics);

}  // namespace zelvreg::controls

#endif
