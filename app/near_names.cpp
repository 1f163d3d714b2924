#include "near_names.hpp"

#include <algorithm>
#include <cwctype>
#include <string_view>
#include <utility>

#include "UnicodeLocale.hpp"
#include "fl/i18n.hpp"

namespace app {

namespace {

constexpr std::size_t s_mostEdits = 2;
constexpr std::size_t s_mostNames = 3;

fl::ustring lowerCase(const std::string& text) {
    const UnicodeLocale locale;
    fl::ustring units = fl::i18n::to_ustring(text);
    std::transform(units.begin(), units.end(), units.begin(),
                   [](char16_t unit) { return static_cast<char16_t>(std::towlower(unit)); });
    return units;
}

// True if at most `edits` edits turn one text into the other. Linear in the length of the texts.
bool isWithin(std::size_t edits, std::u16string_view left, std::u16string_view right) {
    const auto differing = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    left = {differing.first, left.end()};
    right = {differing.second, right.end()};
    if (left.empty() || right.empty()) {
        return left.size() + right.size() <= edits;
    }
    if (edits == 0) {
        return false;
    }
    const auto afterEdit = [&](std::size_t fromLeft, std::size_t fromRight) {
        return isWithin(edits - 1, left.substr(fromLeft), right.substr(fromRight));
    };
    const bool areSwapped = left.size() > 1 && right.size() > 1 && left[0] == right[1] && left[1] == right[0];
    return afterEdit(1, 1) || afterEdit(1, 0) || afterEdit(0, 1) || (areSwapped && afterEdit(2, 2));
}

// The number of edits between the texts, or s_mostEdits + 1 if it exceeds the limit.
std::size_t distance(const fl::ustring& left, const fl::ustring& right) {
    const std::size_t limit = std::min({s_mostEdits, left.size() / 2, right.size() / 2});
    std::size_t edits = 0;
    while (edits <= limit && !isWithin(edits, left, right)) {
        ++edits;
    }
    return edits <= limit ? edits : s_mostEdits + 1;
}

}  // namespace

std::vector<std::string> nearNames(const std::string& name, const std::vector<std::string>& candidates) {
    const fl::ustring meant = lowerCase(name);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : candidates) {
        if (const std::size_t edits = distance(lowerCase(candidate), meant);
            edits <= s_mostEdits && candidate != name) {
            near.emplace_back(edits, candidate);
        }
    }
    std::stable_sort(near.begin(), near.end(), [](auto& left, auto& right) { return left.first < right.first; });
    std::vector<std::string> names;
    for (const auto& [edits, candidate] : near) {
        if (names.size() < s_mostNames && std::find(names.begin(), names.end(), candidate) == names.end()) {
            names.push_back(candidate);
        }
    }
    return names;
}

std::string suggestion(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? " (did you mean " : i + 1 == names.size() ? " or " : ", ";
        text += '"' + names[i] + '"';
    }
    return names.empty() ? text : text + "?)";
}

}  // namespace app
