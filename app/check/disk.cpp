#include "check/disk.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <boost/algorithm/string/case_conv.hpp>
#include <filesystem>
#include <system_error>

#include "check/Problems.hpp"
#include "doc_products_shared/catalogue_keys.hpp"

namespace app::check {

namespace {

namespace fs = std::filesystem;

struct Proof {
    Field field;  // from which the path is made
    std::string path;
};

std::array<Proof, 2> proofsOf(const Product& product) {
    return {Proof{helpLocation, product.fields[helpLocation].text + "/doccenter.properties"},
            Proof{shortName, "docCatalog/products/" + product.fields[shortName].text + ".properties"}};
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

// The path below the data root that differs from `path` only in case; empty if nothing has one.
std::string DiskChecks::withOtherCase(const std::string& path) {
    fs::path found = m_dataRoot;
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
    const auto proofs = proofsOf(product);
    for (const auto& [field, path] : proofs) {
        std::error_code unreachable;
        const auto type = fs::status(m_dataRoot + '/' + path, unreachable).type();
        if (type != fs::file_type::none && type != fs::file_type::not_found) {
            return type == fs::file_type::regular ? void() : reportNoFile(product, field, path);
        }
    }
    Problem missing{&code("not-installed"), product.place, "not installed: neither proof exists", pointerTo(product)};
    for (const auto& [field, path] : proofs) {
        missing.lookedAt.push_back(m_dataRoot + '/' + path);
        reportOtherCase(product, field, path);
    }
    m_problems.add(std::move(missing));
}

void DiskChecks::reportNoFile(const Product& product, Field field, const std::string& path) {
    m_problems.add({&code("proof-is-folder"), product.fields.at(field).place,
                    fmt::format("{}/{} is no regular file", m_dataRoot, path), pointerTo(product, field)});
}

void DiskChecks::reportOtherCase(const Product& product, Field field, const std::string& path) {
    if (const std::string found = withOtherCase(path); !found.empty()) {
        m_problems.add({&code("other-case"), product.fields.at(field).place,
                        fmt::format("{}/{} doesn't exist, but {} does", m_dataRoot, path, found),
                        pointerTo(product, field)});
    }
}

}  // namespace app::check
