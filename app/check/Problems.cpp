#include "check/Problems.hpp"

#include <iterator>
#include <numeric>
#include <utility>

namespace app::check {

void Problems::add(Problem problem) {
    const Severity severity = severityOf(*problem.code);
    if (severity != Severity::error && m_policy.ignored.contains(problem.code->name)) {
        return;
    }
    ++m_counts.at(static_cast<std::size_t>(severity));
    const std::size_t offset = problem.place.offset;
    m_kept.emplace(offset, std::move(problem));
    if (m_policy.most > 0 && m_kept.size() > m_policy.most) {
        m_kept.erase(std::prev(m_kept.end()));
    }
}

Severity Problems::severityOf(const Code& code) const {
    return m_policy.errors.contains(code.name) ? Severity::error : code.severity;
}

std::size_t Problems::total() const {
    return std::accumulate(m_counts.begin(), m_counts.end(), std::size_t{0});
}

}  // namespace app::check
