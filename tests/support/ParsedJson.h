// JSON that a command wrote. The parser is a template that takes the compiler long, so only one
// source makes it.
#ifndef ZELVREG_TESTS_SUPPORT_PARSED_JSON_H
#define ZELVREG_TESTS_SUPPORT_PARSED_JSON_H

#include <nlohmann/json.hpp>
#include <string_view>

namespace zelvreg::fixture {

// Throws nlohmann::json::exception if the text is no JSON, which fails the test.
nlohmann::json parsedJson(std::string_view text);

}  // namespace zelvreg::fixture

#endif
