// The help: a book in the program's folder that the system shows, and beside it the same pages as
// plain HTML for where the system cannot show it.
#ifndef ZELVREG_SHELL_HELP_H
#define ZELVREG_SHELL_HELP_H

#include <cstddef>
#include <string>
#include <string_view>

#include "shell/HelpPages.h"

namespace zelvreg {

struct Form42;

// One page. A name that helpPages does not have does not compile.
class HelpTopic {
 public:
  consteval HelpTopic(const char* name) : index(0) {
    while (helpPages.at(index).name != name) {
      ++index;
    }
  }
  [[nodiscard]] constexpr const HelpPage& page() const { return helpPages[index]; }

 private:
  friend HelpTopic helpOfCategory(std::size_t row);
  constexpr explicit HelpTopic(std::size_t place) : index(place) {}

  std::size_t index;
};

// The page of a category, by its row of the list, from 1.
HelpTopic helpOfCategory(std::size_t row);

// The book in the language in use if there is one, else the English one. To the letter there is
// only the English one.
std::string helpBook(const Form42& form);
// The page as plain HTML, in the language in use if there is one, else in English.
std::string helpFile(const Form42& form, const HelpPage& page);

// Has the front end open the book at a page.
void openHelp(Form42& form, HelpTopic topic);
// For a front end that cannot: opens the page of that number as plain HTML in the user's browser,
// or says that there is none. To the letter it does nothing.
void openHelpPage(Form42& form, int context);

}  // namespace zelvreg

#endif
