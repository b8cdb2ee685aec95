// The device's files: their sizes and access, and a file downloaded to or uploaded from the computer.
#ifndef TOOLS_CAMERAPARAMETERSVIEWER_DEVICEFILESDIALOG_H
#define TOOLS_CAMERAPARAMETERSVIEWER_DEVICEFILESDIALOG_H

#include <QDialog>
#include <functional>
#include <parametercollection/ParameterCollection.h>

class CDeviceFilesCommands;
class QListWidget;
class QPlainTextEdit;

class CDeviceFilesDialog : public QDialog {
    Q_OBJECT

public:
    explicit CDeviceFilesDialog(ParameterCollection::CParameterCollection& collection,
                                QWidget* parent = nullptr);

    // Device file to local file, local file to device file; the outcome is written to the dialog's log.
    bool download(const QString& name, const QString& path);
    bool upload(const QString& name, const QString& path);
    // The file list as the tool's "files" command prints it.
    void refreshList();

private:
    QString selectedFile() const;
    void log(const QString& out, const QString& err);
    int run(const std::function<int(CDeviceFilesCommands&)>& command, QString& out);

    ParameterCollection::CParameterCollection& m_Collection;
    QListWidget* m_Files;
    QPlainTextEdit* m_Log;
};

#endif
