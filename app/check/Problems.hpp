#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "check/Problem.hpp"

namespace app::check {

// What the user made of the codes.
struct Policy {
    std::set<std::string, std::less<>> ignored;  // warnings and infos that aren't reported
    std::set<std::string, std::less<>> errors;   // warnings and infos that count as errors
    std::size_t most = 100;                      // problems kept; 0: all
};

// The problems of one catalogue, in the order of their places. Keeps the first ones and counts all.
class Problems {
public:
    // The policy must outlive this object.
    explicit Problems(const Policy& policy) : m_policy(policy) {}

    void add(Problem problem);

    Severity severityOf(const Code& code) const;
    std::size_t count(Severity severity) const { return m_counts.at(static_cast<std::size_t>(severity)); }
    std::size_t total() const;

    // By the offset of their place; of equal places, in the order in which they were added.
    const std::multimap<std::size_t, Problem>& kept() const { return m_kept; }

private:
    const Policy& m_policy;
    std::array<std::size_t, severityNames.size()> m_counts{};
    std::multimap<std::size_t, Problem> m_kept;
};

}  // namespace app::check
