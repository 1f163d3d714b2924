#include "vlutil/contextmgr.hpp"

#include "vorlan/services.hpp"

namespace vlutil::contextmgr {

RtxID ContextRegistry::getRtxID() {
    return vorlan::services().currentContext();
}

}  // namespace vlutil::contextmgr
