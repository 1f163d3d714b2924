#include "answer.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include "output.hpp"

namespace app {

namespace {

constexpr int s_version = 1;  // of the shapes of all answers

struct Shape {
    std::string_view command;
    std::vector<const char*> members;  // besides those of all answers
};

const std::vector<Shape> s_shapes = {
    {"roots", {"documentation_root", "data_root"}},
    {"list", {"catalogue", "products", "installed", "total"}},
    {"find", {"catalogue", "product", "found_by"}},
    {"explain", {"documentation_root", "data_root", "catalogue", "product", "found_by", "hidden_products"}},
    {"check", {"files"}},
};

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

void setTextOrNull(Json& object, const char* key, std::string_view text) {
    object[key] = nullptr;
    if (!text.empty()) {
        setText(object, key, text);
    }
}

Json answerOf(std::string_view command, ExitStatus status, std::string_view error) {
    Json answer = {{"schema_version", s_version},
                   {"command", command},
                   {"ok", status == ExitStatus::done},
                   {"status", static_cast<int>(status)}};
    setTextOrNull(answer, "error", error.substr(0, error.find_last_not_of('\n') + 1));
    const auto shape = std::find_if(s_shapes.begin(), s_shapes.end(),
                                    [&](const Shape& candidate) { return candidate.command == command; });
    for (const char* const member : shape->members) {
        answer[member] = nullptr;
    }
    return answer;
}

Json placeOf(std::string_view path, bool exists) {
    Json place;
    setTextOrNull(place, "path", path);
    place["exists"] = exists;
    return place;
}

void printJson(const Json& answer) {
    print(answer.dump(2) + '\n');
}

}  // namespace app
