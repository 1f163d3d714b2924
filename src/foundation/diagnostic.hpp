#pragma once

#include <concepts>
#include <memory>
#include <string_view>

#include "foundation/basic_path.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

class record_composer;

// A piece that is written as UTF-16 and converted by the record's stream. Refers to the text.
struct utf16_piece {
    const fl::ustring& text;
};

// One diagnostic: opens, writes and pushes a record. Use the DIAGNOSTIC statement below, which evaluates the pieces
// only if there is a record to write. If evaluating or writing a piece throws, the record is dropped and the
// exception reaches the caller. Pieces are narrow text, UTF-16 text, paths and booleans. Booleans print as "true" and
// "false"; UTF-16 text is converted by the rules of fl::i18n::to_string.
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

    // False if the level is off or the core refused the record.
    explicit operator bool() const noexcept { return m_record != nullptr; }

    // Writes the pieces in order, without separators, and pushes the record.
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

    // A template, so that a pointer can't convert to bool.
    template <std::same_as<bool> Bool>
    void put(Bool value) {
        put(value ? std::string_view("true") : std::string_view("false"));
    }

    std::unique_ptr<record_composer, deleter> m_record;
};

}  // namespace foundation::log

// Logs the pieces to the module's s_logger at a level: `note`, `detail` or `error`. If the level is off, this costs a
// load and a test, and the pieces aren't evaluated.
#define DIAGNOSTIC(which, ...)                                                                               \
    do {                                                                                                     \
        if (::foundation::log::diagnostic statement(s_logger, ::foundation::log::level::which); statement) { \
            statement.write(__VA_ARGS__);                                                                    \
        }                                                                                                    \
    } while (false)
