// The simulated camera: a register space behind a GenApi port, with the behaviour of a real device.
#ifndef SIMCAMERA_SIMULATEDCAMERA_H
#define SIMCAMERA_SIMULATEDCAMERA_H

#include <GenApi/GenApi.h>
#include <GenApi/PortImpl.h>
#include "SimulatedAcquisition.h"
#include "SimulatedFiles.h"
#include <atomic>
#include <memory>
#include <chrono>
#include <mutex>
#include <string>
#include <vector>

namespace SimCamera {

class CSimulatedCamera : public GenApi::CPortImpl {
public:
    // How the port fails when a test asks it to.
    enum class EFailure { None, IoError, Timeout };

    CSimulatedCamera();
    ~CSimulatedCamera() override;

    // The camera description (GenICam XML) that matches this register space.
    static const std::string& description();

    // The port, as GenApi sees it.
    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

    // The device side: registers changed behind GenApi's back, as a real device changes them.
    uint32_t peekRegister(int64_t address) const;
    void pokeRegister(int64_t address, uint32_t value);
    double peekDouble(int64_t address) const;
    // Stops the temperature drift and holds the sensor at the given temperature.
    void freezeTemperature(double celsius);
    // Number of reads a self-clearing command stays busy after it was executed (default 1).
    void setBusyReads(int reads);
    void setFailure(EFailure failure);
    // A disconnected port reports NI and refuses every transfer.
    void setConnected(bool connected);
    // Restores the state after power-up; DeviceReset does the same.
    void reset();

    std::string fileContent(CSimulatedFiles::EFile file) const;
    void setFileContent(CSimulatedFiles::EFile file, const std::string& content);
    bool isAcquiring() const { return m_Acquiring; }
    // Receives, from the camera's own thread, each frame's payload and event messages while it acquires
    // (AcquisitionStart to AcquisitionStop, or the frames of a single or multi-frame acquisition).
    void setAcquisitionListeners(CSimulatedAcquisition::FPayload payload,
                                 CSimulatedAcquisition::FEvent event);
    uint64_t readCount() const { return m_Reads; }
    uint64_t writeCount() const { return m_Writes; }

private:
    bool takeFrame(SFrame& frame, double& periodSeconds);
    void startAcquisition();
    void countDownToUnplug();
    void triggerAcquisitionStart();
    void checkTransfer(int64_t address, int64_t length) const;
    void refreshTemperatures(int64_t address, int64_t length);
    void countBusyReads(int64_t address, int64_t length);
    void applyWrite(int64_t address, int64_t length);
    void executeFileOperation();
    void startCommand(int64_t address);
    void store32(int64_t address, uint32_t value);
    void storeText(int64_t address, const std::string& text, size_t capacity);
    void storeDouble(int64_t address, double value);
    void store64(int64_t address, uint64_t value);
    uint32_t load32(int64_t address) const;

    mutable std::mutex m_Mutex;
    std::vector<uint8_t> m_Memory;
    CSimulatedFiles m_Files;
    std::chrono::steady_clock::time_point m_Start;
    bool m_TemperatureDrifts = true;
    int m_BusyReads = 1;
    int m_LatchBusy = 0;
    int m_TriggerBusy = 0;
    EFailure m_Failure = EFailure::None;
    std::atomic<bool> m_Connected{true};
    // Set when the frame that counted TestDisconnectAfterFrames down to 0 was taken.
    bool m_UnplugAfterFrame = false;
    // Armed by AcquisitionStart with the acquisition start trigger on: acquiring, but no frames yet.
    bool m_WaitingForTrigger = false;
    std::atomic<bool> m_Acquiring{false};
    std::atomic<uint64_t> m_Reads{0};
    std::atomic<uint64_t> m_Writes{0};
    uint64_t m_FramesTaken = 0;
    // Last, so that its thread ends before anything it reads goes.
    std::unique_ptr<CSimulatedAcquisition> m_Acquisition;
};

}  // namespace SimCamera

#endif
