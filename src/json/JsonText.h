// JSON that keeps every text of the computer: an unpaired surrogate, which UTF-8 does not have, is
// written as an escape ("\ud800").
#ifndef ZELVREG_JSON_JSON_TEXT_H
#define ZELVREG_JSON_JSON_TEXT_H

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace zelvreg {

// The object as a text of indented lines. Bytes that are no character are replaced.
std::string textOfJson(nlohmann::ordered_json object);
// The same as one line.
std::string lineOfJson(nlohmann::ordered_json object);

// The object of a text. Read its strings with textIn. Throws nlohmann::json::exception if the text
// is no JSON.
nlohmann::json jsonOfText(std::string_view text);

// A string of such an object. Throws nlohmann::json::exception for any other value.
std::string textIn(const nlohmann::json& string);

}  // namespace zelvreg

#endif
