// The parts that the lines of a registry file are made of, taken from its text one by one.
#ifndef ZELVREG_KEYS_REGISTRY_TEXT_SCANNER_H
#define ZELVREG_KEYS_REGISTRY_TEXT_SCANNER_H

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keys/RegistryTextDecoder.h"

namespace zelvreg {

// Steps that can go wrong answer whether they went well. The first that did not leaves its fault;
// no step may follow it.
class RegistryTextScanner {
 public:
  // `body` begins in the second line, behind the header, and must outlive the scanner.
  explicit RegistryTextScanner(std::u16string_view body) : rest(body) {}

  [[nodiscard]] bool atEnd() const { return rest.empty(); }
  // The next character; NUL at the end.
  [[nodiscard]] char16_t next() const { return rest.empty() ? u'\0' : rest.front(); }

  // Passes blanks. Faults are noted for the line in which the last statement began.
  void beginStatement();
  [[nodiscard]] std::size_t statementLine() const { return firstLine; }
  [[nodiscard]] const std::optional<RegistryTextFault>& fault() const { return noted; }
  // Notes a fault; always false.
  bool fail(const char* what);

  void skipBlanks();
  // Pass what is told, if it stands here.
  bool skip(std::u16string_view word);
  bool skipLineEnd();
  // What is left of the line, without blanks at its end; passes the end of the line.
  std::u16string_view takeLine();

  // A text from its opening quote on. It may hold line ends, which belong to it, but no NUL.
  bool readQuoted(std::u16string& text);
  // One to eight hexadecimal digits.
  bool readNumber(DWORD& number);
  // Bytes parted by commas, or none; a backslash at the end of a line goes on in the next.
  bool readBytes(std::vector<BYTE>& data);

 private:
  bool skipToByte();
  bool readByte(std::vector<BYTE>& data);

  std::u16string_view rest;
  std::size_t line = 2;
  std::size_t firstLine = 2;
  std::optional<RegistryTextFault> noted;
};

}  // namespace zelvreg

#endif
