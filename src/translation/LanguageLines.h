// A language file line by line.
#ifndef ZELVREG_TRANSLATION_LANGUAGE_LINES_H
#define ZELVREG_TRANSLATION_LANGUAGE_LINES_H

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

struct LanguageLine {
  std::size_t number = 0;     // from 1
  std::string whole = {};     // without what ends it
  std::string text = {};      // that without the blanks around it, which are not read
  bool endsAsWindows = true;  // with CR LF; also true of the last line if nothing ends it
  bool isExact = true;        // its bytes are text of the code page
  bool isHeader = false;      // "[section]"
  bool isPair = false;        // key=text
  std::string section = {};   // the one that it begins, or that it is in
  std::string key = {};
  std::string value = {};  // as the program reads it
  bool losesText = false;  // it holds more than that
};

// The lines of a file's bytes. A byte order mark decides before the code page.
std::vector<LanguageLine> linesOfLanguage(std::string_view bytes, UINT codePage);

}  // namespace zelvreg

#endif
