#include "controls/MenuEntry.h"

#include <algorithm>

#include "unicode/Unicode.h"

namespace zelvreg::controls {
namespace {

constexpr double frameRoom = 3;   // between a picture and its frame
constexpr double columnGap = 6;   // between picture column and text
constexpr double rightRoom = 16;  // after the text, where the system puts the arrow of a submenu
constexpr double keysGap = 24;    // between text and keys
constexpr double lineRoom = 5;    // above and below a line of text
constexpr double barRoom = 9;     // at both sides of an entry in the menu bar
constexpr double separatorHeight = 9;

int column(const MenuMetrics& metrics) {
  return metrics.picture.width + 2 * scaled(frameRoom + 2, metrics.dpi);
}

}  // namespace

MenuCaption splitCaption(std::string_view menuText) {
  const std::size_t tab = menuText.find('\t');
  if (tab == std::string_view::npos) {
    return {menuText, {}};
  }
  return {menuText.substr(0, tab), menuText.substr(tab + 1)};
}

std::string plainCaption(std::string_view menuText) {
  const std::string_view text = splitCaption(menuText).text;
  std::string plain;
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] == '&' && index + 1 < text.size()) {
      ++index;
    }
    plain += text[index];
  }
  return plain;
}

char32_t accessKey(std::string_view menuText) {
  const std::string_view text = splitCaption(menuText).text;
  for (std::size_t index = 0; index + 1 < text.size(); ++index) {
    if (text[index] == '&') {
      ++index;
      if (text[index] != '&') {
        return firstCharacter(text.substr(index)).code;
      }
    }
  }
  return text.empty() ? U'\0' : firstCharacter(text).code;
}

std::vector<int> entriesWithKey(const std::vector<const CMyItemData*>& entries,
                                std::u32string_view keys) {
  std::vector<int> found;
  for (std::size_t index = 0; index < entries.size(); ++index) {
    const char32_t key = entries[index] != nullptr ? accessKey(entries[index]->sMenuText) : U'\0';
    if (key != U'\0' && keys.find(key) != std::u32string_view::npos) {
      found.push_back(static_cast<int>(index));
    }
  }
  return found;
}

Size entrySize(const CMyItemData& entry, Size text, Size keys, const MenuMetrics& metrics) {
  const int dpi = metrics.dpi;
  if ((entry.fType & menuSeparator) != 0) {
    return {column(metrics), scaled(separatorHeight, dpi)};
  }
  const int lineHeight = std::max(text.height, metrics.menuHeight);
  if (entry.bMainMenu) {
    return {text.width + 2 * scaled(barRoom, dpi), lineHeight};
  }
  const int withText = text.height + 2 * scaled(lineRoom, dpi);
  const int withPicture = metrics.picture.height + 2 * scaled(frameRoom + 1, dpi);
  const int keysWidth = keys.width > 0 ? scaled(keysGap, dpi) + keys.width : 0;
  return {
      column(metrics) + scaled(columnGap, dpi) + text.width + keysWidth + scaled(rightRoom, dpi),
      std::max({lineHeight, withText, withPicture})};
}

MenuEntryPlaces placeEntry(const CMyItemData& entry, const Rectangle& whole,
                           const MenuMetrics& metrics) {
  const int dpi = metrics.dpi;
  MenuEntryPlaces places;
  places.highlight = whole;
  if (entry.bMainMenu) {
    places.text = whole;
    return places;
  }
  const int inset = scaled(2, dpi);
  places.highlight = {whole.left + inset, whole.top, whole.right - inset, whole.bottom};
  const int left = whole.left + (column(metrics) - metrics.picture.width) / 2;
  const int top = whole.top + (whole.height() - metrics.picture.height) / 2;
  places.picture = {left, top, left + metrics.picture.width, top + metrics.picture.height};
  const int room = scaled(frameRoom, dpi);
  places.frame = {left - room, top - room, places.picture.right + room,
                  places.picture.bottom + room};
  places.text = {whole.left + column(metrics) + scaled(columnGap, dpi), whole.top,
                 whole.right - scaled(rightRoom, dpi), whole.bottom};
  const int middle = whole.top + whole.height() / 2;
  places.separator = {places.text.left, middle, whole.right - scaled(columnGap, dpi), middle + 1};
  return places;
}

}  // namespace zelvreg::controls
