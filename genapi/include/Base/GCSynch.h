// Locks of the GenICam base layer: a recursive in-process lock and a named inter-process lock.
#ifndef GENICAM_GCSYNCH_H
#define GENICAM_GCSYNCH_H

#include <Base/GCString.h>
#include <Base/GCLockGuards.h>
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

typedef GENICAM_NAMESPACE::detail::AutoLockT<CLock> AutoLock;

template <class Object>
using LockableObject = GENICAM_NAMESPACE::detail::LockableObjectT<Object, CLock>;

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
