// The commands of camera-parameters on the public interface of the collection.
#include "ParameterTool.h"
#include "NameSuggestion.h"
#include "AcquisitionCommands.h"
#include "DeviceFilesCommands.h"
#include "FeatureInspector.h"
#include "RegisterAccess.h"
#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QTimer>
#include <atomic>
#include <parametercollection/Exceptions.h>

using namespace ParameterCollection;

namespace {

const QStringList visibilityOrder = {"Beginner", "Expert", "Guru", "Invisible"};

QJsonArray toJson(const QList<QString>& names) {
    return QJsonArray::fromStringList(names);
}

}  // namespace

CParameterTool::CParameterTool(CDeviceSession& session, const CToolOptions& options, QTextStream& out,
                               QTextStream& err)
    : m_Session(session),
      m_Collection(session.collection()),
      m_NodeMap(session.nodeMap()),
      m_Options(options),
      m_Out(out),
      m_Err(err),
      m_Printer(out, options.json) {}

namespace {
std::atomic<bool> interruptRequested{false};
}  // namespace

void CParameterTool::requestInterrupt() {
    interruptRequested.store(true);
}

bool CParameterTool::takeInterrupt() {
    return interruptRequested.exchange(false);
}

void CParameterTool::reportControl(const CDeviceSession& session, QTextStream& err) {
    if (session.control() == GenApiEngine::EDeviceControl::ControlledElsewhere) {
        err << "Device '" << session.device()
            << "' is controlled by another application: its features can be read, not written.\n";
    }
}

int CParameterTool::run() {
    const QString& command = m_Options.command;
    int lost = Done;
    if (command != "genicam" && refuseLostDevice(lost))
        return lost;
    if (command == "list")
        return list();
    if (command == "get")
        return get();
    if (command == "set")
        return set();
    if (command == "watch")
        return watch();
    if (command == "relations")
        return relations();
    if (command == "dump")
        return dump();
    CAcquisitionCommands acquisition(m_Session, m_Out, m_Err, m_Options.json);
    if (command == "chunks")
        return acquisition.chunks(m_Options.frames);
    if (command == "events")
        return acquisition.events(m_Options.seconds);
    CDeviceFilesCommands deviceFiles(m_Collection, m_Out, m_Err, m_Options.json);
    if (command == "save")
        return deviceFiles.save(m_Options.arguments.at(0), m_Options.allowEmpty);
    if (command == "load")
        return deviceFiles.load(m_Options.arguments.at(0), m_Options.verify);
    if (command == "files")
        return deviceFiles.files();
    if (command == "file" && m_Options.arguments.at(0) == "get")
        return deviceFiles.get(m_Options.arguments.at(1), m_Options.arguments.value(2));
    if (command == "file")
        return deviceFiles.put(m_Options.arguments.at(1), m_Options.arguments.at(2));
    CFeatureInspector inspector(m_Collection, m_NodeMap, m_Out, m_Err, m_Options.json, m_Options.visibility);
    if (command == "tree")
        return inspector.tree(m_Options.arguments.value(0));
    if (command == "describe")
        return inspector.describe(m_Options.arguments.at(0));
    if (command == "genicam")
        return inspector.genicam();
    if (command == "execute")
        return inspector.execute(m_Options.arguments.at(0), m_Options.seconds);
    return WrongUsage;
}

QSharedPointer<IParameter> CParameterTool::find(const QString& name) {
    QSharedPointer<IParameter> parameter = m_Collection.get(ParameterName(name));
    if (!parameter)
        m_Err << CNameSuggestion::unknownParameterText(name, m_NodeMap);
    return parameter;
}

// Features only unless --all; at most the chosen visibility; the filter matches names case-insensitively.
bool CParameterTool::listed(IParameter& parameter) {
    if (!m_Options.allNodes &&
        parameter.getAdvancedParameterAccess()->getPropertyOrDefault("IsFeature", "false") != "true") {
        return false;
    }
    if (parameter.getVisibility() > visibilityOrder.indexOf(m_Options.visibility))
        return false;
    return m_Options.filter.isEmpty() ||
           parameter.getFullName().contains(m_Options.filter, Qt::CaseInsensitive);
}

int CParameterTool::list() {
    m_Printer.printHeader();
    for (const QSharedPointer<IParameter>& parameter : m_Collection.getAllParameter()) {
        if (listed(*parameter))
            m_Printer.print(*parameter);
    }
    return Done;
}

// Each value is read from the device afresh, so that a device that stopped answering says so rather than
// a value kept from before.
int CParameterTool::get() {
    int result = Done;
    for (const QString& name : m_Options.arguments) {
        if (refuseLostDevice(result))
            return result;
        if (CRegisterAccess::isRegisterName(name)) {
            const int registerResult = getRegister(name);
            result = registerResult == Done ? result : registerResult;
            continue;
        }
        QSharedPointer<IParameter> parameter = find(name);
        if (!parameter) {
            result = UnknownParameter;
            continue;
        }
        try {
            parameter->getAdvancedParameterAccess()->refresh();
            if (!parameter->isReadable()) {
                if (refuseLostDevice(result))
                    return result;
                m_Err << "Parameter '" << parameter->getFullName() << "' is not readable.\n";
                result = AccessRefused;
                continue;
            }
            parameter->toString();  // a device that stopped answering says so here
        } catch (const Core::Exception::BaseException& e) {
            return deviceStoppedAnswering(e.getMessage());
        }
        m_Printer.print(*parameter);
    }
    return result;
}

int CParameterTool::getRegister(const QString& name) {
    return transferRegister(name, "read",
                            [&] { m_Printer.printObject(CRegisterAccess(m_NodeMap, name).read()); });
}

int CParameterTool::setRegister(const QString& name, const QString& value) {
    return transferRegister(name, "written", [&] {
        CRegisterAccess access(m_NodeMap, name);
        access.write(value);
        m_Printer.printObject(access.read());
    });
}

// A malformed register name is wrong usage, a malformed value a refused one, a transfer the device
// refuses a refused access.
int CParameterTool::transferRegister(const QString& name, const char* done,
                                     const std::function<void()>& transfer) {
    try {
        transfer();
    } catch (const std::domain_error& e) {
        m_Err << e.what() << "\n";
        return ValueRefused;
    } catch (const std::invalid_argument& e) {
        m_Err << e.what() << "\n";
        return WrongUsage;
    } catch (const GenICam::GenericException& e) {
        m_Err << "Register " << name << " cannot be " << done << ": " << e.GetDescription() << "\n";
        return AccessRefused;
    }
    return Done;
}

int CParameterTool::deviceStoppedAnswering(const QString& message) {
    m_Session.markLost();
    m_Err << "Device '" << m_Options.device << "' stopped answering: " << message << "\n";
    return Failed;
}

bool CParameterTool::refuseLostDevice(int& result) {
    if (!m_Session.lost())
        return false;
    m_Err << "Device '" << m_Options.device << "' is lost: it stopped answering.\n";
    result = Failed;
    return true;
}

// The writes go in order in this one session, so that a selector written first selects what follows.
int CParameterTool::set() {
    for (const QPair<QString, QString>& setting : m_Options.settings()) {
        const int result = setOne(setting.first, setting.second);
        if (result != Done)
            return result;
    }
    return Done;
}

int CParameterTool::setOne(const QString& name, const QString& value) {
    int lost = Done;
    if (refuseLostDevice(lost))
        return lost;
    if (CRegisterAccess::isRegisterName(name))
        return setRegister(name, value);
    QSharedPointer<IParameter> parameter = find(name);
    if (!parameter)
        return UnknownParameter;
    try {
        parameter->parseAndSetValue(value);
    } catch (const Core::Exception::ArgumentException& e) {
        m_Err << "Value '" << value << "' refused: " << e.getMessage() << "\n";
        return ValueRefused;
    } catch (const Core::Exception::ArgumentOutOfRangeException& e) {
        m_Err << "Value '" << value << "' refused: " << e.getMessage() << "\n";
        return ValueRefused;
    } catch (const Core::Exception::InvalidOperationException& e) {
        m_Err << "Parameter '" << parameter->getFullName() << "' cannot be set: "
              << (m_Session.control() == GenApiEngine::EDeviceControl::ControlledElsewhere
                      ? "another application controls device '" + m_Options.device + "'."
                      : e.getMessage())
              << "\n";
        return AccessRefused;
    } catch (const Core::Exception::BaseException& e) {
        return deviceStoppedAnswering(e.getMessage());
    }
    if (parameter->isReadable())
        m_Printer.print(*parameter);
    return Done;
}

// Each change arrives from the decoupler thread and is printed on this thread; the node map is polled
// every 100 ms so that polled features (such as temperatures) report their changes.
int CParameterTool::watch() {
    QList<QSharedPointer<IParameter>> watched;
    for (const QString& name : m_Options.arguments) {
        QSharedPointer<IParameter> parameter = find(name);
        if (!parameter)
            return UnknownParameter;
        watched.append(parameter);
    }
    QElapsedTimer clock;
    clock.start();
    for (const QSharedPointer<IParameter>& parameter : watched) {
        IParameter* raw = parameter.data();
        QObject::connect(
            raw, &IParameter::parameterDataChangedDecoupled, QCoreApplication::instance(),
            [this, raw, &clock](QSharedPointer<const ParameterData> data) {
                QJsonObject change{{"time", clock.elapsed() / 1000.0},
                                   {"name", raw->getFullName()},
                                   {"value", CParameterPrinter::typedValue(*data)}};
                if (m_Options.json) {
                    m_Printer.printObject(change);
                } else {
                    m_Out << QString::number(change["time"].toDouble(), 'f', 3) << "  " << raw->getFullName()
                          << " = " << data->valueText << "\n";
                }
                m_Out.flush();
            },
            Qt::QueuedConnection);
        parameter->scheduleParameterDataChangedCheck(true);
    }
    // Each period invalidates the watched features, so that they are read from the device afresh past
    // the values the engine keeps; that also tells whether the device still answers: a loss ends the
    // watch with a failure.
    QTimer poller;
    QObject::connect(&poller, &QTimer::timeout, [this, &watched] {
        if (takeInterrupt()) {
            QCoreApplication::exit(Interrupted);
            return;
        }
        int lost = Done;
        if (refuseLostDevice(lost)) {
            QCoreApplication::exit(lost);
            return;
        }
        try {
            m_Collection.poll(100);
            for (const QSharedPointer<IParameter>& parameter : watched)
                parameter->getAdvancedParameterAccess()->refresh();
            watched.first()->getParameterData();
        } catch (const Core::Exception::BaseException& e) {
            QCoreApplication::exit(deviceStoppedAnswering(e.getMessage()));
        }
    });
    poller.start(100);
    QTimer::singleShot(static_cast<int>(m_Options.seconds * 1000), QCoreApplication::instance(),
                       [] { QCoreApplication::exit(Done); });
    return QCoreApplication::exec();
}

int CParameterTool::relations() {
    QSharedPointer<IParameter> parameter = find(m_Options.arguments.at(0));
    if (!parameter)
        return UnknownParameter;
    const QString name = parameter->getFullName();
    const QJsonObject object{
        {"name", name},
        {"categoryFeatures",
         toJson(m_Collection.getParameterRelation(name, ParameterRelation_CategoryFeatures, false))},
        {"selectedFeatures",
         toJson(m_Collection.getParameterRelation(name, ParameterRelation_SelectedFeatures, false))},
        {"selectingFeatures",
         toJson(m_Collection.getParameterRelation(name, ParameterRelation_SelectingFeatures, false))},
        {"categoryPath",
         toJson(m_Collection.getParameterRelation(name, ParameterRelation_CategoryPath, false))}};
    m_Printer.printObject(object);
    return Done;
}

int CParameterTool::dump() {
    CParameterPrinter printer(m_Out, true);
    for (const QSharedPointer<IParameter>& parameter : m_Collection.getAllParameter()) {
        printer.printObject(printer.describe(*parameter, true));
    }
    return Done;
}
