#include "check/Problems.hpp"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace app::check {

void Problems::add(Problem problem) {
    const Severity severity = severityOf(*problem.code);
    if (severity != Severity::error && m_policy.ignored.contains(problem.code->name)) {
        return;
    }
    const Key key = {problem.place.offset, total()};
    const auto index = static_cast<std::size_t>(severity);
    ++m_counts.at(index);
    m_kept.at(index).emplace(key, std::move(problem));
    if (++m_keptTotal > m_policy.most && m_policy.most > 0) {
        auto& last = m_kept.at(static_cast<std::size_t>(m_kept.crend() - least()) - 1);
        last.erase(std::prev(last.end()));
        --m_keptTotal;
    }
}

Problems::Kept::const_reverse_iterator Problems::least() const {
    return std::find_if(m_kept.rbegin(), m_kept.rend(), [](const auto& kept) { return !kept.empty(); });
}

bool Problems::mayKeep(const Code& code, std::size_t offset) const {
    if (m_policy.most == 0 || m_keptTotal < m_policy.most) {
        return true;
    }
    const auto& last = *std::prev(least()->end());
    const Severity severity = severityOf(code), lowest = severityOf(*last.second.code);
    return severity < lowest || (severity == lowest && offset < last.first.first);
}

Severity Problems::severityOf(const Code& code) const {
    return m_policy.errors.contains(code.name) ? Severity::error : code.severity;
}

std::size_t Problems::total() const {
    return std::accumulate(m_counts.begin(), m_counts.end(), std::size_t{0});
}

std::vector<const Problem*> Problems::kept() const {
    std::map<Key, const Problem*> sorted;
    for (const auto& problems : m_kept) {
        for (const auto& [key, problem] : problems) {
            sorted.emplace(key, &problem);
        }
    }
    std::vector<const Problem*> kept;
    kept.reserve(sorted.size());
    std::transform(sorted.begin(), sorted.end(), std::back_inserter(kept),
                   [](const auto& entry) { return entry.second; });
    return kept;
}

}  // namespace app::check
