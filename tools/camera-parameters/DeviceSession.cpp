// Opening the device, announcing every node map name (the camera device first, so that bare names
// refer to it) and attaching the device's node map.
#include "DeviceSession.h"
#include <GenApiEngine/AravisDevices.h>
#include <parametercollection/ParameterPath.h>
#include <stdexcept>

using namespace ParameterCollection;

CDeviceSession::CDeviceSession(const QString& device)
    : m_State(new CObjectState(nullptr)), m_Collection(new CParameterCollection(m_State)) {
    GenApi::INodeMap* nodeMap = nullptr;
    if (device == "sim") {
        m_Simulated = std::make_unique<SimCamera::CSimulatedDevice>();
        nodeMap = m_Simulated->nodeMap();
    } else if (device == "aravis:fake") {
        m_AravisMap = GenApiEngine::createAravisFakeDevice();
        nodeMap = m_AravisMap._Ptr;
    } else if (device.startsWith("aravis:")) {
        m_AravisMap = GenApiEngine::openAravisDevice(device.mid(7).toStdString());
        nodeMap = m_AravisMap._Ptr;
    } else {
        throw std::invalid_argument("Unknown device '" + device.toStdString() + "': use sim or aravis:ID.");
    }
    for (const QString& name :
         {ParameterPath::CameraDevice, ParameterPath::CameraInstance, ParameterPath::StreamGrabber0,
          ParameterPath::DeviceTransportLayer, ParameterPath::ChunkData, ParameterPath::EventGrabber,
          ParameterPath::PixelDataConverter, ParameterPath::VideoWriter, ParameterPath::Interface}) {
        m_Collection->announceNodeMap(name);
    }
    m_Collection->attachNodeMap(ParameterPath::CameraDevice, nodeMap);
    m_NodeMap = nodeMap;
    m_State->setState(ObjectState_Open);
}

// Parameters are unbound before the node map goes away; the state says disposed at the end.
CDeviceSession::~CDeviceSession() {
    m_Collection->detachAllNodeMaps();
    m_State->setState(ObjectState_Closed);
    m_Collection.reset();
    m_State->setState(ObjectState_Disposed);
}
