#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <string>

// Programs that link this have an operator new of their own, which counts, and fails when told to.
namespace support {

// Blocks that operator new has given to any thread and that nobody has given back.
long liveBlocks() noexcept;

// After so many allocations of the calling thread that succeed one fails; if it is `lasting`, so does each behind it.
void beginShortage(long successes, bool lasting) noexcept;

// All succeed again. Whether one has failed since the beginning.
bool endShortage() noexcept;

// Runs operations under one shortage after the other.
class Starvation {
public:
    // Each of `lasting` or single shortages, or none at all.
    Starvation() = default;
    explicit Starvation(bool lasting) : m_lasting(lasting), m_successes(0) {}

    // The present shortage begins and ends.
    void begin() const noexcept { beginShortage(m_successes, m_lasting); }
    void end() noexcept { m_struck = endShortage(); }

    // Runs the operation under the present shortage. Gives what() of the exception that comes out, or nothing.
    template <class Operation>
    std::string operator()(Operation operation) {
        begin();
        try {
            operation();
        } catch (const std::exception& e) {
            end();
            return e.what();
        }
        end();
        return {};
    }

    // Goes on to the next shortage, which strikes one allocation later, unless the present one didn't strike.
    bool next() noexcept {
        ++m_successes;
        return m_struck;
    }

private:
    bool m_lasting = false;
    bool m_struck = false;
    long m_successes = -1;
};

// Runs `test` in plenty, and then under every shortage that strikes it: those of one allocation, then the lasting
// ones. It is handed the starvation to run its operation with, and is to leave as many blocks as it found. Returns
// how many struck.
template <class Test>
long starve(Test test) {
    Starvation plenty;
    test(plenty);  // what is made once and stays is made by now
    long strikes = -2;
    for (const bool lasting : {false, true}) {
        Starvation starvation(lasting);
        do {
            const long before = liveBlocks();
            test(starvation);
            EXPECT_EQ(liveBlocks(), before);
            ++strikes;
        } while (!testing::Test::HasFailure() && starvation.next());
    }
    return strikes;
}

}  // namespace support
