#include "support/ParsedJson.h"

namespace zelvreg::fixture {

nlohmann::json parsedJson(std::string_view text) { return nlohmann::json::parse(text); }

}  // namespace zelvreg::fixture
