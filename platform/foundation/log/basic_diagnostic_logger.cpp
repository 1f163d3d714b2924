#include "foundation/log/basic_diagnostic_logger.hpp"

#include <boost/log/attributes/constant.hpp>
#include <boost/log/attributes/function.hpp>
#include <boost/log/sources/severity_feature.hpp>

#include "foundation/log/LevelMasks.hpp"
#include "foundation/log/logger_parts.hpp"

namespace foundation::log {

namespace attrs = boost::log::attributes;

basic_diagnostic_logger<char>::basic_diagnostic_logger(const std::string& name)
    : m_levelMask(0), m_parts(std::make_unique<logger_parts>()) {
    auto& attributes = m_parts->attributes;
    attributes["Channel"] = attrs::constant<std::string>(name);
    attributes["Severity"] = boost::log::sources::aux::severity_level<int>();
    attributes["Depth"] =
        attrs::make_function([parts = m_parts.get()] { return reinterpret_cast<long>(parts->depth.get()); });
    LevelMasks::instance().add(name, *this);
}

basic_diagnostic_logger<char>::~basic_diagnostic_logger() {
    LevelMasks::instance().remove(*this);
}

}  // namespace foundation::log
