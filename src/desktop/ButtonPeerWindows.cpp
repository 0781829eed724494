#include <algorithm>

#include "controls/ButtonContent.h"
#include "controls/PaintBuffer.h"
#include "desktop/SimplePeers.h"

namespace zelvreg::desktop {
namespace {

using controls::ButtonProperties;

constexpr std::int32_t flat = 2;
constexpr std::int32_t ghost = 5;
constexpr std::int32_t sideBar = 13;

std::int32_t styleFor(ButtonRole role) {
  switch (role) {
    case ButtonRole::Title:
    case ButtonRole::Command:
    case ButtonRole::Tool:
      return ghost;
    case ButtonRole::SideBar:
      return sideBar;
    default:
      return flat;
  }
}

Tone groundFor(ButtonRole role) {
  switch (role) {
    case ButtonRole::Title:
      return Tone::Accent;
    case ButtonRole::Command:
    case ButtonRole::Tool:
      return Tone::Surface;
    case ButtonRole::SideBar:
      return Tone::SideBar;
    default:
      return Tone::Ground;
  }
}

}  // namespace

ButtonPeer::ButtonPeer(Desk& sharedDesk, HWND parent, Button& button, ButtonRole buttonRole,
                       const char* iconKey)
    : Peer(sharedDesk, button),
      shownButton(button),
      role(buttonRole),
      icon(iconKey),
      chameleon(parent, 0, {}, sharedDesk.resolution()) {
  borrow(chameleon.hwnd());
  chameleon.set(&ButtonProperties::ButtonType, styleFor(role));
  chameleon.set(&ButtonProperties::SpecialEffect,
                static_cast<std::int16_t>(controls::PictureEffect::TextColor));
  chameleon.setDefault(role == ButtonRole::Primary);
  if (role == ButtonRole::SideBar) {
    chameleon.set(&ButtonProperties::CheckBoxBehaviour, true);
  }
  chameleon.onClick = [this] { shownButton.click(); };
  showAll();
}

void ButtonPeer::changed(const Control& control, Change what, std::size_t row) {
  Peer::changed(control, what, row);
  if (what == Change::Enabled) {
    chameleon.set(&ButtonProperties::Enabled, shownButton.enabled.get());
  }
  if (onChanged && (what == Change::Text || what == Change::Enabled)) {
    onChanged();
  }
}

void ButtonPeer::showAll() {
  chameleon.setDpi(desk().resolution());
  Peer::showAll();
  chameleon.set(&ButtonProperties::Enabled, shownButton.enabled.get());
}

void ButtonPeer::setMarked(const std::string& caption) {
  if (marked != caption) {
    marked = caption;
    chameleon.set(&ButtonProperties::Caption, caption);
  }
}

void ButtonPeer::showText() {
  marked.clear();
  chameleon.set(&ButtonProperties::Caption,
                hasCaption() ? shownButton.caption.get() : std::string());
  const std::string& tip = shownButton.toolTip.get();
  const std::string& told = !tip.empty() || hasCaption() ? tip : shownButton.caption.get();
  chameleon.setToolTip(told);
  if (!hasCaption()) {
    SetWindowTextW(hwnd(), Wide(spokenName()).get());
  }
}

std::string ButtonPeer::spokenName() const {
  if (nameOf) {
    return nameOf();
  }
  const std::string& caption = shownButton.caption.get();
  return caption.empty() ? shownButton.toolTip.get() : caption;
}

void ButtonPeer::showLook() {
  const Font& font = shownButton.font;
  chameleon.set(&ButtonProperties::Font, {.name = desk().faceOf(font),
                                          .size = font.size > 0 ? font.size : 9,
                                          .isBold = font.isBold,
                                          .isItalic = false,
                                          .isUnderlined = false});
  chameleon.set(&ButtonProperties::ColorScheme, desk().colors.isSystem() ? 2 : 1);
  chameleon.set(&ButtonProperties::PictureNormal, desk().icon(icon));
  chameleon.set(&ButtonProperties::BackColor, [this]() -> std::uint32_t {
    const std::uint32_t told = shownButton.backColor;
    return told == windowColor ? controls::systemColor(15) : told;
  }());
  chameleon.set(&ButtonProperties::BackOver, [this]() -> std::uint32_t {
    const std::uint32_t told = shownButton.backOver;
    return told == windowColor ? controls::systemColor(15) : told;
  }());
  chameleon.setPalette(desk().colors.paletteOn(groundFor(role)));
}

void ButtonPeer::setRole(ButtonRole newRole) {
  if (newRole != role) {
    role = newRole;
    showText();
  }
}

void ButtonPeer::setIcon(const char* iconKey) {
  icon = iconKey;
  showLook();
}

void ButtonPeer::setPrimary(bool isPrimary) {
  isNext = isPrimary;
  chameleon.set(&ButtonProperties::ButtonType, isPrimary ? flat : styleFor(role));
  chameleon.setDefault(isPrimary);
}

void ButtonPeer::setCurrent(bool isCurrent) { chameleon.set(&ButtonProperties::Value, isCurrent); }

int ButtonPeer::widthOf(const std::u16string& text) const {
  const controls::WindowContext context(hwnd());
  const controls::Selection selected(context.get(), desk().font(shownButton.font));
  RECT extent{};
  DrawTextW(context.get(), wideText(text), static_cast<int>(text.size()), &extent,
            DT_CALCRECT | DT_SINGLELINE);
  // What the button keeps free around its caption.
  constexpr int anyWidth = 1000;
  const controls::Picture& picture = chameleon.properties().PictureNormal;
  const controls::Size size =
      picture ? controls::Size{picture->width, picture->height} : controls::Size{};
  const int around =
      anyWidth - controls::captionRoom({anyWidth, desk().fromTwips(shownButton.height)}, size,
                                       controls::PicturePlace::Left, desk().resolution())
                     .width;
  return extent.right + around + desk().pixels(2);
}

std::u16string ButtonPeer::drawnCaption() const {
  return utf16(marked.empty() ? shownButton.caption.get() : marked);
}

int ButtonPeer::naturalWidth() const { return widthOf(drawnCaption()); }

int ButtonPeer::narrowestWidth() const {
  const std::u16string caption = drawnCaption();
  int widest = 0;
  for (std::size_t start = 0; start < caption.size();) {
    const std::size_t end = std::min(caption.find(u' ', start), caption.size());
    widest = std::max(widest, widthOf(caption.substr(start, end - start)));
    start = end + 1;
  }
  return widest;
}

}  // namespace zelvreg::desktop
