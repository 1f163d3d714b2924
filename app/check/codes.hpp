#pragma once

#include <array>
#include <string_view>

namespace app::check {

// An error makes the library refuse the catalogue. After a warning, a user of the catalogue is misled. An info is worth
// knowing.
enum class Severity { error, warning, info };

inline constexpr std::array severities = {Severity::error, Severity::warning, Severity::info};

constexpr const char* nameOf(Severity severity) {
    constexpr std::array s_names = {"error", "warning", "info"};
    return s_names.at(static_cast<std::size_t>(severity));
}

// What can be wrong with a catalogue.
struct Code {
    std::string_view name;
    Severity severity;
    std::string_view summary;      // a phrase without a full stop
    std::string_view explanation;  // what it means, an example and how to mend it: whole lines
};

// clang-format off
inline constexpr std::array codes = {
    Code{"expected-value", Severity::error, "no value or key where one must be",
         "A value starts with a double quote, a bracket, a digit, \"-\", true, false or null, and a key with a double\n"
         "quote. A comma after the last item, a comment and a blank beyond ASCII are refused too.\n"
         "    {\"status\": current}      write \"current\"\n"},
    Code{"expected-comma", Severity::error, "no comma or closing bracket after an item",
         "Members of an object and elements of an array are separated by commas.\n"
         "    {\"family\": \"sea\" \"group\": \"Signals\"}      put a comma between the two\n"
         "If the fault isn't visible, look at the string before it: its closing quote may be missing.\n"},
    Code{"expected-colon", Severity::error, "no colon after a key",
         "    {\"status\" \"current\"}      write \"status\": \"current\"\n"},
    Code{"unexpected-end", Severity::error, "the text or a string doesn't end where it must",
         "A closing bracket or quote is missing, or the file is empty or cut off.\n"},
    Code{"bad-escape", Severity::error, "no escape after a backslash",
         "Only \" \\ / b f n r t u may follow a backslash. Double it to get the character itself.\n"
         "    \"sea\\lighthouse\"      write \"sea/lighthouse\"\n"},
    Code{"bad-unicode-escape", Severity::error, "an incomplete \\u escape",
         "\\u takes four hexadecimal digits. A character beyond U+FFFF takes two such escapes, a surrogate pair.\n"},
    Code{"bad-number", Severity::error, "a malformed number",
         "A number is digits, with a decimal point between digits and an exponent if needed.\n"
         "    .5      write 0.5\n"},
    Code{"bad-typed-array", Severity::error, "a typed array that holds something else than integers",
         "An object whose \"zqtype\" names an integer type is a typed array, and its \"zqdata\" must be a flat array of\n"
         "integers. A catalogue needs none.\n"},
    Code{"nesting-too-deep", Severity::error, "more than 256 arrays and objects within each other",
         "The library reads 256 levels. A catalogue needs 9.\n"},
    Code{"text-after-document", Severity::error, "text after the end of the document",
         "A file holds one JSON document. Often a closing bracket too many ends it early.\n"},
    Code{"missing-key", Severity::error, "a required key is absent",
         "The library reads a catalogue only if every product has every required key.\n"
         "    {\"product\": {\"display_name\": \"Alpha Kit\", ...}}      add \"short_name\" and the others\n"},
    Code{"wrong-type", Severity::error, "a value of another type than the key takes",
         "    \"release\": 7.2      write \"release\": \"7.2\"\n"
         "null is a type of its own: leave an optional key out instead.\n"},
    Code{"near-key", Severity::warning, "a key that isn't read but is much like one that is",
         "    \"alt_shortname\": \"ak\"      write \"alt_short_name\"\n"},
    Code{"unknown-key", Severity::info, "a key that isn't read",
         "The library ignores it. \"$schema\", \"description\" and keys that start with \"base_product_\" aren't reported.\n"},
    Code{"duplicate-key", Severity::warning, "a key that the object has already",
         "The first of the two is read and the later one dropped. Other readers keep the later one. Remove one.\n"},
    Code{"ambiguous-name", Severity::warning, "a name that leads to two products",
         "Products are found by base code, short name, help location, alternative short name and display name. Of\n"
         "products that share a name the last has it. Give each its own.\n"},
    Code{"empty-name", Severity::warning, "a name without a visible character",
         "Nothing finds the product by it. Leave out an \"alt_short_name\" that is empty.\n"},
    Code{"blank-around-name", Severity::warning, "white space around a name",
         "It is ignored when a product is looked up, but it is part of the paths made of the name and is shown to users.\n"
         "    \"short_name\": \"lighthouse \"      write \"lighthouse\"\n"},
    Code{"all-names-empty", Severity::warning, "a product without a name",
         "All five names are empty, so nothing finds the product.\n"},
    Code{"location-outside", Severity::warning, "a help location that isn't one in the data root",
         "Locations are relative to the data root, and \"..\" must not lead out of it.\n"
         "    \"help_location\": \"/opt/help/sea\"      write \"sea\"\n"},
    Code{"location-form", Severity::warning, "a help location in another form than the shortest",
         "Products are found by their help location as it is written, so each should be written in one way.\n"
         "    \"help_location\": \"./sea//lighthouse/\"      write \"sea/lighthouse\"\n"},
    Code{"short-name-outside", Severity::warning, "a short name that leads to a file outside the data root",
         "The file docCatalog/products/<short name>.properties proves that the product is installed, so a short name\n"
         "must not lead out of the data root.\n"},
    Code{"short-name-form", Severity::warning, "a short name that is a path or the name of a file",
         "The file docCatalog/products/<short name>.properties proves that the product is installed.\n"
         "    \"short_name\": \"lighthouse.properties\"      write \"lighthouse\"\n"},
    Code{"backslash", Severity::warning, "a backslash in a help location",
         "The separator is \"/\" on every system.\n"
         "    \"help_location\": \"sea\\\\lighthouse\"      write \"sea/lighthouse\"\n"},
    Code{"near-webonly", Severity::warning, "a family much like \"webonlyproducts\"",
         "Only the exact name marks a product that is documented on the web and never installed.\n"},
    Code{"invalid-utf8", Severity::warning, "bytes that aren't UTF-8",
         "The library keeps them, other readers refuse the file. Save it as UTF-8.\n"},
    Code{"control-character", Severity::warning, "a control character within a string",
         "The library keeps it, other readers refuse the file. Write \\t for a tab, \\n for a line feed, \\u001b for an\n"
         "escape; or remove it.\n"},
    Code{"replaced-surrogate", Severity::warning, "an escaped surrogate without its other half",
         "It becomes U+FFFD, the replacement character. A character beyond U+FFFF takes two escapes.\n"
         "    \"\\ud83d\"      write \"\\ud83e\\udd89\", or the character itself\n"},
    Code{"number-range", Severity::warning, "a number that no double holds",
         "It becomes an infinity or zero, and other readers refuse it. A catalogue needs no numbers.\n"},
    Code{"not-rfc8259", Severity::warning, "a form that JSON doesn't have",
         "The library takes leading zeros, and form feed and vertical tab as white space; other readers refuse them.\n"},
    Code{"not-installed", Severity::info, "neither file that proves a product exists",
         "A product is installed if <data root>/<help location>/doccenter.properties exists, or\n"
         "<data root>/docCatalog/products/<short name>.properties does.\n"},
    Code{"proof-is-folder", Severity::warning, "what proves a product is no regular file",
         "Anything of that name counts, but it is meant to be a file.\n"},
    Code{"other-case", Severity::warning, "a proof whose name differs in case",
         "The file is found on systems that ignore case, and not on others. Use the same letters in both places.\n"},
    Code{"shadowed-catalogue", Severity::info, "a catalogue that isn't read",
         "The documentation root has a docset.json, so the one in the data root isn't read.\n"},
};
// clang-format on

// The code of that name; null if there is none.
constexpr const Code* findCode(std::string_view name) {
    for (const Code& code : codes) {
        if (code.name == name) {
            return &code;
        }
    }
    return nullptr;
}

// The same for a name that the compiler checks.
consteval const Code& code(std::string_view name) {
    return *findCode(name);
}

}  // namespace app::check
