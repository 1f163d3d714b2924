#include "check/products.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "check/Problems.hpp"
#include "doc_products_shared/catalogue_keys.hpp"
#include "near_names.hpp"
#include "text.hpp"

namespace app::check {

namespace {

// The names in the order in which the library enters them into its index.
constexpr std::array s_names = {baseCode, shortName, helpLocation, altShortName, displayName};

constexpr std::array<const char*, fieldCount> s_fieldNames = {"display name", "help location",          "short name",
                                                              "base code",    "alternative short name", "status"};

const std::string s_folderOfShortNames = "docCatalog/products/";

// True if the path, appended to a folder, leads out of it.
bool leadsOut(const std::string& path) {
    const auto normal = ("." / std::filesystem::path(path).relative_path()).lexically_normal();
    return *normal.begin() == "..";
}

}  // namespace

void ProductChecks::report(const Code& code, const Product& product, Field field, std::string message,
                           std::vector<Related> related) {
    m_problems.add(
        {&code, product.fields.at(field).place, std::move(message), pointerTo(product, field), std::move(related)});
}

void ProductChecks::check(const Product& product) {
    checkNames(product);
    checkLocations(product);
    checkFamilies(product);
}

void ProductChecks::checkNames(const Product& product) {
    const auto isEmpty = [&](Field field) { return trimmed(product.fields.at(field).text).empty(); };
    if (std::all_of(s_names.begin(), s_names.end(), isEmpty)) {
        m_problems.add({&code("all-names-empty"), product.place,
                        "nothing can find this product: all its names are empty", pointerTo(product)});
        return;
    }
    for (const Field field : s_names) {
        if (product.fields.at(field).isThere) {
            checkName(product, field);
        }
    }
}

void ProductChecks::checkName(const Product& product, Field field) {
    const std::string& text = product.fields.at(field).text;
    std::string name = trimmed(text);
    if (name.empty()) {
        return report(code("empty-name"), product, field, fmt::format("the {} is empty", s_fieldNames.at(field)));
    }
    if (name != text) {
        report(code("blank-around-name"), product, field,
               fmt::format("white space around the {} \"{}\"", s_fieldNames.at(field), name));
    }
    const Use use{product.index, field, product.fields.at(field).place, product.fields[displayName].text};
    const auto [former, isNew] = m_names.try_emplace(std::move(name), use);
    if (!isNew && former->second.product != product.index) {
        report(code("ambiguous-name"), product, field,
               fmt::format("\"{}\" leads to this product, not to \"{}\"", former->first, former->second.displayName),
               {{fmt::format("{} of \"{}\"", s_fieldNames.at(former->second.field), former->second.displayName),
                 former->second.place}});
    }
    former->second = use;
}

void ProductChecks::checkLocations(const Product& product) {
    const std::string& location = product.fields[helpLocation].text;
    if (location.starts_with('/')) {
        report(code("location-outside"), product, helpLocation, "a help location is relative: remove the first \"/\"");
    }
    if (leadsOut(location)) {
        report(code("location-outside"), product, helpLocation,
               fmt::format("the help location \"{}\" leads out of the data root", location));
    }
    if (location.find('\\') != std::string::npos) {
        report(code("backslash"), product, helpLocation, "a backslash in the help location: the separator is \"/\"");
    }
    if (leadsOut(s_folderOfShortNames + product.fields[shortName].text)) {
        report(code("short-name-outside"), product, shortName,
               fmt::format("the short name \"{}\" leads out of the data root", product.fields[shortName].text));
    }
}

void ProductChecks::checkFamilies(const Product& product) {
    const std::string webOnly = doc_products_shared::catalogue_keys::webOnlyFamily;
    for (const Text& family : product.families) {
        if (family.text != webOnly && !nearNames(family.text, {webOnly}).empty()) {
            m_problems.add({&code("near-webonly"), family.place,
                            fmt::format("\"{}\" isn't \"{}\", so the product is one to install", family.text, webOnly),
                            pointerTo(product)});
        }
    }
}

}  // namespace app::check
