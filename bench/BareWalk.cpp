#include "BareWalk.h"

#include <windows.h>

#include <array>
#include <string>
#include <string_view>

#include "WalkTable.h"

namespace zelvreg::bench {
namespace {

constexpr REGSAM access = KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS | KEY_WOW64_64KEY;

// Room for any name and for all data that name a file.
using Buffer = std::array<char16_t, 32768>;

class Walker {
 public:
  explicit Walker(const Loop& loopToWalk) : loop(loopToWalk) {}

  WalkCounts walk() {
    if (loop.at == At::Key) {
      readValues(loop.key);
      return counts;
    }
    const std::u16string start = *loop.key == u'\0' ? u"" : std::u16string(loop.key) + u"\\";
    forEachSubkey(loop.key, [&](std::u16string_view name) {
      std::u16string path = start;
      path += name;
      if (loop.at == At::FirstOfSubkeys) {
        path += u"\\" + firstSubkey(path);
      }
      path += loop.below;
      readValues(path);
    });
    return counts;
  }

 private:
  template <typename Take>
  void forEachSubkey(const std::u16string& path, const Take& take) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(loop.root, path.c_str(), 0, access, &key) != ERROR_SUCCESS) {
      return;
    }
    std::array<char16_t, 512> name{};
    for (DWORD index = 0;
         RegEnumKeyW(key, index, name.data(), static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
         ++index) {
      ++counts.entries;
      take(std::u16string_view(name.data()));
    }
    RegCloseKey(key);
  }

  std::u16string firstSubkey(const std::u16string& path) {
    HKEY key = nullptr;
    std::array<char16_t, 512> name{};
    if (RegOpenKeyExW(loop.root, path.c_str(), 0, access, &key) == ERROR_SUCCESS) {
      RegEnumKeyW(key, 0, name.data(), static_cast<DWORD>(name.size()));
      RegCloseKey(key);
    }
    ++counts.entries;
    return name.data();
  }

  void readValues(const std::u16string& path) {
    if (loop.value != nullptr) {
      readValue(path, loop.value);
    } else {
      readAllValues(path);
    }
  }

  void readAllValues(const std::u16string& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(loop.root, path.c_str(), 0, access, &key) != ERROR_SUCCESS) {
      return;
    }
    auto size = static_cast<DWORD>(nameBuffer.size());
    DWORD type = REG_NONE;
    for (DWORD index = 0; RegEnumValueW(key, index, nameBuffer.data(), &size, nullptr, &type,
                                        nullptr, nullptr) == ERROR_SUCCESS;
         ++index) {
      ++counts.entries;
      if (size > 0) {
        takeName(path);
      }
      size = static_cast<DWORD>(nameBuffer.size());
    }
    RegCloseKey(key);
  }

  void takeName(const std::u16string& path) {
    switch (loop.names) {
      case Names::Nothing:
        break;
      case Names::ByNameMade:
        SetFileAttributesW(nameBuffer.data(), FILE_ATTRIBUTE_ARCHIVE);
        testFile(nameBuffer.data());
        break;
      case Names::ByName:
        testFile(nameBuffer.data());
        break;
      default:
        readValue(path, nameBuffer.data());
    }
  }

  // Each value by an open of its own, as the reads of the true view come.
  void readValue(const std::u16string& path, const char16_t* name) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(loop.root, path.c_str(), 0, access, &key) != ERROR_SUCCESS) {
      return;
    }
    auto size = static_cast<DWORD>(data.size() * sizeof(char16_t));
    DWORD type = REG_NONE;
    ++counts.values;
    const LONG status =
        RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size);
    RegCloseKey(key);
    if (status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ)) {
      testData(std::u16string_view(data.data()), name);
    }
  }

  void testData(std::u16string_view text, const char16_t* name) {
    switch (loop.names) {
      case Names::ByFont:
        testFile((u"C:\\Windows\\Fonts\\" + std::u16string(text)).c_str());
        break;
      case Names::ByNameInFolder:
        testFile((std::u16string(text) + u"\\" + name).c_str());
        break;
      case Names::ByRule:
        testFile(std::u16string(programOfRule(text)).c_str());
        break;
      case Names::ByPath:
      case Names::ByPathOrFolder:
        testPath(text);
        break;
      case Names::ByLibrary:
        testLibrary(text);
        break;
      default:
        break;
    }
  }

  static std::u16string_view programOfRule(std::u16string_view rule) {
    constexpr std::u16string_view marker = u"|App=";
    const auto start = rule.find(marker);
    if (start == std::u16string_view::npos) {
      return {};
    }
    rule.remove_prefix(start + marker.size());
    return rule.substr(0, rule.find(u'|'));
  }

  void testPath(std::u16string_view text) {
    if (text.find(u'\\') == std::u16string_view::npos) {
      return;
    }
    const std::u16string path(text.front() == u'"' ? text.substr(1, text.find(u'"', 1) - 1)
                                                   : text.substr(0, text.find(u',')));
    if (loop.names == Names::ByPathOrFolder) {
      testFile(path.c_str());
    }
    testFile(path.c_str());
  }

  void testFile(const char16_t* path) {
    ++counts.files;
    const char16_t* tested = path;
    // Fonts are never expanded.
    if (loop.names != Names::ByFont &&
        ExpandEnvironmentStringsW(path, expanded.data(), static_cast<DWORD>(expanded.size())) <=
            expanded.size()) {
      tested = expanded.data();
    }
    const DWORD attributes = GetFileAttributesW(tested);
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      ++counts.dead;
    }
  }

  // A library may be registered as a class as well.
  void testLibrary(std::u16string_view text) {
    for (const char16_t* list : {u"CLSID\\", u"TypeLib\\"}) {
      HKEY key = nullptr;
      const std::u16string path = list + std::u16string(text);
      if (RegOpenKeyExW(loop.root, path.c_str(), 0, access, &key) == ERROR_SUCCESS) {
        RegCloseKey(key);
      } else {
        ++counts.dead;
      }
    }
  }

  const Loop& loop;
  WalkCounts counts;
  Buffer nameBuffer;  // none of them is filled beforehand
  Buffer data;
  Buffer expanded;
};

void add(WalkCounts& sum, const WalkCounts& more) {
  sum.entries += more.entries;
  sum.values += more.values;
  sum.files += more.files;
  sum.dead += more.dead;
}

}  // namespace

WalkCounts bareWalk(const std::set<std::size_t>& rows) {
  WalkCounts sum;
  for (const std::size_t row : rows) {
    for (const Loop& loop : loopsOf(row)) {
      add(sum, Walker(loop).walk());
    }
  }
  return sum;
}

}  // namespace zelvreg::bench
