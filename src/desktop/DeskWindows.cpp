#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/PaintBuffer.h"
#include "controls/Units.h"
#include "controls/modShadow.h"
#include "desktop/Desk.h"
#include "desktop/FontChoice.h"
#include "desktop/IconPicture.h"

namespace zelvreg::desktop {
namespace {

int CALLBACK noteFace(const LOGFONTW* font, const TEXTMETRICW* /*metrics*/, DWORD /*type*/,
                      LPARAM found) {
  // Names with an at sign are for lines that run downwards, and letters of one width for programs.
  const bool isForLines =
      font->lfFaceName[0] != L'@' && (font->lfPitchAndFamily & 0x3) != FIXED_PITCH;
  if (isForLines) {
    *reinterpret_cast<std::string*>(found) =
        utf8(reinterpret_cast<const char16_t*>(font->lfFaceName));
  }
  return isForLines ? 0 : 1;
}

// The first font of that name with that script, or of any name; empty if there is none.
std::string installedFace(const std::string& name, int charset) {
  LOGFONTW wanted{};
  wanted.lfCharSet = static_cast<BYTE>(charset);
  controls::copyUnits(utf16(name), wanted.lfFaceName);
  std::string found;
  const controls::WindowContext screen(nullptr);
  EnumFontFamiliesExW(screen.get(), &wanted, noteFace, reinterpret_cast<LPARAM>(&found), 0);
  return found;
}

// In place of a font that is not installed, or lacks a script, the system takes letters of several
// others: not joined, not bold, or of a neighboring country.
std::string findFace(const Font& font) {
  for (const std::string& name : facesFor(font)) {
    if (!installedFace(name, font.charset).empty()) {
      return name;
    }
  }
  const std::string any = installedFace("", font.charset);
  return any.empty() ? Font{}.name : any;
}

bool pointsToASide(std::string_view iconKey) { return iconKey == "undo" || iconKey == "options"; }

}  // namespace

void Desk::setResolution(int resolution) {
  dpi = resolution;
  fonts.clear();
}

HFONT Desk::font(const Font& font, double pointsMore, bool isBold) {
  const double size = (font.size > 0 ? font.size : 9) + pointsMore;
  const bool bold = isBold || font.isBold;
  auto known = fonts.find(
      std::tuple<std::string_view, int, double, bool>(font.name, font.charset, size, bold));
  if (known == fonts.end()) {
    auto made = controls::makeFont({.name = faceOf(font),
                                    .size = size,
                                    .isBold = bold,
                                    .isItalic = false,
                                    .isUnderlined = false},
                                   dpi);
    known = fonts.emplace(FontKey(font.name, font.charset, size, bold), std::move(made)).first;
  }
  return known->second.get();
}

const std::string& Desk::faceOf(const Font& font) {
  std::string& known = common->faces[{font.name, font.charset}];
  if (known.empty()) {
    known = findFace(font);
  }
  return known;
}

HBRUSH Desk::brush(Tone tone) {
  const COLORREF reference = controls::colorRef(color(tone));
  controls::BrushHandle& known = brushes[reference];
  if (!known) {
    known.reset(CreateSolidBrush(reference));
  }
  return known.get();
}

void Desk::readColors(Theme wanted) {
  HIGHCONTRASTW setting{};
  setting.cbSize = sizeof setting;
  const bool isAsked =
      SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) != FALSE &&
      (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
  if (isAsked) {
    colors.useSystem([](int number) { return controls::fromProperty(GetSysColor(number)); });
  } else {
    colors.useOwn(wanted);
  }
}

void Desk::onColors(const void* owner, std::function<void()> show) {
  if (show) {
    common->listeners[owner] = std::move(show);
  } else {
    common->listeners.erase(owner);
  }
}

void Desk::tellColors() const {
  for (const auto& [owner, show] : common->listeners) {
    show();
  }
}

controls::Picture Desk::icon(std::string_view key, int length, std::optional<Tone> tone) const {
  controls::Picture picture = iconPicture(
      {.key = key, .pixels = pixels(length), .color = color(tone.value_or(toneOfIcon(key)))});
  return isMirrored && picture && pointsToASide(key)
             ? std::make_shared<controls::Bitmap>(controls::mirrored(*picture))
             : picture;
}

void Desk::catchUp() {
  const auto work = std::exchange(common->waiting, {});
  for (const auto& [owner, run] : work) {
    run();
  }
}

void Desk::wait(const MessageQueue& queue) const {
  constexpr DWORD timerTick = 10;  // milliseconds
  const bool isUrgent = queue.hasPosted() || !common->waiting.empty();
  const DWORD limit = isUrgent ? 0 : queue.hasWork() ? timerTick : INFINITE;
  MsgWaitForMultipleObjectsEx(0, nullptr, limit, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void Desk::castShadow(HWND window, const DropShadow& shadow) const {
  if (!shadow.visible) {
    controls::modShadow::destroy(window);
    return;
  }
  controls::modShadow::create(window);
  controls::modShadow::setColor(window, shadow.foreColor);
  controls::modShadow::setSize(window, pixels(shadow.depth));
}

}  // namespace zelvreg::desktop
