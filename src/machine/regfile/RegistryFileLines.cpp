#include "machine/regfile/RegistryFileLines.h"

#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::string_view utf16Mark = "\xFF\xFE";
constexpr std::string_view utf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::u16string_view regedit4Header = u"REGEDIT4";
constexpr std::u16string_view version5Header = u"Windows Registry Editor Version 5.00";
constexpr unsigned regedit4CodePage = 1252;

}  // namespace

MappedFile::MappedFile(const std::filesystem::path& file) {
  const auto fail = [&] {
    throw MachineError(file.string() +
                       ": cannot be read: " + std::generic_category().message(errno));
  };
  const FileDescriptor opened = openPlainFile(file);
  if (!opened.isOpen()) {
    fail();
  }
  struct stat status {};
  void* mapped = nullptr;
  const bool isKnown = fstat(opened.get(), &status) == 0;
  if (isKnown && status.st_size > 0) {
    size = static_cast<std::size_t>(status.st_size);
    mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, opened.get(), 0);
  }
  if (!isKnown || mapped == MAP_FAILED) {
    fail();
  }
  start = static_cast<const char*>(mapped);
}

MappedFile::~MappedFile() {
  if (start != nullptr) {
    munmap(const_cast<char*>(start), size);
  }
}

RegistryFileLines::RegistryFileLines(std::string name, std::string_view bytes)
    : fileName(std::move(name)), rest(bytes) {
  if (rest.starts_with(utf16BigEndianMark)) {
    fail(1, "the file is UTF-16 with the high byte first",
         "save it as UTF-16LE, as the registry editor does, or as UTF-8");
  }
  if (rest.starts_with(utf16Mark)) {
    fileForm.encoding = RegistryFileForm::Encoding::Utf16;
    rest.remove_prefix(utf16Mark.size());
    if (rest.size() % sizeof(char16_t) != 0) {
      fail(1, "the UTF-16 text ends within a character", "copy the file anew, it was cut short");
    }
  } else {
    fileForm.encoding = RegistryFileForm::Encoding::Utf8;
    fileForm.hasByteOrderMark = rest.starts_with(utf8Mark);
    rest.remove_prefix(fileForm.hasByteOrderMark ? utf8Mark.size() : 0);
  }
  readHeader();
}

void RegistryFileLines::readHeader() {
  const bool hasLine = next();
  std::u16string_view header = hasLine ? line : u"";
  header = header.substr(0, header.find_last_not_of(u" \t") + 1);
  fileForm.hasCarriageReturns = lineEnding == u"\r\n";
  const bool isPlain =
      fileForm.encoding == RegistryFileForm::Encoding::Utf8 && !fileForm.hasByteOrderMark;
  if (isPlain && header == regedit4Header) {
    fileForm.encoding = RegistryFileForm::Encoding::Regedit4;
  } else if (header != version5Header) {
    fail(1, "the header is missing",
         "the first line must be \"Windows Registry Editor Version 5.00\", or \"REGEDIT4\" in a "
         "file in code page 1252");
  }
}

bool RegistryFileLines::next() {
  if (rest.empty()) {
    return false;
  }
  ++lineNumber;
  return fileForm.encoding == RegistryFileForm::Encoding::Utf16 ? nextWide() : nextNarrow();
}

bool RegistryFileLines::nextWide() {
  // The mapping starts on a page and the mark has two bytes, so the units are aligned.
  const std::u16string_view units(reinterpret_cast<const char16_t*>(rest.data()),
                                  rest.size() / sizeof(char16_t));
  const std::size_t end = units.find(u'\n');
  const std::size_t size = end == std::u16string_view::npos ? units.size() : end + 1;
  line = units.substr(0, size);
  lineEnding = line.ends_with(u"\r\n") ? line.substr(size - 2)
               : line.ends_with(u'\n') ? line.substr(size - 1)
                                       : std::u16string_view();
  line.remove_suffix(lineEnding.size());
  rest.remove_prefix(size * sizeof(char16_t));
  return true;
}

bool RegistryFileLines::nextNarrow() {
  const std::size_t end = rest.find('\n');
  const std::size_t size = end == std::string_view::npos ? rest.size() : end + 1;
  std::string_view narrow = rest.substr(0, size);
  rest.remove_prefix(size);
  lineEnding = narrow.ends_with("\r\n") ? u"\r\n" : narrow.ends_with('\n') ? u"\n" : u"";
  narrow.remove_suffix(lineEnding.size());
  decode(narrow);
  line = decoded;
  return true;
}

void RegistryFileLines::decode(std::string_view narrow) {
  const bool isAscii = std::ranges::all_of(
      narrow, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  if (isAscii) {
    decoded.resize(narrow.size());
    std::ranges::transform(narrow, decoded.begin(), [](char byte) {
      return static_cast<char16_t>(static_cast<unsigned char>(byte));
    });
  } else if (fileForm.encoding == RegistryFileForm::Encoding::Regedit4) {
    decoded = sharedCodePage(regedit4CodePage).decode(narrow);
  } else {
    decoded = utf16(narrow);
    if (!isPlainUtf8(narrow)) {
      fail(lineNumber, "the line is not UTF-8",
           "save the file as UTF-8 or UTF-16LE, or begin it with \"REGEDIT4\" if it is in code "
           "page 1252");
    }
  }
}

void RegistryFileLines::fail(std::size_t atLine, const std::string& wrong,
                             const std::string& expected) const {
  throw MachineError(fileName + ":" + std::to_string(atLine) + ": " + wrong + "; " + expected);
}

}  // namespace zelvreg::machine
