#pragma once

#include <boost/lexical_cast.hpp>
#include <boost/variant/apply_visitor.hpp>

#include "json/Value.hpp"

namespace support {

// Shows a value on one line: the index of its alternative, which is one digit, and its content. Strings aren't escaped,
// items are in parentheses, and a member is key:value.
struct Show {
    std::string operator()(foundation::json::Undefined) const { return "undefined"; }
    std::string operator()(foundation::json::Null) const { return "null"; }
    std::string operator()(const std::string& text) const { return '"' + text + '"'; }
    std::string operator()(const std::convertible_to<double> auto& number) const {
        return boost::lexical_cast<std::string>(+number);
    }
    std::string operator()(const std::pair<const std::string, foundation::json::Value>& member) const {
        return member.first + ':' + (*this)(member.second);
    }
    std::string operator()(const foundation::json::Value& value) const {
        return std::to_string(value.storage().which()) + boost::apply_visitor(*this, value.storage());
    }
    std::string operator()(const auto& items) const {
        std::string text;
        for (const auto& item : items) {
            text += (*this)(item) + ',';
        }
        return '(' + text + ')';
    }
};

}  // namespace support
