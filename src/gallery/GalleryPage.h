// The part of the gallery that does not change: every style in every state, painted.
#ifndef ZELVREG_GALLERY_GALLERY_PAGE_H
#define ZELVREG_GALLERY_GALLERY_PAGE_H

#include "controls/PaintBuffer.h"

namespace zelvreg::gallery {

inline constexpr controls::Size pageSize = {1380, 800};
inline constexpr int bandHeight = 60;
inline constexpr int barHeight = 52;
inline constexpr int sideWidth = 212;
inline constexpr std::uint32_t maskColor = 0xFF00FF;
// The column of the table whose buttons are real ones.
inline constexpr int tableLeft = sideWidth + 20;
inline constexpr int tableTop = bandHeight + barHeight + 46;
inline constexpr int rowHeight = 44;
inline constexpr int columnWidth = 112;
inline constexpr int nameWidth = 92;
inline constexpr controls::Size cellSize = {100, 32};

controls::Rectangle cellOf(int style, int column);

// Paints the whole ground, with the states in which a real button cannot be kept.
void paintPage(const controls::PaintBuffer& page);

// A line of text on the page.
void paintText(const controls::PaintBuffer& page, const std::string& text, int left, int top,
               const controls::FontDescription& font, controls::Rgb color);

}  // namespace zelvreg::gallery

#endif
