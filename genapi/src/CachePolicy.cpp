// The cache policy of the engine's node maps, set per map.
#include <GenApiEngine/CachePolicy.h>
#include "NodeMapImpl.h"
#include "ValueCache.h"

namespace GenApiEngine {
namespace {

CNodeMapImpl& engineMap(GenApi::INodeMap* nodeMap) {
    CNodeMapImpl* map = dynamic_cast<CNodeMapImpl*>(nodeMap);
    if (!map)
        throw INVALID_ARGUMENT_EXCEPTION("The node map was not made by this engine");
    return *map;
}

}  // namespace

ECachePolicy defaultCachePolicy() {
    return CValueCache::defaultPolicy();
}

ECachePolicy cachePolicy(GenApi::INodeMap* nodeMap) {
    CNodeMapImpl& map = engineMap(nodeMap);
    CMapEntry entry(map);
    return map.values().policy();
}

void setCachePolicy(GenApi::INodeMap* nodeMap, ECachePolicy policy) {
    CNodeMapImpl& map = engineMap(nodeMap);
    CMapEntry entry(map);
    map.values().setPolicy(policy);
}

}  // namespace GenApiEngine
