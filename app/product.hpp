#pragma once

#include <string>
#include <vector>

#include "answer.hpp"
#include "doc_products_shared/DocumentationSet.hpp"

namespace app {

// A path whose existence the library asked for, and the answer.
struct LookedAt {
    std::string path;
    bool exists;
};

// A product of the catalogue, and what the library found of it.
struct FoundProduct {
    doc_products_shared::TopLevelDocProductPtr product;
    bool isInstalled;
    std::vector<LookedAt> lookedAt;  // the files that prove it
};

// "installed", "web-only" or "not found".
const char* stateOf(const FoundProduct& found);

// Why it is in that state.
std::string reasonOf(const FoundProduct& found);

// A name of a product.
struct Name {
    const char* key;    // of the catalogue
    const char* field;  // in words
    const std::string& text;
};

// The names in the order in which the library enters them into its index.
std::vector<Name> namesOf(const doc_products_shared::DocProduct& product);

// Those of the product's names that are `name`.
std::vector<Name> namesThatAre(const std::string& name, const doc_products_shared::DocProduct& product);

// The fields in words, separated by commas.
std::string fieldsOf(const std::vector<Name>& names);

Json jsonOf(const std::vector<LookedAt>& paths);
Json jsonOf(const std::vector<FoundProduct>& products);

// Sets the members of an answer that describe the product with this name.
void setProduct(Json& answer, const FoundProduct& found, const std::string& name);

}  // namespace app
