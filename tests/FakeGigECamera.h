// Aravis' fake GigE Vision camera on 127.0.0.1, run as a child process for the duration of one object: it
// is killed and reaped when the object goes, and the kernel kills it should the test process die first
// (a crash, or CTest's timeout), so that no camera is left listening for the next test.
#ifndef TESTS_FAKEGIGECAMERA_H
#define TESTS_FAKEGIGECAMERA_H

#include "FakeCameraLock.h"
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

class CFakeGigECamera {
public:
    static constexpr const char* program = "arv-fake-gv-camera-0.8";
    static constexpr const char* deviceId = "Aravis-Fake-GV01";

    CFakeGigECamera() = default;

    // True when the program is on the PATH.
    static bool installed() {
        const char* path = getenv("PATH");
        std::string folders = path ? path : "";
        for (size_t start = 0; start <= folders.size();) {
            const size_t end = std::min(folders.find(':', start), folders.size());
            const std::string candidate = folders.substr(start, end - start) + "/" + program;
            if (end > start && access(candidate.c_str(), X_OK) == 0)
                return true;
            start = end + 1;
        }
        return false;
    }
    ~CFakeGigECamera() { stop(); }
    CFakeGigECamera(const CFakeGigECamera&) = delete;
    CFakeGigECamera& operator=(const CFakeGigECamera&) = delete;

    // Starts the camera; false when the program cannot be run.
    bool start() {
        stop();
        const pid_t parent = getpid();
        m_Process = fork();
        if (m_Process == 0)
            runCamera(parent);
        return m_Process > 0;
    }

    bool running() const { return m_Process > 0; }

    void stop() {
        if (m_Process <= 0)
            return;
        kill(m_Process, SIGKILL);
        waitpid(m_Process, nullptr, 0);
        m_Process = -1;
    }

private:
    // In the child: dies with the parent, keeps the test's output clean, and becomes the camera.
    [[noreturn]] static void runCamera(pid_t parent) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(127);
        const int quiet = open("/dev/null", O_WRONLY);
        dup2(quiet, STDOUT_FILENO);
        dup2(quiet, STDERR_FILENO);
        execlp(program, program, "-i", "127.0.0.1", static_cast<char*>(nullptr));
        _exit(127);
    }

    pid_t m_Process = -1;
    CFakeCameraLock m_Lock;
};

#endif
