// CObjectState: plain fields around one heap-allocated recursive mutex.
#include "ObjectState.h"
#include "internal/AnnotatedMutexLocker.h"

namespace ParameterCollection {

CObjectState::CObjectState(QObject* owner)
    : QObject(nullptr),
      m_State(ObjectState_Closed),
      m_EntryCount(0),
      m_IsInUse(false),
      m_Owner(owner),
      m_Mutex(new CRecursiveMutex) {}

CObjectState::~CObjectState() {
    delete m_Mutex;
}

void CObjectState::setState(EObjectState state) {
    m_State.store(state, std::memory_order_relaxed);
}
int CObjectState::getEntryCount() const {
    return m_EntryCount.load(std::memory_order_relaxed);
}
void CObjectState::setEntryCount(int count) {
    m_EntryCount.store(count, std::memory_order_relaxed);
}
bool CObjectState::isInUse() const {
    return m_IsInUse;
}
void CObjectState::setIsInUse(bool inUse) {
    m_IsInUse = inUse;
}
QString CObjectState::getName() const {
    return m_Name;
}
void CObjectState::setName(QString name) {
    m_Name = name;
}
QObject* CObjectState::getOwner() const {
    return m_Owner;
}
void CObjectState::lock() {
    Internal::lockAnnotated(m_Mutex);
}
void CObjectState::unlock() {
    Internal::unlockAnnotated(m_Mutex);
}

}  // namespace ParameterCollection
