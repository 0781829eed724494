#include "controls/TrayArea.h"

#include <algorithm>
#include <cmath>

#include "controls/Units.h"
#include "unicode/Unicode.h"

namespace zelvreg::controls {

std::optional<TrayNotice> trayNotice(long message) {
  switch (message) {
    case 512:
      return TrayNotice{TrayEvent::MouseMove, 0};
    case 513:
      return TrayNotice{TrayEvent::MouseDown, 1};
    case 514:
      return TrayNotice{TrayEvent::MouseUp, 1};
    case 515:
    case 518:
      return TrayNotice{TrayEvent::DoubleClick, 0};
    case 516:
      return TrayNotice{TrayEvent::MouseDown, 2};
    case 517:
      return TrayNotice{TrayEvent::MouseUp, 2};
    default:
      return std::nullopt;
  }
}

long trayMessage(double xInTwips, double twipsPerPixel) {
  return std::lround(xInTwips / twipsPerPixel);
}

std::uint32_t trayId(double fraction) { return static_cast<std::uint32_t>(fraction * 65535 + 1); }

TrayArea::~TrayArea() {
  if (isStanding) {
    host.notify(TrayCall::Delete, record);
  }
}

void TrayArea::fillTip() {
  const std::u16string tip = utf16(ToolTip);
  record.tip.fill(u'\0');
  std::ranges::copy(firstUnits(tip, record.tip.size() - 1), record.tip.begin());
}

void TrayArea::call(TrayCall what, std::uint32_t flags) {
  record.flags = flags;
  host.notify(what, record);
}

void TrayArea::setVisible(bool value) {
  if (value == Visible) {
    return;
  }
  Visible = value;
  if (!value) {
    if (isStanding) {
      isStanding = false;
      host.notify(TrayCall::Delete, record);
    }
  } else if (isRunning) {
    record.window = host.window();
    record.id = trayId(host.randomFraction());
    record.callbackMessage = trayCallback;
    std::uint32_t flags = trayMessageFlag;
    if (Icon) {
      record.icon = host.icon(Icon);
      flags |= trayIconFlag;
    }
    if (!ToolTip.empty()) {
      fillTip();
      flags |= trayTipFlag;
    }
    isStanding = true;
    call(TrayCall::Add, flags);
  }
  changed.insert("Visible");
}

void TrayArea::setIcon(Picture picture) {
  Icon = std::move(picture);
  if (isStanding) {
    record.icon = Icon ? host.icon(Icon) : 0;
    call(TrayCall::Modify, trayIconFlag);
  }
  changed.insert("Icon");
}

void TrayArea::setToolTip(std::string text) {
  ToolTip = std::move(text);
  if (isStanding) {
    fillTip();
    call(TrayCall::Modify, trayTipFlag);
  }
  changed.insert("ToolTip");
}

void TrayArea::read(const PropertyBag& bag) {
  Icon = bag.read("Icon", Picture());
  ToolTip = bag.read("ToolTip", std::string());
  setVisible(bag.read("Visible", false));
  changed.clear();
}

void TrayArea::save(PropertyBag& bag) {
  bag.write("Icon", Icon);
  bag.write("ToolTip", ToolTip);
  bag.write("Visible", Visible);
  changed.clear();
}

void TrayArea::mouseMoved(double xInTwips, double twipsPerPixel) const {
  const auto notice = trayNotice(trayMessage(xInTwips, twipsPerPixel));
  if (notice && onNotice) {
    onNotice(*notice);
  }
}

}  // namespace zelvreg::controls
