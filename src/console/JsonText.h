// JSON that keeps every text of the computer: half of a surrogate pair, which UTF-8 does not have,
// is an escape of its own ("\ud800").
#ifndef ZELVREG_CONSOLE_JSON_TEXT_H
#define ZELVREG_CONSOLE_JSON_TEXT_H

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace zelvreg::console {

// The object as a text of indented lines. Bytes that are no character are replaced.
std::string textOfJson(nlohmann::ordered_json object);

// The object of a text; its strings are to be read with textIn. Throws nlohmann::json::exception
// for what is no JSON.
nlohmann::json jsonOfText(std::string_view text);

// A string of such an object. Throws nlohmann::json::exception for what is none.
std::string textIn(const nlohmann::json& string);

}  // namespace zelvreg::console

#endif
