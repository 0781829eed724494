// Finds the file path in data that a search has matched, and whether it is dead.
#ifndef ZELVREG_SEARCH_DEAD_PATH_H
#define ZELVREG_SEARCH_DEAD_PATH_H

#include <string>
#include <string_view>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// A value of the 64-bit view as text, resolved, in lower case and without blanks at its ends; empty
// when it cannot be read.
std::string resolvedValue(const Form42& form, HiveHandle root, const std::string& key,
                          const std::string& valueName);

// The same of a text as GetRegistryValue gives it.
std::string resolvedText(const Form42& form, std::string text);

// The text between the first two quotation marks if it begins with one, else the whole text.
std::string_view betweenFirstQuotes(std::string_view text);

// A resolved value without quotation marks, and only up to its first comma.
std::string withoutQuotesAndIndex(std::string_view value);

// Whether a text can be a path to test. It has a drive letter, and is neither a menu entry with a
// short cut ("^" before its last one to three characters) nor the picture of a pointer.
bool isTestablePath(std::string_view text);

// The program of a command line, without quotation marks: the text up to the first extension of a
// program that ends there. In a text without one the last dot decides: what follows a blank after
// its extension is cut off. Anything else stays whole.
std::string_view programOf(std::string_view commandLine);

// Whether drives of this type, as GetDriveTypeW gives it, have removable contents.
bool comesAndGoes(unsigned driveType);

// Whether there is neither a file nor a folder. Folders on removable drives are not judged. A path
// with a brace is the name of a key, not of a file.
bool isDeadPath(Form42& form, const std::string& path);

}  // namespace zelvreg

#endif
