// The part of IValue every valued engine node shares: whether a read would come from the cache.
#ifndef GENAPI_ENGINE_VALUENODE_H
#define GENAPI_ENGINE_VALUENODE_H

#include <GenApi/IValue.h>
#include "NodeBase.h"

namespace GenApiEngine {

class CValueNode : public CNodeBase, public virtual GenApi::IValue {
public:
    using CNodeBase::CNodeBase;

    // True when every register behind the value holds cached bytes.
    bool IsValueCacheValid() const override;

protected:
    // Reads that ignore the cache first drop the cached bytes of the registers behind the value.
    void dropCacheIf(bool ignoreCache) const;
};

}  // namespace GenApiEngine

#endif
