#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "check/examine.hpp"
#include "check/report_json.hpp"
#include "check/report_text.hpp"
#include "doc_products_shared/DocProductCollector.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "fuzz/Host.hpp"

using namespace doc_products_shared;
using fuzz::check;

namespace {

using Fields = std::vector<std::string>;

// An installation for a catalogue in the default root, with files that prove some products installed.
struct Scene : fuzz::Host {
    const std::string catalogue = root + "/docset.json";
    std::ostringstream errors;
    std::streambuf* const formerErrors = std::cerr.rdbuf(errors.rdbuf());

    Scene() {
        for (const char* name : {"", "a/", "barometer/", "sea/lighthouse/"}) {
            write("vorlan/help/" + std::string(name) + "doccenter.properties");
        }
        for (const char* name : {"", "b", "b\xFF", "windvane"}) {
            write("vorlan/help/docCatalog/products/" + std::string(name) + ".properties");
        }
    }
    ~Scene() { std::cerr.rdbuf(formerErrors); }

    // What `read` returns for the catalogue; nothing if it refuses the catalogue.
    template <class Read>
    auto attempt(Read read) -> std::optional<decltype(read(fl::ustring()))> {
        errors.str("");
        try {
            auto result = read(fl::i18n::to_ustring(catalogue));
            check(errors.str().empty(), "an accepted catalogue writes nothing to std::cerr");
            return result;
        } catch (const std::runtime_error& error) {
            check(error.what() == "Error while parsing " + catalogue,
                  "what() of a refusal names the catalogue and nothing else");
            check(!errors.str().empty(), "a refused catalogue writes the reason to std::cerr");
        }
        return {};
    }
};

Fields namesOf(const DocProduct& product) {
    return {product.getBaseCode(), product.getShortName(), product.getHelpLocation(), product.getAltShortName(),
            product.getDisplayName()};
}

// All texts of a product.
Fields fieldsOf(const DocProduct& product) {
    Fields fields = namesOf(product);
    fields.push_back(product.getAvailability());
    for (const ProductFamily& family : product.getProductFamilies()) {
        fields.insert(fields.end(), {family.getFamily(), family.getGroup()});
    }
    return fields;
}

// The texts of the last product with that name, none if there is none. White space around a product's names is ignored.
Fields find(const DocumentationSet& set, const std::string& name) {
    Fields found;
    for (const auto& product : set.getTopLevelProducts()) {
        for (const std::string& own : namesOf(*product)) {
            found = !name.empty() && fuzz::trimmed(own) == name ? fieldsOf(*product) : found;
        }
    }
    return found;
}

bool exists(const std::string& path) {
    std::error_code unreachable;
    return path.find('\0') == std::string::npos && std::filesystem::exists(path, unreachable);
}

bool isInstalled(const DocProduct& product, const std::string& dataRoot) {
    for (const ProductFamily& family : product.getProductFamilies()) {
        if (family.getFamily() == "webonlyproducts") {
            return false;
        }
    }
    return exists(dataRoot + "/" + product.getHelpLocation() + "/doccenter.properties") ||
           exists(dataRoot + "/docCatalog/products/" + product.getShortName() + ".properties");
}

void examineProducts(const DocumentationSet& set, DocProductCollector& collector, const std::string& dataRoot) {
    std::vector<Fields> expected, installed;
    for (const auto& product : set.getTopLevelProducts()) {
        for (const std::string& own : namesOf(*product)) {
            for (const std::string& name : {own, std::string(fuzz::trimmed(own)), own + "?"}) {
                const auto found = collector.getProductInfo(name);
                check((found ? fieldsOf(*found) : Fields()) == find(set, name),
                      "a look-up finds the last product with the name");
            }
        }
        if (isInstalled(*product, dataRoot)) {
            expected.push_back(fieldsOf(*product));
        }
    }
    for (const auto& product : *collector.getInstalledTopLevelDocProducts()) {
        installed.push_back(fieldsOf(*product));
    }
    check(installed == expected, "the installed products are those with a proof file, in catalogue order");
}

}  // namespace

// The command's check reports an error exactly for what the library refuses. Its places lie within the text, and its
// forms can be shown and sent anywhere.
void examineCheck(const std::string& text, bool isRefused) {
    const app::check::Policy policy;
    app::check::Findings findings;
    findings.reports.push_back(app::check::examine("f", text, "", policy));
    const auto& problems = findings.reports.front().problems;
    check((problems.count(app::check::Severity::error) > 0) == isRefused, "an error means that the library refuses");
    for (const app::check::Problem* problem : problems.kept()) {
        check(problem->place.offset + problem->place.length <= text.size(), "places lie in the text");
    }
    app::check::writeText(
        [](std::string_view part) { check(part.find('\x1B') == part.npos, "the report is printable"); },
        findings.reports.front(), false);
    check(!app::check::jsonOf(findings).dump().empty() && !app::check::sarifOf(findings).dump().empty(),
          "JSON is written");
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Scene s_scene;
    s_scene.write("vorlan/help/docset.json", {data, data + size});
    const auto set = s_scene.attempt([](const fl::ustring& path) { return DocSetJsonParser().parse(path); });
    auto collector = s_scene.attempt([](const auto& path) { return DocProductCollector(fl::filesystem::upath(path)); });
    examineCheck({data, data + size}, !set.has_value());
    check(set.has_value() == collector.has_value(), "a catalogue is refused everywhere or nowhere");
    if (set && collector) {
        examineProducts(*set, *collector, s_scene.root);
    }
    s_scene.forgetRecords();
    return 0;
}
