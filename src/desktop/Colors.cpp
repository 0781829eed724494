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
  Rgb own;
  int system;
};

// In the order of the tones.
constexpr std::array<ToneColors, toneCount> table{{
    {rgb(0x3D649A), highlight},      // Accent
    {rgb(0xFFFFFF), highlightText},  // OnAccent
    {rgb(0xE3ECF6), highlightText},  // QuietOnAccent
    {rgb(0xFFFFFF), window},         // Surface
    {rgb(0xF6F8FB), window},         // Ground
    {rgb(0xEEF2F7), window},         // SideBar
    {rgb(0xFAFBFD), window},         // Header
    {rgb(0xDDE3EA), windowText},     // Line
    {rgb(0xF0F3F7), window},         // RowLine
    {rgb(0xC6D0DC), windowText},     // Border
    {rgb(0x8A98AA), windowText},     // MarkEdge
    {rgb(0xE3E9F1), window},         // Track
    {rgb(0xE3ECF6), highlight},      // Selected
    {rgb(0x1F2937), highlightText},  // OnSelected
    {rgb(0x1F2937), windowText},     // Text
    {rgb(0x5B6675), windowText},     // Secondary
    {rgb(0xA3ADBA), grayText},       // Disabled
    {rgb(0xC00000), windowText},     // Problem
    {rgb(0xFBE9E9), window},         // ProblemDisc
    {rgb(0x2F5488), hotLight},       // Link
    {rgb(0xA3ADBA), grayText},       // Waiting
    {rgb(0xB45309), windowText},     // Testing
    {rgb(0x15803D), windowText},     // Finished
}};

constexpr Rgb dark = rgb(0x1F2937);
constexpr Rgb white = rgb(0xFFFFFF);

}  // namespace

Colors::Colors() : ownAccent(table.front().own) { useOwn(); }

void Colors::useOwn() {
  hasSystem = false;
  for (std::size_t tone = 0; tone < toneCount; ++tone) {
    tones[tone] = table[tone].own;
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
  const bool isLight = controls::isLight(ownAccent);
  at(Tone::Accent) = ownAccent;
  at(Tone::OnAccent) = isLight ? dark : white;
  constexpr double quietness = 0.14;
  at(Tone::QuietOnAccent) = controls::mix(isLight ? dark : white, ownAccent, quietness);
}

controls::Palette Colors::paletteOn(Tone ground) const {
  controls::Palette palette;
  palette.accent = (*this)[Tone::Accent];
  palette.ground = (*this)[ground];
  palette.line = (*this)[Tone::Line];
  palette.border = (*this)[Tone::Border];
  palette.text = (*this)[Tone::Text];
  palette.disabledText = (*this)[Tone::Disabled];
  return palette;
}

}  // namespace zelvreg::desktop
