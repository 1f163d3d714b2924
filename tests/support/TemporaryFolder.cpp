#include "support/TemporaryFolder.hpp"

#include <unistd.h>

#include <boost/algorithm/string/replace.hpp>
#include <fstream>

namespace support {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = std::filesystem::canonical(std::filesystem::temp_directory_path()) / "docproducts-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::filesystem::filesystem_error("mkdtemp", std::error_code(errno, std::generic_category()));
    }
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::remove_all(m_path);
}

void TemporaryFolder::write(const std::string& name, const std::string& content) const {
    const auto file = m_path / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << content;
}

std::string TemporaryFolder::generic(std::string text) const {
    boost::algorithm::replace_all(text, m_path.native(), "$T");
    return text;
}

}  // namespace support
