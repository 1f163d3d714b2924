#include "answer.hpp"

#include <string>

namespace app {

namespace {

// True for UTF-8, which is all that the writer accepts.
bool isValid(std::string_view text) {
    try {
        Json(text).dump();
    } catch (const Json::type_error&) {
        return false;
    }
    return true;
}

std::string withoutInvalid(std::string_view text) {
    const std::string quoted = Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
    return Json::parse(quoted).get<std::string>();
}

}  // namespace

void setText(Json& object, const char* key, std::string_view text) {
    if (isValid(text)) {
        object[key] = text;
    } else {
        object[key] = withoutInvalid(text);
        object["lossy"] = true;
    }
}

}  // namespace app
