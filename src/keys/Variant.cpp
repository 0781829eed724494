#include "keys/Variant.h"

#include "text/Numbers.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

struct ToText {
  std::string operator()(std::monostate /*empty*/) const { return {}; }
  std::string operator()(const std::string& text) const { return text; }
  std::string operator()(std::int16_t number) const { return decimal(number); }
  std::string operator()(std::int32_t number) const { return decimal(number); }
  std::string operator()(bool flag) const { return flag ? "True" : "False"; }

  std::string operator()(const std::vector<BYTE>& bytes) const { return utf8(unitsOf(bytes)); }
};

}  // namespace

std::string textOf(const Variant& value) { return std::visit(ToText{}, value); }

}  // namespace zelvreg
