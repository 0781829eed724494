#include "search/KeyTreeWalk.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "form/Form42.h"
#include "registry/RegistryValues.h"
#include "scan/CategoryTable.h"
#include "scan/Resolver.h"
#include "search/DeadPath.h"
#include "search/Search.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

struct SearchCategory {
  int number;
  std::size_t row;  // of View1
  const char* kindCode;
};

constexpr std::array<SearchCategory, 4> categoryTable{{
    {1, 7, "8"},
    {2, 8, "11"},
    {3, 9, "12"},
    {4, 10, "13"},
}};

const SearchCategory* find(int number) {
  const auto* found = std::ranges::find(categoryTable, number, &SearchCategory::number);
  return found == categoryTable.end() ? nullptr : found;
}

std::string pathBelow(const std::string& key, const std::string& name) {
  return key.empty() ? name : key + "\\" + name;
}

// getIco gives the number of a picture in the form's list, from 1.
std::string_view iconOfType(const Form42& form, DWORD type) {
  const auto place = static_cast<std::size_t>(getIco(static_cast<std::int16_t>(type)));
  const auto& keys = form.ImageList1.keys;
  return place == 0 || place > keys.size() ? std::string_view() : keys[place - 1];
}

class Walk {
 public:
  enum class Level : bool { First, Below };

  Walk(Form42& walkedForm, SearchState& walkedSearch, std::string first)
      : form(walkedForm), search(walkedSearch), key(std::move(first)) {}

  void visit(Level level) {
    showParent();
    // The handle is kept while the keys below are walked, for the key's own values.
    const OpenKey open = openForLists(search.root, key);
    visitSubkeys(open, level);
    if ((search.testsValues || search.testsData) && !form.cancelRequested) {
      visitValues(open);
    }
  }

 private:
  void showParent() {
    const std::string_view parent = ParentKeyPath(key);
    form.Label3.caption =
        parent.empty() ? std::string(longName(search.root)) : std::string("\\").append(parent);
  }

  void visitSubkeys(const OpenKey& open, Level level) {
    const std::size_t first = names.top();
    search.lister.counter = level == Level::First ? 1 : 0;
    ListSubkeys(form, search.lister, open, names);
    search.lister.counter = 0;
    const std::size_t end = names.top();
    if (first != end && names.at(first) != nothingRead) {
      visitEach(first, end);
    }
    names.cutTo(first);
  }

  void visitEach(std::size_t first, std::size_t end) {
    const std::size_t length = key.size();
    std::size_t next = first;
    while (next != end) {
      if (form.cancelRequested) {
        return;
      }
      const std::string_view name = names.at(next);
      next += NameStack::sizeOf(name);
      if (name.empty()) {
        continue;
      }
      key.append(length == 0 ? "" : "\\").append(name);
      if (search.testsKeys && matches(std::string(name))) {
        addKeyRow();
      }
      visit(Level::Below);
      key.resize(length);
    }
  }

  // A key that was deleted while those below it were walked may have been made anew.
  void listValues(const OpenKey& open) {
    ListValues(search.lister, open, values);
    if (values.names.front() == nothingRead && values.ended != ERROR_NO_MORE_ITEMS) {
      ListValues(search.lister, openForLists(search.root, key), values);
    }
  }

  void visitValues(const OpenKey& open) {
    listValues(open);
    if (values.names.front() == nothingRead) {
      return;
    }
    std::optional<ValueTexts> texts;
    for (std::size_t index = 0; index < values.names.size(); ++index) {
      if (form.cancelRequested) {
        return;
      }
      const std::string& name = values.names[index];
      if (search.testsValues && matches(name)) {
        addValueRow(name, values.types[index]);
      }
      if (!search.testsData || values.types[index] != REG_SZ) {
        continue;
      }
      if (!texts) {
        texts.emplace(search.root, key);
      }
      if (matches(texts->read(name) ? texts->text() : "")) {
        testPath(name, texts->data());
      }
    }
  }

  bool matches(const std::string& text) {
    bool matched = false;
    VerifyPattern(form, text, matched);
    return matched;
  }

  void addKeyRow() {
    const std::string value = resolvedValue(form, search.root, key, "");
    addNameRow({.location = key,
                .badValue = replaceAll(betweenFirstQuotes(value), "\"", ""),
                .kindCode = "",
                .rootName = longName(search.root),
                .subKey = key,
                .iconKey = ""});
  }

  void addValueRow(const std::string& name, DWORD type) {
    addNameRow({.location = pathBelow(key, name),
                .badValue = "",
                .kindCode = "",
                .rootName = longName(search.root),
                .subKey = key,
                .iconKey = iconOfType(form, type)});
  }

  void addNameRow(const Finding& row) {
    ScannerRun uncounted;
    uncounted.scroll = ScrollsTo::Nothing;
    addRow(form, uncounted, row);
  }

  // The text that has matched, as the other reader of values gives it.
  std::string matchedText(const std::string& name, const ValueData& data) {
    return data.isSingleText() ? resolvedText(form, textOfData(data.units()))
                               : resolvedValue(form, search.root, key, name);
  }

  void testPath(const std::string& name, const ValueData& data) {
    form.Label3.caption = keyPath(search.root, key);
    const std::string text = withoutQuotesAndIndex(matchedText(name, data));
    if (!isTestablePath(text)) {
      return;
    }
    const std::string path(programOf(text));
    if (isDeadPath(form, path)) {
      addDeadPath(path, name);
    }
  }

  void addDeadPath(const std::string& path, const std::string& name) {
    const SearchCategory* category = find(search.category);
    if (category != nullptr) {
      showCaption(form, category->row);
    }
    addFinding(form, search.run,
               {.location = path,
                .badValue = name,
                .kindCode = category == nullptr ? "" : category->kindCode,
                .rootName = longName(search.root),
                .subKey = key,
                .iconKey = category == nullptr ? "" : categoryAt(category->row).icon});
    if (category != nullptr) {
      showProblems(form, category->row, search.run.found);
    }
  }

  Form42& form;
  SearchState& search;
  std::string key;    // that is under work
  NameStack names;    // of the keys below it and below those above it
  ValueNames values;  // its own
};

}  // namespace

std::size_t rowOfSearchCategory(int category) {
  const SearchCategory* found = find(category);
  return found == nullptr ? 0 : found->row;
}

void SearchKeyTree(Form42& form, SearchState& search, const std::string& key) {
  Walk(form, search, key).visit(Walk::Level::First);
}

}  // namespace zelvreg
