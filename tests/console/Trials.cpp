#include "console/Trials.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/algorithm/string.hpp>
#include <boost/log/core.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "support/Allocations.hpp"
#include "vorlan/host.hpp"

namespace console {

namespace {

struct Fault {
    const char* name;
    void (*strike)();
};

constexpr Fault s_faults[] = {
    {"exception", [] { throw std::runtime_error("broken"); }},
    {"other type", [] { throw 7; }},
    {"nothing", [] { throw support::Nothing(); }},
};

// What the operation answers, or "! " and what comes out of it; `end` comes before anything is made of either.
template <class Operation>
std::string outcome(Operation operation, const std::function<void()>& end) {
    try {
        std::string answer = operation();
        end();
        return answer;
    } catch (const std::exception& e) {
        end();
        return std::string("! ") + e.what();
    } catch (int) {
        end();
        return "! no standard exception";
    }
}

// Each error among the records once, however often it came.
std::string errorsIn(const std::string& records) {
    std::string errors;
    std::istringstream lines(records);
    for (std::string line; std::getline(lines, line);) {
        boost::trim_left(line);
        if (line.starts_with("error: ") && errors.find(line) == std::string::npos) {
            errors += line + "; ";
        }
    }
    return errors;
}

// Adds an outcome as a line, unless there is one like it.
void add(std::string& outcomes, const std::string& outcome) {
    if (const std::string line = outcome + "\n"; ("\n" + outcomes).find("\n" + line) == std::string::npos) {
        outcomes += line;
    }
}

std::string atLeast(long least, long count) {
    return count < least ? "only " + std::to_string(count) : "at least " + std::to_string(least);
}

// The calls of the host by what they ask for, each once.
std::vector<std::string> kindsOf(const std::vector<std::string>& calls) {
    std::vector<std::string> kinds;
    for (const std::string& call : calls) {
        const std::string kind = call.substr(0, call.find('='));
        if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
            kinds.push_back(kind);
        }
    }
    return kinds;
}

}  // namespace

Trials::Trials(std::function<std::string(const std::string&)> run, std::function<std::string()> observe,
               support::ScriptedServices& services, std::unique_ptr<support::RecordLog>& log)
    : m_run(std::move(run)), m_observe(std::move(observe)), m_services(services), m_log(log) {}

std::string Trials::all(const std::string& lines) const {
    std::string answers;
    for (std::size_t start = 0; start < lines.size();) {
        const std::size_t end = std::min(lines.find("; ", start), lines.size());
        const std::string answer = m_run(lines.substr(start, end - start));
        answers += (answers.empty() || answer.empty() ? "" : ", ") + answer;
        start = end + 2;
    }
    return answers;
}

std::string Trials::trial(const std::string& lines, const Hook& begin, const Hook& end) {
    all(m_before);
    m_observe();
    begin();
    const std::string answer = outcome([&] { return all(lines); }, end);
    vorlan::waitForEvents();
    const std::string errors = errorsIn(m_observe());
    const std::string next = outcome([&] { return all(m_behind); }, [] {});
    const bool isDeeper = m_observe().starts_with(' ');
    const std::string result = errors + answer + "; then " + next + (isDeeper ? " (at another depth)" : "");
    return boost::replace_all_copy(boost::replace_all_copy(result, "\n, ", ", "), "\n", " / ");
}

std::string Trials::starve(long least, const std::string& lines) {
    std::string outcomes;
    outcomes.reserve(std::size_t{1} << 20U);  // no block of its own is to be gained below
    const long strikes = support::starve([&](support::Starvation& starved) {
        add(outcomes, trial(
                          lines, [&] { starved.begin(); }, [&] { starved.end(); }));
        all(m_before);  // as it stood when this trial began
        m_observe();
    });
    return outcomes + atLeast(least, strikes) + " strikes";
}

std::string Trials::breakRecords(long least, const std::string& lines) {
    std::string outcomes;
    long count = 0;
    for (const bool lasting : {false, true}) {
        std::string failed = "none:";
        for (long records = 0; !failed.empty(); ++records) {
            const std::string result = trial(
                lines, [&] { m_log->failAfter(records, lasting); }, [&] { failed = m_log->heal(); });
            boost::trim(failed);
            add(outcomes, (failed.empty() ? "none:" : failed.substr(0, failed.find(' '))) + " " + result);
            count += failed.empty() ? 0 : 1;
        }
    }
    return outcomes + atLeast(least, count) + " records";
}

std::string Trials::changeLogging(const std::string& lines) {
    const auto core = boost::log::core::get();
    const std::vector<std::pair<Hook, Hook>> modes = {
        {[] {}, [] {}},
        {[&] { core->set_logging_enabled(false); }, [&] { core->set_logging_enabled(true); }},
        {[&] { core->set_filter([](const auto&) { return false; }); }, [&] { core->reset_filter(); }},
        {[] { vorlan::setLevelMask("doc_products_shared", 0); },
         [] { vorlan::setLevelMask("doc_products_shared", ~0U); }},
    };
    std::string outcomes;
    for (const auto& mode : modes) {
        bool isSilent = false;
        const Hook look = [&] {
            isSilent = m_log->take().empty();
            mode.second();
        };
        add(outcomes, trial(lines, mode.first, look));
        EXPECT_EQ(isSilent, &mode != &modes.front());
    }
    return outcomes;
}

std::string Trials::breakCalls(long least, const std::string& lines) {
    std::vector<std::string> calls;
    const std::string healthy = trial(
        lines, [&] { m_services.take(); }, [&] { calls = m_services.take(); });
    std::string rows = "no fault: " + healthy + "\n";
    long count = 0;
    const auto broken = [&](const std::string& call, const Fault& fault, bool always) {
        bool struck = false;
        const auto strike = [&] {
            if (!std::exchange(struck, true) || always) {
                fault.strike();
            }
        };
        std::string result = trial(
            lines, [&] { m_services.on(call, strike); }, [&] { m_services.reset(); });
        count += struck ? 1 : 0;
        return result;
    };
    for (const std::string& call : kindsOf(calls)) {
        for (const Fault& fault : s_faults) {
            const std::string what = call + ", " + fault.name + ", ";
            const std::string once = broken(call, fault, false);
            const std::string always = broken(call, fault, true);
            rows += what + (once == always ? "" : "once: " + once + "\n" + what) +
                    (once == always ? "once or always: " : "always: ") + always + "\n";
        }
    }
    return rows + atLeast(least, count) + " faults";
}

}  // namespace console
