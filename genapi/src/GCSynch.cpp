// GenICam::CLock and the named inter-process lock.
#include <Base/GCSynch.h>
#include "RecursiveMutex.h"
#include <cerrno>
#include <fcntl.h>
#include <time.h>

namespace GENICAM_NAMESPACE {

GENAPI_ENGINE_DEFINE_CLOCK(CLock)

CGlobalLock::CGlobalLock(const char* pszName) : m_handle(SEM_FAILED) {
    Open(gcstring(pszName));
}
CGlobalLock::CGlobalLock(const gcstring& strName) : m_handle(SEM_FAILED) {
    Open(strName);
}

// Opens (or creates) a POSIX named semaphore; names may not contain slashes after the first character.
void CGlobalLock::Open(const gcstring& name) {
    gcstring semName("/");
    for (size_t i = 0; i < name.size(); ++i) {
        const char c = name.c_str()[i];
        semName += (c == '/' ? '_' : c);
    }
    m_name = semName;
    m_handle = sem_open(m_name.c_str(), O_CREAT, 0666, 1);
}

CGlobalLock::~CGlobalLock() {
    if (m_handle != SEM_FAILED)
        sem_close(m_handle);
}

bool CGlobalLock::IsValid(void) const {
    return m_handle != SEM_FAILED;
}

bool CGlobalLock::Lock(unsigned int timeout_ms) {
    if (!IsValid())
        return false;
    timespec deadline;
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += timeout_ms / 1000;
    deadline.tv_nsec += static_cast<long>(timeout_ms % 1000) * 1000000L;
    if (deadline.tv_nsec >= 1000000000L) {
        deadline.tv_sec += 1;
        deadline.tv_nsec -= 1000000000L;
    }
    int result;
    while ((result = sem_timedwait(m_handle, &deadline)) == -1 && errno == EINTR) {
    }
    return result == 0;
}

bool CGlobalLock::TryLock(void) {
    return IsValid() && sem_trywait(m_handle) == 0;
}

void CGlobalLock::Unlock(void) {
    if (IsValid())
        sem_post(m_handle);
}

}  // namespace GENICAM_NAMESPACE
