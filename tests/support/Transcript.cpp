#include "support/Transcript.hpp"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <boost/locale/utf.hpp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace support {

namespace {

constexpr std::string_view s_digits = "0123456789ABCDEF";

// The text with the byte in the place of each "<HH>".
std::string typed(const std::string& line) {
    std::string text;
    for (std::size_t at = 0; at < line.size(); ++at) {
        unsigned int byte = 0;
        int length = 0;
        const bool isByte = std::sscanf(line.c_str() + at, "<%2X>%n", &byte, &length) == 1 && length == 4;
        text.push_back(isByte ? static_cast<char>(byte) : line[at]);
        at += isByte ? 3 : 0;
    }
    return text;
}

std::string shown(const std::string& answer) {
    namespace utf = boost::locale::utf;
    std::string text;
    for (auto position = answer.begin(); position != answer.end();) {
        const auto start = position;
        const utf::code_point point = utf::utf_traits<char>::decode(position, answer.end());
        const bool control = (point < 0x20 && point != '\n' && point != '\t') || (point >= 0x7F && point < 0xA0);
        if (control || point == utf::illegal || point == utf::incomplete) {
            const auto byte = static_cast<unsigned char>(*start);
            text.append({'<', s_digits[byte / 16], s_digits[byte % 16], '>'});
            position = start + 1;
        } else {
            text.append(start, position);
        }
    }
    return text.empty() || text.ends_with('\n') ? text : text + "\n";
}

std::vector<TranscriptCase> readTranscript(const std::filesystem::path& file) {
    std::ifstream lines(file);
    std::vector<TranscriptCase> cases;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("== ")) {
            cases.push_back({file.stem().string() + "_" + line.substr(3), ""});
        } else if (!cases.empty()) {
            cases.back().text += line + "\n";
        }
    }
    if (cases.empty()) {
        throw std::runtime_error("no transcript in " + file.string());
    }
    return cases;
}

}  // namespace

std::vector<TranscriptCase> readTranscripts(const std::string& files) {
    std::vector<std::string> names;
    std::vector<TranscriptCase> cases;
    for (const std::string& name : boost::algorithm::split(names, files, boost::algorithm::is_any_of(":"))) {
        for (TranscriptCase& each : readTranscript(name)) {
            boost::algorithm::trim_right(each.text);
            cases.push_back(std::move(each));
        }
    }
    return cases;
}

std::string replay(const TranscriptCase& recorded, const std::function<std::string(const std::string&)>& type) {
    std::istringstream lines(recorded.text);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ ")) {
            text += line + "\n" + shown(type(typed(line.substr(2))));
        } else if (line.starts_with("# ")) {
            text += line + "\n";
        }
    }
    boost::algorithm::trim_right(text);
    return text;
}

}  // namespace support
