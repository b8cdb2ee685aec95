// camera-parameters: lists, reads, writes and watches the parameters of a camera through the library.
// The default device is the simulated camera, so it runs without hardware.
#include "DescriptionValidation.h"
#include "DeviceSession.h"
#include "ErrorReport.h"
#include "ParameterPrinter.h"
#include "ParameterShell.h"
#include "ParameterTool.h"
#include "ToolOptions.h"
#include <GenApiEngine/AravisDevices.h>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextStream>
#include <parametercollection/Exceptions.h>
#include <stdexcept>

namespace {

// One line a device, its name as --device takes it first, so that it can be pasted.
int listDevices(QTextStream& out, bool json) {
    const std::vector<GenApiEngine::SAravisDevice> devices = GenApiEngine::describeAravisDevices();
    if (devices.empty() && !json)
        out << "No device found\n";
    for (const GenApiEngine::SAravisDevice& device : devices) {
        if (json) {
            CParameterPrinter(out, true).printObject(
                {{"device", "aravis:" + QString::fromStdString(device.id)},
                 {"vendor", QString::fromStdString(device.vendor)},
                 {"model", QString::fromStdString(device.model)},
                 {"serialNumber", QString::fromStdString(device.serialNumber)},
                 {"protocol", QString::fromStdString(device.protocol)},
                 {"address", QString::fromStdString(device.address)}});
            continue;
        }
        out << ("aravis:" + QString::fromStdString(device.id)).leftJustified(32) << " "
            << QString::fromStdString(device.vendor + " " + device.model).trimmed().leftJustified(28) << " "
            << QString::fromStdString(device.protocol).leftJustified(11) << " "
            << QString::fromStdString(device.address) << "\n";
    }
    return CParameterTool::Done;
}

// Runs one command on an opened device; errors of opening it are the command's errors too.
int runOnDevice(const CToolOptions& options, QTextStream& out, QTextStream& err) {
    try {
        CDeviceSession session(options.device);
        CParameterTool::reportControl(session, err);
        if (options.command == "shell")
            return CParameterShell(session, options, out, err).run();
        return CParameterTool(session, options, out, err).run();
    } catch (const std::invalid_argument& e) {
        err << e.what() << "\n";
        return CParameterTool::WrongUsage;
    } catch (const GenICam::GenericException& e) {
        err << "Cannot open device '" << options.device << "': " << e.GetDescription() << "\n";
        return CParameterTool::DeviceNotFound;
    } catch (const Core::Exception::BaseException& e) {
        err << "Error: " << e.getMessage() << "\n";
        return CParameterTool::Failed;
    }
}

int runCommand(const CToolOptions& options, QTextStream& out, QTextStream& err) {
    if (!options.valid()) {
        err << options.errorText() << "\nRun 'camera-parameters help' for the commands and options.\n";
        return CParameterTool::WrongUsage;
    }
    if (options.command == "devices")
        return listDevices(out, options.json);
    if (options.command == "validate")
        return validateDescriptionFile(options.arguments.first(), out, err, options.json);
    return runOnDevice(options, out, err);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    // The library's debug messages are for its developers, not for the tool's output.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules("*.debug=false");
    QTextStream out(stdout);
    QTextStream err(stderr);
    const CToolOptions options(QCoreApplication::arguments().mid(1));
    if (options.help) {
        out << (options.man ? CToolOptions::manPage() : CToolOptions::usage());
        return CParameterTool::Done;
    }
    // A shell reports each of its commands itself.
    CErrorReport report(err, options.json && options.command != "shell");
    const int exitCode = runCommand(options, out, report.stream());
    out.flush();
    return report.finish(exitCode);
}
