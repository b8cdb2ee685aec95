// The save, load, files and file commands: camera settings as feature streams, and files on the device.
#ifndef TOOLS_CAMERAPARAMETERS_DEVICEFILESCOMMANDS_H
#define TOOLS_CAMERAPARAMETERS_DEVICEFILESCOMMANDS_H

#include <QJsonObject>
#include <QMap>
#include <QTextStream>
#include <functional>
#include <parametercollection/ParameterCollection.h>

class CDeviceFilesCommands {
public:
    // With json, what each command reports goes out as one JSON object a line.
    CDeviceFilesCommands(ParameterCollection::CParameterCollection& collection, QTextStream& out,
                         QTextStream& err, bool json = false);

    // Runs one command with what it prints collected in strings, as a window shows it; answers its code.
    static int runCaptured(ParameterCollection::CParameterCollection& collection,
                           const std::function<int(CDeviceFilesCommands&)>& command, QString& out,
                           QString& err);

    // The camera device's settings to a file.
    int save(const QString& path, bool allowEmpty = false);
    // Settings from a file; failing entries are named. With verify the settings are saved again and every
    // entry whose value differs from the file is named.
    int load(const QString& path, bool verify);
    // The device's files with size and access.
    int files();
    // A device file to a local file (or standard output); a local file to a device file.
    int get(const QString& name, const QString& output);
    int put(const QString& name, const QString& input);

private:
    bool readFeatureFile(const QString& path, QMap<QString, QString>& settings);
    QSharedPointer<ParameterCollection::IFileParameter> file(const QString& name, int& refusal);
    void progress(qint64 done, qint64 total);
    // A line for people, or the object for scripts.
    void report(const QString& text, const QJsonObject& object);

    ParameterCollection::CParameterCollection& m_Collection;
    QTextStream& m_Out;
    QTextStream& m_Err;
    qint64 m_StartedMs = 0;
    bool m_Json;
};

#endif
