// JSON that is read from a stream part by part, so that no file needs to fit into memory.
#ifndef ZELVREG_JSON_JSON_SOURCE_H
#define ZELVREG_JSON_JSON_SOURCE_H

#include <cstddef>
#include <istream>
#include <iterator>
#include <string>

namespace zelvreg {

// The characters of a stream as the library can read them (json/JsonPieces.h): the texts of its
// strings need withoutStands().
class JsonSource {
 public:
  // The stream must outlive it. A mark of UTF-8 at its start is passed over.
  explicit JsonSource(std::istream& jsonStream) : stream(jsonStream) {}

  // Whether all of the stream has been read. The others ask for a character that is there.
  bool atEnd() { return at == ready.size() && !fill(); }
  [[nodiscard]] char current() const { return ready[at]; }
  void advance() { ++at; }

  // Passes over blanks and ends of lines; whether anything follows.
  bool findNext();

 private:
  bool fill();

  std::istream& stream;
  std::string unread;  // from the stream, less than a piece at the end of a part
  std::string ready;   // as the library can read it
  std::size_t at = 0;
  bool isFirst = true;
};

// A place in a source, for the library: it reads from one that has a source to one that has none.
// All places in one source are the same place.
class JsonPlace {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = char;

  JsonPlace() = default;
  explicit JsonPlace(JsonSource& readSource) : source(&readSource) {}

  char operator*() const { return source->current(); }
  JsonPlace& operator++() {
    source->advance();
    return *this;
  }
  JsonPlace operator++(int) {
    source->advance();
    return *this;
  }
  bool operator==(const JsonPlace& other) const { return isEnd() == other.isEnd(); }

 private:
  [[nodiscard]] bool isEnd() const { return source == nullptr || source->atEnd(); }

  JsonSource* source = nullptr;
};

}  // namespace zelvreg

#endif
