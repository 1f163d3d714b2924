#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "support/Host.hpp"

namespace {

// Arguments as typed into a shell, and the answer: standard output, standard error with "2| " before each line, and
// the exit status in brackets unless it is 0.
using Row = std::pair<std::string, std::string>;

// Runs $TYPED and writes its answer to $T/answer. TIME replaces any time of today in UTC, while
// local time is a day ahead.
const char* const s_script = R"(exec > "$T/answer"; IFS=; export TZ=LOC-24; day=$(date -u +%F)
{ eval "$TYPED"; } 2> $T/errors; end=$?
sed 's/^/2| /' $T/errors; [ $end = 0 ] || echo "[$end]"
sed -Ei "s/($day|$(date -u +%F))T..:..:..Z/TIME/" $T/answer)";

// The command in the folder of examples. "$T" is the folder of the test, in arguments and answers.
class Command : public testing::Test {
protected:
    void expect(const std::vector<Row>& rows) const {
        std::filesystem::current_path(EXAMPLES);
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

TEST_F(Command, DoesWhatItsOptionsSay) {
    const std::string names = "--help | grep -Eo '^  (--[a-z-]+|[A-Za-z]+ |[0-9]  [a-z]+)' | xargs";
    const std::string options = "--install-root --support-package-root --doc-root --doc-data-root --catalogue --log ";
    const std::string statuses = "0 done 1 failure 2 wrong 3 malformed 4 nothing\n";
    const std::string kinds = " --install-root '' 2>&1 > /dev/null | cut -c 22-28 | grep '^ [a-z]' | sort -u | xargs";
    const std::string home = std::filesystem::canonical(COMMAND).parent_path().parent_path();
    const std::string record = "2| TIME  error   doc_products_shared: VORLAN Root is empty\n";
    expect({
        {"roots", roots(home + "/help", home + "/help")},
        {"--version", "docproducts " VERSION "\n"},
        {names, "--help --version " + options + "roots list find " + statuses},
        {"list " + names, "--help " + options + "--all " + statuses},
        {"find " + names, "NAME --help " + options + statuses},
        {"--install-root vorlan roots --support-package-root none", roots("vorlan/help", "vorlan/help")},
        {"roots --support-package-root support-packages", roots("support-packages/help", "support-packages/help")},
        {"roots --doc-root 'some where' --install-root vorlan", roots("some where", "vorlan/help")},
        {"roots --doc-data-root $(printf '\\377/else') --install-root a", roots("a/help", "\\xff/else")},
        {"--doc-root a --doc-root b --doc-data-root c roots --doc-data-root d", roots("b", "d")},
        {"--install-root vorlan find QS | tail -n 2", "status\nhelp location           sundial\n"},
        {"find --install-root vorlan ledger | tail -n 1", "family                  almanacs\n"},
        {"roots --install-root ''", roots("help", "help") + record + record},
        {"roots --install-root '' --log trace --log off", roots("help", "help")},
        {"list --log note" + kinds, "error note\n"},
        {"list --log detail" + kinds, "detail error note\n"},
        {"list --log trace" + kinds, "detail enter error exit note\n"},
        {"list --install-root vorlan --log detail 2>&1 | grep vorlan/help/docset.json",
         "TIME  detail  doc_products_shared:   docsetJsonFile: vorlan/help/docset.json\n"},
        {"roots --install-root vorlan-redirected --log note 2>&1 | grep -o '.* redirected to'",
         "TIME  note    doc_products_shared:       Default docroot redirected to\n"},
    });
}

TEST_F(Command, ShowsAlikeProductsAndForeignBytes) {
    const std::string web = R"({"product_family": {"family": "webonlyproducts"}})";
    const std::string sea = R"({"product_family": {"family": "sea"}})";
    // Those that aren't installed differ from the next installed one in their families, location or short name alone.
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
        {"list --all --install-root vorlan --catalogue $T/alike.json | sed -n '2,8s/.*  //p' | xargs",
         "web-only web-only installed not found installed not found installed\n"},
        {"list --all --install-root vorlan --catalogue $T/odd.json",
         "Display name       Short name  Base code  Status  Location  On this machine\n"
         "\\x1b[1mA\\xc2\\x9f\u00A0  e\u0301           \\x1f       ~\\x7f   vorlan    installed\n"
         "\\x80-\\x0a\U0010FFFF\U00010000        \U0001D167            🦉         茶      é         not found\n"
         "1 of 2 products installed\n"},
        {"list --install-root \"$T\"/h* --catalogue $T/alike.json --log trace 2>&1 > /dev/null | LC_ALL=C "
         "sed -E 's/^[0-9TZ:-]+  [a-z]+ +doc_products_shared: [^[:cntrl:]]*$/record/' | sort -u",
         "record\n"},
        {"roots --install-root \"$T\"/h* --log note 2>&1 | grep -o 't docroot to .*'",
         "t docroot to \\x1b\\x00\\x7f\\xc2\\x85\\xff-\n"},
    });
}

TEST_F(Command, RefusesWithAStatusAndAReason) {
    m_host.write("c\x1B.json", "{}");
    std::filesystem::create_symlink("docset.json", m_host.folder() / "docset.json");  // leads to itself
    const std::string hint = "\n2| Run docproducts --help for more information.\n[2]\n";
    const std::string full = "2| Can't write to standard output: No space left on device\n[1]\n";
    expect({
        {"", "2| One of the commands roots, list and find is required" + hint},
        {"rot", "2| The following argument was not expected: rot" + hint},
        {"roots list", "2| The following argument was not expected: list" + hint},
        {"roots --log loud", "2| --log: loud not in {off,error,note,detail,trace}" + hint},
        {"find", "2| NAME is required" + hint},
        {"list --catalogue $(printf 'no\\033')", "2| --catalogue: File does not exist: no\\x1b" + hint},
        {"list --catalogue /dev/null", "2| --catalogue: No regular file: /dev/null" + hint},
        {"list --doc-root a --doc-data-root $T",
         "2| TIME  error   doc_products_shared: $T/docset.json does not exist\n"
         "2| There is no catalogue. Looked at:\n"
         "2| preferred file             (none named by --catalogue)\n"
         "2| in the documentation root  a/docset.json\n"
         "2| in the data root           $T/docset.json\n[4]\n"},
        {"--install-root vorlan find -- -$(printf '\\n\\302\\233')",
         "2| No product has the name \"-\\x0a\\xc2\\x9b\"\n[4]\n"},
        {"find x --log trace --catalogue \"$T\"/c*.json 2> $T/all; echo $?; tail -n 2 $T/all",
         "3\ninvalid conversion: undefined to object\nError while parsing $T/c\\x1b.json\n"},
        {"list --install-root vorlan > /dev/full", full},
        {"--help > /dev/full", full},
        {"roots --doc-data-root $(printf %09999d 1) > /dev/full", full},
        {"roots >&-", "2| Can't write to standard output: Bad file descriptor\n[1]\n"},
    });
}

}  // namespace
