// The chunks and events commands.
#include "AcquisitionCommands.h"
#include "ParameterTool.h"
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/EventAdapterGEV.h>
#include <QElapsedTimer>
#include <QThread>
#include <parametercollection/Exceptions.h>
#include <parametercollection/ICommandParameter.h>

using namespace ParameterCollection;

namespace {

// Chunk mode and selection are settings, not chunk values.
const QStringList chunkSettings = {"ChunkModeActive", "ChunkSelector", "ChunkEnable"};

// A feature with a value of its own: no category, no port.
bool valueFeature(IParameter& parameter) {
    const QSharedPointer<IAdvancedParameterAccess> access = parameter.getAdvancedParameterAccess();
    const QString type = access->getPropertyOrDefault("PrincipalInterfaceType", "");
    return access->getPropertyOrDefault("IsFeature", "false") == "true" && type != "intfICategory" &&
           type != "intfIPort";
}

}  // namespace

CAcquisitionCommands::CAcquisitionCommands(CDeviceSession& session, QTextStream& out, QTextStream& err,
                                           bool json)
    : m_Session(session), m_Out(out), m_Err(err), m_Json(json) {}

QString CAcquisitionCommands::eventRefusal() const {
    if (!m_Session.simulatedCamera()) {
        return "Device '" + m_Session.device() +
               "' sends this tool no events: events are read from the simulated camera.";
    }
    return QString();
}

// The simulated camera answers nothing once unplugged; an Aravis device is lost once it misses its heartbeat.
bool CAcquisitionCommands::deviceGone() const {
    if (SimCamera::CSimulatedCamera* camera = m_Session.simulatedCamera())
        return camera->GetAccessMode() == GenApi::NI;
    return m_Session.lost();
}

QStringList CAcquisitionCommands::chunkFeatures() const {
    QStringList names;
    for (const QSharedPointer<IParameter>& parameter : m_Session.collection().getAllParameter()) {
        const QString name = parameter->getName();
        if (name.startsWith("Chunk") && !chunkSettings.contains(name) && valueFeature(*parameter))
            names.append(name);
    }
    return names;
}

// Starts the acquisition unless the simulated camera already acquires (a device Aravis opened is started
// in any case: the tool cannot tell whether it acquires); false, and the reason told, when it cannot.
bool CAcquisitionCommands::started() {
    if (m_Session.simulatedCamera() && m_Session.simulatedCamera()->isAcquiring())
        return true;
    QSharedPointer<ICommandParameter> start =
        m_Session.collection().get(CommandParameterName("AcquisitionStart"));
    try {
        if (!start)
            m_StartFailure = "the device has no AcquisitionStart command";
        else
            start->execute(true);
    } catch (const Core::Exception::BaseException& e) {
        m_StartFailure = e.getMessage();
    }
    if (!m_StartFailure.isEmpty()) {
        m_Err << "The acquisition could not be started: " << m_StartFailure << "\n";
        return false;
    }
    m_StartedHere = true;
    return true;
}

// Stops what this command started, unless the device went away (it stopped by itself then).
void CAcquisitionCommands::stopAcquisition() {
    if (!m_StartedHere || deviceGone())
        return;
    m_StartedHere = false;
    try {
        if (QSharedPointer<ICommandParameter> stop =
                m_Session.collection().get(CommandParameterName("AcquisitionStop")))
            stop->execute(true);
    } catch (const Core::Exception::BaseException& e) {
        m_Err << "The acquisition could not be stopped: " << e.getMessage() << "\n";
    }
}

// Runs what the frame thread does with a frame and keeps its first failure, for this thread to report:
// nothing is thrown on the camera's thread.
void CAcquisitionCommands::failSafely(const std::function<void()>& work) {
    QString message;
    try {
        work();
        return;
    } catch (const GenICam::GenericException& e) {
        message = e.GetDescription();
    } catch (const Core::Exception::BaseException& e) {
        message = e.getMessage();
    }
    std::lock_guard<std::mutex> lock(m_Mutex);
    if (m_Failure.isEmpty())
        m_Failure = message;
}

void CAcquisitionCommands::push(const QJsonObject& record) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Records.append(record);
}

QVector<QJsonObject> CAcquisitionCommands::take() {
    std::lock_guard<std::mutex> lock(m_Mutex);
    QVector<QJsonObject> taken;
    taken.swap(m_Records);
    return taken;
}

void CAcquisitionCommands::readValues(const QStringList& names, QJsonObject& record) {
    for (const QString& name : names) {
        QSharedPointer<IParameter> parameter = m_Session.collection().get(ParameterName(name));
        if (parameter && parameter->isReadable())
            record[name] = CParameterPrinter::typedValue(*parameter->getParameterData());
    }
}

// "frame 3: ChunkFrameID=3 ChunkWidth=640 ..." for people; the object itself for scripts.
void CAcquisitionCommands::print(const QJsonObject& record, const QString& label) {
    if (m_Json) {
        CParameterPrinter(m_Out, true).printObject(record);
        return;
    }
    QString line = label;
    for (auto it = record.begin(); it != record.end(); ++it) {
        if (it.key() == "frame" || it.key() == "event" || it.key() == "time")
            continue;
        const QJsonValue value = it.value();
        line +=
            " " + it.key() + "=" +
            (value.isDouble() ? QString::number(value.toDouble(), 'g', 15) : value.toVariant().toString());
    }
    m_Out << line << "\n";
    m_Out.flush();
}

// Reads a frame's chunk values while the adapter holds the frame (on the source's thread).
QJsonObject CAcquisitionCommands::frameRecord(int index, uint8_t* data, int64_t size, bool hasChunks,
                                              GenApi::CChunkAdapter* adapter, const QStringList& names) {
    QJsonObject record{{"frame", index}};
    if (!hasChunks || !adapter)
        return record;
    failSafely([&] {
        adapter->AttachBuffer(data, size);
        readValues(names, record);
        adapter->DetachBuffer();
    });
    return record;
}

int CAcquisitionCommands::chunks(int frames) {
    if (!CFrameSource::available(m_Session)) {
        m_Err
            << "Device '" << m_Session.device()
            << "' sends this tool no frames: chunk data is read from the simulated camera or a device Aravis "
               "opens.\n";
        return CParameterTool::Failed;
    }
    QSharedPointer<IParameter> chunkMode = m_Session.collection().get(ParameterName("ChunkModeActive"));
    if (!chunkMode) {
        m_Err << "Device '" << m_Session.device() << "' has no chunk data (no ChunkModeActive feature).\n";
        return CParameterTool::Failed;
    }
    if (!chunkMode || chunkMode->toString() != "1") {
        m_Err << "Chunk mode is off: 'set ChunkModeActive=1' first (ChunkSelector and ChunkEnable choose the "
                 "chunks).\n";
        return CParameterTool::AccessRefused;
    }
    const QStringList names = chunkFeatures();
    int index = 0;
    GenApi::CChunkAdapter* adapter = nullptr;
    std::unique_ptr<CFrameSource> source;
    try {
        source = CFrameSource::open(m_Session, [&](uint8_t* data, int64_t size, bool hasChunks) {
            push(frameRecord(index++, data, size, hasChunks, adapter, names));
        });
    } catch (const GenICam::GenericException& e) {
        m_Err << "Device '" << m_Session.device() << "' sends no frames: " << e.GetDescription() << "\n";
        return CParameterTool::Failed;
    }
    adapter = source->adapter();
    const int printed = printFrames(*source, frames);
    source->close();
    return finishFrames(printed, frames);
}

// Prints the frames as they come, until enough came or the acquisition ended (or the time is up).
int CAcquisitionCommands::printFrames(CFrameSource& source, int frames) {
    int printed = 0;
    if (!started())
        return printed;
    QElapsedTimer clock;
    clock.start();
    // A frame takes at most a second at the lowest frame rate.
    bool ended = false;
    while (printed < frames && !m_Interrupted) {
        // Once the camera stops (or the time is up), the frame it is delivering is waited for: closing the
        // source returns only when no frame is being delivered.
        if (!ended && (source.ended() || clock.elapsed() > 2000 + 1100LL * frames)) {
            source.close();
            ended = true;
        }
        for (const QJsonObject& record : take()) {
            if (printed < frames)
                print(record, "frame " + QString::number(record["frame"].toInt()) + ":");
            ++printed;
        }
        m_Interrupted = CParameterTool::takeInterrupt();
        m_WaitedSeconds = clock.elapsed() / 1000.0;
        if (ended)
            break;
        QThread::msleep(5);
    }
    return printed;
}

// Stops what the command started; true, with the result, when a failed start or an interrupt decides it.
// `gone` tells whether the device went away meanwhile.
bool CAcquisitionCommands::endAcquisition(bool& gone, int& result) {
    gone = deviceGone();
    stopAcquisition();
    if (!m_StartFailure.isEmpty())
        result = CParameterTool::Failed;
    else if (m_Interrupted)
        result = CParameterTool::Interrupted;
    else
        return false;
    return true;
}

// Marks the session lost and names what the device sent before it went away.
int CAcquisitionCommands::stoppedAnswering(const QString& sent) {
    m_Session.markLost();
    m_Err << "Device '" << m_Session.device() << "' stopped answering after " << sent << ".\n";
    return CParameterTool::Failed;
}

int CAcquisitionCommands::finishFrames(int printed, int frames) {
    bool gone = false;
    int result = CParameterTool::Done;
    if (endAcquisition(gone, result))
        return result;
    if (printed < frames && gone)
        return stoppedAnswering(QString("%1 of %2 frames").arg(printed).arg(frames));
    if (printed < frames) {
        if (printed == 0) {
            m_Err << "No frame arrived in " << QString::number(m_WaitedSeconds, 'f', 1)
                  << " s: does the acquisition wait for a trigger? (TriggerSelector, TriggerMode, "
                     "TriggerSource)\n";
        } else {
            m_Err << "The acquisition ended after " << printed << " of " << frames << " frames.\n";
        }
        return CParameterTool::Failed;
    }
    if (!m_Failure.isEmpty()) {
        m_Err << "Reading a frame's chunks failed: " << m_Failure << "\n";
        return CParameterTool::Failed;
    }
    return CParameterTool::Done;
}

// The name of each event by its ID: the node that carries the ID and is no port (EventExposureEnd, ...).
QMap<uint64_t, QString> CAcquisitionCommands::eventNames() const {
    QMap<uint64_t, QString> names;
    GenApi::NodeList_t nodes;
    m_Session.nodeMap()->GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        bool ok = false;
        const uint64_t id = QString(node->GetEventID().c_str()).toULongLong(&ok, 16);
        if (ok && node->GetPrincipalInterfaceType() != GenApi::intfIPort)
            names[id] = node->GetName().c_str();
    }
    return names;
}

// Delivers a GigE Vision event message and reads the event's data features (on the camera's thread).
QJsonObject CAcquisitionCommands::eventRecord(std::vector<uint8_t>& message, GenApi::CEventAdapter& adapter,
                                              const QMap<uint64_t, QString>& names,
                                              const QStringList& features, double seconds) {
    const uint64_t id = message.size() > 12 ? uint64_t(message[10]) << 8 | message[11] : 0;
    const QString name = names.value(id, "0x" + QString::number(id, 16));
    QJsonObject record{{"time", seconds}, {"event", name}};
    failSafely([&] {
        adapter.DeliverMessage(message.data(), static_cast<uint32_t>(message.size()));
        QStringList data;
        for (const QString& candidate : features) {
            if (candidate.startsWith(name) && candidate != name)
                data.append(candidate);
        }
        readValues(data, record);
    });
    return record;
}

int CAcquisitionCommands::events(double seconds) {
    const QString refused = eventRefusal();
    if (!refused.isEmpty()) {
        m_Err << refused << "\n";
        return CParameterTool::Failed;
    }
    const QMap<uint64_t, QString> names = eventNames();
    QStringList features;
    for (const QSharedPointer<IParameter>& parameter : m_Session.collection().getAllParameter()) {
        if (valueFeature(*parameter))
            features.append(parameter->getName());
    }
    GenApi::CEventAdapterGEV adapter(m_Session.nodeMap());
    QElapsedTimer clock;
    clock.start();
    SimCamera::CSimulatedCamera& camera = *m_Session.simulatedCamera();
    camera.setAcquisitionListeners(nullptr, [&](std::vector<uint8_t>& message) {
        push(eventRecord(message, adapter, names, features, clock.elapsed() / 1000.0));
    });
    int received = 0;
    bool gone = false;
    if (started()) {
        while (clock.elapsed() < seconds * 1000 && !m_Interrupted && !gone) {
            gone = deviceGone();
            for (const QJsonObject& record : take()) {
                print(record,
                      QString::number(record["time"].toDouble(), 'f', 3) + "  " + record["event"].toString());
                ++received;
            }
            m_Interrupted = CParameterTool::takeInterrupt();
            QThread::msleep(5);
        }
    }
    camera.setAcquisitionListeners(nullptr, nullptr);
    return finishEvents(received, seconds);
}

int CAcquisitionCommands::finishEvents(int received, double seconds) {
    bool gone = false;
    int result = CParameterTool::Done;
    if (endAcquisition(gone, result))
        return result;
    if (gone)
        return stoppedAnswering(QString("%1 events").arg(received));
    if (received == 0) {
        m_Err
            << "No event arrived in " << seconds
            << " s: is an event's notification on? ('set EventSelector=ExposureEnd EventNotification=On')\n";
        return CParameterTool::Failed;
    }
    if (!m_Failure.isEmpty()) {
        m_Err << "Reading an event's data failed: " << m_Failure << "\n";
        return CParameterTool::Failed;
    }
    return CParameterTool::Done;
}
