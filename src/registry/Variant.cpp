#include "registry/Variant.h"

#include <cstring>

#include "text/Numbers.h"

namespace zelvreg {
namespace {

struct ToText {
  std::string operator()(std::monostate /*empty*/) const { return {}; }
  std::string operator()(const std::string& text) const { return text; }
  std::string operator()(std::int16_t number) const { return decimal(number); }
  std::string operator()(std::int32_t number) const { return decimal(number); }
  std::string operator()(bool flag) const { return flag ? "True" : "False"; }

  std::string operator()(const std::vector<BYTE>& bytes) const {
    std::vector<WCHAR> wide(bytes.size() / sizeof(WCHAR));
    if (wide.empty()) {
      return {};
    }
    std::memcpy(wide.data(), bytes.data(), wide.size() * sizeof(WCHAR));
    const int length = static_cast<int>(wide.size());
    std::string text(wide.size() * 4, '\0');
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, text.data(),
                                         static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(size));
    return text;
  }
};

}  // namespace

std::string textOf(const Variant& value) { return std::visit(ToText{}, value); }

}  // namespace zelvreg
