#include "doc_products_shared/DocProductCollector.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <utility>

#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "doc_products_shared/catalogue_keys.hpp"
#include "doc_products_shared/proof_files.hpp"
#include "fl/filesystem.hpp"
#include "foundation/diagnostic.hpp"
#include "foundation/function_trace.hpp"
#include "foundation/text_file.hpp"

namespace doc_products_shared {

using fl::filesystem::upath;

namespace {

foundation::log::basic_diagnostic_logger<char> s_logger("doc_products_shared");

const std::string s_webonlyFamily = catalogue_keys::webOnlyFamily;

constexpr std::size_t s_namesPerProduct = 5;

// True if either file that proves a product exists.
bool isDoccenterPropertiesExist(const fl::ustring& dataRoot, const std::string& helpLocation,
                                const std::string& shortName) {
    FUNCTION_TRACE(
        "bool (anonymous namespace)::isDoccenterPropertiesExist(const fl::ustring &, const std::string &, "
        "const std::string &)");
    try {
        DIAGNOSTIC(detail, "helpLocation: ", helpLocation);
        if (fl::filesystem::exists(proof_files::inLocation(dataRoot, helpLocation))) {
            return true;
        }
        DIAGNOSTIC(detail, "shortName: ", shortName);
        return fl::filesystem::exists(proof_files::ofShortName(dataRoot, shortName));
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Caught exception: ", e.what());
    }
    return false;
}

bool isWebonlyProduct(const DocProductPtr product) {
    FUNCTION_TRACE("bool (anonymous namespace)::isWebonlyProduct(const DocProductPtr)");
    const auto& families = product->getProductFamilies();
    return std::any_of(families.begin(), families.end(),
                       [](const ProductFamily& family) { return family.getFamily() == s_webonlyFamily; });
}

// Adds the product under each of its names. Of products that share a name the last one keeps it.
void populateProductsMap(TopLevelDocProductMap& map, const TopLevelDocProductPtr product) {
    FUNCTION_TRACE(
        "void (anonymous namespace)::populateProductsMap(TopLevelDocProductMap &, const TopLevelDocProductPtr)");
    const std::array<const std::string*, s_namesPerProduct> names{
        &product->getBaseCode(), &product->getShortName(), &product->getHelpLocation(), &product->getAltShortName(),
        &product->getDisplayName()};
    const foundation::trimmer trim;
    for (const std::string* name : names) {
        std::string key = *name;
        trim(key);
        if (!key.empty()) {
            map[std::move(key)] = product;
        }
    }
}

}  // namespace

DocProductCollector::DocProductCollector(const upath& docsetJsonFile) : m_docsetFileName(u"docset.json") {
    FUNCTION_TRACE("doc_products_shared::DocProductCollector::DocProductCollector(const fl::filesystem::upath &)");
    m_docsetJsonFile = findDocsetJsonFile(docsetJsonFile);
    DIAGNOSTIC(detail, "docsetJsonFile: ", foundation::log::utf16_piece{m_docsetJsonFile.native()});
    populateTopLevelDocProductList(DocSetJsonParser().parse(m_docsetJsonFile.native()));
}

upath DocProductCollector::findDocsetJsonFile(const upath& docsetJsonFile) const {
    FUNCTION_TRACE(
        "fl::filesystem::upath doc_products_shared::DocProductCollector::findDocsetJsonFile("
        "const fl::filesystem::upath &) const");
    if (fl::filesystem::exists(docsetJsonFile)) {
        return docsetJsonFile;
    }
    if (upath inDocroot = Docroot::getInstance().getDocroot() / m_docsetFileName; fl::filesystem::exists(inDocroot)) {
        return inDocroot;
    }
    return Docroot::getInstance().getDocDataRoot() / m_docsetFileName;
}

void DocProductCollector::populateTopLevelDocProductList(const DocumentationSet& docSet) {
    FUNCTION_TRACE(
        "void doc_products_shared::DocProductCollector::populateTopLevelDocProductList(const DocumentationSet &)");
    const fl::ustring dataRoot = Docroot::getInstance().getDocDataRoot().native();
    std::vector<TopLevelDocProductPtr> installed;
    m_productsMap.reserve(s_namesPerProduct * docSet.getTopLevelProducts().size());
    for (const TopLevelDocProductPtr& product : docSet.getTopLevelProducts()) {
        if (isDoccenterPropertiesExist(dataRoot, product->getHelpLocation(), product->getShortName()) &&
            !isWebonlyProduct(product)) {
            installed.push_back(product);
        }
        populateProductsMap(m_productsMap, product);
    }
    m_installedProducts = std::make_shared<const std::vector<TopLevelDocProductPtr>>(std::move(installed));
}

TopLevelDocProductVectorPtr DocProductCollector::getInstalledTopLevelDocProducts() {
    FUNCTION_TRACE(
        "TopLevelDocProductVectorPtr doc_products_shared::DocProductCollector::getInstalledTopLevelDocProducts()");
    return m_installedProducts;
}

DocProductPtr DocProductCollector::getProductInfo(const std::string& name) {
    FUNCTION_TRACE("DocProductPtr doc_products_shared::DocProductCollector::getProductInfo(const std::string &)");
    const auto found = m_productsMap.find(name);
    return found == m_productsMap.end() ? nullptr : found->second;
}

}  // namespace doc_products_shared
