// Reading registry.reg.
#include <array>
#include <optional>
#include <vector>

#include "machine/base/CaseFold.h"
#include "machine/base/CodePage.h"
#include "machine/regfile/RegistryFile.h"
#include "machine/regfile/RegistryFileCursor.h"
#include "machine/regfile/RegistryFileLines.h"
#include "machine/registry/RegistryWalk.h"

namespace zelvreg::machine {
namespace {

constexpr std::u16string_view blanks = u" \t";
constexpr unsigned regedit4CodePage = 1252;

int hexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') {
    return unit - u'0';
  }
  const char16_t upper = upperCase(unit);
  return upper >= u'A' && upper <= u'F' ? upper - u'A' + 10 : -1;
}

class Reader {
 public:
  Reader(RegistryFileLines& source, Registry& target)
      : lines(source), registry(target), cursor(source, target) {}

  RegistryFileForm read() {
    while (nextLine()) {
      skipBlanks();
      if (rest.empty() || rest.front() == u';') {
        continue;
      }
      if (rest.front() == u'[') {
        readKey();
      } else if (rest.front() == u'"' || rest.front() == u'@') {
        readValue();
      } else {
        fail("this is neither a key nor a value",
             "a line is [key], \"name\"=data, @=data or ; and a comment");
      }
    }
    registry.finishLoading();
    RegistryFileForm form = lines.form();
    form.spellsCurrentUser = cursor.spellsCurrentUser();
    return form;
  }

 private:
  [[noreturn]] void fail(const std::string& wrong, const std::string& expected) const {
    lines.fail(lines.number(), wrong, expected);
  }

  bool nextLine() {
    const bool hasLine = lines.next();
    rest = hasLine ? lines.text() : std::u16string_view();
    return hasLine;
  }

  void skipBlanks() { rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size())); }

  bool skip(char16_t unit) {
    if (!rest.starts_with(unit)) {
      return false;
    }
    rest.remove_prefix(1);
    return true;
  }

  bool skipWord(std::u16string_view word) {
    if (!isSameName(rest.substr(0, word.size()), word)) {
      return false;
    }
    rest.remove_prefix(word.size());
    return true;
  }

  void readKey() {
    const std::size_t last = rest.find_last_not_of(blanks);
    if (rest[last] != u']') {
      fail("the key is not closed", "the line must end in ]");
    }
    std::u16string_view path = rest.substr(1, last - 1);
    if (path.starts_with(u'-')) {
      path.remove_prefix(1);
      cursor.erase(path);
      key = nullptr;
    } else {
      key = &cursor.open(path);
    }
    hasKey = true;
  }

  void readValue() {
    if (key == nullptr) {
      fail(hasKey ? "a value in a deleted key" : "a value before the first key",
           "put a line [key] before it");
    }
    std::u16string name;
    if (!skip(u'@')) {
      name = readQuoted();
    }
    if (name.size() > maximumValueNameLength) {
      fail("the value's name is too long", "at most 16383 characters are possible");
    }
    skipBlanks();
    if (!skip(u'=')) {
      fail("there is no = behind the value's name", "\"name\"=data or @=data");
    }
    skipBlanks();
    if (skip(u'-')) {
      registry.eraseValue(*key, name);
    } else {
      readData(name);
    }
    skipBlanks();
    if (!rest.empty() && rest.front() != u';') {
      fail("there is more behind the data", "the line must end there");
    }
  }

  void readData(std::u16string_view name) {
    if (rest.starts_with(u'"')) {
      std::u16string text = readQuoted();
      text += u'\0';
      registry.setValue(*key, name, REG_SZ, std::as_bytes(std::span(text)));
    } else if (skipWord(u"dword:")) {
      const std::uint32_t number = readNumber(8);
      registry.setValue(*key, name, REG_DWORD, std::as_bytes(std::span(&number, 1)));
    } else if (skipWord(u"hex:")) {
      readHex();
      registry.setValue(*key, name, REG_BINARY, data);
    } else if (skipWord(u"hex(")) {
      const DWORD type = readNumber(8);
      if (!skipWord(u"):")) {
        fail("the type is not closed", "hex(n): and bytes such as 01,ab");
      }
      readHex();
      widenText(type);
      registry.setValue(*key, name, type, data);
    } else {
      fail("the data are of no known kind", "\"text\", dword:, hex:, hex(n): or -");
    }
  }

  // In REGEDIT4 text is narrow in its hexadecimal form too.
  void widenText(DWORD type) {
    if (!isText(type) || lines.form().encoding != RegistryFileForm::Encoding::Regedit4) {
      return;
    }
    const std::u16string wide =
        sharedCodePage(regedit4CodePage)
            .decode({reinterpret_cast<const char*>(data.data()), data.size()});
    const auto bytes = std::as_bytes(std::span(wide));
    data.assign(bytes.begin(), bytes.end());
  }

  // Text between quotes, which may hold line ends; `rest` is behind it afterwards.
  std::u16string readQuoted() {
    const std::size_t firstLine = lines.number();
    std::u16string text;
    skip(u'"');
    while (true) {
      const std::size_t end = std::min(rest.find_first_of(u"\"\\"), rest.size());
      text += rest.substr(0, end);
      rest.remove_prefix(end);
      if (skip(u'"')) {
        return text;
      }
      if (skip(u'\\')) {
        if (!rest.starts_with(u'\\') && !rest.starts_with(u'"')) {
          fail("a lone backslash in a text", "write \\\\ for a backslash and \\\" for a quote");
        }
        text += rest.front();
        rest.remove_prefix(1);
        continue;
      }
      text += lines.ending();
      if (!nextLine()) {
        lines.fail(firstLine, "the text has no closing quote", "end it with \"");
      }
    }
  }

  std::uint32_t readNumber(std::size_t mostDigits) {
    std::uint32_t number = 0;
    std::size_t digits = 0;
    for (; !rest.empty() && hexDigit(rest.front()) >= 0; ++digits) {
      number = number * 16 + static_cast<std::uint32_t>(hexDigit(rest.front()));
      rest.remove_prefix(1);
    }
    if (digits == 0 || digits > mostDigits) {
      fail("the number is not valid", "one to eight hexadecimal digits");
    }
    return number;
  }

  // Bytes parted by commas, into `data`; a backslash at the end of a line goes on in the next.
  void readHex() {
    data.clear();
    skipToByte();
    if (rest.empty() || rest.front() == u';') {
      return;
    }
    while (true) {
      data.push_back(readByte());
      skipToByte();
      if (!skip(u',')) {
        return;
      }
      skipToByte();
    }
  }

  void skipToByte() {
    skipBlanks();
    while (rest.starts_with(u'\\')) {
      if (rest.find_first_not_of(blanks, 1) != std::u16string_view::npos) {
        fail("a backslash among the bytes", "it may only end a line that goes on in the next");
      }
      if (!nextLine()) {
        fail("the bytes break off", "a line must follow the backslash");
      }
      skipBlanks();
    }
  }

  std::byte readByte() {
    int number = 0;
    std::size_t digits = 0;
    for (; digits < 2 && !rest.empty() && hexDigit(rest.front()) >= 0; ++digits) {
      number = number * 16 + hexDigit(rest.front());
      rest.remove_prefix(1);
    }
    if (digits == 0) {
      fail("a byte is missing or wrong", "two hexadecimal digits a byte, parted by commas");
    }
    return static_cast<std::byte>(number);
  }

  RegistryFileLines& lines;
  Registry& registry;
  RegistryFileCursor cursor;
  std::u16string_view rest;    // what is left of the line
  RegistryKey* key = nullptr;  // none before the first key and after a deletion
  bool hasKey = false;
  std::vector<std::byte> data;  // of the value that is being read
};

}  // namespace

RegistryFileForm readRegistryFile(const std::filesystem::path& file, Registry& registry) {
  const MappedFile mapped(file);
  RegistryFileLines lines(file.filename().string(), mapped.bytes());
  return Reader(lines, registry).read();
}

}  // namespace zelvreg::machine
