// Writes a file in the registry editor's export format, line by line.
#ifndef ZELVREG_REGFILE_WRITER_H
#define ZELVREG_REGFILE_WRITER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "regfile/Form.h"

namespace zelvreg::regfile {

// The default value has an empty name.
struct Value {
  std::u16string_view name;
  std::uint32_t type = 0;
  std::span<const std::byte> data;
};

// The form must be able to hold what it is given: names and texts in its encoding, and no line end
// in the path of a key.
class Writer {
 public:
  // Begins with the mark and the header. `narrow` is needed for REGEDIT4 only.
  explicit Writer(const Form& used, EncodeNarrow narrow = nullptr);

  // Begins a key after an empty line. Values that follow belong to it.
  void beginKey(std::u16string_view path);
  // Reading it gives the same bytes back. What is no sound text is written in hexadecimal.
  void addValue(const Value& value);
  // That the key has no value of this name: importing the file deletes one that is there.
  void addMissingValue(std::u16string_view name);
  // A comment, which must begin with a semicolon, or an empty line.
  void addLine(std::u16string_view text);

  // What is written and was not taken yet.
  [[nodiscard]] const std::string& bytes() const { return pending; }
  std::string takeBytes();

 private:
  void beginValue(std::u16string_view name);
  void appendQuoted(std::u16string_view text);
  void appendHex(const Value& value);
  void appendBytes(std::span<const std::byte> bytes);
  void endLine();

  Form form;
  EncodeNarrow encodeNarrow;
  std::u16string_view lineEnd;
  std::u16string line;
  std::u16string units;  // of the value that is written
  std::string pending;
};

// Bytes as such a file writes them, in one line, added to `text`.
void appendByteList(std::u16string& text, std::span<const std::byte> bytes);

}  // namespace zelvreg::regfile

#endif
