// The simulated camera's frame loop: while acquiring, takes a frame at the frame rate and hands its payload
// and event messages to the listeners, from a thread of its own.
#ifndef SIMCAMERA_SIMULATEDACQUISITION_H
#define SIMCAMERA_SIMULATEDACQUISITION_H

#include "SimulatedPayload.h"
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace SimCamera {

class CSimulatedAcquisition {
public:
    using FPayload = std::function<void(std::vector<uint8_t>& payload, bool hasChunks)>;
    using FEvent = std::function<void(std::vector<uint8_t>& message)>;
    // Fills the next frame and its period; false when the camera no longer acquires.
    using FTakeFrame = std::function<bool(SFrame& frame, double& periodSeconds)>;

    explicit CSimulatedAcquisition(FTakeFrame takeFrame);
    ~CSimulatedAcquisition();

    // Replaces the listeners; once it returns, the old ones are not running and will not run again (so call
    // it without holding anything a listener waits for).
    void setListeners(FPayload payload, FEvent event);
    // Starts or stops the loop; neither waits for a frame in progress, so both may be called with the
    // camera's register space locked. A frame taken before a stop is not delivered once stop returned,
    // unless its delivery had begun; setListeners waits for that one.
    void start();
    void stop();

private:
    void run();
    void deliver(SFrame& frame, uint64_t acquisition);

    FTakeFrame m_TakeFrame;
    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    FPayload m_Payload;
    FEvent m_Event;
    bool m_Running = false;
    bool m_Delivering = false;
    bool m_Quit = false;
    // Counts the stops, so that a frame knows whether the acquisition it was taken in still runs.
    uint64_t m_Acquisition = 0;
    std::thread m_Thread;
};

}  // namespace SimCamera

#endif
