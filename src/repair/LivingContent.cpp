#include "repair/LivingContent.h"

#include <algorithm>
#include <cstring>

#include "roots/ValueTypes.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

std::u16string wideTextOf(const WideValue& value) {
  return std::u16string(untilNul(unitsOf(value.data)));
}

Reference referenceIn(const Form42& form, const WideValue& value) {
  if (isSingleText(value.type)) {
    return referenceIn(form, textOf(value));
  }
  // A list of texts names what an installer installs at its first use.
  const bool isAdvertised = value.type == REG_MULTI_SZ && !wideTextOf(value).empty();
  return isAdvertised || value.type == REG_LINK ? Reference::Living : Reference::None;
}

bool isBlankDefault(const WideValue& value) {
  return value.name.empty() && isSingleText(value.type) &&
         wideTextOf(value).find_first_not_of(u' ') == std::u16string::npos;
}

// Walks one key with everything below it.
class Content {
 public:
  Content(const Form42& formInUse, const RegistryState& state) : form(formInUse), registry(state) {}

  using IsLiving = bool (Content::*)(const WideValue& value) const;

  // `isLiving` judges the values of this key; those below it are a record of their own.
  [[nodiscard]] std::optional<std::u16string> living(const TruePlace& key,
                                                     IsLiving isLiving) const {
    const auto values = registry.values(key);
    const auto subkeys = registry.subkeys(key);
    if (!values || !subkeys) {
      return key.fullPath();
    }
    for (const WideValue& value : *values) {
      if ((this->*isLiving)(value)) {
        return key.fullPath() + u", value \"" + value.name + u"\"";
      }
    }
    for (const std::u16string& name : *subkeys) {
      if (auto found = living(below(key, name), &Content::isOfARecord)) {
        return found;
      }
    }
    return std::nullopt;
  }

  [[nodiscard]] bool isMoreThanABlank(const WideValue& value) const {
    return !isBlankDefault(value);
  }
  // The default value is what the finding is about; but a link has none.
  [[nodiscard]] bool isLivingBeside(const WideValue& value) const {
    return (!value.name.empty() || value.type == REG_LINK) &&
           referenceIn(form, value) == Reference::Living;
  }

 private:
  [[nodiscard]] bool isOfARecord(const WideValue& value) const {
    return !isBlankDefault(value) && referenceIn(form, value) != Reference::Dead;
  }

  const Form42& form;
  const RegistryState& registry;
};

}  // namespace

std::optional<std::u16string> livingContent(const Form42& form, const RegistryState& registry,
                                            const TruePlace& key, KeyIs is) {
  return Content(form, registry)
      .living(key, is == KeyIs::Empty ? &Content::isMoreThanABlank : &Content::isLivingBeside);
}

}  // namespace zelvreg
