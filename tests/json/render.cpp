#include "json/render.hpp"

#include <array>
#include <boost/variant/apply_visitor.hpp>
#include <charconv>
#include <sstream>
#include <utility>

using namespace foundation::json;

namespace {

struct Render {
    using result_type = void;
    std::ostream& out;

    void operator()(Undefined) const { out << "undefined"; }
    void operator()(Null) const { out << "null"; }
    void operator()(bool boolean) const { out << (boolean ? "true" : "false"); }
    void operator()(long long number) const { out << 's' << number; }
    void operator()(unsigned long long number) const { out << 'u' << number; }
    void operator()(const std::string& text) const { out << '"' << text << '"'; }

    void operator()(double number) const {
        std::array<char, 32> digits{};
        out.write(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr - digits.data());
    }

    void operator()(const std::vector<Value>& elements) const {
        list("[", elements, "]", [](const Value& element) { return render(element); });
    }
    void operator()(const std::map<std::string, Value>& members) const {
        list("{", members, "}",
             [](const auto& member) { return '"' + member.first + "\":" + render(member.second); });
    }

    template <class Items, class Show>
    void list(const char* opening, const Items& items, const char* closing, Show show) const {
        const char* separator = opening;
        for (const auto& item : items) {
            out << std::exchange(separator, ",") << show(item);
        }
        out << (items.empty() ? opening : "") << closing;
    }
};

}  // namespace

std::string render(const Value& value) {
    std::ostringstream out;
    boost::apply_visitor(Render{out}, value.storage());
    return out.str();
}
