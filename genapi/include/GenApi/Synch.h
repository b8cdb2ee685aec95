// GenApi's own recursive lock (a type distinct from GenICam::CLock) and its guards.
#ifndef GENAPI_SYNCH_H
#define GENAPI_SYNCH_H

#include <GenApi/GenApiDll.h>
#include <pthread.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CLock {
public:
    CLock();
    ~CLock();
    bool TryLock();
    void Lock();
    void Unlock();

private:
    CLock(const CLock&);
    CLock& operator=(const CLock&);
    pthread_mutex_t m_Mtx;
};

class GENAPI_DECL CLockEx : public CLock {
public:
    CLockEx() {}
    ~CLockEx() {}

private:
    CLockEx(const CLockEx&);
    CLockEx& operator=(const CLockEx&);
};

class AutoLock {
    CLock& m_Lock;

public:
    AutoLock(CLock& lock) : m_Lock(lock) { m_Lock.Lock(); }
    ~AutoLock() { m_Lock.Unlock(); }

private:
    AutoLock& operator=(const AutoLock&);
    AutoLock(const AutoLock&);
};

template <class Object>
class LockableObject {
public:
    mutable CLock m_Lock;

    class Lock;
    friend class Lock;

    class Lock {
        const LockableObject<Object>& m_Host;

    public:
        Lock(const LockableObject<Object>& host) : m_Host(host) { m_Host.m_Lock.Lock(); }
        ~Lock() { m_Host.m_Lock.Unlock(); }

    private:
        Lock& operator=(const Lock&);
    };

    Lock GetLock() const { return Lock(*this); }
};

}  // namespace GENAPI_NAMESPACE

#endif
