// Holds the object state's mutex for a scope and counts the call as inside the library.
#ifndef PARAMETERCOLLECTION_SCOPEDOBJECTSTATELOCK_H
#define PARAMETERCOLLECTION_SCOPEDOBJECTSTATELOCK_H

#include "ObjectState.h"
#include "ParameterCollectionExport.h"

namespace ParameterCollection {

// With a null state it does nothing. It locks, then counts; on leaving it unlocks, then uncounts.
class PARAMETERCOLLECTION_EXPORT CScopedObjectStateLock {
public:
    // Inline: every guarded call of the library passes through here.
    explicit CScopedObjectStateLock(CObjectState* state) : m_State(state) {
        if (m_State) {
            m_State->lock();
            m_State->incrementEntryCount();
        }
    }
    ~CScopedObjectStateLock() noexcept {
        if (m_State) {
            m_State->unlock();
            m_State->decrementEntryCount();
        }
    }
    CScopedObjectStateLock(const CScopedObjectStateLock&) = delete;
    CScopedObjectStateLock& operator=(const CScopedObjectStateLock&) = delete;

private:
    CObjectState* m_State;
};

}  // namespace ParameterCollection

#endif
