#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "json/ParseResult.hpp"

namespace foundation::json {

// Thrown by parse for a text that it refuses. what() gives the line and column of the failure and quotes the text
// around it, in three lines, the last of them without a line feed:
//
//     JSON ParserException (E0015): Expected "," or "]" after an array element (Line 1, Column 3)
//     <tab>[1 2]
//     <tab>   ^
//
// Positions count bytes. Only the line feed 0x0A ends a line; a carriage return is part of it. A tab is one column
// and a multi-byte character one column per byte, so after either the caret may be off. Keeps copies, so it may
// outlive the text.
class ParserException : public std::runtime_error {
public:
    // `begin` and `end` delimit the whole text; `current`, from `begin` up to and including `end`, is the position of
    // the failure. A NUL byte in the quoted text ends what() there.
    ParserException(const std::string::const_iterator& begin, const std::string::const_iterator& current,
                    const std::string::const_iterator& end, ParseResult result, const std::string& description);
    ~ParserException() override;

    ParseResult result() const noexcept { return m_result; }

    // Bytes from the start of the text, line feeds included.
    std::size_t offset() const noexcept { return m_offset; }

    // Counted from 1.
    std::size_t line() const noexcept { return m_line; }

    // Bytes from the start of the line, counted from 0 and not limited.
    std::size_t column() const noexcept { return m_column; }

    // The position of the failure in source(), counted from 0: the column, but at most 80.
    std::size_t caret() const noexcept { return m_caret; }

    // The part of the line from at most 80 bytes before the failure to at most 80 bytes after it, without its line
    // feed. Empty for a failure on an empty line.
    const std::string& source() const noexcept { return m_source; }

private:
    struct Location;

    ParserException(ParseResult result, const Location& location, const std::string& description);

    ParseResult m_result;
    std::size_t m_offset;
    std::size_t m_line;
    std::size_t m_column;
    std::size_t m_caret;
    std::string m_source;
};

}  // namespace foundation::json
