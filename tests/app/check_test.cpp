#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sstream>

#include "check/examine.hpp"
#include "check/report_json.hpp"
#include "check/report_text.hpp"
#include "support/Host.hpp"

namespace {

using namespace app::check;
using app::Json;

// A catalogue without a fault.
const std::string s_sound = R"({"documentation_set": {"format": "1", "release": "2", "product_list": [
{"product": {"display_name": "Alpha Kit", "help_location": "alpha", "short_name": "ak", "basecode": "AK",
 "product_family_list": [{"product_family": {"family": "kits", "group": "all"}}]}},
{"product": {"display_name": "Beta", "help_location": "beta", "short_name": "be", "basecode": "BE",
 "product_family_list": []}}]}})";

std::string shown(const Report& report, bool hasColor) {
    std::string text;
    writeText([&](std::string_view part) { text += part; }, report, hasColor);
    return text;
}

// What the report says, without source lines: the problems' lines, notes and paths.
std::string saidOf(const Report& report) {
    std::istringstream lines(shown(report, false));
    std::string said;
    for (std::string line; std::getline(lines, line);) {
        const bool isSaid = line.starts_with("f:") && !line.starts_with("f: ");
        said += isSaid ? line.substr(2) + '\n' : line.find("looked at") == 8 ? line.substr(8) + '\n' : "";
    }
    return said;
}

// A part of the sound catalogue, what replaces it, and what is said then.
struct Row {
    std::string part, replacement, said;
};

const Row s_rows[] = {
    {"", "", ""},
    {"{\"doc", "", "1:1: error: expected a value, or a key in double quotes [expected-value]\n"},
    {"{\"doc", "\xEF\xBB\xBF{\"doc",
     "1:1: error: a byte order mark: save the file as UTF-8 without one [expected-value]\n"},
    {"\"2\"", "'2'", "1:50: error: strings and keys take double quotes [expected-value]\n"},
    {"\"2\"", "\"2\" // x", "1:54: error: JSON has no comments: remove it [expected-comma]\n"},
    {"\"2\"", "Nothing", "1:50: error: expected a value, or a key in double quotes [expected-value]\n"},
    {"\"2\"", "\"2", "1:55: error: expected \",\" or \"}\" after an object member [expected-comma]\n"},
    {"\"2\"", "\"\\x\"", "1:51: error: invalid escape: only \" \\ / b f n r t u may follow a backslash [bad-escape]\n"},
    {"\"2\"", "\"\\uD83Dx\"",
     "1:51: error: invalid \\u escape: four hexadecimal digits are needed, and a second \\u escape after a high "
     "surrogate [bad-unicode-escape]\n"},
    {"\"2\"", "-", "1:51: error: expected a digit [bad-number]\n"},
    {"\"2\"", "{\"zqtype\": \"int8\", \"zqdata\": [1.5]}",
     "1:81: error: expected an integer as the element of a typed array [bad-typed-array]\n"},
    {"\"format\"", "\"zqdata\": [1.5], \"zqtype\": \"int8\", \"format\"",
     "1:24: info: \"zqdata\" isn't read [unknown-key]\n1:41: info: \"zqtype\" isn't read [unknown-key]\n1:57: error: "
     "expected an integer as the element of a typed array [bad-typed-array]\n"},
    {"\"2\"", std::string(256, '['),
     "1:305: error: arrays and objects are nested more than 256 deep [nesting-too-deep]\n"},
    {"[]}}]}}", "[]}}]}}}", "5:32: error: text follows the document [text-after-document]\n"},
    {"[]}}]}}", "", "5:25: error: the text ends too early [unexpected-end]\n"},
    {"\"AK\",", "\"AK\"", "3:2: error: a comma is missing before this [expected-comma]\n"},
    {"\"basecode\": \"AK\",", "\"basecode\" \"AK\",", "2:100: error: expected \":\" after a key [expected-colon]\n"},
    {"\"basecode\": \"AK\",", "\"basecode\": \"AK\",,", "2:106: error: a comma too many: remove it [expected-value]\n"},
    {"\"all\"}}]}},", "\"all\"}}]}}", "4:1: error: a comma is missing before this [expected-comma]\n"},
    {"[]}}]", "[]}},]", "5:29: error: a comma before \"]\": remove it [expected-value]\n"},
    {"\"basecode\": \"AK\",", "", "2:13: error: product \"Alpha Kit\" has no \"basecode\" [missing-key]\n"},
    {"\"family\": \"kits\", ", "", "3:45: error: \"product_family\" has no \"family\" [missing-key]\n"},
    {"\"2\"", "2", "1:50: error: \"release\" must be a string, and is a number [wrong-type]\n"},
    {"[]}}", "null}}", "5:25: error: \"product_family_list\" must be an array, and is null [wrong-type]\n"},
    {"[]}}", "[7]}}", "5:26: error: an element here must be an object, and is a number [wrong-type]\n"},
    {"\"documentation_set\"", "\"documentation_sets\"",
     "1:1: error: the document has no \"documentation_set\" [missing-key]\n1:2: warning: \"documentation_sets\" isn't "
     "read (did you mean \"documentation_set\"?) [near-key]\n"},
    {"\"BE\"", "\"BE\", \"alt_shortname\": \"\", \"x~/\": 1, \"$schema\": 1, \"base_product_x\": 1",
     "4:101: warning: \"alt_shortname\" isn't read (did you mean \"alt_short_name\"?) [near-key]\n4:122: info: \"x~/\" "
     "isn't read [unknown-key]\n"},
    {"\"BE\"", "\"BE\", \"basecode\": 1, \"x\": 1, \"x\": 1",
     "4:101: warning: \"basecode\" is dropped: the object has it already [duplicate-key]\n4:83: note: the first one is "
     "read\n4:116: info: \"x\" isn't read [unknown-key]\n4:124: warning: \"x\" is dropped: the object has it already "
     "[duplicate-key]\n4:116: note: the first one is read\n"},
    {"\"be\"", "\" ak \"",
     "4:77: warning: white space around the short name \"ak\" [blank-around-name]\n4:77: warning: \"ak\" leads to this "
     "product, not to \"Alpha Kit\" [ambiguous-name]\n2:83: note: short name of \"Alpha Kit\"\n"},
    {"\"be\"", "\" \"", "4:77: warning: the short name is empty [empty-name]\n"},
    {R"("Beta", "help_location": "beta", "short_name": "be", "basecode": "BE")",
     R"("", "help_location": " ", "short_name": "", "basecode": "\t")",
     "4:13: warning: nothing can find this product: all its names are empty [all-names-empty]\n"},
    {"\"beta\"", "\"a/../../beta\"",
     "4:55: warning: the help location \"a/../../beta\" leads out of the data root [location-outside]\n"},
    {"\"beta\"", "\"/beta\"",
     "4:55: warning: a help location is relative: remove the first \"/\" [location-outside]\n"},
    {"\"beta\"", "\"a\\\\b\"", "4:55: warning: a backslash in the help location: the separator is \"/\" [backslash]\n"},
    {"\"be\"", "\"../../../be\"",
     "4:77: warning: the short name \"../../../be\" leads out of the data root [short-name-outside]\n"},
    {"\"kits\"", "\"WebOnlyProduct\"",
     "3:56: warning: \"WebOnlyProduct\" isn't \"webonlyproducts\", so the product is one to install [near-webonly]\n"},
    {"\"Beta\"", "\"Be\xFFta\"", "4:33: warning: a byte that isn't part of UTF-8 [invalid-utf8]\n"},
    {"\"Beta\"", "\"Be\x01ta\"", "4:33: warning: a control character: write it as \\u0001 [control-character]\n"},
    {"\"Beta\"", "\"\\uDC00 \\uD83D\\uDE00 \\uD83D\\u0041\"",
     "4:31: warning: half of a surrogate pair, which becomes U+FFFD [replaced-surrogate]\n4:51: warning: half of a "
     "surrogate pair, which becomes U+FFFD [replaced-surrogate]\n"},
    {"\"2\"", "\"2\", \"x\": [1e999, 007, -00]",
     "1:55: info: \"x\" isn't read [unknown-key]\n1:61: warning: a number that no double holds [number-range]\n1:68: "
     "warning: a number with leading zeros [not-rfc8259]\n1:73: warning: a number with leading zeros [not-rfc8259]\n"},
    {"\"2\"", "\f\"2\"", "1:50: warning: form feed and vertical tab are no white space in JSON [not-rfc8259]\n"},
};

std::string replaced(const Row& row) {
    std::string text = s_sound;
    return text.replace(text.find(row.part), row.part.size(), row.replacement);
}

// A row for what is on disk: files below the data root, what replaces a part of the catalogue, and what is said.
struct DiskRow {
    std::vector<std::string> files;
    Row row;
};

const std::string s_notInstalled =
    "4:13: info: not installed: neither proof exists [not-installed]\n"
    "looked at $T/beta/doccenter.properties\n"
    "looked at $T/docCatalog/products/be.properties\n";

const DiskRow s_diskRows[] = {
    {{"beta/doccenter.properties"}, {"", "", ""}},
    {{"docCatalog/products/be.properties"}, {"", "", ""}},
    {{"beta/doccenter.properties/"},
     {"", "", "4:55: warning: $T/beta/doccenter.properties is no regular file [proof-is-folder]\n"}},
    {{}, {"", "", s_notInstalled}},
    {{}, {"[]}}", R"([{"product_family": {"family": "webonlyproducts"}}]}})", ""}},
    {{"BETA/doccenter.properties"},
     {"", "",
      s_notInstalled + "4:55: warning: $T/beta/doccenter.properties doesn't exist, but $T/BETA/doccenter.properties "
                       "does [other-case]\n"}},
};

// Each code but one has a row. shadowed-catalogue, which depends on the roots, has one among the command's.
TEST(Check, SaysWhatIsWrongAndWhere) {
    const Policy policy;
    std::string all = "[shadowed-catalogue]";
    for (const Row& row : s_rows) {
        EXPECT_EQ(saidOf(examine("f", replaced(row), "", policy)), row.said) << row.part << " -> " << row.replacement;
        all += row.said;
    }
    for (const DiskRow& row : s_diskRows) {
        const support::Host host;
        host.write("alpha/doccenter.properties");
        for (const std::string& file : row.files) {
            host.write(file);
        }
        EXPECT_EQ(host.shorten(saidOf(examine("f", replaced(row.row), host.folder(), policy))), row.row.said);
        all += row.row.said;
    }
    for (const Code& code : codes) {
        EXPECT_NE(all.find(fmt::format("[{}]", code.name)), std::string::npos) << code.name;
    }
}

// Tabs are blanks. A caret is as wide as what it marks is on a terminal. A long line is cut around the place.
TEST(Check, ShowsTheSource) {
    const Policy policy;
    const std::string text = "{\"a\":\t\"" + std::string(60, 'x') + "\", \"茶\x1B\": 1}";
    const Report report = examine("f\x1B", text, "", policy);
    EXPECT_EQ(shown(report, false),
              "f\\x1b:1:1: error: the document has no \"documentation_set\" [missing-key]\n"
              "    1 | {\"a\": \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\n"
              "      | ^\n"
              "f\\x1b:1:2: info: \"a\" isn't read [unknown-key]\n"
              "    1 | {\"a\": \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\n"
              "      |  ^~~\n"
              "f\\x1b:1:71: info: \"\xE8\x8C\xB6\\x1b\" isn't read [unknown-key]\n"
              "    1 | xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\", \"\xE8\x8C\xB6\\x1b\": 1}\n"
              "      |                                                             ^~~~~~~~\n"
              "f\\x1b:1:73: warning: a control character: write it as \\u001b [control-character]\n"
              "    1 | xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\", \"\xE8\x8C\xB6\\x1b\": 1}\n"
              "      |                                                            ^~~~\n"
              "f\\x1b: 1 error, 1 warning, 2 infos in 0 products (files not looked for)\n");
    EXPECT_EQ(shown(report, true).substr(0, 60),
              "\x1B[1mf\\x1b:1:1: \x1B[0m\x1B[1;31merror: \x1B[0mthe document has no \"do");
}

// Of the problems the first two are kept; the others are only counted.
TEST(Check, AnswersMachines) {
    const Policy policy{{}, {"unknown-key"}, 2};
    Findings findings{{}, {}, app::ExitStatus::malformedCatalogue};
    findings.reports.push_back(
        examine("/a b\xFF", replaced({"\"2\"", "\"2\", \"x\": 1, \"be\xFF\": 1, \"y\": 2", ""}), "", policy));
    EXPECT_EQ(jsonOf(findings).dump(),
              R"({"schema_version":1,"command":"check","ok":false,"status":3,"error":null,)"
              R"("files":[{"file":"/a b�","lossy":true,"error":null,)"
              R"("data_root":null,"products":2,"counts":{"error":3,"warning":1,"info":0},"omitted":2,)"
              R"("problems":[{"severity":"error","code":"unknown-key","message":"\"x\" isn't read",)"
              R"("pointer":"/documentation_set/x","line":1,"column":55,"end_line":1,"end_column":58,"offset":54,)"
              R"("length":3,"related":[],"looked_at":[]},{"severity":"error","code":"unknown-key",)"
              R"("message":"\"be�\" isn't read","lossy":true,"pointer":"/documentation_set/be�","line":1,)"
              R"("column":63,"end_line":1,"end_column":68,"offset":62,"length":5,"related":[],)"
              R"("looked_at":[]}]}]})");
    const Json run = sarifOf(findings)["runs"][0];
    EXPECT_EQ(run["results"][1].dump(),
              R"({"ruleId":"unknown-key","level":"error","message":{"text":"\"be�\" isn't read"},)"
              R"("locations":[{"physicalLocation":{"artifactLocation":{"uri":"file:///a%20b%FF"},)"
              R"("region":{"startLine":1,"startColumn":63,"endLine":1,"endColumn":68,"byteOffset":62,)"
              R"("byteLength":5}},"logicalLocations":[{"fullyQualifiedName":"/documentation_set/be�"}]}]})");
    EXPECT_EQ(run["tool"]["driver"]["rules"].size(), codes.size());
}

}  // namespace
