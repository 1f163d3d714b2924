#include "explain.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <optional>
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

// Puts into words what the library asked of its host, in the order of its calls.
namespace app {

namespace {

using Kind = HostCall::Kind;

constexpr const char* s_default = "help in the install root";

// Where something may come from.
struct Source {
    const char* code;  // for machines
    const char* name;
    bool isAsked = false;
    std::optional<std::string> text = {};  // what a setting or a docroot.txt says
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
        source.text = call->text.empty() ? std::nullopt : std::optional(call->text);
    }
}

void lookAt(Source& source, Calls& calls) {
    while (const HostCall* const call = calls.take(Kind::exists)) {
        source.isAsked = true;
        source.lookedAt.push_back({call->text, call->exists});
    }
}

// Reads docroot.txt, and then looks for the folder that it names.
void askRedirect(Source& source, Calls& calls) {
    lookAt(source, calls);
    if (const HostCall* const record = calls.take(Kind::redirect)) {
        source.text = record->text;
    }
    lookAt(source, calls);
}

std::vector<Source> sourcesOfDocumentationRoot(Calls& calls) {
    Source setting{"setting", "setting DocRoot (--doc-root)"};
    Source packages{"support-packages", "help in the support-package root"};
    Source redirect{"redirect", "help/docroot.txt in the install root"};
    Source byDefault{"default", s_default};
    askSetting(setting, calls);
    calls.take(Kind::supportPackageRoot);
    lookAt(packages, calls);
    calls.take(Kind::installRoot);
    askRedirect(redirect, calls);
    byDefault.isAsked = redirect.isAsked && !redirect.lookedAt.back().exists;
    return {setting, packages, redirect, byDefault};
}

std::vector<Source> sourcesOfDataRoot(Calls& calls) {
    Source setting{"setting", "setting DocDataRoot (--doc-data-root)"};
    Source root{"documentation-root", "documentation root"};
    Source byDefault{"default", s_default};
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

// The answer to whether a path exists, if that was asked.
std::optional<bool> answerFor(const std::string& path, const std::vector<HostCall>& calls) {
    const auto call = std::find_if(calls.begin(), calls.end(), [&](const HostCall& candidate) {
        return candidate.kind == Kind::exists && candidate.text == path;
    });
    return call == calls.end() ? std::nullopt : std::optional(call->exists);
}

// From the calls of a search for the catalogue, which ends at the first place that has one.
Explained explainCatalogue(const std::vector<HostCall>& calls, const Options& options) {
    Explained catalogue{"catalogue", "catalogue", {}, false, {}};
    const auto places = cataloguePlaces(options);
    catalogue.sources = {{"option", "--catalogue"},
                         {"documentation-root", "docset.json in the documentation root"},
                         {"data-root", "docset.json in the data root"}};
    for (std::size_t i = 0; i < places.size() && !catalogue.exists; ++i) {
        const std::string& file = places.at(i).file;
        Source& source = catalogue.sources[i];
        const auto exists = answerFor(file, calls);
        source.isAsked = exists.has_value();
        catalogue.exists = exists.value_or(false);
        catalogue.path = catalogue.exists ? file : "";
        if (source.isAsked && !file.empty()) {
            source.lookedAt.push_back({file, *exists});
        }
    }
    return catalogue;
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

void explainProducts(Explanation& explanation, const Options& options) {
    std::shared_ptr<doc_products_shared::DocProductCollector> collector;
    attempt(explanation, [&] { collector = openCatalogue(options); });
    explanation.places.push_back(explainCatalogue(takeCalls(), options));
    if (collector && options.name) {
        attempt(explanation, [&] { explanation.products = productsNamed(*options.name, *collector, options); });
    }
}

Explanation explanationFor(const Options& options) {
    Explanation explanation;
    attempt(explanation, [] { doc_products_shared::Docroot::getInstance(); });  // finds both roots
    Calls calls(takeCalls());
    if (!explanation.failure.empty()) {
        explanation.places = explain(unknownRoots, std::move(calls));
        return explanation;
    }
    const auto roots = findRoots();
    explanation.places = explain(roots, std::move(calls));
    if (const std::string missing = missingRoots(roots); !options.name && !missing.empty()) {
        explanation.failure = missing;
        explanation.status = ExitStatus::nothingFound;
    }
    explainProducts(explanation, options);
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
        entry["text"] = nullptr;
        if (source.text) {
            setText(entry, "text", *source.text);
        }
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
    const bool saysNothing = !source.text && source.lookedAt.empty();
    const std::string_view outcome = outcomeOf(explained, source);
    printLine(
        fmt::format("  {}. {}: {}", number, source.name, outcome == "not taken" && saysNothing ? "not set" : outcome));
    if (source.text) {
        printLine(fmt::format("       says \"{}\"", *source.text));
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
        printLine(fmt::format("  \"{}\" is also the {} of {}, which comes earlier and so isn't found by it", name,
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
