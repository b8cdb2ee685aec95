// Opening the device, announcing every node map name (the camera device first, so that bare names
// refer to it) and attaching the device's node map.
#include "DeviceSession.h"
#include <parametercollection/ParameterPath.h>
#include <stdexcept>

using namespace ParameterCollection;

CDeviceSession::CDeviceSession(const QString& device)
    : m_Device(device), m_State(new CObjectState(nullptr)), m_Collection(new CParameterCollection(m_State)) {
    for (const QString& name :
         {ParameterPath::CameraDevice, ParameterPath::CameraInstance, ParameterPath::StreamGrabber0,
          ParameterPath::DeviceTransportLayer, ParameterPath::ChunkData, ParameterPath::EventGrabber,
          ParameterPath::PixelDataConverter, ParameterPath::VideoWriter, ParameterPath::Interface}) {
        m_Collection->announceNodeMap(name);
    }
    open();
}

// Parameters are unbound before the node map goes away; the state says disposed at the end.
CDeviceSession::~CDeviceSession() {
    close();
    m_Collection.reset();
    m_State->setState(ObjectState_Disposed);
}

void CDeviceSession::open() {
    if (m_Device == "sim") {
        m_Simulated = std::make_unique<SimCamera::CSimulatedDevice>();
        m_NodeMap = m_Simulated->nodeMap();
    } else if (m_Device.startsWith("file:")) {
        openDescriptionFile(m_Device.mid(5));
    } else if (m_Device == "aravis:fake") {
        m_Map = GenApiEngine::createAravisFakeDevice();
        m_NodeMap = m_Map._Ptr;
    } else if (m_Device.startsWith("aravis:")) {
        m_Map = GenApiEngine::openAravisDevice(m_Device.mid(7).toStdString());
        m_NodeMap = m_Map._Ptr;
    } else {
        throw std::invalid_argument("Unknown device '" + m_Device.toStdString() +
                                    "': use sim, aravis:ID or file:DESCRIPTION.xml.");
    }
    m_Collection->attachNodeMap(ParameterPath::CameraDevice, m_NodeMap);
    m_State->setState(ObjectState_Open);
    m_Lost = false;
}

// Every port of the description gets a register space of its own.
void CDeviceSession::openDescriptionFile(const QString& path) {
    m_Map._LoadXMLFromFile(path.toStdString().c_str());
    GenApi::NodeList_t nodes;
    m_Map._Ptr->GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        if (node->GetPrincipalInterfaceType() != GenApi::intfIPort)
            continue;
        m_MemoryPorts.push_back(std::make_unique<CMemoryPort>());
        m_Map._Connect(m_MemoryPorts.back().get(), node->GetName());
    }
    m_NodeMap = m_Map._Ptr;
}

void CDeviceSession::close() {
    m_Collection->detachAllNodeMaps();
    m_State->setState(ObjectState_Closed);
    m_NodeMap = nullptr;
    m_Map = GenApi::CNodeMapRef();
    m_MemoryPorts.clear();
    m_Simulated.reset();
}

void CDeviceSession::reconnect() {
    close();
    open();
}

GenApiEngine::EDeviceControl CDeviceSession::control() const {
    return m_NodeMap ? GenApiEngine::deviceControl(m_NodeMap) : GenApiEngine::EDeviceControl::NotApplicable;
}

bool CDeviceSession::lost() const {
    return m_Lost || !m_NodeMap || control() == GenApiEngine::EDeviceControl::Lost;
}
