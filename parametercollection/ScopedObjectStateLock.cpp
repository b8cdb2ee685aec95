// The guard's two steps in each direction, in the fixed order.
#include "ScopedObjectStateLock.h"
#include "ObjectState.h"

namespace ParameterCollection {

CScopedObjectStateLock::CScopedObjectStateLock(CObjectState* state) : m_State(state) {
    if (m_State) {
        m_State->lock();
        m_State->incrementEntryCount();
    }
}

CScopedObjectStateLock::~CScopedObjectStateLock() noexcept {
    if (m_State) {
        m_State->unlock();
        m_State->decrementEntryCount();
    }
}

}  // namespace ParameterCollection
