#pragma once

#include <boost/log/attributes/attribute_set.hpp>
#include <boost/log/core.hpp>
#include <boost/thread/tss.hpp>
#include <shared_mutex>

namespace foundation::log {

// What records are opened with. Each has these attributes.
struct logger_parts {
    std::shared_mutex lock;  // held while a record is opened
    boost::log::core_ptr core = boost::log::core::get();
    boost::log::attribute_set attributes;
    boost::thread_specific_ptr<long> depth{nullptr};  // the nesting depth of trace scopes, as the pointer's value
};

}  // namespace foundation::log
