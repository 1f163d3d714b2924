#pragma once

namespace vlutil::contextmgr {

// Identifies a runtime context, which has settings of its own. The host assigns the numbers.
struct RtxID {
    // 0 is the context that a program starts in.
    unsigned value = 0;

    // By value, so that an ID can be a key.
    friend bool operator<(RtxID left, RtxID right) { return left.value < right.value; }
};

// The host's contexts, one of which is current.
class ContextRegistry {
public:
    // The current runtime context.
    static RtxID getRtxID();
};

}  // namespace vlutil::contextmgr
