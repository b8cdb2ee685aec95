// The viewer's main window: the feature tree of one device, a details pane, the visibility and filter
// controls, settings saved and loaded as feature streams, and the device's files.
#ifndef TOOLS_CAMERAPARAMETERSVIEWER_VIEWERWINDOW_H
#define TOOLS_CAMERAPARAMETERSVIEWER_VIEWERWINDOW_H

#include "DeviceSession.h"
#include "FeatureTree.h"
#include <QElapsedTimer>
#include <QMainWindow>
#include <functional>
#include <memory>

class CDeviceFilesCommands;
class QTextBrowser;
class QTimer;

class CViewerWindow : public QMainWindow {
    Q_OBJECT

public:
    // Opens the device ("sim", "aravis:fake", "aravis:ID"); throws what CDeviceSession throws.
    explicit CViewerWindow(const QString& device, QWidget* parent = nullptr);
    ~CViewerWindow() override;

    CFeatureTree& tree() { return *m_Tree; }
    ParameterCollection::CParameterCollection& collection() { return m_Session->collection(); }
    QString detailsText() const;
    // The camera device's settings to and from a file; the text says what happened, failures by name.
    bool saveSettings(const QString& path, QString& report);
    bool loadSettings(const QString& path, QString& report);

private:
    void buildToolBar();
    void showDetails();
    void poll();
    bool runSettingsCommand(const std::function<int(CDeviceFilesCommands&)>& command, QString& report);

    std::unique_ptr<CDeviceSession> m_Session;
    CFeatureTree* m_Tree;
    QTextBrowser* m_Details;
    QTimer* m_PollTimer;
    QElapsedTimer m_SincePoll;
};

#endif
