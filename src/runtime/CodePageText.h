// Converts between the program's text (UTF-8) and bytes in a code page. The results belong to the
// caller.
#ifndef ZELVREG_RUNTIME_CODE_PAGE_TEXT_H
#define ZELVREG_RUNTIME_CODE_PAGE_TEXT_H

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The text of bytes in a code page. Bytes that mean nothing there become the system's default
// character; a page that the system does not have gives the empty text. CP_ACP is the computer's
// own.
std::string textOfCodePage(std::string_view bytes, UINT codePage = CP_ACP);

// A text in a code page. A character that the page lacks becomes a similar one or the system's
// default character.
std::string codePageBytes(std::string_view text, UINT codePage = CP_ACP);

// The same; std::nullopt if the bytes would not convert back to exactly this text.
std::optional<std::string> exactCodePageBytes(std::string_view text, UINT codePage = CP_ACP);

}  // namespace zelvreg

#endif
