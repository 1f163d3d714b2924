#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "check/Problem.hpp"
#include "check/Reader.hpp"

namespace app::check {

class Problems;

// A product's fields, in the order in which the library reads them.
enum Field : std::size_t { displayName, helpLocation, shortName, baseCode, altShortName, status, fieldCount };

struct Product {
    std::size_t index = 0;  // in the product list, from 0
    Place place;            // the opening bracket
    std::string pointer;
    std::array<Text, fieldCount> fields;
    std::vector<Text> families;  // their names
};

// The JSON pointer of a product, and of one of its keys.
std::string pointerTo(const Product& product);
std::string pointerTo(const Product& product, Field field);

// Walks through the text of a catalogue by its keys, with the library's own readers, and reports what it refuses:
// faults of syntax, missing keys and values of a wrong type, and besides them keys that it ignores. Calls `visit` for
// each product that could be read to its end. Returns the offset up to which the syntax is known to be right.
std::size_t walkCatalogue(const std::string& text, Problems& problems, const std::function<void(Product&)>& visit);

}  // namespace app::check
