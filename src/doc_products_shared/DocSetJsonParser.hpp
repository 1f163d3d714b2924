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
// `alt_short_name`, `status` and `group` may be left out and are then the empty text; every other key shown is
// required. Values have the type shown and no other, `null` included. Other keys are ignored, at every level. No text
// is judged.
//
// Holds nothing, so any instance does, and any number of threads may use one.
class DocSetJsonParser {  // its operations are listed in the library's version script
public:
    // The contents of the file; `path` is UTF-16 text in native form. A file that doesn't exist gives the empty set
    // and a diagnostic at `error`. Anything else that goes wrong, one bad value included, gives nothing of the file:
    // the cause goes to std::cerr, alone and without a line end, and std::runtime_error comes out with "Error while
    // parsing " + path. Only what the test for the file throws, and what is no std::exception, comes out unchanged.
    DocumentationSet parse(const fl::ustring& path) const;
};

}  // namespace doc_products_shared
