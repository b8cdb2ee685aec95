// Tests that start Aravis' fake GigE Vision camera on 127.0.0.1 take this lock, since only one fake camera
// can listen there at a time and CTest runs test programs in parallel.
#ifndef TESTS_FAKECAMERALOCK_H
#define TESTS_FAKECAMERALOCK_H

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

class CFakeCameraLock {
public:
    CFakeCameraLock()
        : m_File(open("/tmp/parametercollection-fake-gv-camera.lock", O_CREAT | O_RDWR | O_CLOEXEC, 0666)) {
        if (m_File >= 0)
            flock(m_File, LOCK_EX);
    }
    ~CFakeCameraLock() {
        if (m_File >= 0) {
            flock(m_File, LOCK_UN);
            close(m_File);
        }
    }
    CFakeCameraLock(const CFakeCameraLock&) = delete;
    CFakeCameraLock& operator=(const CFakeCameraLock&) = delete;

private:
    int m_File;
};

#endif
