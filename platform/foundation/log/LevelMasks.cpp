#include "foundation/log/LevelMasks.hpp"

namespace foundation::log {

LevelMasks& LevelMasks::instance() {
    static LevelMasks s_masks;
    return s_masks;
}

void LevelMasks::add(const std::string& name, basic_diagnostic_logger<char>& logger) {
    const std::lock_guard lock(m_mutex);
    Named& named = m_named[name];
    named.loggers.push_back(&logger);
    logger.setLevelMask(named.mask);
}

void LevelMasks::remove(basic_diagnostic_logger<char>& logger) {
    const std::lock_guard lock(m_mutex);
    for (auto& [name, named] : m_named) {
        std::erase(named.loggers, &logger);
    }
}

void LevelMasks::set(const std::string& name, std::uint32_t mask) {
    const std::lock_guard lock(m_mutex);
    Named& named = m_named[name];
    named.mask = mask;
    for (basic_diagnostic_logger<char>* logger : named.loggers) {
        logger->setLevelMask(mask);
    }
}

}  // namespace foundation::log
