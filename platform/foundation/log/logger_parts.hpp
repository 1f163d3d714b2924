#pragma once

#include <boost/log/attributes/attribute_set.hpp>
#include <boost/log/core.hpp>
#include <boost/thread/tss.hpp>
#include <shared_mutex>

namespace foundation::log {

// What a logger holds for those who open records. Apart from the logger's own header, since every file that includes
// Boost.Log takes seconds to compile.
struct logger_parts {
    std::shared_mutex lock;  // held while a record is opened, no longer
    boost::log::core_ptr core = boost::log::core::get();
    boost::log::attribute_set attributes;
    // The nesting depth of the calling thread: the slot holds the number itself and points at nothing.
    boost::thread_specific_ptr<long> depth{nullptr};
};

}  // namespace foundation::log
