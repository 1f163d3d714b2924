#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include "json/ParserException.hpp"
#include "json/parse.hpp"

using namespace foundation::json;

namespace {

// The catalogue of the examples, with its products so many times.
std::string catalogue(int times) {
    std::ifstream file(CATALOGUE);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    const auto first = text.find('[') + 1, last = text.rfind(']');
    const std::string products = text.substr(first, last - first);
    std::string result = text.substr(0, last);
    for (int i = 1; i < times; ++i) {
        result += "," + products;
    }
    return result + text.substr(last, text.rfind('}') + 1 - last);
}

// Whether the text is accepted; a refused one is refused at a place in it.
bool isAccepted(const std::string& text) {
    try {
        parse(text, 0);
        return true;
    } catch (const ParserException& e) {
        EXPECT_LE(e.offset(), text.size());
        const auto place = text.begin() + static_cast<std::ptrdiff_t>(e.offset());
        EXPECT_EQ(e.line(), 1 + static_cast<std::size_t>(std::count(text.begin(), place, '\n')));
        EXPECT_LE(e.column(), e.offset());
        return false;
    }
}

TEST(Damage, CutAnywhereATextIsRefused) {
    const std::string whole = catalogue(3);
    ASSERT_GE(whole.size(), std::size_t{16} << 10U);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(isAccepted(whole.substr(0, length))) << length;
    }
    EXPECT_TRUE(isAccepted(whole));
}

TEST(Damage, AnyBitOfATextMayFlip) {
    std::string text = catalogue(1);
    ASSERT_GE(text.size(), std::size_t{4} << 10U);
    long accepted = 0, refused = 0;
    for (std::size_t bit = 0; bit < std::size_t{32} << 10U; ++bit) {
        const auto flip = [&] { text[bit / 8] = static_cast<char>(text[bit / 8] ^ (1 << bit % 8)); };
        flip();
        ++(isAccepted(text) ? accepted : refused);
        flip();
    }
    EXPECT_GE(accepted, 5000);
    EXPECT_GE(refused, 5000);
}

}  // namespace
