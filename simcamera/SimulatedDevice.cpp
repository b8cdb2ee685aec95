// Loads the simulated camera's description and connects the camera as its port.
#include "SimulatedDevice.h"

namespace SimCamera {

CSimulatedDevice::CSimulatedDevice(const GenICam::gcstring& deviceName) : m_NodeMap(deviceName) {
    const std::string& xml = CSimulatedCamera::description();
    m_NodeMap._LoadXMLFromString(GenICam::gcstring(xml.c_str(), xml.size()));
    if (!m_NodeMap._Connect(&m_Camera, "Device"))
        throw RUNTIME_EXCEPTION("The simulated camera could not be connected");
}

}  // namespace SimCamera
