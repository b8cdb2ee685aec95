// An opened device with a parameter collection attached to its node map under "@CameraDevice".
#ifndef TOOLS_CAMERAPARAMETERS_DEVICESESSION_H
#define TOOLS_CAMERAPARAMETERS_DEVICESESSION_H

#include <GenApi/GenApi.h>
#include <QScopedPointer>
#include <QSharedPointer>
#include <QString>
#include <SimulatedDevice.h>
#include <memory>
#include <parametercollection/ObjectState.h>
#include <parametercollection/ParameterCollection.h>

class CDeviceSession {
public:
    // Opens "sim" (the simulated camera, in process), "aravis:fake" or "aravis:ID"; throws
    // GenICam exceptions when the device cannot be opened, std::invalid_argument for unknown forms.
    explicit CDeviceSession(const QString& device);
    ~CDeviceSession();

    ParameterCollection::CParameterCollection& collection() { return *m_Collection; }
    // The camera device's node map, for what the collection does not show (the category tree, the XML).
    GenApi::INodeMap* nodeMap() const { return m_NodeMap; }

private:
    std::unique_ptr<SimCamera::CSimulatedDevice> m_Simulated;
    GenApi::CNodeMapRef m_AravisMap;
    GenApi::INodeMap* m_NodeMap = nullptr;
    QSharedPointer<ParameterCollection::CObjectState> m_State;
    QScopedPointer<ParameterCollection::CParameterCollection> m_Collection;
};

#endif
