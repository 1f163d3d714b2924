#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "check/Problem.hpp"
#include "json/ParseResult.hpp"

namespace app::check {

// What a key takes. Without a key, anything.
struct Wanted {
    std::string_view key;
    std::string_view kind;  // with its article
};

// What is wrong with the whole file: it is empty, in another encoding or no JSON at all.
std::optional<Problem> fileProblem(std::string_view text);

// A fault of syntax in the reader's words.
Problem syntaxProblem(foundation::json::ParseResult result, const Place& place);

// A backslash that starts no escape.
Problem escapeProblem(foundation::json::ParseResult result, const Place& place);

// The same in an author's words for text that is no value, or no key.
Problem valueProblem(std::string_view text, foundation::json::ParseResult result, std::size_t offset,
                     const Wanted& wanted);
Problem keyProblem(std::string_view text, std::size_t offset);

// True if a string or a key has other quotes, or none. A file of another language is full of them.
bool isAboutQuotes(const Problem& problem);

// What authors put between two tokens, and what to say of it.
struct Filler {
    std::size_t length = 0;  // 0: nothing of the kind is there; npos: a comment without an end
    std::string_view message;
};

// The comment, the blank beyond ASCII or the mark of a merge conflict at the offset.
Filler fillerAt(std::string_view text, std::size_t offset);

// The length of the quote at the offset, of whatever form; 0 if there is none.
std::size_t quoteAt(std::string_view text, std::size_t offset);

}  // namespace app::check
