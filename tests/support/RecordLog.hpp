#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "foundation/log/level.hpp"

namespace support {

// The mask with the bits of these levels.
std::uint32_t maskOf(const std::vector<foundation::log::level>& levels);

// Collects the records of the process, from creation to the end, as text: a line each, indented by two blanks a level
// of depth, "> " before an entry, "< " before an exit, and "note: ", "detail: " or "error: " before the rest.
class RecordLog {
public:
    // Switches the loggers of that name to the levels.
    explicit RecordLog(const std::vector<foundation::log::level>& levels,
                       const std::string& loggerName = "doc_products_shared");
    RecordLog(const RecordLog&) = delete;
    RecordLog& operator=(const RecordLog&) = delete;
    ~RecordLog();

    // The lines so far, which are forgotten.
    std::string take();

    // After so many records one throws std::runtime_error, and if it is `lasting` each behind it, until this is
    // healed; that gives the line of the first that has failed, if one has.
    void failAfter(long records, bool lasting);
    std::string heal();

private:
    struct Sink;
    std::shared_ptr<Sink> m_sink;
};

}  // namespace support
