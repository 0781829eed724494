#include "machine/WideText.h"

namespace zelvreg::machine {

WideText::WideText(const CodePage& page, LPCSTR text) {
  const std::string_view narrow = text == nullptr ? "" : text;
  bool isPlain = narrow.size() <= usual.size();
  for (std::size_t index = 0; isPlain && index < narrow.size(); ++index) {
    const auto byte = static_cast<unsigned char>(narrow[index]);
    usual[index] = byte;
    isPlain = byte < 0x80;
  }
  if (isPlain) {
    wide = {usual.data(), narrow.size()};
  } else {
    longer = page.decode(narrow);
    wide = longer;
  }
}

}  // namespace zelvreg::machine
