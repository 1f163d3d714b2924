#include "check/pointer.hpp"

namespace app::check {

void appendTo(std::string& pointer, std::string_view segment) {
    pointer += '/';
    for (const char byte : segment) {
        if (byte == '~' || byte == '/') {
            pointer += byte == '~' ? "~0" : "~1";
        } else {
            pointer += byte;
        }
    }
}

}  // namespace app::check
