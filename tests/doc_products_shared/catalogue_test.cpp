#include <sys/socket.h>

#include <boost/range/adaptor/reversed.hpp>

#include "support/library.hpp"

namespace {

// The set read from docset.json, then a line per product with its families. After a refusal, what was written to
// std::cerr and what was thrown.
std::string parse(const Host& host) {
    std::ostringstream out;
    std::streambuf* const former = std::cerr.rdbuf(out.rdbuf());
    try {
        const DocumentationSet set = DocSetJsonParser().parse(host.path("$T/docset.json").native());
        out << set.getFormat() << " " << set.getRelease();
        for (const auto& product : set.getTopLevelProducts()) {
            out << "\n"
                << product->getDisplayName() << "|" << product->getHelpLocation() << "|" << product->getShortName()
                << "|" << product->getBaseCode() << "|" << product->getAltShortName() << "|"
                << product->getAvailability();
            for (const ProductFamily& family : product->getProductFamilies()) {
                out << "|" << family.getFamily() << "/" << family.getGroup();
            }
        }
    } catch (const std::exception& e) {
        out << "; " << e.what();
    }
    std::cerr.rdbuf(former);
    return host.shorten(out.str());
}

const auto parseText = [](const std::string& text) { return parse(Host({withFile("docset.json", text)})); };

const std::string s_refused = "; Error while parsing $T/docset.json";

const std::string s_catalogue = R"({"documentation_set": {
    "release": "7.2", "format": "1.0", "unknown": [{}], "product_list": [
        {"product": {"display_name": "\tAlpha Kit ", "help_location": "kits/a", "short_name": "alpha", "basecode": "AK",
                     "alt_short_name": "ak", "status": "new", "product_family_list": [
            {"product_family": {"group": "tools", "family": "kits"}}, {"product_family": {"family": ""}}]}},
        {"product": {"product_family_list": [], "basecode": "", "short_name": "b", "help_location": "\u00e9",
                     "display_name": "", "base_product_basecode": null}}
    ]}, "format": 2})";

TEST(Catalogue, IsReadInFullAndInFileOrder) {
    EXPECT_EQ(parseText(s_catalogue), "1.0 7.2\n\tAlpha Kit |kits/a|alpha|AK|ak|new|kits/tools|/\n|\u00e9|b|||");
}

// The keys in the order in which they are read, with their types, and whether they are required.
const std::tuple<std::string, std::string, bool> s_keys[] = {
    {"documentation_set", "object", true}, {"product_list", "array", true}, {"format", "string", true},
    {"release", "string", true},           {"product", "object", true},     {"display_name", "string", true},
    {"help_location", "string", true},     {"short_name", "string", true},  {"basecode", "string", true},
    {"alt_short_name", "string", false},   {"status", "string", false},     {"product_family_list", "array", true},
    {"product_family", "object", true},    {"family", "string", true},      {"group", "string", false},
};

std::string replaced(std::string text, const std::string& key, const std::string& replacement) {
    const std::string quoted = "\"" + key + "\":";
    return text.replace(text.find(quoted), quoted.size(), replacement);
}

// Adds a member of that key before the present one: of members with the same key, the first counts.
std::string with(const std::string& key, const std::string& value, const std::string& text = s_catalogue) {
    return replaced(text, key, "\"" + key + "\": " + value + ", \"" + key + "\":");
}

TEST(Catalogue, ChecksTheTypeOfEachKeyInOrder) {
    const std::pair<std::string, std::string> values[] = {{"null", "null"},    {"true", "bool"}, {"7.2", "double"},
                                                          {"\"x\"", "string"}, {"[]", "array"},  {"{}", "object"}};
    std::string laterWrong = s_catalogue;  // later keys are wrong too, so a refusal of null shows which is read first
    for (const auto& [name, type, required] : boost::adaptors::reverse(s_keys)) {
        const std::string refused = " to " + type + s_refused;
        EXPECT_EQ(parseText(with(name, "null", laterWrong)), "invalid conversion: null" + refused) << name;
        laterWrong = with(name, "true", laterWrong);
        const std::string missing = parseText(replaced(s_catalogue, name, "\"missing\":"));
        EXPECT_EQ(missing == "invalid conversion: undefined" + refused, required) << name << missing;
        EXPECT_EQ(missing.starts_with("1.0 7.2\n"), !required) << name << missing;
        for (const auto& [value, valueType] : values) {
            const std::string outcome = parseText(with(name, value));
            EXPECT_EQ(outcome == "invalid conversion: " + valueType + refused, valueType != type)
                << name << ": " << value << ": " << outcome;
        }
    }
}

TEST(Catalogue, IsRefusedIfMalformedOrUnreadable) {
    EXPECT_EQ(parseText("[]"), "invalid conversion: array to object" + s_refused);
    EXPECT_EQ(parseText("{} // comment"),
              "JSON ParserException (E0000): Parse incomplete (Line 1, Column 3)\n\t{} // comment\n\t   ^" + s_refused);
    const std::string socket = "/proc/self/fd/" + std::to_string(::socket(AF_UNIX, SOCK_STREAM, 0));
    for (const Step& unreadable : {withFile("docset.json/"), withLink(socket, "docset.json")}) {
        EXPECT_THAT(parse(Host({unreadable})), testing::StartsWith("JSON ParserException (E0019)"));
    }
}

}  // namespace
