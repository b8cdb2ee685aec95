// The node map lock of a bound node, held for a scope and releasable before its end.
#ifndef PARAMETERCOLLECTION_INTERNAL_NODEMAPLOCK_H
#define PARAMETERCOLLECTION_INTERNAL_NODEMAPLOCK_H

#include <GenApi/GenApi.h>

namespace ParameterCollection {
namespace Internal {

class CNodeMapLock {
public:
    // Takes the lock of the node's node map; without a node there is nothing to lock.
    explicit CNodeMapLock(GENAPI_NAMESPACE::INode* node)
        : m_Lock(node ? &node->GetNodeMap()->GetLock() : nullptr) {
        if (m_Lock)
            m_Lock->Lock();
    }
    ~CNodeMapLock() { unlock(); }
    CNodeMapLock(const CNodeMapLock&) = delete;
    CNodeMapLock& operator=(const CNodeMapLock&) = delete;

    // Releases the lock early; the destructor then has nothing left to do.
    void unlock() {
        if (m_Lock)
            m_Lock->Unlock();
        m_Lock = nullptr;
    }

private:
    GENAPI_NAMESPACE::CLock* m_Lock;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
