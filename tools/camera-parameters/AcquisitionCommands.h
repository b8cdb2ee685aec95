// The chunks and events commands: acquire from the simulated camera and print each frame's chunk values or
// each event, read through the library while GenApi's adapters hold the frame's data.
#ifndef TOOLS_CAMERAPARAMETERS_ACQUISITIONCOMMANDS_H
#define TOOLS_CAMERAPARAMETERS_ACQUISITIONCOMMANDS_H

#include "DeviceSession.h"
#include "ParameterPrinter.h"
#include <QJsonObject>
#include <QTextStream>
#include <QVector>
#include <mutex>

class CAcquisitionCommands {
public:
    CAcquisitionCommands(CDeviceSession& session, QTextStream& out, QTextStream& err, bool json);

    // Each of the next frames' chunk values; starts (and then stops) the acquisition when it is not running.
    int chunks(int frames);
    // Each event that arrives within the given time, with its data.
    int events(double seconds);

private:
    // Why the device cannot serve the command, or empty when it can.
    QString refusal() const;
    bool startAcquisition();
    void stopAcquisition();
    // What the camera thread read, for this thread to print.
    void push(const QJsonObject& record);
    QVector<QJsonObject> take();
    void print(const QJsonObject& record, const QString& label);
    // The readable values of parameters, by name.
    void readValues(const QStringList& names, QJsonObject& record);
    QStringList chunkFeatures() const;

    CDeviceSession& m_Session;
    QTextStream& m_Out;
    QTextStream& m_Err;
    bool m_Json;
    bool m_StartedHere = false;
    // A standard mutex: the camera's thread and this one share the records (and ThreadSanitizer sees it).
    std::mutex m_Mutex;
    QVector<QJsonObject> m_Records;
    QString m_Failure;
};

#endif
