// camera-parameters: lists, reads, writes and watches the parameters of a camera through the library.
// The default device is the simulated camera, so it runs without hardware.
#include "DescriptionValidation.h"
#include "DeviceSession.h"
#include "ParameterShell.h"
#include "ParameterTool.h"
#include "ToolOptions.h"
#include <GenApiEngine/AravisDevices.h>
#include <QCoreApplication>
#include <QTextStream>
#include <parametercollection/Exceptions.h>
#include <stdexcept>

namespace {

// One line a device, its name as --device takes it first, so that it can be pasted.
int listDevices(QTextStream& out) {
    const std::vector<GenApiEngine::SAravisDevice> devices = GenApiEngine::describeAravisDevices();
    if (devices.empty())
        out << "No device found\n";
    for (const GenApiEngine::SAravisDevice& device : devices) {
        out << ("aravis:" + QString::fromStdString(device.id)).leftJustified(32) << " "
            << QString::fromStdString(device.vendor + " " + device.model).trimmed().leftJustified(28) << " "
            << QString::fromStdString(device.protocol).leftJustified(11) << " "
            << QString::fromStdString(device.address) << "\n";
    }
    return CParameterTool::Done;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const CToolOptions options(QCoreApplication::arguments().mid(1));
    if (options.help) {
        out << CToolOptions::usage();
        return CParameterTool::Done;
    }
    if (!options.valid()) {
        err << options.errorText() << "\nRun 'camera-parameters help' for the commands and options.\n";
        return CParameterTool::WrongUsage;
    }
    if (options.command == "devices")
        return listDevices(out);
    if (options.command == "validate")
        return validateDescriptionFile(options.arguments.first(), out, err);
    try {
        CDeviceSession session(options.device);
        if (options.command == "shell")
            return CParameterShell(session, options, out, err).run();
        return CParameterTool(session.collection(), session.nodeMap(), options, out, err).run();
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
