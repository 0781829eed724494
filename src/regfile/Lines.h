// The lines of a registry file as UTF-16, whichever of its encodings it has.
#ifndef ZELVREG_REGFILE_LINES_H
#define ZELVREG_REGFILE_LINES_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "regfile/Form.h"

namespace zelvreg::regfile {

// What is wrong with a file, and in which line, from 1.
struct Fault {
  std::size_t line = 0;
  std::string what;
};

class Lines {
 public:
  // `bytes` must outlive this object. The encoding follows from the first bytes and the header,
  // which is read here.
  Lines(std::string_view bytes, DecodeNarrow narrow);

  [[nodiscard]] const Form& form() const { return fileForm; }

  // Goes to the next line; false after the last one, and at a fault.
  bool next();
  [[nodiscard]] const std::optional<Fault>& fault() const { return noted; }

  // The line, without its end, until the next step. The caller may change it, and the units behind
  // it, of which there are some.
  static constexpr std::size_t unitsBehind = 8;
  [[nodiscard]] std::span<char16_t> text() { return {room.data(), length}; }
  // What ended it: "\r\n", "\n", or nothing at the end of the file.
  [[nodiscard]] std::u16string_view ending() const { return lineEnding; }
  // Its number, from 1.
  [[nodiscard]] std::size_t number() const { return lineNumber; }

 private:
  void beginWide();
  void readHeader();
  void nextWide();
  void nextNarrow();
  void decode(std::string_view text);
  void take(std::u16string_view text);
  char16_t* roomFor(std::size_t count);
  void fail(std::size_t inLine, const char* what);

  DecodeNarrow decodeNarrow;
  Form fileForm;
  std::string_view rest;       // of a file in UTF-8 or REGEDIT4
  std::u16string_view units;   // of a file in UTF-16
  std::u16string copiedUnits;  // of one that lies at an odd address
  std::vector<char16_t> room;  // the line, and more
  std::size_t length = 0;
  std::u16string_view lineEnding;
  std::size_t lineNumber = 0;
  std::optional<Fault> noted;
};

}  // namespace zelvreg::regfile

#endif
