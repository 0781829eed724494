#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/PaintBuffer.h"
#include "controls/modShadow.h"
#include "desktop/Desk.h"
#include "desktop/IconPicture.h"

namespace zelvreg::desktop {
namespace {

int CALLBACK noteFont(const LOGFONTW* /*font*/, const TEXTMETRICW* /*metrics*/, DWORD /*type*/,
                      LPARAM isFound) {
  *reinterpret_cast<bool*>(isFound) = true;
  return 0;
}

bool isInstalled(const std::string& name) {
  LOGFONTW wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  const std::u16string wide = utf16(name).substr(0, LF_FACESIZE - 1);
  std::ranges::copy(wide, std::begin(wanted.lfFaceName));
  bool isFound = false;
  const controls::WindowContext screen(nullptr);
  EnumFontFamiliesExW(screen.get(), &wanted, noteFont, reinterpret_cast<LPARAM>(&isFound), 0);
  return isFound;
}

// In place of a font that is not installed the system takes one that may lack other scripts, which
// it adds to its own font.
std::string faceFor(const std::string& name) {
  const Font usual;
  return name == usual.name || isInstalled(name) ? name : usual.name;
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
  auto known = fonts.find(std::tuple<std::string_view, double, bool>(font.name, size, bold));
  if (known == fonts.end()) {
    auto made = controls::makeFont({.name = faceFor(font.name),
                                    .size = size,
                                    .isBold = bold,
                                    .isItalic = false,
                                    .isUnderlined = false},
                                   dpi);
    known = fonts.emplace(FontKey(font.name, size, bold), std::move(made)).first;
  }
  return known->second.get();
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
