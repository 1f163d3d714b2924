#pragma once

#include <boost/log/attributes/attribute_set.hpp>
#include <boost/log/core.hpp>
#include <boost/thread/tss.hpp>
#include <shared_mutex>

namespace foundation::log {

// What is needed to open a logger's records. In its own header, because including Boost.Log adds seconds to a
// compilation.
struct logger_parts {
    std::shared_mutex lock;  // held only while a record is opened
    boost::log::core_ptr core = boost::log::core::get();
    boost::log::attribute_set attributes;
    // The nesting depth of the calling thread: the slot holds the number itself, not a pointer.
    boost::thread_specific_ptr<long> depth{nullptr};
};

}  // namespace foundation::log
