// An opened device with a parameter collection attached to its node map under "@CameraDevice".
#ifndef TOOLS_CAMERAPARAMETERS_DEVICESESSION_H
#define TOOLS_CAMERAPARAMETERS_DEVICESESSION_H

#include <GenApi/NodeMapRef.h>
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

private:
    std::unique_ptr<SimCamera::CSimulatedDevice> m_Simulated;
    GenApi::CNodeMapRef m_AravisMap;
    QSharedPointer<ParameterCollection::CObjectState> m_State;
    QScopedPointer<ParameterCollection::CParameterCollection> m_Collection;
};

#endif
