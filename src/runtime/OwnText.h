// The program's own files as text: exclusions, journals, copies of the fix list, reports, results.
//
// A file is in the computer's code page if that loses none of its text, so that other programs can
// read it. Otherwise the whole file is UTF-8 with a byte order mark (lone surrogates are kept as in
// unicode/Unicode.h). Both are read.
#ifndef ZELVREG_RUNTIME_OWN_TEXT_H
#define ZELVREG_RUNTIME_OWN_TEXT_H

#include <windows.h>

#include <string>
#include <string_view>

namespace zelvreg {

inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// Converts the text of a file to its bytes, and back. Files that come with the program may be in
// another code page than the computer's; a byte order mark decides first.
std::string ownBytes(std::string_view text);
std::string ownText(std::string_view bytes, UINT codePage = CP_ACP);

// The bytes of a file after this text is appended. The old bytes stay as they are, unless the code
// page cannot hold the text: then the whole file becomes UTF-8.
std::string appendedOwnBytes(std::string_view bytes, std::string_view text);

// Appends a text to a file, and creates it if there is none. If any step fails, the file is
// unchanged and the result is false.
bool appendOwnText(const std::string& path, std::string_view text);

}  // namespace zelvreg

#endif
