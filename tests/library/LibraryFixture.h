// A fixture with the simulated camera, an open object state, a decoupler and parameters bound to nodes.
#ifndef TESTS_LIBRARY_LIBRARYFIXTURE_H
#define TESTS_LIBRARY_LIBRARYFIXTURE_H

#include <SimulatedCameraRegisters.h>
#include <SimulatedDevice.h>
#include <gtest/gtest.h>
#include <parametercollection/Exceptions.h>
#include <parametercollection/ObjectState.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <parametercollection/ScopedObjectStateLock.h>
#include <parametercollection/internal/ModeratedParameterEventDecouplerThread.h>
#include <parametercollection/internal/Parameter.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMutex>
#include <QVector>
#include <functional>
#include <memory>
#include <string>

using namespace ParameterCollection;
using namespace ParameterCollection::Internal;

class LibraryTest : public ::testing::Test {
protected:
    LibraryTest()
        : m_State(new CObjectState(nullptr)),
          m_Decoupler(new CModeratedParameterEventDecouplerThread(m_State)) {
        m_State->setState(ObjectState_Open);
    }
    ~LibraryTest() override { m_Decoupler->shutdown(); }

    GenApi::INodeMap* map() const { return m_Device.nodeMap(); }
    SimCamera::CSimulatedCamera& camera() { return m_Device.camera(); }
    CObjectState& state() { return *m_State; }
    QSharedPointer<CObjectState> sharedState() { return m_State; }
    QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler() { return m_Decoupler; }

    // A base parameter for a feature of the simulated camera, attached unless asked not to be.
    QSharedPointer<CParameter> parameter(const QString& name, bool attach = true) {
        QSharedPointer<CParameter> created(new CParameter(name, "@CameraDevice", m_State, m_Decoupler));
        if (attach) {
            EXPECT_TRUE(created->attach(map())) << name.toStdString();
        }
        return created;
    }

    // A typed parameter for a feature of the simulated camera, attached.
    template <typename T>
    QSharedPointer<T> typed(const QString& name) {
        QSharedPointer<T> created(new T(name, "@CameraDevice", m_State, m_Decoupler));
        created->attach(map());
        return created;
    }
    GenApi::INode* node(const char* name) const { return map()->GetNode(name); }

    // Lets queued events run until the condition holds or the time is up.
    static bool waitUntil(const std::function<bool()>& condition, int timeoutMs = 3000) {
        QElapsedTimer timer;
        timer.start();
        while (!condition()) {
            if (timer.elapsed() > timeoutMs)
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        return true;
    }

private:
    SimCamera::CSimulatedDevice m_Device;
    QSharedPointer<CObjectState> m_State;
    QSharedPointer<CModeratedParameterEventDecouplerThread> m_Decoupler;
};

// A small camera description around the given nodes, for a node map built in a test.
inline std::string testDescription(const char* nodes) {
    return std::string(R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription xmlns="http://www.genicam.org/GenApi/Version_1_1" ModelName="Test" VendorName="Test"
    StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
    MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="11111111-2222-3333-4444-555555555555"
    VersionGuid="11111111-2222-3333-4444-666666666666">)") +
           nodes + "</RegisterDescription>\n";
}

// A collection with the simulated camera attached under "@CameraDevice" and the state open.
class CSimulatedCollection {
public:
    CSimulatedCollection() : m_State(new CObjectState(nullptr)), m_Collection(m_State) {
        m_Collection.announceNodeMap(ParameterPath::CameraDevice);
        m_Collection.attachNodeMap(ParameterPath::CameraDevice, m_Device.nodeMap());
        m_State->setState(ObjectState_Open);
    }
    ~CSimulatedCollection() { m_Collection.detachAllNodeMaps(); }
    CParameterCollection& collection() { return m_Collection; }
    SimCamera::CSimulatedDevice& device() { return m_Device; }
    CObjectState& state() { return *m_State; }

private:
    SimCamera::CSimulatedDevice m_Device;  // declared first: the collection lets go of its map first
    QSharedPointer<CObjectState> m_State;
    CParameterCollection m_Collection;
};

// Collects the snapshots a parameter emits decoupled, from whichever thread emits them. The connection
// shares what was received, so that a signal still on its way when the recorder is gone finds it alive.
class CDecoupledRecorder {
public:
    explicit CDecoupledRecorder(IParameter& parameter) : m_Received(std::make_shared<SReceived>()) {
        std::shared_ptr<SReceived> received = m_Received;
        QObject::connect(
            &parameter, &IParameter::parameterDataChangedDecoupled, &parameter,
            [received](QSharedPointer<const ParameterData> data) {
                QMutexLocker lock(&received->mutex);
                received->snapshots.append(data);
            },
            Qt::DirectConnection);
    }
    int count() const {
        QMutexLocker lock(&m_Received->mutex);
        return m_Received->snapshots.size();
    }
    QSharedPointer<const ParameterData> last() const {
        QMutexLocker lock(&m_Received->mutex);
        return m_Received->snapshots.isEmpty() ? QSharedPointer<const ParameterData>()
                                               : m_Received->snapshots.last();
    }

private:
    struct SReceived {
        QMutex mutex;
        QVector<QSharedPointer<const ParameterData>> snapshots;
    };
    std::shared_ptr<SReceived> m_Received;
};

// Runs a statement that must throw the library exception E and returns its message.
template <typename E, typename F>
QString messageOf(F statement) {
    try {
        statement();
    } catch (const E& e) {
        return e.getMessage();
    } catch (const std::exception&) {
        ADD_FAILURE() << "unexpected exception class";
        return QString();
    }
    ADD_FAILURE() << "no exception";
    return QString();
}

#endif
