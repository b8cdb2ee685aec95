// The chunks and events commands: acquire and print each frame's chunk values (simulated camera or a device
// Aravis opens) or each event (simulated camera), read through the library while GenApi's adapters hold the
// frame's data.
#ifndef TOOLS_CAMERAPARAMETERS_ACQUISITIONCOMMANDS_H
#define TOOLS_CAMERAPARAMETERS_ACQUISITIONCOMMANDS_H

#include "DeviceSession.h"
#include "FrameSource.h"
#include <GenApi/EventAdapter.h>
#include <QMap>
#include "ParameterPrinter.h"
#include <QJsonObject>
#include <QTextStream>
#include <QVector>
#include <functional>
#include <mutex>

class CAcquisitionCommands {
public:
    CAcquisitionCommands(CDeviceSession& session, QTextStream& out, QTextStream& err, bool json);

    // Each of the next frames' chunk values; starts (and then stops) the acquisition when it is not running.
    int chunks(int frames);
    // Each event that arrives within the given time, with its data.
    int events(double seconds);

private:
    // Why the device cannot send events, or empty when it can.
    QString eventRefusal() const;
    // True once the device stopped answering.
    bool deviceGone() const;
    bool started();
    void stopAcquisition();
    void failSafely(const std::function<void()>& work);
    QJsonObject frameRecord(int index, uint8_t* data, int64_t size, bool hasChunks,
                            GenApi::CChunkAdapter* adapter, const QStringList& names);
    int printFrames(CFrameSource& source, int frames);
    bool endAcquisition(bool& gone, int& result);
    int stoppedAnswering(const QString& sent);
    int finishFrames(int printed, int frames);
    QMap<uint64_t, QString> eventNames() const;
    QJsonObject eventRecord(std::vector<uint8_t>& message, GenApi::CEventAdapter& adapter,
                            const QMap<uint64_t, QString>& names, const QStringList& features,
                            double seconds);
    int finishEvents(int received, double seconds);
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
    bool m_Interrupted = false;
    double m_WaitedSeconds = 0;
    QString m_StartFailure;
    // A standard mutex: the camera's thread and this one share the records (and ThreadSanitizer sees it).
    std::mutex m_Mutex;
    QVector<QJsonObject> m_Records;
    QString m_Failure;
};

#endif
