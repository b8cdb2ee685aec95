// The event behind WaitObject and WaitObjectEx, on a mutex and a condition variable.
#include "WaitObject.h"
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Tavrin {

struct WaitObject::State {
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    bool signalled = false;
};

WaitObject::WaitObject() : m_State(std::make_shared<State>()) {}

WaitObject::~WaitObject() {}

bool WaitObject::Wait(unsigned int timeoutMs) const {
    std::unique_lock<std::mutex> lock(m_State->mutex);
    return m_State->changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                     [this] { return m_State->signalled; });
}

bool WaitObject::IsSignalled() const {
    std::lock_guard<std::mutex> lock(m_State->mutex);
    return m_State->signalled;
}

WaitObjectEx::WaitObjectEx(bool signalled) {
    m_State->signalled = signalled;
}

WaitObjectEx WaitObjectEx::Create(bool signalled) {
    return WaitObjectEx(signalled);
}

void WaitObjectEx::Signal() {
    std::lock_guard<std::mutex> lock(m_State->mutex);
    m_State->signalled = true;
    m_State->changed.notify_all();
}

void WaitObjectEx::Reset() {
    std::lock_guard<std::mutex> lock(m_State->mutex);
    m_State->signalled = false;
}

}  // namespace Tavrin
