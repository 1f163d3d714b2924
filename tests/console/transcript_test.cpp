#include <gtest/gtest.h>

#include "console/Console.hpp"
#include "support/Transcript.hpp"
#include "support/row_name.hpp"

namespace {

class Library : public testing::TestWithParam<support::TranscriptCase> {};

TEST_P(Library, AnswersAsRecorded) {
    console::Console console;
    EXPECT_EQ(replay(GetParam(), [&](const std::string& line) { return console.type(line); }), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Transcript, Library, testing::ValuesIn(support::readTranscripts(TRANSCRIPTS)),
                         support::s_rowName);

}  // namespace
