#include "explain.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "host.hpp"
#include "options.hpp"
#include "output.hpp"
#include "product.hpp"
#include "roots.hpp"
#include "terminal_text.hpp"

// The library's own calls, which the host has recorded, are put into words here. Nothing is looked at a second time.
namespace app {

namespace {

using Kind = HostCall::Kind;

// Where something may come from.
struct Source {
    const char* code;  // for machines
    const char* name;
    bool isAsked = false;
    std::string text = {};  // what a setting or a redirect says
    std::vector<LookedAt> lookedAt = {};
};

// What has several sources, which are asked in order. The last one asked has it, unless its path is empty.
struct Explained {
    const char* key;  // of the answer
    const char* name;
    std::string path;
    bool exists;
    std::vector<Source> sources;
};

struct Explanation {
    std::vector<Explained> places;
    std::vector<FoundProduct> products;  // those that have the name, the one that it leads to last
    std::string failure;                 // lines; empty if there is none
    ExitStatus status = ExitStatus::done;
};

// Reads calls from first to last.
class Calls {
public:
    explicit Calls(std::vector<HostCall> calls) : m_calls(std::move(calls)) {}

    // The next call if it is of this kind, which is then done with; null if it isn't.
    const HostCall* take(Kind kind) {
        const bool isNext = m_next < m_calls.size() && m_calls[m_next].kind == kind;
        return isNext ? &m_calls[m_next++] : nullptr;
    }

private:
    std::vector<HostCall> m_calls;
    std::size_t m_next = 0;
};

void askSetting(Source& source, Calls& calls) {
    if (const HostCall* const call = calls.take(Kind::getSetting)) {
        source.isAsked = true;
        source.text = call->answer;
    }
}

void lookAt(Source& source, Calls& calls) {
    while (const HostCall* const call = calls.take(Kind::exists)) {
        source.isAsked = true;
        source.lookedAt.push_back({call->subject, call->exists});
    }
}

// Reads docroot.txt, and then looks for the folder that it names.
void askRedirect(Source& source, Calls& calls) {
    lookAt(source, calls);
    if (const HostCall* const record = calls.take(Kind::redirect)) {
        source.text = record->answer;
    }
    lookAt(source, calls);
}

std::vector<Source> sourcesOfDocumentationRoot(Calls& calls) {
    Source setting{"setting", "setting DocRoot"}, packages{"support-packages", "support packages"},
        redirect{"redirect", "redirect in the install root"}, byDefault{"default", "help in the install root"};
    askSetting(setting, calls);
    calls.take(Kind::supportPackageRoot);
    lookAt(packages, calls);
    calls.take(Kind::installRoot);
    askRedirect(redirect, calls);
    byDefault.isAsked = redirect.isAsked && calls.take(Kind::canonical) == nullptr;
    return {setting, packages, redirect, byDefault};
}

std::vector<Source> sourcesOfDataRoot(Calls& calls) {
    Source setting{"setting", "setting DocDataRoot"}, root{"documentation-root", "documentation root"},
        byDefault{"default", "help in the install root"};
    askSetting(setting, calls);
    lookAt(root, calls);
    byDefault.isAsked = calls.take(Kind::installRoot) != nullptr;
    return {setting, root, byDefault};
}

std::vector<Explained> explain(const std::array<Root, 2>& roots, Calls calls) {
    std::vector<Explained> explained;
    for (const Root& root : roots) {
        auto sources = explained.empty() ? sourcesOfDocumentationRoot(calls) : sourcesOfDataRoot(calls);
        explained.push_back({root.key, root.name, root.path, root.exists, std::move(sources)});
    }
    return explained;
}

// From the calls of a search for the catalogue. The library asks for each place only if those before it have none.
Explained explainCatalogue(const std::vector<HostCall>& calls, const Options& options) {
    constexpr std::array s_codes = {"option", "documentation-root", "data-root"};
    Explained catalogue{"catalogue", "catalogue", {}, false, {}};
    const auto places = cataloguePlaces(options);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto& [name, file] = places.at(i);
        Source source{s_codes.at(i), name};
        const auto call = std::find_if(calls.begin(), calls.end(), [&, &path = file](const HostCall& candidate) {
            return candidate.kind == Kind::exists && candidate.subject == path;
        });
        if (call != calls.end() && !catalogue.exists) {
            catalogue.path = call->exists ? file : "";
            catalogue.exists = call->exists;
            source.isAsked = true;
            if (!file.empty()) {
                source.lookedAt.push_back({file, call->exists});
            }
        }
        catalogue.sources.push_back(std::move(source));
    }
    return catalogue;
}

// The products that have the name, the one that it leads to last. Throws Failure if there is none.
std::vector<FoundProduct> productsNamed(const std::string& name, doc_products_shared::DocProductCollector& collector,
                                        const Options& options) {
    auto products = lookAtProducts(collector, options);
    const auto product = productNamed(name, collector, options);
    const auto isIt = [&](const FoundProduct& found) { return found.product == product; };
    std::erase_if(products, [&](const FoundProduct& found) {
        return !isIt(found) && namesThatAre(name, *found.product).empty();
    });
    std::stable_partition(products.begin(), products.end(), std::not_fn(isIt));
    return products;
}

// Notes the Failure that a step ends in.
template <class Step>
void attempt(Explanation& explanation, Step step) {
    try {
        step();
    } catch (const Failure& failure) {
        explanation.failure += failure.what();
        explanation.status = failure.status();
    }
}

Explanation explanationFor(const Options& options) {
    doc_products_shared::Docroot::getInstance();  // finds both roots
    Calls calls(takeCalls());
    const auto roots = findRoots();
    Explanation explanation{explain(roots, std::move(calls)), {}, options.name ? "" : missingRoots(roots)};
    explanation.status = explanation.failure.empty() ? ExitStatus::done : ExitStatus::nothingFound;
    std::shared_ptr<doc_products_shared::DocProductCollector> collector;
    attempt(explanation, [&] { collector = openCatalogue(options); });
    explanation.places.push_back(explainCatalogue(takeCalls(), options));
    if (collector && options.name) {
        attempt(explanation, [&] { explanation.products = productsNamed(*options.name, *collector, options); });
    }
    return explanation;
}

// Whether the source gave the path.
std::string_view outcomeOf(const Explained& explained, const Source& source) {
    const auto& sources = explained.sources;
    const auto last = std::find_if(sources.rbegin(), sources.rend(), [](const Source& each) { return each.isAsked; });
    const bool isTaken = last != sources.rend() && &*last == &source && !explained.path.empty();
    return isTaken ? "taken" : source.isAsked ? "not taken" : "not asked";
}

Json jsonOf(const Explained& explained) {
    Json object = placeOf(explained.path, explained.exists);
    object["sources"] = arrayOf(explained.sources, [&](const Source& source) {
        Json entry = {{"source", source.code}, {"outcome", outcomeOf(explained, source)}};
        setTextOrNull(entry, "text", source.text);
        entry["looked_at"] = jsonOf(source.lookedAt);
        return entry;
    });
    return object;
}

Json jsonOf(const Explanation& explanation, const Options& options) {
    Json answer = answerOf("explain", explanation.status, explanation.failure);
    for (const Explained& explained : explanation.places) {
        answer[explained.key] = jsonOf(explained);
    }
    if (!explanation.products.empty()) {
        setProduct(answer, explanation.products.back(), *options.name);
        answer["hidden_products"] = jsonOf(std::vector(explanation.products.begin(), explanation.products.end() - 1));
    }
    return answer;
}

void printLine(const std::string& line) {
    print(printable(line) + '\n');
}

void printSource(const Explained& explained, const Source& source, std::size_t number) {
    const bool saysNothing = source.text.empty() && source.lookedAt.empty();
    const std::string_view outcome = outcomeOf(explained, source);
    printLine(
        fmt::format("  {}. {}: {}", number, source.name, outcome == "not taken" && saysNothing ? "not set" : outcome));
    if (!source.text.empty()) {
        printLine(fmt::format("       says \"{}\"", source.text));
    }
    for (const LookedAt& place : source.lookedAt) {
        printLine(fmt::format("       {} {}", place.path, place.exists ? "exists" : "doesn't exist"));
    }
}

void printPlace(const Explained& explained) {
    const bool isMissing = !explained.path.empty() && !explained.exists;
    printLine(fmt::format("{}: {}{}", explained.name, explained.path.empty() ? "none" : explained.path,
                          isMissing ? ", which doesn't exist" : ""));
    for (std::size_t i = 0; i < explained.sources.size(); ++i) {
        printSource(explained, explained.sources[i], i + 1);
    }
}

void printProducts(const std::vector<FoundProduct>& products, const std::string& name) {
    const FoundProduct& found = products.back();
    printLine("product: " + found.product->getDisplayName());
    printLine(fmt::format("  \"{}\" is its {}", name, fieldsOf(namesThatAre(name, *found.product))));
    printLine(fmt::format("  {}: {}", stateOf(found), reasonOf(found)));
    for (auto other = products.begin(); other + 1 != products.end(); ++other) {
        printLine(fmt::format("  earlier in the catalogue, \"{}\" is the {} of {}, which it doesn't find", name,
                              fieldsOf(namesThatAre(name, *other->product)), other->product->getDisplayName()));
    }
}

void printText(const Explanation& explanation, const Options& options) {
    for (const Explained& explained : explanation.places) {
        printPlace(explained);
    }
    if (!explanation.products.empty()) {
        printProducts(explanation.products, *options.name);
    }
}

}  // namespace

ExitStatus explain(const Options& options) {
    const Explanation explanation = explanationFor(options);
    if (options.json) {
        printJson(jsonOf(explanation, options));
    } else {
        printText(explanation, options);
    }
    flushOutput();  // before any message on standard error
    std::cerr << explanation.failure;
    return explanation.status;
}

}  // namespace app
