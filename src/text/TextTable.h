// What is known about texts, by the text. A text is hashed once for all that is asked about it, and
// all that is known goes at once, with its memory.
#ifndef ZELVREG_TEXT_TEXT_TABLE_H
#define ZELVREG_TEXT_TEXT_TABLE_H

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace zelvreg {

// A text together with its hash. Points to the text that was given.
class HashedText {
 public:
  explicit HashedText(std::string_view given)
      : text(given), number(std::hash<std::string_view>()(given)) {}

  [[nodiscard]] std::string_view view() const { return text; }
  [[nodiscard]] std::size_t hash() const { return number; }
  bool operator==(const HashedText& other) const { return text == other.text; }

  // The same text in other memory, which has room for it.
  [[nodiscard]] HashedText copyIn(char* memory) const {
    HashedText copy = *this;
    std::ranges::copy(text, memory);
    copy.text = {memory, text.size()};
    return copy;
  }

 private:
  std::string_view text;
  std::size_t number;
};

template <typename Known>
class TextTable {
 public:
  [[nodiscard]] std::size_t size() const { return content->known.size(); }
  // Makes room for so many, until everything is forgotten.
  void reserve(std::size_t count) { content->known.reserve(count); }

  // Null for a text that was not added. Valid until everything is forgotten.
  [[nodiscard]] const Known* find(const HashedText& text) const {
    const auto found = content->known.find(text);
    return found == content->known.end() ? nullptr : &found->second;
  }

  // Copies the text. Nothing may be known about it yet.
  Known& add(const HashedText& text, Known known) {
    void* memory = content->memory.allocate(text.view().size(), 1);
    const HashedText kept = text.copyIn(static_cast<char*>(memory));
    return content->known.emplace(kept, std::move(known)).first->second;
  }

  void forget() { content.emplace(); }

 private:
  struct HashOf {
    std::size_t operator()(const HashedText& text) const { return text.hash(); }
  };
  struct Content {
    std::pmr::monotonic_buffer_resource memory;
    std::pmr::unordered_map<HashedText, Known, HashOf> known{&memory};
  };
  std::optional<Content> content{std::in_place};
};

}  // namespace zelvreg

#endif
