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
    // What the whole file may be instead.
    {s_sound, " \n", "1:1: error: the file is empty [unexpected-end]\n"},
    {s_sound, std::string("{\x00}\x00", 4), "1:1: error: the file is UTF-16: save it as UTF-8 [expected-value]\n"},
    {s_sound, "\x1F\x8B", "1:1: error: the file is compressed with gzip: unpack it [expected-value]\n"},
    {"{\"doc", "\xEF\xBB\xBF{\"doc",
     "1:1: error: a byte order mark: save the file as UTF-8 without one [expected-value]\n"},
    {"{\"doc", "\"doc", "1:1: error: a \"{\" is missing before this [expected-value]\n"},
    {s_sound, "/* x", "1:1: error: this comment is never closed [unexpected-end]\n"},
    {s_sound, "--- x", "1:1: error: this isn't JSON: a catalogue starts with \"{\" [bad-number]\n"},
    {s_sound, "{'a': `b`, \"$schema\": \u201Cd\u201D, description: 'f', 'documentation_set': 'g', `h`: 1}",
     "1:2: error: strings and keys take double quotes [expected-value]\n1:2: info: \"a\" isn't read "
     "[unknown-key]\n1:7: error: strings and keys take double quotes [expected-value]\n1:23: error: strings and keys "
     "take straight double quotes, not typographic ones [expected-value]\n1:28: error: a key takes double quotes "
     "[expected-value]\n1:41: error: strings and keys take double quotes [expected-value]\n1:46: error: strings and "
     "keys take double quotes, here and at 2 more places [expected-value]\n1:72: info: \"h\" isn't read "
     "[unknown-key]\n"},
    {"\"release\": \"2\",", "\n<<<<<<< a\n\"release\": \"2\",\n=======\n\"release\": \"3\",\n>>>>>>> b\n",
     "2:1: error: a merge conflict: keep one of its versions, and no marker [expected-value]\n4:1: error: a merge "
     "conflict: keep one of its versions, and no marker [expected-value]\n5:1: warning: \"release\" is dropped: the "
     "object has it already [duplicate-key]\n3:1: note: the first one is read\n6:1: error: a merge conflict: keep one "
     "of its versions, and no marker [expected-value]\n"},
    {"[{\"product_family\": {\"family\": \"kits\", \"group\": \"all\"}}]", "[{\"family\": 1}]",
     "3:26: error: this entry has no \"product_family\": put it into {\"product_family\": ...} [missing-key]\n3:37: "
     "error: \"family\" must be a string, and is a number [wrong-type]\n"},
    {"\"1\",", "\"1\";", "1:37: error: write a comma for \";\" [expected-comma]\n"},
    {"\"2\",", "\"2\\\",\n",
     "1:50: error: the backslash makes the last quote part of the text: remove it [unexpected-end]\n"},
    {"[]}}]}}", "[]}},\n\"product\": {}}]}}",
     "6:1: error: a \"{\" is missing before this [expected-value]\n6:12: error: \"product\" has no \"display_name\", "
     "\"help_location\", \"short_name\", \"basecode\" or \"product_family_list\" [missing-key]\n"},
    // Values and keys that are none. The object goes on after them, and its checks too.
    {"\"2\"",
     "\"2\", \"base_product_0\": True, \"base_product_1\": NULL, \"base_product_2\": +1, \"base_product_3\": .5, "
     "\"base_product_4\": free text, \"base_product_5\": , \"base_product_6\": -, \"base_product_7\": 01.5",
     "1:73: error: write true in lower case [expected-value]\n1:97: error: write null in lower case "
     "[expected-value]\n1:121: error: a number takes no plus sign [expected-value]\n1:143: error: a number starts with "
     "a digit: write 0 before the point [expected-value]\n1:165: error: text takes double quotes "
     "[expected-value]\n1:194: error: a value is missing before this [expected-value]\n1:214: error: expected a digit "
     "[bad-number]\n1:235: error: a malformed number [bad-number]\n"},
    {"\"2\"", "undefined", "1:50: error: \"release\" must be a string, not undefined [expected-value]\n"},
    {"\"2\"", "7.2.1", "1:50: error: \"release\" must be a string: put it in double quotes [bad-number]\n"},
    {"\"2\"",
     "\xE2\x80\x9C"
     "2, 3\xE2\x80\x9D",
     "1:50: error: strings and keys take straight double quotes, not typographic ones [expected-value]\n"},
    {"\"2\",", "\"2\" /* x */ // y\n# z\n,", "1:54: error: JSON has no comments: remove it [expected-value]\n"},
    {"\"2\",", "\"2\",\xC2\xA0\xE2\x80\x83",
     "1:54: error: a no-break space isn't white space in JSON: write a plain space [expected-value]\n1:55: error: this "
     "blank isn't white space in JSON: write a plain space [expected-value]\n"},
    // Commas and colons.
    {"\"AK\",", "\"AK\"", "3:2: error: a comma is missing before this [expected-comma]\n"},
    {"\"all\"}}]}},", "\"all\"}}]}}", "4:1: error: a comma is missing before this [expected-comma]\n"},
    {"\"BE\",", "\"BE\",,,", "4:100: error: a comma too many: remove it [expected-value]\n"},
    {"[]}}]", "[]}},]", "5:29: error: a comma before \"]\": remove it [expected-value]\n"},
    {"\"basecode\": \"AK\"", "\"basecode\" \"AK\"", "2:100: error: a colon is missing before this [expected-colon]\n"},
    // Quotes and escapes.
    {"\"2\"", "\"2", "1:50: error: the closing quote of this string is missing [unexpected-end]\n"},
    {"\"all\"}}]}}", "\"all}}]}}", "3:73: error: the closing quote of this string is missing [unexpected-end]\n"},
    {"\"Beta\"", "\"The \"Quick\" Beta\"",
     "4:35: error: a quote is missing, or this one is part of the text and must be written as \\\" [expected-comma]\n"},
    {"\"short_name\": \"be\"", "\"short_name: \"be\"",
     "4:76: error: a quote is missing, or this one is part of the text and must be written as \\\" [expected-comma]\n"},
    {"\"beta\",", "\"beta,\n", "4:55: error: the closing quote of this string is missing [unexpected-end]\n"},
    {"\"beta\"", "\"sea\\light\\house\"",
     "4:59: error: no escape: double the backslash, or write \"/\" in a location [bad-escape]\n"},
    {"\"format\"", "\"for\\mat\"",
     "1:28: error: no escape: double the backslash, or write \"/\" in a location [bad-escape]\n"},
    {"\"2\"", "\"\\uD83Dx\"",
     "1:51: error: invalid \\u escape: four hexadecimal digits are needed, and a second \\u escape after a high "
     "surrogate [bad-unicode-escape]\n"},
    // Brackets. What follows one tells whether it is wrong, or another is missing.
    {"\"all\"}}]}}", "\"all\"}}}}",
     "3:80: error: a \"]\" is missing before this [expected-comma]\n3:25: note: this \"[\" isn't closed\n"},
    {"\"all\"}}]}}", "\"all\"}]}}",
     "3:79: error: a \"}\" is missing before this [expected-comma]\n3:26: note: this \"{\" isn't closed\n"},
    {"[]}}]}}", "[]}}}, \"$schema\": 1}}",
     "5:29: error: write \"]\" for this bracket [expected-comma]\n1:71: note: this \"[\" is open\n"},
    {"}}]}},", "}}]}}},",
     "3:83: error: a closing bracket too many: remove it [expected-comma]\n1:71: note: this \"[\" is open\n"},
    {"[{\"product_family\"", "[{\"product_family\": {\"family\": \"a\"}, {\"product_family\"",
     "3:62: error: a \"}\" is missing before this [expected-comma]\n3:26: note: this \"{\" isn't closed\n"},
    {"[]}}]}}", "[]}}]}}}", "5:32: error: text follows the document [text-after-document]\n"},
    {"[]}}]}}", "", "5:25: error: the text ends too early [unexpected-end]\n4:13: note: this \"{\" is never closed\n"},
    {"\"format\": \"1\"", "{\"format\": \"1\"",
     "1:24: error: a key must come before this bracket, or it is one too many [expected-value]\n"},
    {"\"2\"", "\"2\", \"base_product_x\": {\"a\": 1] 5",
     "1:80: error: expected \"}\" before this bracket [expected-comma]\n1:73: note: this \"{\" isn't closed\n"},
    {"\"2\"", std::string(256, '['),
     "1:305: error: arrays and objects are nested more than 256 deep [nesting-too-deep]\n"},
    // Objects and their keys.
    {"\"2\"", "{\"zqtype\": \"int8\", \"zqdata\": [1.5]}",
     "1:81: error: expected an integer as the element of a typed array [bad-typed-array]\n"},
    {"\"format\"", "\"zqdata\": [1.5], \"zqtype\": \"int8\", \"format\"",
     "1:24: info: \"zqdata\" isn't read [unknown-key]\n1:41: info: \"zqtype\" isn't read [unknown-key]\n1:57: error: "
     "expected an integer as the element of a typed array [bad-typed-array]\n"},
    {"{\"display_name\": \"Beta\", \"help_location\": \"beta\", \"short_name\": \"be\", \"basecode\": \"BE\",\n "
     "\"product_family_list\": []}",
     "{}",
     "4:13: error: \"product\" has no \"display_name\", \"help_location\", \"short_name\", \"basecode\" or "
     "\"product_family_list\" [missing-key]\n"},
    {"\"documentation_set\": {\"format\": \"1\"", "\"documentation_sets\": {\"format\": 1",
     "1:1: error: the document has no \"documentation_set\" [missing-key]\n1:2: warning: \"documentation_sets\" isn't "
     "read (did you mean \"documentation_set\"?) [near-key]\n1:35: error: \"format\" must be a string, and is a number "
     "[wrong-type]\n"},
    {"\"BE\"", "\"BE\", \"basecode\": 1, \"x\": 1, \"x\": 1, \"$schema\": 1, \"alt_shortname\": 1",
     "4:101: warning: \"basecode\" is dropped: the object has it already [duplicate-key]\n4:83: note: the first one is "
     "read\n4:116: info: \"x\" isn't read [unknown-key]\n4:124: warning: \"x\" is dropped: the object has it already "
     "[duplicate-key]\n4:116: note: the first one is read\n4:146: warning: \"alt_shortname\" isn't read (did you mean "
     "\"alt_short_name\"?) [near-key]\n"},
    // Products.
    {"\"beta\", \"short_name\": \"be\", \"basecode\": \"BE\"",
     "\"alpha\", \"short_name\": \" ak \", \"basecode\": \"AK\"",
     "4:78: warning: white space around the short name \"ak\" [blank-around-name]\n4:98: warning: \"AK\", \"ak\", "
     "\"alpha\" find this product, number 2 in the list, and no longer the earlier one [ambiguous-name]\n2:101: note: "
     "base code of \"Alpha Kit\", number 1 in the list\n2:83: note: short name of \"Alpha Kit\", number 1 in the "
     "list\n2:60: note: help location of \"Alpha Kit\", number 1 in the list\n"},
    {"\"be\", \"basecode\": \"BE\"", "\" \", \"basecode\": \"\"",
     "4:77: warning: the short name has no visible character [empty-name]\n4:94: warning: the base code is empty "
     "[empty-name]\n"},
    {"\"Beta\", \"help_location\": \"beta\", \"short_name\": \"be\", \"basecode\": \"BE\"",
     "\"\", \"help_location\": \" \", \"short_name\": \"\", \"basecode\": \"\\t\"",
     "4:13: warning: nothing can find this product: all its names are empty [all-names-empty]\n"},
    {"\"beta\"", "\"a/../../beta\"",
     "4:55: warning: the help location \"a/../../beta\" leads out of the data root [location-outside]\n"},
    {"\"beta\"", "\"/a\\\\b\\\\\\b\"",
     "4:55: warning: a help location is relative: write \"a\\b\\\\x08\" [location-outside]\n4:55: warning: a "
     "backslash in the help location: the separator is \"/\" [backslash]\n4:55: warning: a backslash that became a "
     "control character, such as \"\\t\": the separator is \"/\" [backslash]\n"},
    {"\"beta\", \"short_name\": \"be\"", "\"https://beta\", \"short_name\": \"../../../be\"",
     "4:55: warning: a help location is a folder below the data root, and no URL or drive [location-outside]\n4:85: "
     "warning: the short name \"../../../be\" leads out of the data root [short-name-outside]\n"},
    {"\"beta\", \"short_name\": \"be\"", "\"C:/beta\", \"short_name\": \"b/e\"",
     "4:55: warning: a help location is a folder below the data root, and no URL or drive [location-outside]\n4:80: "
     "warning: a short name is no path: it takes no \"/\" [short-name-form]\n"},
    {"\"beta\", \"short_name\": \"be\"", "\"./a//b/\", \"short_name\": \"be.properties\"",
     "4:55: warning: write this location as \"a/b\" [location-form]\n4:80: warning: a short name is no file name: "
     "remove \".properties\" [short-name-form]\n"},
    {"\"kits\"", "\"WebOnlyProduct\"",
     "3:56: warning: \"WebOnlyProduct\" isn't \"webonlyproducts\", so the product is one to install [near-webonly]\n"},
    // What other readers refuse.
    {"\"Beta\"", "\"Be\xFFta \xE9\"",
     "4:33: warning: the first of 2 bytes that aren't UTF-8: save the file as UTF-8 [invalid-utf8]\n"},
    {"\"Beta\"", "\"\x01\n\t\"",
     "4:30: warning: white space around the display name \"\\x01\" [blank-around-name]\n4:31: warning: a control "
     "character: write it as \\u0001 [control-character]\n4:32: warning: a line feed in a string: write it as \\n "
     "[control-character]\n5:1: warning: a tab in a string: write it as \\t [control-character]\n"},
    {"\"Beta\"", "\"\\uDC00 \\uD83D\\uDE00 \\uD83D\\u0041\"",
     "4:31: warning: half of a surrogate pair, which becomes U+FFFD [replaced-surrogate]\n4:51: warning: half of a "
     "surrogate pair, which becomes U+FFFD [replaced-surrogate]\n"},
    {"\"2\"", "\f\"2\", \"base_product_x\": [1e999, 007, -00]",
     "1:50: warning: form feed and vertical tab are no white space in JSON [not-rfc8259]\n1:75: warning: a number that "
     "no double holds [number-range]\n1:82: warning: a number with leading zeros [not-rfc8259]\n1:87: warning: a "
     "number with leading zeros [not-rfc8259]\n"},
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

// A part of the sound catalogue, what replaces it, and the pointers of the problems.
const Row s_pointers[] = {
    {"\"2\"", "\"2\", \"a~/\": [0, {\"b\\n\": \"\t\"}]", "/documentation_set/a~0~1 /documentation_set/a~0~1/1/b\n "},
    {"\"Beta\"", "\"\xFF\"", "/documentation_set/product_list/1/product/display_name "},
    {"\"2\"", "\"2\", \"$schema\": [{\"x\": True}]", "/documentation_set/$schema "},
    {"\"1\", \"release\": \"2\", \"product_list\": [\n{\"product\": {\"display_name\": \"Alpha Kit\"",
     "{{\n{\"product\": {\"display_name\": 1",
     "/documentation_set/format /documentation_set/product_list/0/product/display_name "},
};

TEST(Check, PointsToTheMember) {
    const Policy policy;
    for (const Row& row : s_pointers) {
        const Report report = examine("f", replaced(row), "", policy);
        std::string pointers;
        for (const Problem* problem : report.problems.kept()) {
            pointers += problem->pointer + ' ';
        }
        EXPECT_EQ(pointers, row.said);
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
