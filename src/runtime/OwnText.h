// The program's own files as text: exclusions, journals, copies of the fix list, reports, results.
//
// A file is in the machine's code page as long as every text in it survives the way there and back,
// so that other programs read it as ever; else the whole file is UTF-8 with a byte order mark in
// front (with lone surrogates kept as in unicode/Unicode.h). Whoever reads one takes both.
#ifndef ZELVREG_RUNTIME_OWN_TEXT_H
#define ZELVREG_RUNTIME_OWN_TEXT_H

#include <windows.h>

#include <string>
#include <string_view>

namespace zelvreg {

inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// The bytes of a file with this text, and the text of a file with these bytes. Files that come with
// the program may be in another code page than the machine's.
std::string ownBytes(std::string_view text);
std::string ownText(std::string_view bytes, UINT codePage = CP_ACP);

// The bytes of a file with this text behind what it holds. These stay as they are, unless the code
// page of the file cannot hold the text: then all of it becomes UTF-8.
std::string appendedOwnBytes(std::string_view bytes, std::string_view text);

// The same for the file at a path, which is made if it is not there. False, and the file as it was,
// if any step fails.
bool appendOwnText(const std::string& path, std::string_view text);

}  // namespace zelvreg

#endif
