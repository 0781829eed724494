// A name as a hive holds it.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_TEXT_H
#define ZELVREG_MACHINE_HIVE_HIVE_TEXT_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace zelvreg::machine {

// One byte for each character (Latin-1), or UTF-16, where halves of characters may stand alone. It
// shows bytes of somebody else, at any address.
class HiveText {
 public:
  enum class Form : bool { Narrow, Wide };

  HiveText() = default;
  // Of wide text the number of bytes must be even.
  HiveText(std::span<const std::byte> text, Form textForm) : bytes(text), form(textForm) {}

  // In UTF-16 units.
  [[nodiscard]] std::size_t size() const {
    return form == Form::Narrow ? bytes.size() : bytes.size() / sizeof(char16_t);
  }
  // Into memory of the caller with room for size() units.
  void copyTo(char16_t* units) const;
  [[nodiscard]] std::u16string text() const;
  // Whether it differs from this name in case at most.
  [[nodiscard]] bool isSame(std::u16string_view name) const;

 private:
  [[nodiscard]] char16_t unitAt(std::size_t index) const;

  std::span<const std::byte> bytes;
  Form form = Form::Narrow;
};

}  // namespace zelvreg::machine

#endif
