#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace support {

// One case of a transcript file: lines that begin with "$ " are what is typed, the others what is shown in answer. In
// a file a case begins with a line "== Name"; lines before the first are for the reader, and so are lines "# ..." in
// a case. Both sides write a byte that is no printable UTF-8 text as <HH>, with two hexadecimal digits in capitals.
struct TranscriptCase {
    std::string name;
    std::string text;
};

// The cases of files whose names ":" separates, each named after its file and itself. Throws if a file has none.
std::vector<TranscriptCase> readTranscripts(const std::string& files);

// Types the case's commands once more, without their "$ " and with each <HH> as its byte, and gives the case as it
// reads now: its text, word for word, where everything answers as it did. An empty answer shows nothing.
std::string replay(const TranscriptCase& recorded, const std::function<std::string(const std::string&)>& type);

// A failed case is known by its name.
inline void PrintTo(const TranscriptCase& recorded, std::ostream* out) {
    *out << recorded.name;
}

}  // namespace support
