#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "check/walk.hpp"

namespace app::check {

// Checks what the products of a catalogue say: their names, locations and families.
class ProductChecks {
public:
    explicit ProductChecks(Problems& problems) : m_problems(problems) {}

    void check(const Product& product);

private:
    // Where a name was last given.
    struct Use {
        std::size_t product;  // its index
        Field field;
        Place place;
        std::string displayName;
    };

    void report(const Code& code, const Product& product, Field field, std::string message,
                std::vector<Related> related = {});
    void checkNames(const Product& product);
    void checkName(const Product& product, Field field);
    void checkLocations(const Product& product);
    void checkFamilies(const Product& product);

    Problems& m_problems;
    std::unordered_map<std::string, Use> m_names;  // trimmed
};

}  // namespace app::check
