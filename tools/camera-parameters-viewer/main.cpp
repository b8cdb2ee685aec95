// camera-parameters-viewer [--device DEVICE]: the features of a camera in a window.
#include "CommandHelp.h"
#include "ViewerWindow.h"
#include <GenApi/GenApi.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <iostream>
#include <stdexcept>

namespace {

// The options: --help and the manual page are both made from this table.
const CCommandHelp& commandHelp() {
    static const CCommandHelp help(
        "camera-parameters-viewer",
        "The features of a camera in a window, following the device live: a tree by category with an "
        "editor per type, details of the chosen feature, settings saved and loaded, and the device's files.",
        "camera-parameters-viewer [--device sim|aravis:fake|aravis:ID|file:DESCRIPTION.xml]",
        {{"Options",
          {{"--device DEVICE",
            "sim (the simulated camera, default), aravis:fake (Aravis' fake camera), aravis:ID "
            "(a camera Aravis finds) or file:DESCRIPTION.xml (a description over registers "
            "in memory)"},
           {"--help, -h", "this text"}},
          "A number is written when committed (Enter or leaving the field), only if the feature takes it; "
          "a refusal is shown in the status bar and the field shows the device's value again. Commands that "
          "reset or restart the device ask first. A device that stops answering is shown as lost, its "
          "features greyed out, until Reconnect opens it again."},
         {"Exit codes", {{"0", "the window was closed"}, {"1", "the device could not be opened"}}, ""}});
    return help;
}

}  // namespace

int main(int argc, char** argv) {
    // Help and the manual page need no display.
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--man" || word == "--help" || word == "-h") {
            std::cout << (word == "--man" ? commandHelp().manPage() : commandHelp().usage());
            return 0;
        }
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName("camera-parameters-viewer");
    QCommandLineParser parser;
    parser.setApplicationDescription("The features of a camera, following the device live.");
    parser.addOption({"device", "The device.", "device", "sim"});
    parser.process(application);
    QString failure;
    try {
        CViewerWindow window(parser.value("device"));
        window.show();
        return application.exec();
    } catch (const GenICam::GenericException& error) {
        failure = QString::fromUtf8(error.GetDescription());
    } catch (const std::exception& error) {
        failure = QString::fromUtf8(error.what());
    }
    QMessageBox::critical(nullptr, "camera-parameters-viewer", "The device cannot be opened: " + failure);
    return 1;
}
