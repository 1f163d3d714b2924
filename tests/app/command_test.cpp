#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include "support/TemporaryFolder.hpp"
#include "support/Transcript.hpp"
#include "support/row_name.hpp"

namespace {

// The text with "TIME" in the place of each time of a record.
std::string withoutTimes(std::string text) {
    constexpr std::string_view shape = "0000-00-00T00:00:00Z";  // a zero for any digit
    const auto fits = [](char found, char wanted) {
        return wanted == '0' ? found >= '0' && found <= '9' : found == wanted;
    };
    for (auto at = text.begin();
         (at = std::search(at, text.end(), shape.begin(), shape.end(), fits)) != text.end();) {
        const auto offset = at - text.begin();
        text.replace(at, at + shape.size(), "TIME");
        at = text.begin() + offset;
    }
    return text;
}

// A shell in the folder of examples, with the command on its path and a folder of its own in $T. An answer shows the
// standard output, the standard error with "2| " before each line, and the exit status where it isn't 0.
class Shell {
public:
    std::string type(const std::string& line) const {
        m_folder.write("script", "cd '" EXAMPLES "'; PATH='" COMMAND_FOLDER "':$PATH; T='" +
                                     m_folder.path().native() + "'\n" + line);
        const std::string place = "'" + m_folder.path().native();
        const int ended =
            std::system(("sh " + place + "/script' > " + place + "/output' 2> " + place + "/errors'").c_str());
        const int status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
        return shown("output", "") + shown("errors", "2| ") +
               (status == 0 ? "" : "[" + std::to_string(status) + "]\n");
    }

private:
    std::string shown(const char* name, const std::string& mark) const {
        std::ifstream file(m_folder.path() / name);
        std::string text;
        for (std::string line; std::getline(file, line);) {
            text += mark + line + "\n";
        }
        boost::algorithm::replace_all(text, std::filesystem::canonical(EXAMPLES).native(), "$EXAMPLES");
        return withoutTimes(m_folder.generic(text));
    }

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
