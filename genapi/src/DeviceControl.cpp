// Aravis takes control of a GigE Vision device when it opens it, keeps it with a heartbeat and says
// "control-lost" (from its heartbeat thread) when the device stops answering.
#include "DeviceControl.h"

namespace GenApiEngine {
namespace {

void onControlLost(ArvDevice*, gpointer lost) {
    static_cast<std::atomic<bool>*>(lost)->store(true);
}

void deleteFlag(gpointer lost, GClosure*) {
    delete static_cast<std::atomic<bool>*>(lost);
}

}  // namespace

CDeviceControl::CDeviceControl(ArvDevice* device) : m_Device(device) {
    if (!ARV_IS_GV_DEVICE(device))
        return;
    m_Lost = new std::atomic<bool>(false);
    m_Handler = g_signal_connect_data(device, "control-lost", G_CALLBACK(onControlLost), m_Lost, deleteFlag,
                                      GConnectFlags(0));
}

CDeviceControl::~CDeviceControl() {
    if (m_Handler)
        g_signal_handler_disconnect(m_Device, m_Handler);
}

EDeviceControl CDeviceControl::state() const {
    if (!m_Lost)
        return EDeviceControl::NotApplicable;
    if (m_Lost->load())
        return EDeviceControl::Lost;
    return arv_gv_device_is_controller(ARV_GV_DEVICE(m_Device)) ? EDeviceControl::Controlling
                                                                : EDeviceControl::ControlledElsewhere;
}

}  // namespace GenApiEngine
