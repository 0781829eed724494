// One icon in the notification area.
#ifndef ZELVREG_CONTROLS_TRAY_AREA_H
#define ZELVREG_CONTROLS_TRAY_AREA_H

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "controls/PropertyBag.h"

namespace zelvreg::controls {

// The record that the system's call takes, in the layout of a 32-bit program.
struct TrayRecord {
  std::uint32_t size = 152;
  std::uint32_t window = 0;
  std::uint32_t id = 0;
  std::uint32_t flags = 0;
  std::uint32_t callbackMessage = 0;
  std::uint32_t icon = 0;
  std::array<char16_t, 64> tip = {};  // the text and a NUL

  bool operator==(const TrayRecord&) const = default;
};
static_assert(sizeof(TrayRecord) == 152);

inline constexpr std::uint32_t trayMessageFlag = 1;
inline constexpr std::uint32_t trayIconFlag = 2;
inline constexpr std::uint32_t trayTipFlag = 4;

enum class TrayCall : std::uint32_t { Add = 0, Modify = 1, Delete = 2 };

// Notifications come as the message for mouse moves.
inline constexpr std::uint32_t trayCallback = 512;

enum class TrayEvent : std::uint8_t { MouseMove, MouseDown, MouseUp, DoubleClick };

struct TrayNotice {
  TrayEvent event = TrayEvent::MouseMove;
  int button = 0;  // 1 left, 2 right; 0 where the event has none

  bool operator==(const TrayNotice&) const = default;
};

// The event of a message number; none for a number that has no event.
std::optional<TrayNotice> trayNotice(long message);

// The message number in the X position of a move of the mouse over the control.
long trayMessage(double xInTwips, double twipsPerPixel);

// 1 to 65535 from a fraction of at least 0 and below 1.
std::uint32_t trayId(double fraction);

// What the control asks of the system.
class TrayHost {
 public:
  virtual ~TrayHost() = default;
  virtual void notify(TrayCall call, const TrayRecord& record) = 0;
  virtual std::uint32_t window() = 0;                      // receives the notifications
  virtual std::uint32_t icon(const Picture& picture) = 0;  // stays valid until the next one
  virtual double randomFraction() = 0;
};

class TrayArea {
 public:
  // `system` must outlive the control.
  TrayArea(TrayHost& system, bool userMode) : host(system), isRunning(userMode) {}
  TrayArea(const TrayArea&) = delete;
  TrayArea& operator=(const TrayArea&) = delete;
  // Removes the icon.
  ~TrayArea();

  [[nodiscard]] const Picture& icon() const { return Icon; }
  [[nodiscard]] const std::string& toolTip() const { return ToolTip; }
  [[nodiscard]] bool visible() const { return Visible; }
  // Whether the system shows the icon: never at design time.
  [[nodiscard]] bool isShown() const { return isStanding; }

  void setIcon(Picture picture);
  // UTF-8. The icon shows as much of it as 63 units of UTF-16 hold.
  void setToolTip(std::string text);
  // Without a change nothing happens.
  void setVisible(bool value);

  // Members are stored under their names.
  void read(const PropertyBag& bag);
  void save(PropertyBag& bag);
  [[nodiscard]] const std::set<std::string_view>& changedKeys() const { return changed; }

  // The mouse-move event of the control; notifications come through it.
  void mouseMoved(double xInTwips, double twipsPerPixel) const;
  std::function<void(TrayNotice)> onNotice;

 private:
  void fillTip();
  void call(TrayCall what, std::uint32_t flags);

  TrayHost& host;
  bool isRunning;
  Picture Icon;
  std::string ToolTip;
  bool Visible = false;
  bool isStanding = false;
  TrayRecord record;
  std::set<std::string_view> changed;
};

}  // namespace zelvreg::controls

#endif
