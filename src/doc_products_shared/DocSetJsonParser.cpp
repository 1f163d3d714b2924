#include "doc_products_shared/DocSetJsonParser.hpp"

#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "doc_products_shared/catalogue_keys.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "foundation/diagnostic.hpp"
#include "foundation/text_file.hpp"
#include "json/Value.hpp"
#include "json/parse.hpp"

namespace doc_products_shared {

using foundation::json::Value;

namespace {

foundation::log::basic_diagnostic_logger<char> s_logger("doc_products_shared");

const std::string s_documentationSet = catalogue_keys::documentationSet;
const std::string s_productList = catalogue_keys::productList;
const std::string s_format = catalogue_keys::format;
const std::string s_release = catalogue_keys::release;
const std::string s_product = catalogue_keys::product;
const std::string s_displayName = catalogue_keys::displayName;
const std::string s_helpLocation = catalogue_keys::helpLocation;
const std::string s_shortName = catalogue_keys::shortName;
const std::string s_baseCode = catalogue_keys::baseCode;
const std::string s_altShortName = catalogue_keys::altShortName;
const std::string s_status = catalogue_keys::status;
const std::string s_productFamilyList = catalogue_keys::productFamilyList;
const std::string s_productFamily = catalogue_keys::productFamily;
const std::string s_family = catalogue_keys::family;
const std::string s_group = catalogue_keys::group;
const std::string s_absent;  // the value of an absent optional key

// Looking up a key throws on anything but an object, so a chain of look-ups checks every level.

const std::vector<Value>& arrayAt(const Value& object, const std::string& key) {
    return object[key].get<std::vector<Value>>();
}

const std::string& stringAt(const Value& object, const std::string& key) {
    return object[key].get<std::string>();
}

const std::string& optionalStringAt(const Value& object, const std::string& key) {
    return object.contains(key) ? stringAt(object, key) : s_absent;
}

// The order of reading decides which of several faults is reported, here and below.

ProductFamily readFamily(const Value& entry) {
    const Value& family = entry[s_productFamily];
    std::string name = stringAt(family, s_family);
    return {std::move(name), optionalStringAt(family, s_group)};
}

std::vector<ProductFamily> readFamilies(const Value& product) {
    std::vector<ProductFamily> families;
    for (const Value& entry : arrayAt(product, s_productFamilyList)) {
        families.push_back(readFamily(entry));
    }
    return families;
}

TopLevelDocProductPtr readProduct(const Value& entry) {
    const Value& product = entry[s_product];
    std::string displayName = stringAt(product, s_displayName);
    std::string helpLocation = stringAt(product, s_helpLocation);
    std::string shortName = stringAt(product, s_shortName);
    std::string baseCode = stringAt(product, s_baseCode);
    std::string altShortName = optionalStringAt(product, s_altShortName);
    std::string status = optionalStringAt(product, s_status);
    return std::make_shared<TopLevelDocProduct>(std::move(displayName), std::move(helpLocation), std::move(shortName),
                                                std::move(baseCode), std::move(altShortName), std::move(status),
                                                readFamilies(product));
}

DocumentationSet readSet(const Value& set) {
    const auto& products = arrayAt(set, s_productList);
    std::string format = stringAt(set, s_format);
    DocumentationSet result(std::move(format), stringAt(set, s_release));
    for (const Value& entry : products) {
        result.addTopLevelProduct(readProduct(entry));
    }
    return result;
}

}  // namespace

DocumentationSet DocSetJsonParser::parse(const fl::ustring& path) const {
    if (!fl::filesystem::exists(path)) {
        DIAGNOSTIC(error, fl::i18n::to_string(path), " does not exist");
        return {};
    }
    try {
        const std::string text = foundation::read_text_file(fl::i18n::to_string(path));
        return readSet(foundation::json::parse(text, 0)[s_documentationSet]);
    } catch (const std::exception& e) {
        std::cerr << e.what();
        throw std::runtime_error("Error while parsing " + fl::i18n::to_string(path));
    }
}

}  // namespace doc_products_shared
