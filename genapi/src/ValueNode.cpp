// Cache queries of valued nodes, answered by the node map's register cache.
#include "ValueNode.h"
#include "NodeMapImpl.h"

namespace GenApiEngine {

bool CValueNode::IsValueCacheValid() const {
    CMapEntry entry(map());
    return map().cacheHolds(this);
}

void CValueNode::dropCacheIf(bool ignoreCache) const {
    if (ignoreCache)
        map().dropCache(this);
}

}  // namespace GenApiEngine
