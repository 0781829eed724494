// How Windows may read a text of the registry as a path or a command line. Only the text is looked
// at: nothing is opened here, and nothing fails.
#ifndef ZELVREG_EVIDENCE_COMMAND_TEXT_H
#define ZELVREG_EVIDENCE_COMMAND_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

// The program of a command line and what follows it.
struct CommandParts {
  std::string program;    // without its quotes
  std::string arguments;  // without blanks at both ends
};

// The program is the text between quotes; or all up to the end of the first extension of a program
// that nothing but an argument follows; or the first word.
CommandParts commandParts(std::string_view text);

// What may be the file that a text names, the most likely first: the text between quotes, the text
// up to an extension, all of it, and for a command the text before each blank, as CreateProcess
// tries them. At most `mostReadings`: if there are so many, some may be missing.
inline constexpr std::size_t mostReadings = 128;
enum class TextIs : std::uint8_t { Path, Command };
std::vector<std::string> fileReadings(std::string_view text, TextIs kind);

// A path as file calls take it: without the prefixes of the kernel and of URLs, and without a sign
// for a resource. `windowsFolder` stands in the place of "\SystemRoot".
std::string plainPath(std::string_view text, const std::string& windowsFolder);

// One of the two characters between the names of a path; a letter of a drive or a variable.
inline bool isSeparator(char character) { return character == '\\' || character == '/'; }
inline bool isLetter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

// Where the first separator from a place on is, and the last one of all; npos if there is none.
// Asked so often that the library's search for one of several characters takes too long.
std::size_t nextSeparator(std::string_view path, std::size_t from = 0);
std::size_t lastSeparator(std::string_view path);

// Whether a path begins with a drive's letter, a colon and a separator.
bool isDrivePath(std::string_view path);

// Whether a path ends in the extension of a program, a library or another file of a program.
bool hasFileEnding(std::string_view path);

// The same, or whether something that belongs to no file's name follows it, as in "tool.exe,1". To
// such a name the system adds no extension.
bool showsFileEnd(std::string_view path);

// What follows the last separator of a path.
std::string_view fileNameIn(std::string_view path);

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" in a text, from its first brace; empty if there is none.
std::string_view guidIn(std::string_view text);

}  // namespace zelvreg

#endif
