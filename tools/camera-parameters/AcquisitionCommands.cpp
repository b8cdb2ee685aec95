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

QString CAcquisitionCommands::refusal() const {
    if (!m_Session.simulatedCamera()) {
        return "Device '" + m_Session.device() +
               "' sends this tool no frames: chunk data and events are read from the simulated camera.";
    }
    return QString();
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

bool CAcquisitionCommands::startAcquisition() {
    if (m_Session.simulatedCamera()->isAcquiring())
        return true;
    QSharedPointer<ICommandParameter> start =
        m_Session.collection().get(CommandParameterName("AcquisitionStart"));
    if (!start)
        return false;
    start->execute(true);
    m_StartedHere = true;
    return true;
}

void CAcquisitionCommands::stopAcquisition() {
    m_Session.simulatedCamera()->setAcquisitionListeners(nullptr, nullptr);
    if (!m_StartedHere)
        return;
    m_StartedHere = false;
    if (QSharedPointer<ICommandParameter> stop =
            m_Session.collection().get(CommandParameterName("AcquisitionStop")))
        stop->execute(true);
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

int CAcquisitionCommands::chunks(int frames) {
    const QString refused = refusal();
    if (!refused.isEmpty()) {
        m_Err << refused << "\n";
        return CParameterTool::Failed;
    }
    QSharedPointer<IParameter> chunkMode = m_Session.collection().get(ParameterName("ChunkModeActive"));
    if (!chunkMode || chunkMode->toString() != "1") {
        m_Err << "Chunk mode is off: 'set ChunkModeActive=1' first (ChunkSelector and ChunkEnable choose the "
                 "chunks).\n";
        return CParameterTool::AccessRefused;
    }
    const QStringList names = chunkFeatures();
    GenApi::CChunkAdapterGEV adapter(m_Session.nodeMap());
    int index = 0;
    m_Session.simulatedCamera()->setAcquisitionListeners(
        [&](std::vector<uint8_t>& payload, bool hasChunks) {
            QJsonObject record{{"frame", index++}};
            try {
                if (hasChunks) {
                    adapter.AttachBuffer(payload.data(), static_cast<int64_t>(payload.size()));
                    readValues(names, record);
                    adapter.DetachBuffer();
                }
            } catch (const GenICam::GenericException& e) {
                std::lock_guard<std::mutex> lock(m_Mutex);
                m_Failure = e.GetDescription();
            } catch (const Core::Exception::BaseException& e) {
                std::lock_guard<std::mutex> lock(m_Mutex);
                m_Failure = e.getMessage();
            }
            push(record);
        },
        nullptr);
    startAcquisition();
    int printed = 0;
    QElapsedTimer clock;
    clock.start();
    int result = CParameterTool::Done;
    // A frame takes at most a second at the lowest frame rate; an acquisition that ends early is named.
    bool ended = false;
    while (printed < frames && result == CParameterTool::Done) {
        // Once the camera stops (or the time is up), the frame it is delivering is waited for: taking the
        // listeners away returns only when no frame is being delivered.
        if (!ended &&
            (!m_Session.simulatedCamera()->isAcquiring() || clock.elapsed() > 2000 + 1100LL * frames)) {
            m_Session.simulatedCamera()->setAcquisitionListeners(nullptr, nullptr);
            ended = true;
        }
        for (const QJsonObject& record : take()) {
            if (printed < frames)
                print(record, "frame " + QString::number(record["frame"].toInt()) + ":");
            ++printed;
        }
        if (CParameterTool::takeInterrupt())
            result = CParameterTool::Interrupted;
        else if (printed < frames && ended)
            result = CParameterTool::Failed;
        QThread::msleep(5);
    }
    if (printed < frames && result == CParameterTool::Failed)
        m_Err << "The acquisition ended after " << printed << " of " << frames << " frames.\n";
    stopAcquisition();
    if (!m_Failure.isEmpty() && result == CParameterTool::Done) {
        m_Err << "Reading a frame's chunks failed: " << m_Failure << "\n";
        result = CParameterTool::Failed;
    }
    return result;
}

int CAcquisitionCommands::events(double seconds) {
    const QString refused = refusal();
    if (!refused.isEmpty()) {
        m_Err << refused << "\n";
        return CParameterTool::Failed;
    }
    // The name of each event: the node that carries its ID and is no port (EventExposureEnd, ...).
    QMap<uint64_t, QString> eventNames;
    GenApi::NodeList_t nodes;
    m_Session.nodeMap()->GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        bool ok = false;
        const uint64_t id = QString(node->GetEventID().c_str()).toULongLong(&ok, 16);
        if (ok && node->GetPrincipalInterfaceType() != GenApi::intfIPort)
            eventNames[id] = node->GetName().c_str();
    }
    QStringList all;
    for (const QSharedPointer<IParameter>& parameter : m_Session.collection().getAllParameter()) {
        if (valueFeature(*parameter))
            all.append(parameter->getName());
    }
    GenApi::CEventAdapterGEV adapter(m_Session.nodeMap());
    QElapsedTimer clock;
    clock.start();
    m_Session.simulatedCamera()->setAcquisitionListeners(nullptr, [&](std::vector<uint8_t>& message) {
        adapter.DeliverMessage(message.data(), static_cast<uint32_t>(message.size()));
        const uint64_t id = message.size() > 12 ? uint64_t(message[10]) << 8 | message[11] : 0;
        const QString name = eventNames.value(id, "0x" + QString::number(id, 16));
        QJsonObject record{{"time", clock.elapsed() / 1000.0}, {"event", name}};
        QStringList data;
        for (const QString& candidate : all) {
            if (candidate.startsWith(name) && candidate != name)
                data.append(candidate);
        }
        readValues(data, record);
        push(record);
    });
    startAcquisition();
    int received = 0;
    int result = CParameterTool::Done;
    while (clock.elapsed() < seconds * 1000) {
        for (const QJsonObject& record : take()) {
            print(record,
                  QString::number(record["time"].toDouble(), 'f', 3) + "  " + record["event"].toString());
            ++received;
        }
        if (CParameterTool::takeInterrupt()) {
            result = CParameterTool::Interrupted;
            break;
        }
        QThread::msleep(5);
    }
    stopAcquisition();
    if (received == 0 && result == CParameterTool::Done) {
        m_Err
            << "No event arrived in " << seconds
            << " s: is an event's notification on? ('set EventSelector=ExposureEnd EventNotification=On')\n";
        result = CParameterTool::Failed;
    }
    return result;
}
