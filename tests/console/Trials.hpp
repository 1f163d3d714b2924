#pragma once

#include <functional>
#include <memory>
#include <string>

#include "support/RecordLog.hpp"
#include "support/ScriptedServices.hpp"

namespace console {

// Runs lines over and over, each time with another fault in force. A trial is what stands before, the lines with the
// fault, then what stands behind, without it; lines are separated by "; ". Its outcome is told as
//
//     ERROR...; ANSWERS; then ANSWERS
//
// with each error that was logged meanwhile, and " (at another depth)" where the log doesn't come out even.
class Trials {
public:
    // `run` answers one line or throws, `observe` gives and forgets the records and what else was seen.
    Trials(std::function<std::string(const std::string&)> run, std::function<std::string()> observe,
           support::ScriptedServices& services, std::unique_ptr<support::RecordLog>& log);

    void setBefore(const std::string& lines) { m_before = lines; }
    void setBehind(const std::string& lines) { m_behind = lines; }

    // Each of these gives the different outcomes, and behind them, where `least` is asked for, that so many faults
    // have struck, or else how many.

    // A lack of memory that strikes one allocation, then one and all behind it. A test fails if a block is lost.
    std::string starve(long least, const std::string& lines);

    // A record that fails, then one and all behind it. Before the outcomes stand the marks of the first in the log.
    std::string breakRecords(long least, const std::string& lines);

    // Every level, no log, a filter that refuses all, and no level.
    std::string changeLogging(const std::string& lines);

    // A call of the host that fails, once or always: with a std::exception, with another type, and with null or empty
    // for an answer. Here each fault has a row of its own. It strikes each call whose line starts alike.
    std::string breakCalls(long least, const std::string& lines);

private:
    using Hook = std::function<void()>;

    std::string all(const std::string& lines) const;
    std::string trial(const std::string& lines, const Hook& begin, const Hook& end);

    std::function<std::string(const std::string&)> m_run;
    std::function<std::string()> m_observe;
    support::ScriptedServices& m_services;
    std::unique_ptr<support::RecordLog>& m_log;
    std::string m_before;
    std::string m_behind;
};

}  // namespace console
