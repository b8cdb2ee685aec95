// Guards shared by GenICam's and GenApi's lock classes, which are distinct types with one behaviour.
#ifndef GENICAM_GCLOCKGUARDS_H
#define GENICAM_GCLOCKGUARDS_H

#include <Base/GCNamespace.h>

namespace GENICAM_NAMESPACE {
namespace detail {

// Holds a lock for its own lifetime.
template <class Lock>
class AutoLockT {
    Lock& m_Lock;

public:
    AutoLockT(Lock& lock) : m_Lock(lock) { m_Lock.Lock(); }
    ~AutoLockT() { m_Lock.Unlock(); }

private:
    AutoLockT& operator=(const AutoLockT&);
    AutoLockT(const AutoLockT&);
};

// A base that gives an object its own lock and a guard to take it.
template <class Object, class LockType>
class LockableObjectT {
public:
    mutable LockType m_Lock;

    class Lock {
        const LockableObjectT& m_Host;

    public:
        Lock(const LockableObjectT& host) : m_Host(host) { m_Host.m_Lock.Lock(); }
        ~Lock() { m_Host.m_Lock.Unlock(); }

    private:
        Lock& operator=(const Lock&);
    };

    Lock GetLock() const { return Lock(*this); }
};

}  // namespace detail
}  // namespace GENICAM_NAMESPACE

#endif
