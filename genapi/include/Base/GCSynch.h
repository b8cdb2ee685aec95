// Locks of the GenICam base layer: a recursive in-process lock and a named inter-process lock.
#ifndef GENICAM_GCSYNCH_H
#define GENICAM_GCSYNCH_H

#include <Base/GCString.h>
#include <pthread.h>
#include <semaphore.h>

namespace GENICAM_NAMESPACE {

class GCBASE_API CLock {
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

// Test helper variant of CLock; the usage counters are not kept on this platform.
class GCBASE_API CLockEx : public CLock {
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

// A lock shared by every process that names it the same.
class GCBASE_API CGlobalLock {
public:
    explicit CGlobalLock(const char* pszName);
    explicit CGlobalLock(const gcstring& strName);
    ~CGlobalLock();
    bool IsValid(void) const;
    bool Lock(unsigned int timeout_ms);
    bool TryLock(void);
    void Unlock(void);

private:
    CGlobalLock(const CGlobalLock&);
    CGlobalLock& operator=(const CGlobalLock&);
    void Open(const gcstring& name);
    sem_t* m_handle;
    gcstring m_name;
};

// Holds a global lock and releases it on destruction unless released early.
class GCBASE_API CGlobalLockUnlocker {
public:
    CGlobalLockUnlocker(CGlobalLock& lock) : m_Lock(lock), m_enabled(true) {}
    ~CGlobalLockUnlocker() { UnlockEarly(); }
    void UnlockEarly(void) {
        if (m_enabled) {
            m_enabled = false;
            m_Lock.Unlock();
        }
    }

protected:
    CGlobalLock& m_Lock;
    bool m_enabled;

private:
    CGlobalLockUnlocker(const CGlobalLockUnlocker&);
    CGlobalLockUnlocker& operator=(const CGlobalLockUnlocker&);
};

}  // namespace GENICAM_NAMESPACE

#endif
