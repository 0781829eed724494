#include "desktop/Colors.h"

namespace zelvreg::desktop {
namespace {

// The numbers that GetSysColor takes.
constexpr int window = 5;
constexpr int windowText = 8;
constexpr int highlight = 13;
constexpr int highlightText = 14;
constexpr int grayText = 17;
constexpr int hotLight = 26;

struct ToneColors {
  Rgb light;
  Rgb dark;
  int system;
};

// In the order of the tones. Those of the accent follow from it.
constexpr std::array<ToneColors, toneCount> table{{
    {rgb(0x3D649A), rgb(0x3D649A), highlight},      // Accent
    {rgb(0xFFFFFF), rgb(0xFFFFFF), highlightText},  // OnAccent
    {rgb(0xE3ECF6), rgb(0xE3ECF6), highlightText},  // QuietOnAccent
    {rgb(0xFFFFFF), rgb(0x20262F), window},         // Surface
    {rgb(0xF6F8FB), rgb(0x191E26), window},         // Ground
    {rgb(0xEEF2F7), rgb(0x1C222B), window},         // SideBar
    {rgb(0xFAFBFD), rgb(0x252C37), window},         // Header
    {rgb(0xDDE3EA), rgb(0x343D4A), windowText},     // Line
    {rgb(0xF0F3F7), rgb(0x2A323D), window},         // RowLine
    {rgb(0xC6D0DC), rgb(0x4A5666), windowText},     // Border
    {rgb(0x3D649A), rgb(0x3D649A), windowText},     // Mark
    {rgb(0xFFFFFF), rgb(0xFFFFFF), window},         // OnMark
    {rgb(0x8A98AA), rgb(0x8592A3), windowText},     // MarkEdge
    {rgb(0xE3E9F1), rgb(0x343D4A), window},         // Track
    {rgb(0xE3ECF6), rgb(0x2B3B52), highlight},      // Selected
    {rgb(0x1F2937), rgb(0xF3F6FA), highlightText},  // OnSelected
    {rgb(0x1F2937), rgb(0xE6EAF0), windowText},     // Text
    {rgb(0x5B6675), rgb(0xAEB8C5), windowText},     // Secondary
    {rgb(0x667080), rgb(0x8E99A8), grayText},       // Disabled
    {rgb(0xC00000), rgb(0xFF938A), windowText},     // Problem
    {rgb(0xFBE9E9), rgb(0x452A2E), window},         // ProblemDisc
    {rgb(0x2F5488), rgb(0x8FBBF3), hotLight},       // Link
    {rgb(0xA3ADBA), rgb(0x667080), grayText},       // Waiting
    {rgb(0xB45309), rgb(0xF2B366), windowText},     // Testing
    {rgb(0x15803D), rgb(0x74D191), windowText},     // Finished
}};

constexpr Rgb white = rgb(0xFFFFFF);

}  // namespace

Colors::Colors() : ownAccent(table.front().light) { useOwn(Theme::Light); }

void Colors::useOwn(Theme wanted) {
  hasSystem = false;
  ownTheme = wanted;
  for (std::size_t tone = 0; tone < toneCount; ++tone) {
    tones[tone] = wanted == Theme::Dark ? table[tone].dark : table[tone].light;
  }
  applyAccent();
}

void Colors::useSystem(const std::function<Rgb(int number)>& systemColor) {
  hasSystem = true;
  for (std::size_t tone = 0; tone < toneCount; ++tone) {
    tones[tone] = systemColor(table[tone].system);
  }
}

void Colors::setAccent(Rgb accent) {
  ownAccent = accent;
  if (!hasSystem) {
    applyAccent();
  }
}

void Colors::applyAccent() {
  const Rgb text = controls::readableOn(ownAccent, white);
  at(Tone::Accent) = ownAccent;
  at(Tone::OnAccent) = text;
  constexpr double quietness = 0.14;
  at(Tone::QuietOnAccent) = controls::seenOn(ownAccent, controls::mix(text, ownAccent, quietness),
                                             controls::readableContrast);
  at(Tone::Mark) = controls::seenOn((*this)[Tone::Selected], ownAccent, controls::visibleContrast);
  at(Tone::OnMark) = controls::readableOn((*this)[Tone::Mark], white);
}

Rgb Colors::textFrom(std::uint32_t property, Tone ground) const {
  return controls::seenOn((*this)[ground], controls::fromProperty(property),
                          controls::readableContrast);
}

std::optional<controls::MenuColors> Colors::menuColors() const {
  if (hasSystem) {
    return std::nullopt;
  }
  return controls::MenuColors{.ground = (*this)[Tone::Surface],
                              .chosen = (*this)[Tone::Selected],
                              .text = (*this)[Tone::Text],
                              .disabledText = (*this)[Tone::Disabled],
                              .line = (*this)[Tone::Line]};
}

controls::Palette Colors::paletteOn(Tone ground) const {
  controls::Palette palette;
  palette.accent = (*this)[ground == Tone::Accent ? Tone::Accent : Tone::Mark];
  palette.ground = (*this)[ground];
  palette.line = (*this)[Tone::Line];
  palette.border = (*this)[Tone::Border];
  palette.text = (*this)[Tone::Text];
  palette.disabledText = (*this)[Tone::Disabled];
  palette.faces = {(*this)[Tone::Surface], (*this)[Tone::Header], (*this)[Tone::Selected]};
  return palette;
}

}  // namespace zelvreg::desktop
