#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "check/Problem.hpp"

namespace app::check {

// What the user made of the codes.
struct Policy {
    std::set<std::string, std::less<>> ignored;  // warnings and infos that aren't reported
    std::set<std::string, std::less<>> errors;   // warnings and infos that count as errors
    std::size_t most = 100;                      // problems kept; 0: all
};

// The problems of one catalogue. Counts all and keeps the most severe ones, of equal severity those that come first.
class Problems {
public:
    // The policy must outlive this object.
    explicit Problems(const Policy& policy) : m_policy(policy) {}

    void add(Problem problem);

    // True if one of that code at that offset would be kept now. Of a million problems few are shown, and only those
    // need a pointer.
    bool mayKeep(const Code& code, std::size_t offset) const;

    Severity severityOf(const Code& code) const;
    std::size_t count(Severity severity) const { return m_counts.at(static_cast<std::size_t>(severity)); }
    std::size_t total() const;
    std::size_t omitted() const { return total() - m_keptTotal; }

    // By the offset of their place; of equal places, in the order in which they were added. Valid until the next one
    // is added.
    std::vector<const Problem*> kept() const;

private:
    using Key = std::pair<std::size_t, std::size_t>;  // the offset, and the number of problems added before
    using Kept = std::array<std::map<Key, Problem>, severities.size()>;

    // Those of the least severity that there is.
    Kept::const_reverse_iterator least() const;

    const Policy& m_policy;
    std::array<std::size_t, severities.size()> m_counts{};
    Kept m_kept;
    std::size_t m_keptTotal = 0;
};

}  // namespace app::check
