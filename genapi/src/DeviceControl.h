// Who controls a GigE Vision device a node map was opened on: this process, another one, or nobody since
// the device stopped answering its heartbeat.
#ifndef GENAPI_ENGINE_DEVICECONTROL_H
#define GENAPI_ENGINE_DEVICECONTROL_H

#include <GenApiEngine/AravisDevices.h>
#include <arv.h>
#include <atomic>

namespace GenApiEngine {

class CDeviceControl {
public:
    // Listens for the device's loss of control; devices of other transports always answer NotApplicable.
    explicit CDeviceControl(ArvDevice* device);
    // Stops listening. The flag the heartbeat thread sets stays until this object goes, which the map lets
    // happen only after releasing the device, when that thread has ended.
    void disconnect();
    CDeviceControl(const CDeviceControl&) = delete;
    CDeviceControl& operator=(const CDeviceControl&) = delete;

    EDeviceControl state() const;

private:
    ArvDevice* m_Device;
    gulong m_Handler = 0;
    bool m_GigEVision = false;
    std::atomic<bool> m_Lost{false};
};

}  // namespace GenApiEngine

#endif
