// Locking the recursive mutex so that ThreadSanitizer sees it: Qt 5 takes recursive mutexes inside its own,
// uninstrumented library, so sanitizer builds report the acquire and release themselves.
#ifndef PARAMETERCOLLECTION_INTERNAL_ANNOTATEDMUTEXLOCKER_H
#define PARAMETERCOLLECTION_INTERNAL_ANNOTATEDMUTEXLOCKER_H

#include "../RecursiveMutex.h"

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

namespace ParameterCollection {
namespace Internal {

inline void lockAnnotated(CRecursiveMutex* mutex) {
    mutex->lock();
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(mutex);
#endif
}

inline void unlockAnnotated(CRecursiveMutex* mutex) {
#if defined(__SANITIZE_THREAD__)
    __tsan_release(mutex);
#endif
    mutex->unlock();
}

class CAnnotatedMutexLocker {
public:
    explicit CAnnotatedMutexLocker(CRecursiveMutex* mutex) : m_Mutex(mutex) { lockAnnotated(m_Mutex); }
    ~CAnnotatedMutexLocker() { unlockAnnotated(m_Mutex); }
    CAnnotatedMutexLocker(const CAnnotatedMutexLocker&) = delete;
    CAnnotatedMutexLocker& operator=(const CAnnotatedMutexLocker&) = delete;

private:
    CRecursiveMutex* m_Mutex;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
