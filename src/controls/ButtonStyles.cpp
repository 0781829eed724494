#include "controls/ButtonStyles.h"

#include <array>

namespace zelvreg::controls {
namespace {

constexpr Face white = Face::White;
constexpr Face tinted = Face::Tinted;
constexpr Face gray = Face::Gray;

// clang-format off
constexpr std::array<ButtonStyle, styleCount> styles = {{
    // name        fill            edge             radius hovered    line face    hover press default accent left   inset
    {"Classic",    Fill::Plain,    Edge::Bevel,     0,     0,         1,   gray,   0.08, 0.16, 0.0,    false, false, 4},
    {"Flat",       Fill::Plain,    Edge::Line,      5,     5,         1,   white,  0.08, 0.18, 1.0,    false, false, 0},
    {"Outlined",   Fill::None,     Edge::Line,      5,     5,         1.5, white,  0.10, 0.20, 0.2,    true,  false, 3},
    {"Tonal",      Fill::Plain,    Edge::None,      6,     6,         0,   tinted, 0.10, 0.22, 1.0,    false, false, 0},
    {"Ghost",      Fill::None,     Edge::None,      5,     5,         0,   white,  0.09, 0.18, 1.0,    false, false, 0},
    {"Pill",       Fill::Plain,    Edge::Line,      roundEnds, roundEnds, 1, white, 0.08, 0.18, 1.0,   false, false, 0},
    {"Gradient",   Fill::Gradient, Edge::Line,      4,     4,         1,   gray,   0.10, 0.20, 1.0,    false, false, 0},
    {"Glass",      Fill::Glass,    Edge::Line,      6,     6,         1,   gray,   0.12, 0.22, 1.0,    false, false, 0},
    {"Groove",     Fill::Plain,    Edge::Groove,    0,     0,         1,   gray,   0.08, 0.16, 0.2,    false, false, 4},
    {"Underlined", Fill::None,     Edge::Underline, 0,     0,         2,   white,  0.08, 0.16, 0.2,    false, false, 0},
    {"Lifting",    Fill::Plain,    Edge::Line,      0,     roundEnds, 1,   white,  0.10, 0.20, 1.0,    false, false, 0},
    {"Framed",     Fill::Plain,    Edge::Line,      3,     3,         2,   white,  0.08, 0.18, 0.2,    true,  false, 4},
    {"Side bar",   Fill::None,     Edge::Bar,       5,     5,         3,   white,  0.07, 0.16, 0.2,    false, true,  0},
    {"Key",        Fill::Plain,    Edge::Ledge,     6,     6,         3,   white,  0.08, 0.16, 1.0,    false, false, 3},
}};
// clang-format on

}  // namespace

const ButtonStyle& styleOf(std::int32_t type) {
  const bool isKnown = type >= 1 && type <= styleCount;
  return styles[static_cast<std::size_t>(isKnown ? type : 2) - 1];
}

}  // namespace zelvreg::controls
