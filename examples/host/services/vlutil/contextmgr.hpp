#pragma once

namespace vlutil::contextmgr {

// This host has one context.
struct RtxID {};

class ContextRegistry {
public:
    static RtxID getRtxID() { return {}; }
};

}  // namespace vlutil::contextmgr
