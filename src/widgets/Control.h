// What every control is: plain state that tells an attached peer of each change.
//
// Places and sizes are in twips (1440 to the inch), colors in the system's order 0x00BBGGRR or
// 0x800000nn for the system color nn. Text is UTF-8, whatever the charset of the font.
#ifndef ZELVREG_WIDGETS_CONTROL_H
#define ZELVREG_WIDGETS_CONTROL_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace zelvreg {

enum class Change : std::uint8_t {
  Text,
  Look,
  Visible,
  Enabled,
  Place,
  Value,
  Rows,
  Row,
  Checks,
  Selection,
  Scroll,
  Focus,
  Repaint,
};

class Control;

// The window, or the line on a terminal, that shows a control. It holds no state of its own.
class ControlPeer {
 public:
  virtual ~ControlPeer() = default;
  // `row` is the 1-based row for changes of one row, else 0.
  virtual void changed(const Control& control, Change what, std::size_t row) = 0;
};

// One piece of a control's state. Assigning tells the peer, even if the value is the same.
template <class T, Change what>
class Property {
 public:
  Property(Control& holder, T initial) : owner(holder), value(std::move(initial)) {}
  Property(const Property&) = delete;
  ~Property() = default;

  Property& operator=(T newValue);
  // Takes the other's value.
  Property& operator=(const Property& other) {
    if (this != &other) {
      *this = other.value;
    }
    return *this;
  }
  // Tells the peer only if the value is another one.
  void renew(const T& newValue) {
    if (value != newValue) {
      *this = newValue;
    }
  }
  // NOLINTNEXTLINE(google-explicit-constructor): a property reads like the value that it holds
  operator const T&() const { return value; }
  [[nodiscard]] const T& get() const { return value; }

 private:
  Control& owner;
  T value;
};

struct Font {
  std::string name = "Segoe UI";
  double size = 9;  // points
  int charset = 0;  // the system's charset number
  bool isBold = false;

  bool operator==(const Font&) const = default;
};

inline constexpr std::uint32_t windowColor = 0x80000005;
inline constexpr std::uint32_t windowTextColor = 0x80000008;

class Control {
 public:
  Control() = default;
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Property<bool, Change::Visible> visible{*this, true};
  Property<bool, Change::Enabled> enabled{*this, true};
  Property<int, Change::Place> left{*this, 0};
  Property<int, Change::Place> top{*this, 0};
  Property<int, Change::Place> width{*this, 0};
  Property<int, Change::Place> height{*this, 0};
  Property<Font, Change::Look> font{*this, {}};
  Property<std::uint32_t, Change::Look> foreColor{*this, windowTextColor};
  Property<std::uint32_t, Change::Look> backColor{*this, windowColor};
  Property<std::string, Change::Text> toolTip{*this, {}};

  // Shows the state as it is now, without waiting for the message queue.
  void refresh() { changed(Change::Repaint); }

  // The peer is not owned and must live until it is detached. Null detaches.
  void attach(ControlPeer* newPeer) { peer = newPeer; }

  void changed(Change what, std::size_t row = 0) const {
    if (peer != nullptr) {
      peer->changed(*this, what, row);
    }
  }

 private:
  ControlPeer* peer = nullptr;
};

template <class T, Change what>
Property<T, what>& Property<T, what>::operator=(T newValue) {
  value = std::move(newValue);
  owner.changed(what);
  return *this;
}

}  // namespace zelvreg

#endif
