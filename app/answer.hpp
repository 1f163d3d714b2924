#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "Failure.hpp"

namespace app {

// A JSON document for machines; its members keep their order.
using Json = nlohmann::ordered_json;

// Set a member of an object to a text. JSON holds only UTF-8: other bytes become U+FFFD, and the object then gets
// "lossy": true. The second sets null for an empty text.
void setText(Json& object, const char* key, std::string_view text);
void setTextOrNull(Json& object, const char* key, std::string_view text);

// The answer of a command, with the members that all answers begin with; its own are null. An empty `error` means that
// there is none.
Json answerOf(std::string_view command, ExitStatus status, std::string_view error);

// A path, null if it is empty, and whether it exists.
Json placeOf(std::string_view path, bool exists);

// An array of what `convert` makes of each item.
template <class Items, class Convert>
Json arrayOf(const Items& items, const Convert& convert) {
    Json array = Json::array();
    for (const auto& item : items) {
        array.push_back(convert(item));
    }
    return array;
}

// Writes an answer to standard output.
void printJson(const Json& answer);

}  // namespace app
