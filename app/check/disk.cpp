#include "check/disk.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <boost/algorithm/string/case_conv.hpp>
#include <filesystem>
#include <system_error>

#include "check/Problems.hpp"
#include "doc_products_shared/catalogue_keys.hpp"
#include "doc_products_shared/proof_files.hpp"
#include "fl/filesystem.hpp"

namespace app::check {

namespace {

namespace fs = std::filesystem;
namespace proof_files = doc_products_shared::proof_files;

struct Proof {
    Field field;  // from which the path is made
    std::string path;
};

std::array<Proof, 2> proofsOf(const Product& product, const std::string& dataRoot) {
    const fl::ustring root = fl::i18n::to_ustring(dataRoot);
    const auto& fields = product.fields;
    return {Proof{helpLocation, to_string(proof_files::inLocation(root, fields[helpLocation].text))},
            Proof{shortName, to_string(proof_files::ofShortName(root, fields[shortName].text))}};
}

bool isWebOnly(const Product& product) {
    return std::any_of(product.families.begin(), product.families.end(), [](const Text& family) {
        return family.text == doc_products_shared::catalogue_keys::webOnlyFamily;
    });
}

}  // namespace

const DiskChecks::Names& DiskChecks::namesIn(const std::string& folder) {
    const auto [entry, isNew] = m_folders.try_emplace(folder);
    if (isNew) {
        std::error_code unreadable;
        for (fs::directory_iterator i(folder, unreadable), end; i != end; i.increment(unreadable)) {
            const std::string name = i->path().filename();
            entry->second.emplace(boost::algorithm::to_lower_copy(name, std::locale::classic()), name);
        }
    }
    return entry->second;
}

// An existing path that differs from `path` only in case; empty if there is none.
std::string DiskChecks::withOtherCase(const std::string& path) {
    fs::path found;
    for (const fs::path& part : fs::path(path)) {
        std::error_code unreachable;
        if (fs::exists(found / part, unreachable)) {
            found /= part;
            continue;
        }
        const Names& names = namesIn(found);
        const auto name = names.find(boost::algorithm::to_lower_copy(part.string(), std::locale::classic()));
        if (name == names.end()) {
            return {};
        }
        found /= name->second;
    }
    return found;
}

void DiskChecks::check(const Product& product) {
    if (isWebOnly(product) || !product.fields[helpLocation].isThere || !product.fields[shortName].isThere) {
        return;
    }
    const auto proofs = proofsOf(product, m_dataRoot);
    for (const auto& [field, path] : proofs) {
        if (fl::filesystem::exists(fl::i18n::to_ustring(path))) {
            std::error_code unreachable;
            return fs::is_regular_file(path, unreachable) ? void() : reportNoFile(product, field, path);
        }
    }
    Problem missing{&code("not-installed"), product.place, "not installed: neither proof exists", pointerTo(product)};
    for (const auto& [field, path] : proofs) {
        missing.lookedAt.push_back(path);
        reportOtherCase(product, field, path);
    }
    m_problems.add(std::move(missing));
}

void DiskChecks::reportNoFile(const Product& product, Field field, const std::string& path) {
    m_problems.add({&code("proof-is-folder"), product.fields.at(field).place,
                    fmt::format("{} is no regular file", path), pointerTo(product, field)});
}

void DiskChecks::reportOtherCase(const Product& product, Field field, const std::string& path) {
    if (const std::string found = withOtherCase(path); !found.empty()) {
        m_problems.add({&code("other-case"), product.fields.at(field).place,
                        fmt::format("{} doesn't exist, but {} does", path, found), pointerTo(product, field)});
    }
}

}  // namespace app::check
