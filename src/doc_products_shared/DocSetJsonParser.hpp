#pragma once

#include "doc_products_shared/DocumentationSet.hpp"
#include "fl/ustring.hpp"

namespace doc_products_shared {

// Reads a catalogue file, docset.json: one JSON document without comments, read strictly.
//
//     {"documentation_set": {"format": "1.0", "release": "7.2", "product_list": [
//         {"product": {"display_name": "Alpha Kit", "help_location": "alphakit", "short_name": "alphakit",
//                      "basecode": "AK", "alt_short_name": "ak", "status": "current",
//                      "product_family_list": [{"product_family": {"family": "kits", "group": "tools"}}]}}]}}
//
// `alt_short_name`, `status` and `group` may be omitted, which gives the empty text; every other key shown is
// required. Values must have the type shown; `null` is not accepted. Other keys are ignored, at every level. The
// content of strings isn't validated.
//
// Stateless: any number of threads may share an instance.
class DocSetJsonParser {  // exported: see src/docproducts.map
public:
    // The contents of the file; `path` is UTF-16 text in native form. A file that doesn't exist gives the empty set
    // and an error in the log. Any other failure, a single bad value included, rejects the whole file: the cause is
    // written to std::cerr without a line end, and std::runtime_error "Error while parsing " + path is thrown.
    // Exceptions from the test for the file, and those not derived from std::exception, are passed on unchanged.
    DocumentationSet parse(const fl::ustring& path) const;
};

}  // namespace doc_products_shared
