// The viewer's main window: the feature tree of one device, a details pane, the visibility and filter
// controls, settings saved and loaded as feature streams, and the device's files.
#ifndef TOOLS_CAMERAPARAMETERSVIEWER_VIEWERWINDOW_H
#define TOOLS_CAMERAPARAMETERSVIEWER_VIEWERWINDOW_H

#include "DeviceSession.h"
#include "FeatureTree.h"
#include "LiveAcquisition.h"
#include <QElapsedTimer>
#include <QMainWindow>
#include <functional>
#include <memory>

class CDeviceFilesCommands;
class QAction;
class QComboBox;
class QLabel;
class QSplitter;
class QTextBrowser;
class QTimer;

class CViewerWindow : public QMainWindow {
    Q_OBJECT

public:
    // Opens the device ("sim", "aravis:fake", "aravis:ID", "file:PATH"); throws what CDeviceSession throws.
    explicit CViewerWindow(const QString& device, QWidget* parent = nullptr);
    ~CViewerWindow() override;

    CFeatureTree& tree() { return *m_Tree; }
    ParameterCollection::CParameterCollection& collection() { return m_Session->collection(); }
    QString detailsText() const;
    // The camera device's settings to and from a file; the text says what happened, failures by name.
    bool saveSettings(const QString& path, QString& report);
    bool loadSettings(const QString& path, QString& report);
    // Closes the device and opens another (or the same again); on failure the window keeps what it had
    // and answers the reason.
    bool openDevice(const QString& device, QString& problem);
    // Opens the lost device again and shows its features afresh.
    bool reconnect(QString& problem);
    // What the window says of the device: "Connected", "Read only" or "Lost".
    QString connectionState() const;
    // What follows the device's acquisition (null while nothing does).
    const CLiveAcquisition* liveAcquisition() const { return m_Live.get(); }

private:
    void buildToolBar();
    void buildDeviceBar();
    void showTree();
    void updateConnectionState();
    void deviceFailed(const QString& message);
    void showDetails();
    void poll();
    bool runSettingsCommand(const std::function<int(CDeviceFilesCommands&)>& command, QString& report);

    std::unique_ptr<CDeviceSession> m_Session;
    // Feeds the session's frames and events to its chunk and event features; goes before the session.
    std::unique_ptr<CLiveAcquisition> m_Live;
    CFeatureTree* m_Tree;
    QTextBrowser* m_Details;
    QTimer* m_PollTimer;
    QSplitter* m_Splitter;
    QComboBox* m_DevicePicker = nullptr;
    QLabel* m_State = nullptr;
    QAction* m_Reconnect = nullptr;
    QString m_Visibility = "Beginner";
    QString m_Filter;
    QElapsedTimer m_SincePoll;
};

#endif
