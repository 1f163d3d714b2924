#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

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

    // A name of a product that an earlier one has.
    struct Taken {
        Field field;
        std::string name;
        Use former;
    };

    void report(const Code& code, const Product& product, Field field, std::string message,
                std::vector<Related> related = {});
    void checkNames(const Product& product);
    void checkName(const Product& product, Field field, std::vector<Taken>& taken);
    void reportTaken(const Product& product, const std::vector<Taken>& taken);
    void checkLocations(const Product& product);
    void checkLocation(const Product& product, const std::string& location);
    void checkFamilies(const Product& product);

    Problems& m_problems;
    std::unordered_map<std::string, Use> m_names;  // trimmed
};

}  // namespace app::check
