// Text of the program and bytes in a code page of the system.
#ifndef ZELVREG_RUNTIME_CODE_PAGE_TEXT_H
#define ZELVREG_RUNTIME_CODE_PAGE_TEXT_H

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The text that bytes in a code page stand for; bytes that mean nothing there become what the
// system puts in their place. CP_ACP is the machine's own page.
std::string textOfCodePage(std::string_view bytes, UINT codePage = CP_ACP);

// A text in the machine's code page, with something else in the place of what the page lacks.
std::string codePageBytes(std::string_view text);

// The same, or nothing if the bytes would not come back as this very text.
std::optional<std::string> exactCodePageBytes(std::string_view text);

}  // namespace zelvreg

#endif
