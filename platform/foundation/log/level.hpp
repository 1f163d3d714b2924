#pragma once

#include <cstdint>

namespace foundation::log {

// The level of a record: one bit, which is the record's severity and the bit of a logger's mask that enables it.
enum class level : std::uint32_t {
    note = 4,     // values returned or stored, and each step of a root resolution
    detail = 8,   // values found while reading the catalogue, a changed setting
    enter = 32,   // entry into an operation
    exit = 64,    // exit from an operation
    error = 512,  // caught failures, and missing input that ends an operation
};

}  // namespace foundation::log
