// The lock around Aravis' calls that parse descriptions or walk its device list: Aravis' XML parser keeps
// its state in static variables, so two documents parsed at once in different threads corrupt each other
// (a map loaded while another loads, a device opened while a description loads).
#ifndef GENAPI_ENGINE_ARAVISLOCK_H
#define GENAPI_ENGINE_ARAVISLOCK_H

#include <mutex>

namespace GenApiEngine {

inline std::mutex& aravisLock() {
    static std::mutex lock;
    return lock;
}

}  // namespace GenApiEngine

#endif
