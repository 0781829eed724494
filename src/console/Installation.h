// Where this program lies on the computer that it runs on, and what lies beside it. Paths are
// UTF-8.
#ifndef ZELVREG_CONSOLE_INSTALLATION_H
#define ZELVREG_CONSOLE_INSTALLATION_H

#include <string>
#include <vector>

namespace zelvreg::console {

// The program's file; empty if the system does not tell.
std::string programFile();

// The language files that come with the program.
std::string languageFolder();

// The names of the plain files in a folder, in no order; none if it cannot be read.
std::vector<std::string> filesIn(const std::string& folder);

// The tags of the language files among names of files, in alphabetic order.
std::vector<std::string> languageTags(const std::vector<std::string>& files);

}  // namespace zelvreg::console

#endif
