#include <gtest/gtest.h>

#include <boost/algorithm/string/replace.hpp>
#include <cstdlib>
#include <fstream>

#include "support/TemporaryFolder.hpp"
#include "support/Transcript.hpp"
#include "support/row_name.hpp"

namespace {

// A shell in the folder of examples, with the command on its path and a folder of its own in $T. An answer shows the
// standard output, the standard error with "2| " before each line, and the exit status where it isn't 0; TIME stands
// for the time of a record.
class Shell {
public:
    std::string type(const std::string& line) const {
        m_folder.write("script", "cd '" EXAMPLES "'; PATH='" COMMAND_FOLDER "':$PATH; T='" +
                                     m_folder.path().native() + "'\n" + line);
        const std::string place = "cd '" + m_folder.path().native();
        EXPECT_EQ(std::system((place + s_run).c_str()), 0);
        return shown("output", "") + shown("errors", "2| ") + shown("status", "");
    }

private:
    std::string shown(const char* name, const std::string& mark) const {
        std::ifstream file(m_folder.path() / name);
        std::string text;
        for (std::string line; std::getline(file, line);) {
            text += mark + line + "\n";
        }
        boost::algorithm::replace_all(text, std::filesystem::canonical(EXAMPLES).native(), "$EXAMPLES");
        return m_folder.generic(text);
    }

    // Runs the script, notes how it ended, and hides the times of records.
    static constexpr const char* s_run =
        "' && sh ./script > output 2> errors; end=$?; { [ $end = 0 ] || echo \"[$end]\"; } > status; "
        "sed -i -E 's/[0-9]{4}(-[0-9]{2}){2}T([0-9]{2}:){2}[0-9]{2}Z/TIME/g' output errors";

    support::TemporaryFolder m_folder;
};

class Command : public testing::TestWithParam<support::TranscriptCase> {};

TEST_P(Command, AnswersAsRecorded) {
    const Shell shell;
    EXPECT_EQ(replay(GetParam(), [&](const std::string& line) { return shell.type(line); }), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Transcript, Command, testing::ValuesIn(support::readTranscripts(TRANSCRIPTS)),
                         support::s_rowName);

}  // namespace
