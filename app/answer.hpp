#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace app {

// A JSON document for machines; its members keep their order.
using Json = nlohmann::ordered_json;

// The version of the shapes of all answers.
constexpr int answerVersion = 1;

// Sets a member of an object to a text. JSON holds only UTF-8: other bytes become U+FFFD, and the object then gets
// "lossy": true.
void setText(Json& object, const char* key, std::string_view text);

}  // namespace app
