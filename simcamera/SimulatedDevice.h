// A simulated camera together with its node map, connected and ready to use.
#ifndef SIMCAMERA_SIMULATEDDEVICE_H
#define SIMCAMERA_SIMULATEDDEVICE_H

#include <GenApi/GenApi.h>
#include "SimulatedCamera.h"

namespace SimCamera {

class CSimulatedDevice {
public:
    explicit CSimulatedDevice(const GenICam::gcstring& deviceName = "Device");
    CSimulatedDevice(const CSimulatedDevice&) = delete;
    CSimulatedDevice& operator=(const CSimulatedDevice&) = delete;

    GenApi::INodeMap* nodeMap() const { return m_NodeMap._Ptr; }
    CSimulatedCamera& camera() { return m_Camera; }

private:
    CSimulatedCamera m_Camera;  // declared first: the map, destroyed first, must not outlive its port
    GenApi::CNodeMapRef m_NodeMap;
};

}  // namespace SimCamera

#endif
