#include "check/products.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

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

// The path as it is to be written: without ".", "x/..", "//" and a "/" at the end.
std::string plainForm(const std::string& path) {
    if (path.find('.') == std::string::npos && path.find("//") == std::string::npos && !path.ends_with('/')) {
        return path;
    }
    std::string plain = std::filesystem::path(path).lexically_normal();
    if (plain.size() > 1 && plain.back() == '/') {
        plain.pop_back();
    }
    return plain;
}

// True for what names a place outside every folder: a URL, or a path on a drive.
bool hasScheme(const std::string& location) {
    const std::size_t colon = location.find(':');
    return colon == 1 || (colon != std::string::npos && location.compare(colon, 3, "://") == 0);
}

// True if the path, appended to a folder, leads out of it.
bool leadsOut(const std::string& path) {
    if (path.find("..") == std::string::npos) {
        return false;
    }
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
    const auto isEmpty = [&](Field field) {
        const Text& name = product.fields.at(field);
        return trimmed(name.text).empty() && (name.isThere || field == altShortName);
    };
    if (std::all_of(s_names.begin(), s_names.end(), isEmpty)) {
        m_problems.add({&code("all-names-empty"), product.place,
                        "nothing can find this product: all its names are empty", pointerTo(product)});
        return;
    }
    std::vector<Taken> taken;
    for (const Field field : s_names) {
        if (product.fields.at(field).isThere) {
            checkName(product, field, taken);
        }
    }
    reportTaken(product, taken);
}

void ProductChecks::checkName(const Product& product, Field field, std::vector<Taken>& taken) {
    const std::string& text = product.fields.at(field).text;
    std::string name = trimmed(text);
    if (name.empty()) {
        return report(
            code("empty-name"), product, field,
            fmt::format("the {} {}", s_fieldNames.at(field), text.empty() ? "is empty" : "has no visible character"));
    }
    if (name != text) {
        report(code("blank-around-name"), product, field,
               fmt::format("white space around the {} \"{}\"", s_fieldNames.at(field), name));
    }
    const Use use{product.index, field, product.fields.at(field).place, product.fields[displayName].text};
    const auto [former, isNew] = m_names.try_emplace(std::move(name), use);
    if (!isNew && former->second.product != product.index) {
        taken.push_back({field, former->first, former->second});
    }
    former->second = use;
}

// Names of earlier products, in one problem: often the whole product is a copy.
void ProductChecks::reportTaken(const Product& product, const std::vector<Taken>& taken) {
    if (taken.empty()) {
        return;
    }
    std::vector<std::string> names;
    std::vector<Related> related;
    for (const auto& [field, name, use] : taken) {
        names.push_back('"' + name + '"');
        related.push_back({fmt::format("{} of \"{}\", number {} in the list", s_fieldNames.at(use.field),
                                       use.displayName, use.product + 1),
                           use.place});
    }
    const bool isOne = taken.size() == 1;
    report(code("ambiguous-name"), product, taken.front().field,
           fmt::format("{} {} this product, number {} in the list, and no longer the earlier one",
                       fmt::join(names, ", "), isOne ? "finds" : "find", product.index + 1),
           std::move(related));
}

void ProductChecks::checkLocations(const Product& product) {
    checkLocation(product, product.fields[helpLocation].text);
    const std::string& name = product.fields[shortName].text;
    if (leadsOut(s_folderOfShortNames + name)) {
        report(code("short-name-outside"), product, shortName,
               fmt::format("the short name \"{}\" leads out of the data root", name));
    } else if (name.find('/') != std::string::npos) {
        report(code("short-name-form"), product, shortName, "a short name is no path: it takes no \"/\"");
    } else if (name.ends_with(".properties")) {
        report(code("short-name-form"), product, shortName, "a short name is no file name: remove \".properties\"");
    }
}

void ProductChecks::checkLocation(const Product& product, const std::string& location) {
    if (hasScheme(location)) {
        report(code("location-outside"), product, helpLocation,
               "a help location is a folder below the data root, and no URL or drive");
    } else if (leadsOut(location)) {
        report(code("location-outside"), product, helpLocation,
               fmt::format("the help location \"{}\" leads out of the data root", location));
    } else if (location.starts_with('/')) {
        const std::size_t start = std::min(location.find_first_not_of('/'), location.size());
        report(code("location-outside"), product, helpLocation,
               fmt::format("a help location is relative: write \"{}\"", plainForm(location.substr(start))));
    } else if (const std::string plain = plainForm(location); plain != location) {
        report(code("location-form"), product, helpLocation, fmt::format("write this location as \"{}\"", plain));
    }
    if (location.find('\\') != std::string::npos) {
        report(code("backslash"), product, helpLocation, "a backslash in the help location: the separator is \"/\"");
    }
    if (std::any_of(location.begin(), location.end(), [](char byte) { return byte >= '\b' && byte <= '\r'; })) {
        report(code("backslash"), product, helpLocation,
               "a backslash that became a control character, such as \"\\t\": the separator is \"/\"");
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
