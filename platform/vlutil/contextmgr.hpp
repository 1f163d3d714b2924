#pragma once

namespace vlutil::contextmgr {

// Identifies a runtime context, which has settings of its own. The host assigns the numbers.
struct RtxID {
    unsigned value = 0;
    friend bool operator<(RtxID left, RtxID right) { return left.value < right.value; }
};

class ContextRegistry {
public:
    // The current runtime context.
    static RtxID getRtxID();
};

}  // namespace vlutil::contextmgr
