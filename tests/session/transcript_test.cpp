#include <gtest/gtest.h>

#include "session/Session.hpp"
#include "support/Transcript.hpp"
#include "support/row_name.hpp"

namespace {

class Library : public testing::TestWithParam<support::TranscriptCase> {};

TEST_P(Library, AnswersAsRecorded) {
    session::Session session;
    EXPECT_EQ(replay(GetParam(), [&](const std::string& line) { return session.type(line); }), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Transcript, Library, testing::ValuesIn(support::readTranscripts(TRANSCRIPTS)),
                         support::s_rowName);

}  // namespace
