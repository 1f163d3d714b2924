#pragma once

#include <filesystem>
#include <string>

namespace support {

// An empty folder of the test's own, removed at the end with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return m_path; }

    // Writes a file below the folder, with the folders above it.
    void write(const std::string& name, const std::string& content = "") const;

    // Makes a folder below the folder.
    void makeFolder(const std::string& name) const { std::filesystem::create_directories(m_path / name); }

    // The text with each mention of the folder replaced by "$T".
    std::string generic(std::string text) const;

private:
    std::filesystem::path m_path;
};

}  // namespace support
