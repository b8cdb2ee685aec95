// Helpers shared by the two CLock classes: a recursive pthread mutex.
#ifndef GENAPI_ENGINE_RECURSIVEMUTEX_H
#define GENAPI_ENGINE_RECURSIVEMUTEX_H

#include <pthread.h>

namespace GenApiEngine {

inline void initRecursiveMutex(pthread_mutex_t& mutex) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

}  // namespace GenApiEngine

#define GENAPI_ENGINE_DEFINE_CLOCK(ClassName)      \
    ClassName::ClassName() {                       \
        GenApiEngine::initRecursiveMutex(m_Mtx);   \
    }                                              \
    ClassName::~ClassName() {                      \
        pthread_mutex_destroy(&m_Mtx);             \
    }                                              \
    bool ClassName::TryLock() {                    \
        return pthread_mutex_trylock(&m_Mtx) == 0; \
    }                                              \
    void ClassName::Lock() {                       \
        pthread_mutex_lock(&m_Mtx);                \
    }                                              \
    void ClassName::Unlock() {                     \
        pthread_mutex_unlock(&m_Mtx);              \
    }

#endif
