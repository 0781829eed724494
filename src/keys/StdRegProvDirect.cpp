// The provider by direct reads with the flag of the view.
#include <array>

#include "keys/DirectText.h"
#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "keys/StdRegProv.h"
#include "roots/NameLimits.h"

namespace zelvreg {
namespace {

class DirectProvider : public StdRegProv {
 public:
  explicit DirectProvider(REGSAM viewFlag) : view(viewFlag) {}

  LONG enumKey(HiveHandle hive, const std::string& key,
               std::optional<std::vector<std::string>>& names) override {
    const OpenKey open(hive, key, KEY_ENUMERATE_SUB_KEYS | view);
    if (!open.isOpen()) {
      return open.openStatus();
    }
    std::array<char16_t, 1024> name;
    for (DWORD index = 0; open.subkeyName(index, name) == ERROR_SUCCESS; ++index) {
      list(names).push_back(utf8(name.data()));
    }
    return ERROR_SUCCESS;
  }

  LONG enumValues(HiveHandle hive, const std::string& key,
                  std::optional<std::vector<std::string>>& names, std::vector<DWORD>& types,
                  const std::function<void()>& serve) override {
    constexpr DWORD mostUnserved = 64;
    const OpenKey open(hive, key, KEY_QUERY_VALUE | view);
    if (!open.isOpen()) {
      return open.openStatus();
    }
    auto size = static_cast<DWORD>(nameBuffer.size());
    DWORD type = REG_NONE;
    const auto isListed = [&](OpenPair::Place place) {
      return RegEnumValueW(place.key, place.index, roomIn(nameBuffer), &size, nullptr, &type,
                           nullptr, nullptr) == ERROR_SUCCESS;
    };
    for (DWORD index = 0; isListed(open.valueAt(index)); ++index) {
      if (size > 0) {
        list(names).push_back(utf8({nameBuffer.data(), size}));
        types.push_back(type);
      }
      // The name in the buffer has been taken: whoever is served may list other values with it.
      if (index % mostUnserved == mostUnserved - 1) {
        serve();
      }
      size = static_cast<DWORD>(nameBuffer.size());
    }
    return ERROR_SUCCESS;
  }

  LONG getStringValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                      std::string& value) override {
    DWORD type = REG_NONE;
    return readText(hive, key, valueName, view, value, type);
  }

  LONG getExpandedStringValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                              std::string& value) override {
    return readExpandedText(hive, key, valueName, view, value);
  }

  LONG deleteKey(HiveHandle hive, const std::string& key) override {
    // The delete has no flag of its own, so it goes through the parent's handle of that view.
    const auto backslash = key.rfind('\\');
    if (backslash == std::string::npos) {
      return RegDeleteKeyW(systemKey(hive), Wide(key).get());
    }
    const OpenKey parent(hive, key.substr(0, backslash), KEY_ENUMERATE_SUB_KEYS | view,
                         ClassesOf::User);
    return parent.isOpen() ? RegDeleteKeyW(parent.handle(),
                                           Wide(std::string_view(key).substr(backslash + 1)).get())
                           : parent.openStatus();
  }

 private:
  static std::vector<std::string>& list(std::optional<std::vector<std::string>>& names) {
    return names ? *names : names.emplace();
  }

  REGSAM view;
  // The longest name of a value and its NUL.
  std::vector<char16_t> nameBuffer = std::vector<char16_t>(longestValueName + 1);
};

}  // namespace

std::unique_ptr<StdRegProv> makeDirectProvider(ProviderArchitecture architecture) {
  const bool is64Bit = architecture == ProviderArchitecture::Bits64;
  return std::make_unique<DirectProvider>(is64Bit ? KEY_WOW64_64KEY : 0);
}

}  // namespace zelvreg
