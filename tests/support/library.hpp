#pragma once

// Shared by the tests that link the shared library.

#include <gmock/gmock.h>

#include <iostream>
#include <set>
#include <sstream>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "docroot_cache/DocrootCache.hpp"
#include "support/Host.hpp"

using namespace doc_products_shared;
using namespace support;
using docroot_cache::DocrootCache;

inline Product named(const std::string& name, const std::string& families = "") {
    return {" " + name + " ", "in/" + name, name, "code", "", families};
}

inline const auto s_broken = [] { throw Broken(); };
