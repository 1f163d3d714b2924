#pragma once

#include <cstdint>

namespace foundation::log {

// The level of a record: its severity, and its bit in a logger's mask.
enum class level : std::uint32_t {
    note = 4,     // values returned or stored, and each step of a root resolution
    detail = 8,   // values found while reading the catalogue, a changed setting
    enter = 32,   // entry into an operation
    exit = 64,    // exit from an operation
    error = 512,  // caught exceptions, and missing input that ends an operation
};

}  // namespace foundation::log
