// Aravis takes control of a GigE Vision device when it opens it, keeps it with a heartbeat and says
// "control-lost" (from its heartbeat thread) when the device stops answering.
#include "DeviceControl.h"

namespace GenApiEngine {
namespace {

void onControlLost(ArvDevice*, gpointer lost) {
    static_cast<std::atomic<bool>*>(lost)->store(true);
}

}  // namespace

CDeviceControl::CDeviceControl(ArvDevice* device) : m_Device(device) {
    if (!ARV_IS_GV_DEVICE(device))
        return;
    m_GigEVision = true;
    m_Handler = g_signal_connect(device, "control-lost", G_CALLBACK(onControlLost), &m_Lost);
}

void CDeviceControl::disconnect() {
    if (m_Handler)
        g_signal_handler_disconnect(m_Device, m_Handler);
    m_Handler = 0;
}

EDeviceControl CDeviceControl::state() const {
    if (!m_GigEVision)
        return EDeviceControl::NotApplicable;
    if (m_Lost.load())
        return EDeviceControl::Lost;
    return arv_gv_device_is_controller(ARV_GV_DEVICE(m_Device)) ? EDeviceControl::Controlling
                                                                : EDeviceControl::ControlledElsewhere;
}

}  // namespace GenApiEngine
