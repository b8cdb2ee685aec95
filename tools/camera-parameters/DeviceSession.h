// An opened device with a parameter collection attached to its node map under "@CameraDevice".
#ifndef TOOLS_CAMERAPARAMETERS_DEVICESESSION_H
#define TOOLS_CAMERAPARAMETERS_DEVICESESSION_H

#include <GenApi/GenApi.h>
#include "MemoryPort.h"
#include <GenApiEngine/AravisDevices.h>
#include <QScopedPointer>
#include <QSharedPointer>
#include <QString>
#include <SimulatedDevice.h>
#include <memory>
#include <vector>
#include <parametercollection/ObjectState.h>
#include <parametercollection/ParameterCollection.h>

class CDeviceSession {
public:
    // Opens "sim" (the simulated camera, in process), "aravis:fake", "aravis:ID" or "file:PATH" (a
    // description over registers in memory, for browsing); throws GenICam exceptions when the device
    // cannot be opened, std::invalid_argument for unknown forms.
    explicit CDeviceSession(const QString& device);
    ~CDeviceSession();
    CDeviceSession(const CDeviceSession&) = delete;
    CDeviceSession& operator=(const CDeviceSession&) = delete;

    const QString& device() const { return m_Device; }
    ParameterCollection::CParameterCollection& collection() { return *m_Collection; }
    // The camera device's node map, for what the collection does not show (the category tree, the XML).
    GenApi::INodeMap* nodeMap() const { return m_NodeMap; }
    // The simulated camera itself, when the device is one: it sends frames and events to listeners.
    SimCamera::CSimulatedCamera* simulatedCamera() const {
        return m_Simulated ? &m_Simulated->camera() : nullptr;
    }

    // Who controls a GigE Vision device: another application (features read only) or nobody any more.
    GenApiEngine::EDeviceControl control() const;
    // True once the device stopped answering: a call failed on it, or it missed its heartbeat. Nothing is
    // read from a lost device until it is reconnected.
    bool lost() const;
    void markLost() { m_Lost = true; }
    // Closes the device and opens it again under the same name; the collection's parameters follow.
    void reconnect();

private:
    void open();
    void openDescriptionFile(const QString& path);
    void close();

    QString m_Device;
    bool m_Lost = false;
    std::unique_ptr<SimCamera::CSimulatedDevice> m_Simulated;
    std::vector<std::unique_ptr<CMemoryPort>> m_MemoryPorts;
    GenApi::CNodeMapRef m_Map;
    GenApi::INodeMap* m_NodeMap = nullptr;
    QSharedPointer<ParameterCollection::CObjectState> m_State;
    QScopedPointer<ParameterCollection::CParameterCollection> m_Collection;
};

#endif
