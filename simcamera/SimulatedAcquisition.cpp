// The simulated camera's frame loop.
#include "SimulatedAcquisition.h"
#include <chrono>

namespace SimCamera {

CSimulatedAcquisition::CSimulatedAcquisition(FTakeFrame takeFrame) : m_TakeFrame(std::move(takeFrame)) {}

CSimulatedAcquisition::~CSimulatedAcquisition() {
    {
        std::lock_guard<std::mutex> lock(m_Mutex);
        m_Quit = true;
    }
    m_Changed.notify_all();
    if (m_Thread.joinable())
        m_Thread.join();
}

void CSimulatedAcquisition::setListeners(FPayload payload, FEvent event) {
    std::unique_lock<std::mutex> lock(m_Mutex);
    if (std::this_thread::get_id() != m_Thread.get_id())
        m_Changed.wait(lock, [this] { return !m_Delivering; });
    m_Payload = std::move(payload);
    m_Event = std::move(event);
}

void CSimulatedAcquisition::start() {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Running = true;
    // One thread for the camera's life, started with the first acquisition.
    if (!m_Thread.joinable())
        m_Thread = std::thread(&CSimulatedAcquisition::run, this);
    m_Changed.notify_all();
}

void CSimulatedAcquisition::stop() {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Running = false;
    ++m_Acquisition;
    m_Changed.notify_all();
}

// Frames keep the frame rate's schedule however long the wake-up and each delivery took, so that the rate
// does not drift on a loaded machine; a schedule that fell more than a period behind (a listener slower
// than the rate) starts again from now rather than catching up in a burst.
void CSimulatedAcquisition::run() {
    using Clock = std::chrono::steady_clock;
    std::unique_lock<std::mutex> lock(m_Mutex);
    Clock::time_point due = Clock::now();
    while (!m_Quit) {
        if (!m_Running) {
            m_Changed.wait(lock, [this] { return m_Quit || m_Running; });
            due = Clock::now();
        }
        if (m_Quit)
            break;
        const uint64_t acquisition = m_Acquisition;
        lock.unlock();
        SFrame frame;
        double period = 0;
        const bool taken = m_TakeFrame(frame, period);
        if (taken)
            deliver(frame, acquisition);
        lock.lock();
        if (!taken) {
            m_Running = false;
            continue;
        }
        const Clock::duration step =
            std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(period));
        due += step;
        const Clock::time_point now = Clock::now();
        if (now - due > step)
            due = now;
        m_Changed.wait_until(lock, due, [this] { return m_Quit || !m_Running; });
    }
}

// The listeners run without any lock of the camera's, so that they may call into the node map; a frame of
// an acquisition stopped since it was taken is dropped.
void CSimulatedAcquisition::deliver(SFrame& frame, uint64_t acquisition) {
    FPayload payload;
    FEvent event;
    {
        std::lock_guard<std::mutex> lock(m_Mutex);
        if (acquisition != m_Acquisition)
            return;
        payload = m_Payload;
        event = m_Event;
        m_Delivering = true;
    }
    // A listener's failure is the listener's: the camera goes on with the next frame.
    try {
        if (event) {
            for (std::vector<uint8_t>& message : frameEvents(frame))
                event(message);
        }
        if (payload) {
            std::vector<uint8_t> bytes = framePayload(frame);
            payload(bytes, frame.chunkMode);
        }
    } catch (...) {
    }
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Delivering = false;
    m_Changed.notify_all();
}

}  // namespace SimCamera
