#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "support/Host.hpp"

namespace {

// Arguments as typed into a shell, and the answer: standard output, standard error with "2| " before each line, and
// the exit status in brackets unless it is 0.
using Row = std::pair<std::string, std::string>;

// Runs $TYPED and writes its answer to $T/answer. TIME replaces each time of today in UTC; local time is a day ahead,
// so it isn't replaced. An empty VORLAN_ROOT counts as unset.
const char* const s_script = R"(exec > "$T/answer"; IFS=; export TZ=LOC-24 VORLAN_ROOT=; day=$(date -u +%F)
{ eval "$TYPED"; } 2> $T/errors; end=$?
sed 's/^/2| /' $T/errors; [ $end = 0 ] || echo "[$end]"
sed -Ei "s/($day|$(date -u +%F))T..:..:..Z/TIME/" $T/answer)";

// Runs the command in the folder of examples. "$T" is the folder of the test, in arguments and answers.
class Command : public testing::Test {
protected:
    void expect(const std::vector<Row>& rows, const char* folder = EXAMPLES) const {
        std::filesystem::current_path(folder);
        setenv("T", m_host.folder().c_str(), 1);
        for (const auto& [arguments, answer] : rows) {
            setenv("TYPED", ("'" COMMAND "' " + arguments).c_str(), 1);
            EXPECT_EQ(std::system(s_script), 0) << arguments;
            std::ifstream file(m_host.folder() / "answer");
            EXPECT_EQ(m_host.shorten({std::istreambuf_iterator<char>(file), {}}), answer) << arguments;
        }
    }

    support::Host m_host;
};

const auto roots = [](const std::string& root, const std::string& dataRoot) {
    return "documentation root  " + root + "\ndata root           " + dataRoot + "\n";
};

// The same if neither exists.
const auto noRoots = [](const std::string& root, const std::string& dataRoot) {
    return roots(root, dataRoot) + "2| The documentation root " + root + " does not exist\n2| The data root " +
           dataRoot + " does not exist\n[4]\n";
};

TEST_F(Command, DoesWhatItsOptionsSay) {
    const std::string names = "--help | grep -Eo '^  (-., *)?(--[a-z-]+|[A-Za-z]+ |[0-9]  [a-z]+)' | xargs";
    const std::string options =
        "--install-root --support-package-root --doc-root --doc-data-root --catalogue --log --color ";
    const std::string statuses = "0 done 1 failure 2 wrong 3 malformed 4 nothing\n";
    const std::string kinds = " --install-root a 2>&1 > /dev/null | cut -c 22-28 | grep '^ [a-z]' | sort -u | xargs";
    const auto folder = std::filesystem::path(COMMAND).parent_path();
    const std::string home = std::filesystem::weakly_canonical(folder / INSTALL_ROOT);
    expect({
        {"roots", noRoots(home + "/help", home + "/help")},
        {"-V", "docproducts " VERSION "\n"},
        {names, "-h,--help -V,--version " + options + "roots list find explain check " + statuses},
        {"list " + names, "-h,--help " + options + "--json --all --names -0,--null " + statuses},
        {"find " + names, "NAME -h,--help " + options + "--json --path -0,--null " + statuses},
        {"-V > $T/all; VORLAN_ROOT=vorlan " COMMAND " roots", roots("vorlan/help", "vorlan/help")},
        {"-V > $T/all; VORLAN_ROOT=a " COMMAND " roots --install-root vorlan", roots("vorlan/help", "vorlan/help")},
        {"roots --support-package-root support-packages", roots("support-packages/help", "support-packages/help")},
        {"roots --doc-root 'some where' --install-root vorlan",
         roots("some where", "vorlan/help") + "2| The documentation root some where does not exist\n[4]\n"},
        {"--doc-root a --doc-root b --doc-data-root c roots --doc-data-root $(printf '\\377')", noRoots("b", "\\xff")},
        {"find --install-root vorlan ledger | tail -n 1", "found by                alternative short name\n"},
        {"find --install-root vorlan vorlan | tail -n 1", "found by                short name, help location\n"},
        {"list --install-root a --log trace --log off 2>&1 | head -n 1", "There is no catalogue. Looked at:\n"},
        {"list --log note" + kinds, "error note\n"},
        {"list --log detail" + kinds, "detail error note\n"},
        {"list --log trace" + kinds, "detail enter error exit note\n"},
        {"list --install-root vorlan --log detail 2>&1 | grep vorlan/help/docset.json",
         "TIME  detail  doc_products_shared:   docsetJsonFile: vorlan/help/docset.json\n"},
    });
    m_host.write("own/support-packages/help/index.html");
    expect({{"roots --install-root none --support-package-root a", noRoots("none/help", "none/help")},
            {"roots --install-root $T/own 2> /dev/null | head -n 1",
             "documentation root  $T/own/support-packages/help\n"}},
           EXAMPLES "/vorlan");  // its help/index.html must not be found
}

TEST_F(Command, TellsSimilarProductsApartAndEscapesForeignBytes) {
    const std::string web = R"({"product_family": {"family": "webonlyproducts"}})";
    const std::string sea = R"({"product_family": {"family": "sea"}})";
    // Each product that isn't installed differs from the next installed one only in its families, location or short
    // name.
    support::withCatalogue("alike.json", {{"", "vorlan", "", "", "", sea + "," + sea + "," + web},
                                          {"", "vorlan", "", "", "", sea + "," + web},
                                          {"", "vorlan", "", "", "", sea + "," + sea},
                                          {"", "none", "same", "", "", ""},
                                          {"", "vorlan", "same", "", "", ""},
                                          {"", "none", "none", "", "", ""},
                                          {"", "none", "kiln", "", "", ""}})(m_host);
    // Control characters, broken UTF-8, and characters of no, one, two and unknown columns.
    support::withCatalogue("odd.json", {{"\x1B[1mA\xC2\x9F\u00A0", "vorlan", "e\u0301", "\x1F", "~\x7F", ""},
                                        {"\x80-\n\U0010FFFF\U00010000", "é", "\U0001D167", "🦉", "茶", ""}})(m_host);
    m_host.write("h\x1B\r/help/docroot.txt", std::string("\n\x1B\0\x7F\xC2\x85\xFF-", 8));
    expect({
        {"list --all --install-root vorlan --catalogue $T/alike.json | grep -Eo '  (installed|not found|web-only)' | "
         "xargs",
         "web-only web-only installed not found installed not found installed\n"},
        {"list --all --install-root vorlan --catalogue $T/odd.json",
         "Display name       Short name  Base code  Status  Location  State      Reason\n"
         "\\x1b[1mA\\xc2\\x9f\u00A0  e\u0301           \\x1f       ~\\x7f   vorlan    installed\n"
         "\\x80-\\x0a\U0010FFFF\U00010000        \U0001D167            🦉         茶      é         not found  no "
         "doccenter.properties in "
         "vorlan/help/é, no \U0001D167.properties in vorlan/help/docCatalog/products\n"
         "1 of 2 products installed\n"},
        {"list --install-root \"$T\"/h* --catalogue $T/alike.json --log trace 2>&1 > /dev/null | LC_ALL=C "
         "sed -E 's/^[0-9TZ:-]+  [a-z]+ +doc_products_shared: [^[:cntrl:]]*$/record/' | sort -u",
         "record\n"},
        {"roots --install-root \"$T\"/h* --log note 2>&1 | grep -o 't docroot to .*'",
         "t docroot to \\x1b\\x00\\x7f\\xc2\\x85\\xff-\n"},
    });
}

// Headings are bold and what is missing is dimmed. A table is cut only to fit a terminal.
TEST_F(Command, ColorsAndFitsOnATerminal) {
    const auto onTerminal = [](const std::string& environment, const std::string& options) {
        return "-V > $T/all; TERM=xterm " + environment + " script -qec \"stty cols 60; '" COMMAND "' list --all " +
               options + " --install-root vorlan\" /dev/null | sed -n '1p;7p;15p'";
    };
    const std::string heads = "Displ…  Short …  Base c…  Status   Locati…  State    Reason";
    const std::string here = "茶園…   teagar…  TG       current  teagar…  instal…\r\n";
    const std::string missing = "Seed …  seedex…  SX       current  seedex…  web-on…  in the…";
    const std::string plain = heads + "\r\n" + here + missing + "\r\n";
    expect({
        {onTerminal("", ""), "\x1B[1m" + heads + "\x1B[0m\r\n" + here + "\x1B[2m" + missing + "\x1B[0m\r\n"},
        {onTerminal("NO_COLOR=1", ""), plain},
        {onTerminal("TERM=dumb", ""), plain},
        {onTerminal("", "--color never"), plain},
        {"roots --color always --install-root vorlan --doc-root none 2> /dev/null",
         "\x1B[2mdocumentation root  none\x1B[0m\ndata root           vorlan/help\n[4]\n"},
    });
}

TEST_F(Command, ChecksCatalogues) {
    m_host.write("w.json", R"({"documentation_set": {"format": "", "format": 1, "release": "", "product_list": []}})");
    m_host.write("e.json", "{}");
    std::filesystem::copy(m_host.folder() / "w.json", m_host.folder() / "docset.json");
    const std::string clean = ": 0 errors, 0 warnings, 0 infos in 0 products (files not looked for)\n";
    const std::string shadowed = "vorlan/help/docset.json isn't read, because this catalogue is [shadowed-catalogue]\n";
    expect({
        {"check --install-root vorlan | tail -n 1",
         "vorlan/help/docset.json: 0 errors, 0 warnings, 4 infos in 15 products\n"},
        {"check $T/w.json > $T/all", ""},
        {"check --strict $T/w.json > $T/all", "[3]\n"},
        {"check --error duplicate-key $T/w.json > $T/all", "[3]\n"},
        {"check --strict --ignore duplicate-key $T/w.json", "$T/w.json" + clean},
        {"check --ignore missing-key",
         "2| --ignore: missing-key is an error, which can't be ignored\n"
         "2| Run docproducts --help for more information.\n[2]\n"},
        {"check --max 1 --ignore duplicate-key none $T/e.json - < $T/w.json",
         "$T/e.json:1:1: error: the document has no \"documentation_set\" [missing-key]\n    1 | {}\n      | ^\n"
         "$T/e.json: 1 error, 0 warnings, 0 infos in 0 products (files not looked for)\n-" +
             clean + "2| Can't read none: does not exist\n[3]\n"},
        {"check --doc-root $T --install-root vorlan | head -n 1", "$T/docset.json:1:1: info: " + shadowed},
        {"check --install-root none vorlan/help/docset.json --no-files | tail -n 1",
         "vorlan/help/docset.json: 0 errors, 0 warnings, 2 infos in 15 products (files not looked for)\n"},
        {"check --strict --max 1 --format json $T/w.json | head -n 4",
         "{\n  \"schema_version\": 1,\n  \"command\": \"check\",\n  \"ok\": false,\n"},
        {"check --format sarif none | grep Successful",
         "          \"executionSuccessful\": false,\n2| Can't read none: does not exist\n"},
        {"check - < $T", "2| Can't read -: Is a directory\n[1]\n"},
        {"check --max -1", "2| --max: Must be a whole number\n2| Run docproducts --help for more information.\n[2]\n"},
        {"check --explain near-key | head -n 1",
         "near-key: warning, a key that isn't read but is much like one that is\n"},
        {"check --install-root none 2> $T/all", "[4]\n"},
    });
}

TEST_F(Command, ExplainsItsAnswers) {
    support::withCatalogue("same.json",
                           {{"First", "vorlan", "a", "x", "", ""}, {"x", "none", "b", "c", "", ""}})(m_host);
    m_host.write("bad.json", "{");
    m_host.write("own/help/docroot.txt", " none\n");
    expect({
        {"explain vorlan --install-root vorlan --doc-root shared-documentation --catalogue vorlan/help/docset.json",
         "documentation root: shared-documentation\n"
         "  1. setting DocRoot (--doc-root): taken\n"
         "       says \"shared-documentation\"\n"
         "  2. help in the support-package root: not asked\n"
         "  3. help/docroot.txt in the install root: not asked\n"
         "  4. help in the install root: not asked\n"
         "data root: shared-documentation\n"
         "  1. setting DocDataRoot (--doc-data-root): not set\n"
         "  2. documentation root: taken\n"
         "       shared-documentation/docCatalog/dataroot.txt exists\n"
         "  3. help in the install root: not asked\n"
         "catalogue: vorlan/help/docset.json\n"
         "  1. --catalogue: taken\n"
         "       vorlan/help/docset.json exists\n"
         "  2. docset.json in the documentation root: not asked\n"
         "  3. docset.json in the data root: not asked\n"
         "product: VORLAN\n"
         "  \"vorlan\" is its short name, help location\n"
         "  installed: shared-documentation/vorlan/doccenter.properties exists\n"},
        {"explain --install-root $T/own --support-package-root support-packages/.. | head -n 16",
         "documentation root: $T/own/help\n"
         "  1. setting DocRoot (--doc-root): not set\n"
         "  2. help in the support-package root: not taken\n"
         "       support-packages/.. exists\n"
         "       support-packages/../help/index.html doesn't exist\n"
         "       support-packages/../help/documentation-center.html doesn't exist\n"
         "  3. help/docroot.txt in the install root: not taken\n"
         "       says \"none\"\n"
         "       $T/own/help/docroot.txt exists\n"
         "       $T/own/help/none doesn't exist\n"
         "  4. help in the install root: taken\n"
         "data root: $T/own/help\n"
         "  1. setting DocDataRoot (--doc-data-root): not set\n"
         "  2. documentation root: not taken\n"
         "       $T/own/help/docCatalog/dataroot.txt doesn't exist\n"
         "  3. help in the install root: taken\n"
         "2| TIME  error   doc_products_shared: $T/own/help/docset.json does not exist\n"
         "2| There is no catalogue. Looked at:\n"
         "2| preferred file             (none named by --catalogue)\n"
         "2| in the documentation root  $T/own/help/docset.json\n"
         "2| in the data root           $T/own/help/docset.json\n"},
        {"explain x --install-root vorlan --catalogue $T/same.json | tail -n 4",
         "product: x\n  \"x\" is its display name\n"
         "  not found: no doccenter.properties in vorlan/help/none, no b.properties in "
         "vorlan/help/docCatalog/products\n"
         "  \"x\" is also the base code of First, which comes earlier and so isn't found by it\n"},
        {"explain SX --install-root vorlan | tail -n 1", "  web-only: in the family webonlyproducts\n"},
        {"explain sx --install-root vorlan > $T/all",
         "2| No product has the name \"sx\" (did you mean \"SX\"?)\n[4]\n"},
        {"explain SX --install-root vorlan --catalogue $T/bad.json > $T/all 2>&1", "[3]\n"},
        {"explain SX --install-root vorlan --doc-root none > $T/all", ""},
        {"explain --install-root vorlan --doc-root none > $T/all",
         "2| The documentation root none does not exist\n[4]\n"},
    });
}

TEST_F(Command, AnswersScripts) {
    support::withCatalogue("raw.json", {{"", " \x1B\n", "s", "b", " ", ""}, {"", "", "s", "", "", ""}})(m_host);
    expect({
        {"roots --path --doc-root $(printf '\\377\\033') --install-root vorlan 2> $T/all | od -An -c | xargs",
         "377 033 n v o r l a n / h e l p n\n"},
        {"find s --path -0 --catalogue $T/raw.json --install-root vorlan | od -An -c | xargs",
         "v o r l a n / h e l p / 0\n"},
        {"find b --path --catalogue $T/raw.json --doc-data-root /", "// \x1B\n\n"},
        {"list --names --catalogue $T/raw.json --install-root vorlan", "b\ns\n"},
        {"list --names -0 --install-root support-packages | od -An -c | xargs",
         "B L 0 b a r o m e t e r 0 W L 0 w i n d v a n e 0 B R 0 b u o y r a d i o 0\n"},
        {"find x --json --install-root vorlan | tr -d '\\n '",
         R"({"schema_version":1,"command":"find","ok":false,"status":4,"error":"Noproducthasthename\"x\"","catalogue":null,)"
         R"("product":null,"found_by":null}2| No product has the name "x")"
         "\n"},
        {"list -0", "2| --null requires --names\n2| Run docproducts --help for more information.\n[2]\n"},
    });
}

// A cell wider than 60 columns doesn't widen its column. A list needs at most twice the memory of a look-up.
TEST_F(Command, ListsLongCells) {
    std::vector<support::Product> products(1000, {"", "none", "", "", "", ""});
    products[0] = {std::string(61, 'x'), "vorlan", "s", "", "", ""};
    products[1] = {"n", "vorlan", std::string(60, 'y'), "", "", ""};
    products[2] = {std::string(100'000, '\x01'), "none", "found", "", "", ""};
    support::withCatalogue("long.json", products)(m_host);
    const auto expectPeak = [&](const Row& row) {
        expect({row});
        rusage usage{};
        getrusage(RUSAGE_CHILDREN, &usage);
        return usage.ru_maxrss;
    };
    const std::string catalogue = " --install-root vorlan --catalogue $T/long.json", blanks(50, ' '), gap(21, ' ');
    const long built = expectPeak({"find found" + catalogue + " | tail -n 1", "found by                short name\n"});
    const long listed = expectPeak(
        {"list" + catalogue, "Display name  Short name" + blanks + "  Base code  Status  Location\n" + products[0][0] +
                                 "  s" + blanks + "         " + gap + "vorlan\nn             " + products[1][2] + gap +
                                 "vorlan\n2 of 1000 products installed\n"});
    EXPECT_LE(listed, 2 * built);
    EXPECT_LE(expectPeak({"list --all" + catalogue + " | wc -c", "611002\n"}), 2 * built);
}

// First drops the privilege to read any file, which root has.
TEST_F(Command, ReadsOnlyReadableRegularFiles) {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
    m_host.write("x\x1B/help/docset.json/");
    m_host.write("b/help/docroot.txt/");
    m_host.write("c.json", "{}");
    std::filesystem::permissions(m_host.folder() / "c.json", std::filesystem::perms::none);
    std::filesystem::create_symlink("/dev/zero", m_host.folder() / "docset.json");
    expect({
        {"list --install-root \"$T\"/x*", "2| Can't read $T/x\\x1b/help/docset.json: is a folder\n[1]\n"},
        {"roots --install-root $T/b", "2| Can't read $T/b/help/docroot.txt: is a folder\n[1]\n"},
        {"roots --install-root $T/b --doc-root $T", roots("$T", "$T/b/help")},
        {"find x --catalogue $T/c.json", "2| Can't read $T/c.json: permission denied\n[1]\n"},
        {"list --doc-root $T", "2| Can't read $T/docset.json: is not a regular file\n[1]\n"},
        {"explain x --doc-root $T | tail -n 5",
         "catalogue: $T/docset.json\n  1. --catalogue: not set\n  2. docset.json in the documentation root: taken\n"
         "       $T/docset.json exists\n  3. docset.json in the data root: not asked\n"
         "2| Can't read $T/docset.json: is not a regular file\n"},
        {"explain --install-root $T/b | sed -n '7,11p'",
         "  3. help/docroot.txt in the install root: not taken\n       $T/b/help/docroot.txt exists\n"
         "  4. help in the install root: not asked\ndata root: none\n"
         "  1. setting DocDataRoot (--doc-data-root): not asked\n"
         "2| Can't read $T/b/help/docroot.txt: is a folder\n"},
    });
}

TEST_F(Command, FailsWithAStatusAndAReason) {
    m_host.write("c\x1B.json", "{}");
    m_host.write("forged.json", "\t{\t\"\u8336\x1B[2K\r2026-11-23\" 1");
    std::filesystem::create_symlink("docset.json", m_host.folder() / "docset.json");  // leads to itself
    const std::string hint = "\n2| Run docproducts --help for more information.\n[2]\n";
    const std::string unknown = "2| No product has the name \"";
    const std::string full = "2| Can't write to standard output: No space left on device\n[1]\n";
    expect({
        {"", "2| One of the commands roots, list, find, explain and check is required" + hint},
        {"lits", "2| The argument was not expected: lits (did you mean \"list\"?)" + hint},
        {"list --catalog=odd",
         "2| The argument was not expected: --catalog=odd (did you mean \"--catalogue\"?)" + hint},
        {"roots --support-package-root ''", "2| --support-package-root: Must not be empty" + hint},
        {"list --install-root= --all", "2| --install-root: Must not be empty" + hint},
        {"list --catalogue $(printf 'no\\033')", "2| --catalogue: File does not exist: no\\x1b" + hint},
        {"list --catalogue /dev/null", "2| --catalogue: Not a regular file: /dev/null" + hint},
        {"list --doc-root a --doc-data-root $T",
         "2| TIME  error   doc_products_shared: $T/docset.json does not exist\n"
         "2| There is no catalogue. Looked at:\n"
         "2| preferred file             (none named by --catalogue)\n"
         "2| in the documentation root  a/docset.json\n"
         "2| in the data root           $T/docset.json\n[4]\n"},
        {"--install-root vorlan find -- -$(printf '\\n\\302\\233')", unknown + "-\\x0a\\xc2\\x9b\"\n[4]\n"},
        {"find \u061C\u200D\u200E\u200F\u2027\u2028\u202E\u202F\u2065\u2066\u2069\u206A\uFEFF --install-root vorlan",
         unknown + "\\xd8\\x9c\u200D\\xe2\\x80\\x8e\\xe2\\x80\\x8f\u2027\\xe2\\x80\\xa8\\xe2\\x80\\xae\u202F\u2065"
                   "\\xe2\\x81\\xa6\\xe2\\x81\\xa9\u206A\\xef\\xbb\\xbf\"\n[4]\n"},
        {"find lg --install-root vorlan", unknown + "lg\" (did you mean \"LK\", \"TG\" or \"HG\"?)\n[4]\n"},
        {"find 'KILN CONTORLS' --install-root vorlan",
         unknown + "KILN CONTORLS\" (did you mean \"Kiln Control\"?)\n[4]\n"},
        {"list --catalogue $T/forged.json",
         "2| JSON ParserException (E0018): Expected \":\" after a key (Line 1, Column 24)\n"
         "2| \t\\x09{\\x09\"\u8336\\x1b[2K\\x0d2026-11-23\" 1\n2| \t                                   ^\n"
         "2| Error while parsing $T/forged.json\n2| The command check says everything that is wrong with it.\n[3]\n"},
        {"find x --log trace --catalogue \"$T\"/c*.json 2> $T/all; echo $?; tail -n 3 $T/all | head -n 2",
         "3\ninvalid conversion: undefined to object\nError while parsing $T/c\\x1b.json\n"},
        {"list --install-root vorlan > /dev/full", full},
        {"roots --doc-data-root $(printf %09999d 1) > /dev/full", full},
        {"roots >&-", "2| Can't write to standard output: Bad file descriptor\n[1]\n"},
    });
}

}  // namespace
