// GenApi's own recursive lock (a type distinct from GenICam::CLock) and its guards.
#ifndef GENAPI_SYNCH_H
#define GENAPI_SYNCH_H

#include <GenApi/GenApiDll.h>
#include <Base/GCLockGuards.h>
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

typedef GENICAM_NAMESPACE::detail::AutoLockT<CLock> AutoLock;

template <class Object>
using LockableObject = GENICAM_NAMESPACE::detail::LockableObjectT<Object, CLock>;

}  // namespace GENAPI_NAMESPACE

#endif
