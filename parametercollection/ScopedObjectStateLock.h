// Holds the object state's mutex for a scope and counts the call as inside the library.
#ifndef PARAMETERCOLLECTION_SCOPEDOBJECTSTATELOCK_H
#define PARAMETERCOLLECTION_SCOPEDOBJECTSTATELOCK_H

#include "ParameterCollectionExport.h"

namespace ParameterCollection {

class CObjectState;

// With a null state it does nothing. It locks, then counts; on leaving it unlocks, then uncounts.
class PARAMETERCOLLECTION_EXPORT CScopedObjectStateLock {
public:
    explicit CScopedObjectStateLock(CObjectState* state);
    ~CScopedObjectStateLock() noexcept;
    CScopedObjectStateLock(const CScopedObjectStateLock&) = delete;
    CScopedObjectStateLock& operator=(const CScopedObjectStateLock&) = delete;

private:
    CObjectState* m_State;
};

}  // namespace ParameterCollection

#endif
