// Feature streams through the collection, device files through file parameters.
#include "DeviceFilesCommands.h"
#include "ParameterPrinter.h"
#include "ParameterTool.h"
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <parametercollection/Exceptions.h>
#include <parametercollection/IEnumParameter.h>
#include <parametercollection/IIntegerParameter.h>
#include <parametercollection/ParameterPath.h>
#include <unistd.h>

using namespace ParameterCollection;

namespace {

constexpr int transferChunk = 64 * 1024;

// "Name<TAB>..." entries of a feature stream, keyed by everything before the value.
QMap<QString, QString> streamEntries(const QString& text) {
    QMap<QString, QString> entries;
    for (const QString& line : text.split('\n')) {
        if (line.startsWith('#') || !line.contains('\t'))
            continue;
        const int valueAt = line.lastIndexOf('\t');
        entries.insert(line.left(valueAt), line.mid(valueAt + 1).remove('\r'));
    }
    return entries;
}

// "r" and "w" as the open modes the device offers for the selected file allow.
QString accessOfSelectedFile(IEnumParameter& openMode) {
    const QVector<QString> modes = openMode.isEmpty() ? QVector<QString>() : openMode.getSettableValues();
    const bool readable = modes.contains("Read") || modes.contains("ReadWrite");
    const bool writable = modes.contains("Write") || modes.contains("ReadWrite");
    return QString(readable ? "r" : "-") + (writable ? "w" : "-");
}

}  // namespace

CDeviceFilesCommands::CDeviceFilesCommands(CParameterCollection& collection, QTextStream& out,
                                           QTextStream& err, bool json)
    : m_Collection(collection), m_Out(out), m_Err(err), m_Json(json) {}

void CDeviceFilesCommands::report(const QString& text, const QJsonObject& object) {
    if (m_Json)
        CParameterPrinter(m_Out, true).printObject(object);
    else
        m_Out << text << "\n";
}

int CDeviceFilesCommands::runCaptured(CParameterCollection& collection,
                                      const std::function<int(CDeviceFilesCommands&)>& command, QString& out,
                                      QString& err) {
    QTextStream outStream(&out), errStream(&err);
    CDeviceFilesCommands commands(collection, outStream, errStream);
    const int result = command(commands);
    outStream.flush();
    errStream.flush();
    return result;
}

int CDeviceFilesCommands::save(const QString& path, bool allowEmpty) {
    const QString text = m_Collection.saveFeatureStreamToString(ParameterPath::CameraDevice);
    const int settings = streamEntries(text).size();
    if (settings == 0 && !allowEmpty) {
        m_Err << "Nothing to save: the device marks no feature streamable (--allow-empty writes the empty "
                 "stream).\n";
        return CParameterTool::Failed;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text.toUtf8()) < 0) {
        m_Err << "Cannot write '" << path << "': " << file.errorString() << "\n";
        return CParameterTool::Failed;
    }
    report("Saved " + QString::number(settings) + " settings to " + path,
           {{"saved", settings}, {"file", path}});
    return CParameterTool::Done;
}

// The settings of a feature file, or why it cannot be loaded: a file that cannot be read or holds no
// settings is told apart from settings the device refuses.
bool CDeviceFilesCommands::readFeatureFile(const QString& path, QMap<QString, QString>& settings) {
    QFileInfo info(path);
    QFile file(path);
    QString problem;
    if (!info.exists())
        problem = "no such file";
    else if (info.isDir())
        problem = "it is a folder";
    else if (!file.open(QIODevice::ReadOnly))
        problem = file.errorString();
    else if ((settings = streamEntries(QString::fromUtf8(file.readAll()))).isEmpty())
        problem = "it holds no settings (not a feature stream)";
    if (problem.isEmpty())
        return true;
    m_Err << "Cannot load '" << path << "': " << problem << "\n";
    return false;
}

int CDeviceFilesCommands::load(const QString& path, bool verify) {
    QMap<QString, QString> wanted;
    if (!readFeatureFile(path, wanted))
        return CParameterTool::BadFile;
    QString errorText;
    if (!m_Collection.loadFeatureStream(path, errorText, ParameterPath::CameraDevice)) {
        QStringList refusals = errorText.split('\n', Qt::SkipEmptyParts);
        const QString summary = refusals.isEmpty() ? errorText : refusals.takeFirst();
        m_Err << "Loading '" << path << "': " << qMax(0, wanted.size() - refusals.size()) << " of "
              << wanted.size() << " settings applied, " << refusals.size() << " refused\n";
        if (refusals.isEmpty())
            m_Err << summary << "\n";
        for (const QString& refusal : refusals)
            m_Err << "  " << refusal << "\n";
        return CParameterTool::ValueRefused;
    }
    if (verify) {
        const QMap<QString, QString> now =
            streamEntries(m_Collection.saveFeatureStreamToString(ParameterPath::CameraDevice));
        int differences = 0;
        for (auto entry = wanted.cbegin(); entry != wanted.cend(); ++entry) {
            if (now.value(entry.key(), entry.value()) != entry.value()) {
                m_Err << "Differs after loading: " << entry.key() << " is " << now.value(entry.key())
                      << ", not " << entry.value() << "\n";
                ++differences;
            }
        }
        if (differences)
            return CParameterTool::ValueRefused;
    }
    report("Loaded " + QString::number(wanted.size()) + " settings from " + path,
           {{"loaded", wanted.size()}, {"file", path}});
    return CParameterTool::Done;
}

// A file the device lists but cannot open now is told apart from one it does not have at all.
QSharedPointer<IFileParameter> CDeviceFilesCommands::file(const QString& name, int& refusal) {
    QSharedPointer<IFileParameter> parameter = m_Collection.get(FileParameterName("@CameraDevice/" + name));
    if (parameter && parameter->isAvailable())
        return parameter;
    QSharedPointer<IEnumParameter> selector =
        m_Collection.get(EnumParameterName("@CameraDevice/FileSelector"));
    if (!selector->isEmpty() && selector->getAllValues().contains(name)) {
        m_Err << "Device file '" << name << "' is listed but not available now.\n";
        refusal = CParameterTool::AccessRefused;
    } else {
        m_Err << "Unknown device file '" << name << "'.\n";
        refusal = CParameterTool::UnknownParameter;
    }
    return QSharedPointer<IFileParameter>();
}

// The access of each file comes from the open modes the device offers for it, not from the file
// parameter's probes: probing writability opens the file for writing, which empties it on many devices.
int CDeviceFilesCommands::files() {
    QSharedPointer<IEnumParameter> selector =
        m_Collection.get(EnumParameterName("@CameraDevice/FileSelector"));
    // A device without file access has an empty list of files, which is an answer, not a failure.
    if (selector->isEmpty()) {
        if (!m_Json)
            m_Out << "The device has no files.\n";
        return CParameterTool::Done;
    }
    QSharedPointer<IIntegerParameter> size = m_Collection.get(IntegerParameterName("@CameraDevice/FileSize"));
    QSharedPointer<IEnumParameter> openMode =
        m_Collection.get(EnumParameterName("@CameraDevice/FileOpenMode"));
    for (const QString& name : selector->getAllValues()) {
        QString bytes = "-";
        QString access = "--";
        if (selector->trySetValue(name)) {  // refused for a file that cannot be selected now
            if (size->isReadable())
                bytes = QString::number(size->getValue());
            access = accessOfSelectedFile(*openMode);
        }
        report(name.leftJustified(24) + bytes.rightJustified(10) + "  " + access,
               {{"name", name},
                {"size", bytes == "-" ? QJsonValue() : QJsonValue(bytes.toDouble())},
                {"access", access}});
    }
    return CParameterTool::Done;
}

// A bar on the terminal once a transfer takes longer than a second.
void CDeviceFilesCommands::progress(qint64 done, qint64 total) {
    if (!isatty(STDERR_FILENO) || QDateTime::currentMSecsSinceEpoch() - m_StartedMs < 1000)
        return;
    const int width = 40;
    const int filled = total > 0 ? static_cast<int>(width * done / total) : width;
    m_Err << "\r[" << QString(filled, '#') << QString(width - filled, ' ') << "] " << done << " bytes";
    m_Err.flush();
}

int CDeviceFilesCommands::get(const QString& name, const QString& output) {
    int refusal = CParameterTool::Done;
    QSharedPointer<IFileParameter> parameter = file(name, refusal);
    if (!parameter)
        return refusal;
    if (!parameter->isReadable()) {
        m_Err << "Device file '" << name << "' is not readable.\n";
        return CParameterTool::AccessRefused;
    }
    QFile target;
    const bool toFile = !output.isEmpty() && output != "-";
    if (toFile)
        target.setFileName(output);
    if (!(toFile ? target.open(QIODevice::WriteOnly | QIODevice::Truncate)
                 : target.open(stdout, QIODevice::WriteOnly))) {
        m_Err << "Cannot write '" << output << "': " << target.errorString() << "\n";
        return CParameterTool::Failed;
    }
    m_StartedMs = QDateTime::currentMSecsSinceEpoch();
    QByteArray chunk(transferChunk, '\0');
    qint64 total = 0;
    try {
        for (qint64 count; (count = parameter->read(chunk.data(), chunk.size())) > 0;) {
            target.write(chunk.constData(), count);
            total += count;
            progress(total, 0);
        }
        parameter->close();
    } catch (const Core::Exception::BaseException& e) {
        parameter->close();
        m_Err << "Reading device file '" << name << "' failed: " << e.getMessage() << "\n";
        return CParameterTool::Failed;
    }
    if (toFile) {
        report("Read " + QString::number(total) + " bytes of " + name + " to " + output,
               {{"name", name}, {"read", total}, {"file", output}});
    }
    return CParameterTool::Done;
}

int CDeviceFilesCommands::put(const QString& name, const QString& input) {
    int refusal = CParameterTool::Done;
    QSharedPointer<IFileParameter> parameter = file(name, refusal);
    if (!parameter)
        return refusal;
    QFile source(input);
    if (!source.open(QIODevice::ReadOnly)) {
        m_Err << "Cannot read '" << input << "': " << source.errorString() << "\n";
        return CParameterTool::Failed;
    }
    if (!parameter->isWriteable()) {
        m_Err << "Device file '" << name << "' is not writable.\n";
        return CParameterTool::AccessRefused;
    }
    m_StartedMs = QDateTime::currentMSecsSinceEpoch();
    const qint64 size = source.size();
    qint64 total = 0;
    try {
        while (!source.atEnd()) {
            QByteArray chunk = source.read(transferChunk);
            if (!parameter->write(chunk.data(), chunk.size())) {
                parameter->close();
                m_Err << "Writing device file '" << name << "' failed after " << total << " bytes.\n";
                return CParameterTool::Failed;
            }
            total += chunk.size();
            progress(total, size);
        }
        parameter->close();
    } catch (const Core::Exception::BaseException& e) {
        m_Err << "Writing device file '" << name << "' failed: " << e.getMessage() << "\n";
        return CParameterTool::Failed;
    }
    report("Wrote " + QString::number(total) + " bytes to " + name, {{"name", name}, {"written", total}});
    return CParameterTool::Done;
}
