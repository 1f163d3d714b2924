#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

// The host's level masks by logger name, and the live loggers. Thread-safe.
class LevelMasks {
public:
    // Every logger's constructor calls this, so it outlives them all.
    static LevelMasks& instance();

    // A logger begins with the mask of its name, and follows it until it is removed.
    void add(const std::string& name, basic_diagnostic_logger<char>& logger);
    void remove(basic_diagnostic_logger<char>& logger);

    // Sets the mask of every logger of that name, live and future.
    void set(const std::string& name, std::uint32_t mask);

private:
    struct Named {
        std::uint32_t mask = static_cast<std::uint32_t>(level::error);
        std::vector<basic_diagnostic_logger<char>*> loggers;
    };

    std::mutex m_mutex;
    std::map<std::string, Named> m_named;
};

}  // namespace foundation::log
