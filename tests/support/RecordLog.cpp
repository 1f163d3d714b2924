#include "support/RecordLog.hpp"

#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/make_shared.hpp>
#include <map>
#include <mutex>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "vorlan/host.hpp"

namespace support {

namespace {

namespace sinks = boost::log::sinks;
using foundation::log::level;

template <class T>
T valueOf(const boost::log::record_view& record, const char* name) {
    return boost::log::extract<T>(name, record).get();
}

std::string lineOf(const boost::log::record_view& record) {
    static const std::map<level, std::string> s_marks = {{level::note, "note: "},
                                                         {level::detail, "detail: "},
                                                         {level::error, "error: "},
                                                         {level::enter, "> "},
                                                         {level::exit, "< "}};
    const auto indent = static_cast<std::size_t>(2 * valueOf<long>(record, "Depth"));
    return std::string(indent, ' ') + s_marks.at(static_cast<level>(valueOf<int>(record, "Severity"))) +
           valueOf<std::string>(record, "Message") + "\n";
}

class Backend : public sinks::basic_sink_backend<sinks::synchronized_feeding> {
public:
    void consume(const boost::log::record_view& record) {
        const std::string line = lineOf(record);
        const std::lock_guard lock(m_mutex);
        if (m_successes-- == 0 || (m_lasting && !m_failed.empty())) {
            m_failed = m_failed.empty() ? line : m_failed;
            throw std::runtime_error("broken");
        }
        m_lines += line;
    }

    std::string take() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_lines, {});
    }

    void failAfter(long records, bool lasting) {
        const std::lock_guard lock(m_mutex);
        m_successes = records;
        m_lasting = lasting;
    }

    std::string heal() {
        const std::lock_guard lock(m_mutex);
        m_successes = -1;
        m_lasting = false;
        return std::exchange(m_failed, {});
    }

private:
    std::mutex m_mutex;
    std::string m_lines;
    long m_successes = -1;   // records before the one that fails; negative: none is to
    bool m_lasting = false;  // whether all behind it do as well
    std::string m_failed;    // the first that did
};

}  // namespace

struct RecordLog::Sink {
    boost::shared_ptr<Backend> backend = boost::make_shared<Backend>();
    boost::shared_ptr<sinks::synchronous_sink<Backend>> frontend =
        boost::make_shared<sinks::synchronous_sink<Backend>>(backend);
};

std::uint32_t maskOf(const std::vector<level>& levels) {
    return std::accumulate(levels.begin(), levels.end(), std::uint32_t{0},
                           [](auto mask, level each) { return mask | static_cast<std::uint32_t>(each); });
}

RecordLog::RecordLog(const std::vector<level>& levels, const std::string& loggerName)
    : m_sink(std::make_shared<Sink>()) {
    boost::log::core::get()->add_sink(m_sink->frontend);
    vorlan::setLevelMask(loggerName, maskOf(levels));
}

RecordLog::~RecordLog() {
    boost::log::core::get()->remove_sink(m_sink->frontend);
}

void RecordLog::failAfter(long records, bool lasting) {
    m_sink->backend->failAfter(records, lasting);
}

std::string RecordLog::heal() {
    return m_sink->backend->heal();
}

std::string RecordLog::take() {
    return m_sink->backend->take();
}

}  // namespace support
