// A stream that takes UTF-8 and writes UTF-16.
#ifndef ZELVREG_CONSOLE_WIDE_OUTPUT_H
#define ZELVREG_CONSOLE_WIDE_OUTPUT_H

#include <functional>
#include <streambuf>
#include <string>
#include <string_view>

namespace zelvreg::console {

class WideOutput : public std::streambuf {
 public:
  // Takes a piece of text, no character of which is cut in half and which is not empty; false if it
  // cannot be written, which fails the stream.
  using Write = std::function<bool(std::u16string_view text)>;
  explicit WideOutput(Write writePiece) : write(std::move(writePiece)) {}

 protected:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  int sync() override;

 private:
  // All but the beginning of a character whose end is still to come.
  bool writeWhole();

  Write write;
  std::string pending;
};

}  // namespace zelvreg::console

#endif
