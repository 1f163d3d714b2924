#pragma once

#include <string>
#include <unordered_map>

#include "check/walk.hpp"

namespace app::check {

// Checks a catalogue's products against the files below a data root. Reads folders once.
class DiskChecks {
public:
    DiskChecks(std::string dataRoot, Problems& problems) : m_dataRoot(std::move(dataRoot)), m_problems(problems) {}

    void check(const Product& product);

private:
    using Names = std::unordered_map<std::string, std::string>;  // of a folder's entries, by their lower-case form

    const Names& namesIn(const std::string& folder);
    std::string withOtherCase(const std::string& path);
    void reportNoFile(const Product& product, Field field, const std::string& path);
    void reportOtherCase(const Product& product, Field field, const std::string& path);

    std::string m_dataRoot;
    Problems& m_problems;
    std::unordered_map<std::string, Names> m_folders;
};

}  // namespace app::check
