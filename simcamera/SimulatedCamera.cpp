// Register space and device behaviour of the simulated camera: commands, temperatures and file access.
#include "SimulatedCamera.h"
#include "SimulatedCameraRegisters.h"
#include <GenApi/GenApi.h>
#include <cstring>

namespace SimCamera {

namespace R = Registers;

namespace {

constexpr int32_t sensorTemperature = 415;  // tenths of a degree Celsius
constexpr int32_t mainboardTemperature = 380;
// TriggerSelector and TriggerSource values.
constexpr uint32_t acquisitionStartTrigger = 1;
constexpr uint32_t softwareTriggerSource = 1;

bool overlaps(int64_t address, int64_t length, int64_t reg, int64_t regLength) {
    return address < reg + regLength && reg < address + length;
}

}  // namespace

CSimulatedCamera::CSimulatedCamera()
    : m_Memory(R::Size),
      m_Start(std::chrono::steady_clock::now()),
      m_Acquisition(new CSimulatedAcquisition(
          [this](SFrame& frame, double& periodSeconds) { return takeFrame(frame, periodSeconds); })) {
    reset();
}

CSimulatedCamera::~CSimulatedCamera() {
    m_Acquisition.reset();
}

void CSimulatedCamera::setAcquisitionListeners(CSimulatedAcquisition::FPayload payload,
                                               CSimulatedAcquisition::FEvent event) {
    m_Acquisition->setListeners(std::move(payload), std::move(event));
}

// The next frame as the registers describe it now; a single or multi-frame acquisition ends by itself.
bool CSimulatedCamera::takeFrame(SFrame& frame, double& periodSeconds) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    if (m_UnplugAfterFrame) {
        m_UnplugAfterFrame = false;
        m_WaitingForTrigger = false;
        m_Connected = false;
        m_Acquiring = false;
    }
    if (!m_Acquiring)
        return false;
    countDownToUnplug();
    frame.frameId = m_FramesTaken++;
    frame.timestamp = static_cast<uint64_t>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() - m_Start)
            .count());
    std::memcpy(&frame.exposureTime, &m_Memory[R::ExposureTime], sizeof frame.exposureTime);
    frame.width = load32(R::Width);
    frame.height = load32(R::Height);
    frame.pixelFormat = load32(R::PixelFormat);
    frame.chunkMode = load32(R::ChunkModeActive) != 0;
    for (int chunk = 0; chunk < static_cast<int>(EChunk::Count); ++chunk)
        frame.chunkEnabled[chunk] = load32(R::ChunkEnable + 4 * chunk) != 0;
    for (int event = 0; event < static_cast<int>(EEvent::Count); ++event)
        frame.eventEnabled[event] = load32(R::EventNotification + 4 * event) != 0;
    double rate;
    std::memcpy(&rate, &m_Memory[R::AcquisitionFrameRate], sizeof rate);
    periodSeconds = rate > 0 ? 1.0 / rate : 1.0;
    const uint32_t mode = load32(R::AcquisitionMode);
    const uint64_t frames = mode == 1 ? 1 : mode == 2 ? load32(R::AcquisitionFrameCount) : 0;
    if (frames > 0 && m_FramesTaken >= frames)
        m_Acquiring = false;
    return true;
}

// With the acquisition start trigger on, the camera is only armed: its frames begin with the trigger.
void CSimulatedCamera::startAcquisition() {
    m_Acquiring = true;
    m_FramesTaken = 0;
    m_WaitingForTrigger = load32(R::TriggerMode + 4 * acquisitionStartTrigger) != 0;
    if (!m_WaitingForTrigger)
        m_Acquisition->start();
}

// A software trigger of the acquisition start trigger starts an armed acquisition's frames.
void CSimulatedCamera::triggerAcquisitionStart() {
    if (!m_Acquiring || !m_WaitingForTrigger || load32(R::TriggerSelector) != acquisitionStartTrigger ||
        load32(R::TriggerSource + 4 * acquisitionStartTrigger) != softwareTriggerSource)
        return;
    m_WaitingForTrigger = false;
    m_Acquisition->start();
}

void CSimulatedCamera::reset() {
    std::lock_guard<std::mutex> lock(m_Mutex);
    std::fill(m_Memory.begin(), m_Memory.end(), 0);
    m_UnplugAfterFrame = false;
    storeText(R::DeviceVendorName, "ParameterCollection", 32);
    storeText(R::DeviceModelName, "SimCam-1", 32);
    storeText(R::DeviceSerialNumber, "SIM0001", 16);
    storeText(R::DeviceVersion, "1.2.3", 16);
    store32(R::DeviceSFNCVersionMajor, 2);
    store32(R::DeviceSFNCVersionMinor, 5);
    store32(R::DeviceSFNCVersionSubMinor, 0);
    store32(R::DeviceTemperatureRaw, static_cast<uint32_t>(sensorTemperature));
    store32(R::DeviceTemperatureRaw + 4, static_cast<uint32_t>(mainboardTemperature));
    store32(R::SensorWidth, 2048);
    store32(R::SensorHeight, 1536);
    store32(R::Width, 640);
    store32(R::Height, 480);
    store32(R::PixelFormat, 0x01080001);  // Mono8
    storeDouble(R::ExposureTime, 10000.0);
    storeDouble(R::AcquisitionFrameRate, 30.0);
    store32(R::AcquisitionFrameCount, 1);
    store32(R::TestReadOnlyInteger, 42);
    store32(R::TestHexInteger, 0xCAFE);
    store32(R::GevCurrentIPAddress, 0xC0A8012A);  // 192.168.1.42
    store32(R::GevPersistentIPAddress, 0xC0A8012A);
    store64(R::GevMACAddress, 0x003053123456ULL);
    for (uint32_t file = 0; file < CSimulatedFiles::FileCount; ++file)
        store32(R::FileSize + 4 * file, m_Files.size(file));
    m_LatchBusy = 0;
    m_TriggerBusy = 0;
    m_Acquiring = false;
    // Every chunk enabled, as cameras come; chunk mode and events stay off.
    for (int chunk = 0; chunk < static_cast<int>(EChunk::Count); ++chunk)
        store32(R::ChunkEnable + 4 * chunk, 1);
    if (m_Acquisition)
        m_Acquisition->stop();
}

GenApi::EAccessMode CSimulatedCamera::GetAccessMode() const {
    return m_Connected ? GenApi::RW : GenApi::NI;
}

void CSimulatedCamera::checkTransfer(int64_t address, int64_t length) const {
    if (!m_Connected)
        throw ACCESS_EXCEPTION("SimulatedCamera: the port is not connected");
    if (m_Failure == EFailure::Timeout)
        throw TIMEOUT_EXCEPTION("SimulatedCamera: the device did not answer in time");
    if (m_Failure == EFailure::IoError)
        throw RUNTIME_EXCEPTION("SimulatedCamera: transfer failed");
    if (address < 0 || length < 0 || address + length > R::Size) {
        throw RUNTIME_EXCEPTION("SimulatedCamera: invalid address 0x%llx and/or length %lld",
                                static_cast<unsigned long long>(address), static_cast<long long>(length));
    }
}

void CSimulatedCamera::Read(void* pBuffer, int64_t Address, int64_t Length) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    checkTransfer(Address, Length);
    refreshTemperatures(Address, Length);
    std::memcpy(pBuffer, &m_Memory[static_cast<size_t>(Address)], static_cast<size_t>(Length));
    countBusyReads(Address, Length);
    ++m_Reads;
}

void CSimulatedCamera::Write(const void* pBuffer, int64_t Address, int64_t Length) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    checkTransfer(Address, Length);
    std::memcpy(&m_Memory[static_cast<size_t>(Address)], pBuffer, static_cast<size_t>(Length));
    ++m_Writes;
    applyWrite(Address, Length);
}

// Temperatures drift by a tenth of a degree a second.
void CSimulatedCamera::refreshTemperatures(int64_t address, int64_t length) {
    if (m_TemperatureDrifts && overlaps(address, length, R::DeviceTemperatureRaw, 8)) {
        const auto seconds =
            std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - m_Start)
                .count();
        const int32_t drift = static_cast<int32_t>(seconds % 20);
        store32(R::DeviceTemperatureRaw, static_cast<uint32_t>(sensorTemperature + drift));
        store32(R::DeviceTemperatureRaw + 4, static_cast<uint32_t>(mainboardTemperature + drift / 2));
    }
}

// A busy command reads as set until it has been read as often as the device stays busy.
void CSimulatedCamera::countBusyReads(int64_t address, int64_t length) {
    if (overlaps(address, length, R::TimestampLatch, 4) && m_LatchBusy > 0 && --m_LatchBusy == 0) {
        store32(R::TimestampLatch, 0);
    }
    if (overlaps(address, length, R::TriggerSoftware, 4) && m_TriggerBusy > 0 && --m_TriggerBusy == 0) {
        store32(R::TriggerSoftware, 0);
    }
}

void CSimulatedCamera::applyWrite(int64_t address, int64_t length) {
    if (overlaps(address, length, R::FileOperationExecute, 4) && load32(R::FileOperationExecute) != 0) {
        executeFileOperation();
    }
    if (overlaps(address, length, R::TimestampLatch, 4) && load32(R::TimestampLatch) != 0) {
        startCommand(R::TimestampLatch);
    }
    if (overlaps(address, length, R::TriggerSoftware, 4) && load32(R::TriggerSoftware) != 0) {
        startCommand(R::TriggerSoftware);
        triggerAcquisitionStart();
    }
    if (overlaps(address, length, R::AcquisitionStart, 4) && load32(R::AcquisitionStart) != 0) {
        startAcquisition();
        store32(R::AcquisitionStart, 0);
    }
    if (overlaps(address, length, R::AcquisitionStop, 4) && load32(R::AcquisitionStop) != 0) {
        m_Acquiring = false;
        m_WaitingForTrigger = false;
        m_Acquisition->stop();
        store32(R::AcquisitionStop, 0);
    }
}

// A self-clearing command: the register stays set while the device is busy.
void CSimulatedCamera::startCommand(int64_t address) {
    if (address == R::TimestampLatch) {
        const auto now = std::chrono::steady_clock::now() - m_Start;
        store64(R::TimestampLatchValue,
                static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
        m_LatchBusy = m_BusyReads;
    } else {
        m_TriggerBusy = m_BusyReads;
    }
    if (m_BusyReads <= 0)
        store32(address, 0);
}

void CSimulatedCamera::executeFileOperation() {
    std::vector<uint8_t> buffer(m_Memory.begin() + R::FileAccessBuffer,
                                m_Memory.begin() + R::FileAccessBuffer + R::FileAccessBufferLength);
    const uint32_t file = load32(R::FileSelector);
    const CSimulatedFiles::SResult result =
        m_Files.execute(file, load32(R::FileOperationSelector), load32(R::FileOpenMode),
                        load32(R::FileAccessOffset), load32(R::FileAccessLength), buffer);
    std::copy(buffer.begin(), buffer.end(), m_Memory.begin() + R::FileAccessBuffer);
    store32(R::FileOperationStatus, result.success ? 0 : 1);
    store32(R::FileOperationResult, result.count);
    for (uint32_t f = 0; f < CSimulatedFiles::FileCount; ++f)
        store32(R::FileSize + 4 * f, m_Files.size(f));
    store32(R::FileOperationExecute, 0);
}

uint32_t CSimulatedCamera::peekRegister(int64_t address) const {
    std::lock_guard<std::mutex> lock(m_Mutex);
    return load32(address);
}

void CSimulatedCamera::pokeRegister(int64_t address, uint32_t value) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    store32(address, value);
}

double CSimulatedCamera::peekDouble(int64_t address) const {
    std::lock_guard<std::mutex> lock(m_Mutex);
    double value;
    std::memcpy(&value, &m_Memory[static_cast<size_t>(address)], sizeof(value));
    return value;
}

void CSimulatedCamera::freezeTemperature(double celsius) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_TemperatureDrifts = false;
    store32(R::DeviceTemperatureRaw, static_cast<uint32_t>(static_cast<int32_t>(celsius * 10)));
}

void CSimulatedCamera::setBusyReads(int reads) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_BusyReads = reads;
}

void CSimulatedCamera::setFailure(EFailure failure) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Failure = failure;
}

// TestDisconnectAfterFrames counts the frames down; the camera is unplugged once the last one is delivered.
void CSimulatedCamera::countDownToUnplug() {
    const uint32_t framesLeft = load32(R::TestDisconnectAfterFrames);
    if (framesLeft == 0)
        return;
    store32(R::TestDisconnectAfterFrames, framesLeft - 1);
    m_UnplugAfterFrame = framesLeft == 1;
}

void CSimulatedCamera::setConnected(bool connected) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Connected = connected;
}

std::string CSimulatedCamera::fileContent(CSimulatedFiles::EFile file) const {
    std::lock_guard<std::mutex> lock(m_Mutex);
    return m_Files.content(file);
}

void CSimulatedCamera::setFileContent(CSimulatedFiles::EFile file, const std::string& content) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Files.setContent(file, content);
    store32(R::FileSize + 4 * file, m_Files.size(file));
}

void CSimulatedCamera::store32(int64_t address, uint32_t value) {
    std::memcpy(&m_Memory[static_cast<size_t>(address)], &value, sizeof(value));
}

void CSimulatedCamera::store64(int64_t address, uint64_t value) {
    std::memcpy(&m_Memory[static_cast<size_t>(address)], &value, sizeof(value));
}

void CSimulatedCamera::storeDouble(int64_t address, double value) {
    std::memcpy(&m_Memory[static_cast<size_t>(address)], &value, sizeof(value));
}

void CSimulatedCamera::storeText(int64_t address, const std::string& text, size_t capacity) {
    std::memset(&m_Memory[static_cast<size_t>(address)], 0, capacity);
    std::memcpy(&m_Memory[static_cast<size_t>(address)], text.data(), std::min(text.size(), capacity));
}

uint32_t CSimulatedCamera::load32(int64_t address) const {
    uint32_t value;
    std::memcpy(&value, &m_Memory[static_cast<size_t>(address)], sizeof(value));
    return value;
}

}  // namespace SimCamera
