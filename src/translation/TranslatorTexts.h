// What the program for translators says. Its language files have these in section "zelvtrans".
#ifndef ZELVREG_TRANSLATION_TRANSLATOR_TEXTS_H
#define ZELVREG_TRANSLATION_TRANSLATOR_TEXTS_H

#include <array>
#include <string_view>

#include "languages/Texts.h"

namespace zelvreg {

inline constexpr const char* translatorSection = "zelvtrans";

inline constexpr std::array translatorTexts{
    Text{"title", "Translate the program"},
    Text{"language", "Language"},
    Text{"charset", "Charset (code page)"},
    Text{"name", "Name of the language"},
    Text{"open", "Open a File"},
    Text{"new", "New Language"},
    Text{"save", "Save"},
    Text{"save-as", "Save As"},
    Text{"next", "Next Problem (F8)"},
    Text{"only-work", "Show only what needs work"},
    Text{"utf8", "Save in UTF-8"},
    Text{"key", "Key"},
    Text{"english", "English"},
    Text{"translation", "Translation"},
    Text{"remark", "Remark"},
    Text{"count", "%1 of %2 texts need work"},
    Text{"new-file", "A new language, not saved yet"},
    Text{"missing", "Missing"},
    Text{"too-long", "Too long for its place"},
    Text{"values", "The places for values differ from English"},
    Text{"access-key", "Has the access key of another control"},
    Text{"forbidden", "Equal signs and quotation marks are lost"},
    Text{"unwritable", "Has characters that the code page lacks"},
    Text{"same", "Same as in English"},
    Text{"ask-discard", "Some changes are not saved. Discard them?"},
    Text{"ask-utf8",
         "The code page of this language lacks some characters of the texts. Save the file in "
         "UTF-8?"},
    Text{"not-read", "The file %1 could not be read."},
    Text{"not-written",
         "The file %1 could not be written. Save it in another folder, or start this program as "
         "an administrator."},
    Text{"not-listed",
         "The language is not in the list %1, which could not be written. Without that the "
         "program does not offer it."},
    Text{"file-filter", "*.lang (language files)"},
};

}  // namespace zelvreg

#endif
