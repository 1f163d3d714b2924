#pragma once

#include <concepts>
#include <memory>
#include <string_view>

#include "foundation/basic_path.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

class record_composer;

// A piece that goes to the record as UTF-16; the record stream makes narrow text of it. Refers to the text.
struct utf16_piece {
    const fl::ustring& text;
};

// One diagnostic: a record being opened, written and pushed. Use the statement below, which keeps the rule that no
// piece is evaluated unless there is a record to write it to. A failure while the pieces are evaluated or written
// drops the record and goes on to the caller. Pieces are narrow text, UTF-16 text, paths and booleans; the latter
// print as words, and UTF-16 as fl::i18n::to_string tells.
class diagnostic {
public:
    diagnostic(basic_diagnostic_logger<char>& logger, level which) {
        if (logger.enabled(which)) {
            open(logger, which);
        }
    }
    diagnostic(const diagnostic&) = delete;
    diagnostic& operator=(const diagnostic&) = delete;
    ~diagnostic() = default;

    // False where the level is off or the core refused the record.
    explicit operator bool() const noexcept { return m_record != nullptr; }

    // Writes the pieces in order, with nothing between them, and pushes the record.
    template <class... Pieces>
    void write(const Pieces&... pieces) {
        (put(pieces), ...);
        push();
    }

private:
    struct deleter {
        void operator()(record_composer* record) const noexcept;
    };

    void open(basic_diagnostic_logger<char>& logger, level which);
    void put(std::string_view text);
    void put(const fl::ustring& text);
    void put(const fl::filesystem::upath& path) { put(path.native()); }
    void put(utf16_piece piece);
    void push();

    // A template, so that no other type turns into a bool on the way.
    template <std::same_as<bool> Bool>
    void put(Bool value) {
        put(value ? std::string_view("true") : std::string_view("false"));
    }

    std::unique_ptr<record_composer, deleter> m_record;
};

}  // namespace foundation::log

// Logs the pieces at a level, written `note`, `detail` or `error`, to the module's s_logger. With the level off it
// costs one load and one test, and the pieces aren't evaluated.
#define DIAGNOSTIC(which, ...)                                                                               \
    do {                                                                                                     \
        if (::foundation::log::diagnostic statement(s_logger, ::foundation::log::level::which); statement) { \
            statement.write(__VA_ARGS__);                                                                    \
        }                                                                                                    \
    } while (false)
