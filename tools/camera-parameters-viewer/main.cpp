// camera-parameters-viewer [--device sim|aravis:fake|aravis:ID]: the features of a camera in a window.
#include "ViewerWindow.h"
#include <GenApi/GenApi.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <stdexcept>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("camera-parameters-viewer");
    QCommandLineParser parser;
    parser.setApplicationDescription("The features of a camera, following the device live.");
    parser.addHelpOption();
    parser.addOption({"device", "The device: sim (default), aravis:fake or aravis:ID.", "device", "sim"});
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
