#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>

#include "fuzz/target.hpp"

// replay LEAST FOLDER...: examines every file of the folders that exist, and fails if there are fewer than LEAST.
// Prints each name before it examines the file, so that the last name is that of an input that ends the process.
int main(int argc, char** argv) {
    std::size_t count = 0;
    for (const char* folder : std::span(argv, static_cast<std::size_t>(argc)).subspan(2)) {
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
            std::cout << entry.path().native() << std::endl;
            std::ifstream file(entry.path());
            const std::string text(std::istreambuf_iterator<char>(file), {});
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
            ++count;
        }
    }
    std::cout << count << " inputs replayed\n";
    return count < std::stoul(argv[1]) ? 1 : 0;
}
