// How a node map of this engine keeps what it reads: node values and register bytes, as GenApi keeps
// them, or nothing, or kept and checked against the device on every use.
#ifndef GENAPI_ENGINE_CACHEPOLICY_H
#define GENAPI_ENGINE_CACHEPOLICY_H

#include <GenApi/GenApiDll.h>
#include <GenApi/INodeMap.h>

namespace GenApiEngine {

enum class ECachePolicy {
    Off,    // every read is evaluated and reads the device
    On,     // values and register bytes are kept by GenApi's rules
    Verify  // kept as On, and every kept value served is compared with a fresh evaluation (a mismatch aborts)
};

// The policy new node maps start with: GENAPI_ENGINE_VERIFY_CACHE=1 gives Verify,
// GENAPI_ENGINE_VALUE_CACHE=0 gives Off, otherwise On.
GENAPI_DECL ECachePolicy defaultCachePolicy();

// A node map's policy; both throw GenICam::InvalidArgumentException for a node map that is not one of this
// engine's. Setting a policy drops everything the map keeps.
GENAPI_DECL ECachePolicy cachePolicy(GenApi::INodeMap* nodeMap);
GENAPI_DECL void setCachePolicy(GenApi::INodeMap* nodeMap, ECachePolicy policy);

}  // namespace GenApiEngine

#endif
