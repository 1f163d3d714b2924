#include "foundation/text_file.hpp"

#include <algorithm>
#include <boost/algorithm/string/trim.hpp>
#include <fstream>
#include <iterator>

namespace foundation {

std::string read_text_file(const std::string& path) {
    std::ifstream file(path);
    std::string text;
    try {
        std::copy(std::istreambuf_iterator<char>(file), {}, std::back_inserter(text));
    } catch (const std::ios_base::failure&) {  // from the stream buffer itself, whatever the stream's exception mask
    }
    return text;
}

void trimmer::operator()(std::string& text) const {
    boost::algorithm::trim_if(text, [this](char byte) {
        return static_cast<unsigned char>(byte) < 0x80 && m_classes.is(std::ctype_base::space, byte);
    });
}

}  // namespace foundation
