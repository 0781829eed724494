// Reads a file in the registry editor's export format statement by statement.
#ifndef ZELVREG_REGFILE_READER_H
#define ZELVREG_REGFILE_READER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "regfile/Form.h"
#include "regfile/Lines.h"

namespace zelvreg::regfile {

// Takes the statements of a file in their order. Each answers what is wrong with it, which ends the
// reading, or nothing. It may also throw. What is passed lives as long as the call.
class Receiver {
 public:
  using Objection = std::string_view;
  static constexpr Objection none{};

  virtual ~Receiver() = default;

  // A line that is a comment, from its semicolon on.
  virtual Objection comment(std::u16string_view text) = 0;
  // A path is what stands between the brackets. That its names are possible is not checked.
  virtual Objection makeKey(std::u16string_view path) = 0;
  virtual Objection deleteKey(std::u16string_view path) = 0;
  // Of the key before, if there is one. The default value has an empty name, a name at most
  // longestValueName units; texts have their terminator.
  virtual Objection setValue(std::u16string_view name, std::uint32_t type,
                             std::span<const std::byte> data) = 0;
  virtual Objection deleteValue(std::u16string_view name) = 0;
};

// Whether a NUL may stand between quotes. The registry editor never writes one there.
enum class Nuls { Refused, Taken };

class Reader {
 public:
  // `bytes` must outlive this object.
  Reader(std::string_view bytes, DecodeNarrow narrow, Nuls betweenQuotes)
      : lines(bytes, narrow), decodeNarrow(narrow), nuls(betweenQuotes) {}

  // Gives all statements to `receiver`, up to the first fault. What breaks off at the end of the
  // file is a fault of the line in which its statement begins.
  std::optional<Fault> read(Receiver& receiver);

  // How the file is written.
  [[nodiscard]] const Form& form() const { return lines.form(); }
  // The line in which the present statement begins, from 1.
  [[nodiscard]] std::size_t line() const { return firstLine; }

 private:
  // Each answers whether it went well. The first that did not leaves its fault.
  bool readStatement(Receiver& receiver);
  bool readKey(Receiver& receiver);
  bool readValue(Receiver& receiver);
  bool readData();
  bool readText();
  bool readQuoted(std::u16string& joined, std::u16string_view& content);
  bool readQuotedPart(std::u16string_view& part, bool& isClosed);
  bool readNumber(std::uint32_t& number);
  bool readBytes();
  bool widenText();
  bool endValue();
  bool skipToByte();

  bool nextLine();
  bool goOnInNextLine();
  void skipBlanks();
  bool skip(char16_t unit);
  // The same for a word in lower case, which the file may write otherwise.
  bool skipInAnyCase(std::u16string_view word);
  bool accept(Receiver::Objection objection);
  bool fail(std::string_view what);
  bool failAtStart(std::string_view what);

  Lines lines;
  DecodeNarrow decodeNarrow;
  Nuls nuls;
  std::u16string_view rest;  // what is left of the line
  std::size_t firstLine = 0;
  std::optional<Fault> fault;
  // Of the value that is read. Name and data lie in the line itself where they can.
  std::u16string_view name;
  std::uint32_t type = 0;
  std::span<const std::byte> data;
  std::u16string joinedName;
  std::u16string joinedText;
  std::uint32_t number = 0;
  std::vector<std::byte> bytes;
};

// Bytes as such a file writes them: two hexadecimal digits each, with commas between them. False,
// and `bytes` without meaning, for any other text.
bool readByteList(std::u16string_view text, std::vector<std::byte>& bytes);

}  // namespace zelvreg::regfile

#endif
