// The window's parts, the polling that moves polled features, and the settings and files actions.
#include "ViewerWindow.h"
#include "DeviceFilesCommands.h"
#include "DeviceFilesDialog.h"
#include "FeatureInspector.h"
#include "ParameterTool.h"
#include <GenApiEngine/AravisDevices.h>
#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSplitter>
#include <QStatusBar>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>

using namespace ParameterCollection;

namespace {

constexpr int pollIntervalMs = 200;
constexpr int statusMessageMs = 10000;

// A field of the feature's description as one table row; lists become comma-separated.
QString detailRow(const QString& key, const QJsonValue& value) {
    QString text;
    if (value.isArray()) {
        QStringList items;
        for (const QJsonValue& item : value.toArray())
            items.append(item.isObject() ? item.toObject()["name"].toString() + " (" +
                                               item.toObject()["access"].toString() + ")"
                                         : item.toVariant().toString());
        text = items.join(", ");
    } else {
        text = value.toVariant().toString();
    }
    return "<tr><td><b>" + key.toHtmlEscaped() + "</b></td><td>" + text.toHtmlEscaped() + "</td></tr>";
}

}  // namespace

CViewerWindow::CViewerWindow(const QString& device, QWidget* parent)
    : QMainWindow(parent),
      m_Session(new CDeviceSession(device)),
      m_Tree(nullptr),
      m_Details(new QTextBrowser),
      m_PollTimer(new QTimer(this)),
      m_Splitter(new QSplitter) {
    m_Splitter->addWidget(m_Details);
    setCentralWidget(m_Splitter);
    buildDeviceBar();
    buildToolBar();
    showTree();
    m_Splitter->setSizes({700, 380});
    connect(m_PollTimer, &QTimer::timeout, this, &CViewerWindow::poll);
    m_SincePoll.start();
    m_PollTimer->start(pollIntervalMs);
    statusBar()->showMessage(tr("%1 features").arg(m_Tree->shownFeatures().size()), statusMessageMs);
    resize(1080, 720);
}

// The rows go before the session: their parameters are released while the collection still exists.
CViewerWindow::~CViewerWindow() {
    m_PollTimer->stop();
    m_Live.reset();
    delete centralWidget();
}

// A tree for the session's device, in place of the one shown before, with the chosen visibility and filter.
void CViewerWindow::showTree() {
    delete m_Tree;
    m_Live.reset(new CLiveAcquisition(*m_Session));
    m_Tree = new CFeatureTree(m_Session->collection(), m_Session->nodeMap());
    m_Splitter->insertWidget(0, m_Tree);
    m_Tree->setVisibility(m_Visibility);
    m_Tree->setFilter(m_Filter);
    for (auto signal : {&CFeatureTree::refused, &CFeatureTree::written}) {
        connect(m_Tree, signal, this,
                [this](const QString& message) { statusBar()->showMessage(message, statusMessageMs); });
    }
    connect(m_Tree, &CFeatureTree::deviceFailed, this, &CViewerWindow::deviceFailed);
    connect(m_Tree, &QTreeWidget::currentItemChanged, this, &CViewerWindow::showDetails);
    connect(m_Tree, &CFeatureTree::refreshed, this, [this](CFeatureRow* row) {
        if (row->item() == m_Tree->currentItem())
            showDetails();
    });
    setWindowTitle(tr("Camera parameters - %1").arg(m_Session->device()));
    if (m_DevicePicker)
        m_DevicePicker->setCurrentText(m_Session->device());
    showDetails();
    updateConnectionState();
}

// The device line: which device, whether it answers, and the actions that open one.
void CViewerWindow::buildDeviceBar() {
    QToolBar* bar = addToolBar(tr("Device"));
    bar->setObjectName("deviceBar");
    bar->setMovable(false);
    bar->addWidget(new QLabel(tr("Device ")));
    m_DevicePicker = new QComboBox;
    m_DevicePicker->setObjectName("device");
    m_DevicePicker->setEditable(true);
    m_DevicePicker->setMinimumContentsLength(28);
    QStringList known = {m_Session->device(), "sim", "aravis:fake"};
    known.removeDuplicates();
    m_DevicePicker->addItems(known);
    bar->addWidget(m_DevicePicker);
    bar->addAction(tr("Open"), this, [this] {
        QString problem;
        if (!openDevice(m_DevicePicker->currentText().trimmed(), problem))
            QMessageBox::warning(this, tr("Open device"), problem);
    });
    // Finding devices asks the network, so it happens when the user asks for it.
    bar->addAction(tr("Find devices"), this, [this] {
        for (const GenApiEngine::SAravisDevice& found : GenApiEngine::describeAravisDevices()) {
            const QString name = "aravis:" + QString::fromStdString(found.id);
            if (m_DevicePicker->findText(name) < 0)
                m_DevicePicker->addItem(name);
        }
        m_DevicePicker->showPopup();
    });
    m_Reconnect = bar->addAction(tr("Reconnect"), this, [this] {
        QString problem;
        if (!reconnect(problem))
            statusBar()->showMessage(problem, statusMessageMs);
    });
    m_Reconnect->setObjectName("reconnect");
    m_State = new QLabel;
    m_State->setObjectName("connectionState");
    m_State->setMargin(4);
    statusBar()->addPermanentWidget(m_State);
}

bool CViewerWindow::openDevice(const QString& device, QString& problem) {
    std::unique_ptr<CDeviceSession> opened;
    try {
        opened.reset(new CDeviceSession(device));
    } catch (const GenICam::GenericException& error) {
        problem =
            tr("The device '%1' cannot be opened: %2").arg(device, QString::fromUtf8(error.GetDescription()));
        return false;
    } catch (const std::exception& error) {
        problem = tr("The device '%1' cannot be opened: %2").arg(device, QString::fromUtf8(error.what()));
        return false;
    }
    delete m_Tree;  // its parameters belong to the session that goes
    m_Tree = nullptr;
    m_Live.reset();
    m_Session = std::move(opened);
    showTree();
    return true;
}

bool CViewerWindow::reconnect(QString& problem) {
    delete m_Tree;
    m_Tree = nullptr;
    m_Live.reset();
    try {
        m_Session->reconnect();
    } catch (const GenICam::GenericException& error) {
        problem = tr("The device '%1' cannot be opened again: %2")
                      .arg(m_Session->device(), QString::fromUtf8(error.GetDescription()));
    }
    showTree();
    return problem.isEmpty();
}

QString CViewerWindow::connectionState() const {
    if (m_Session->lost())
        return "Lost";
    return m_Session->control() == GenApiEngine::EDeviceControl::ControlledElsewhere ? "Read only"
                                                                                     : "Connected";
}

// A lost device greys its features out: what they show is what it said before it stopped answering.
void CViewerWindow::updateConnectionState() {
    const QString state = connectionState();
    const bool lost = state == "Lost";
    m_Tree->setEnabled(!lost);
    m_Reconnect->setEnabled(lost);
    static const QMap<QString, QString> texts = {
        {"Connected", tr("Connected")},
        {"Read only", tr("Read only: another application controls the device")},
        {"Lost", tr("Lost: the device stopped answering; Reconnect opens it again")}};
    m_State->setText(texts.value(state));
    m_State->setStyleSheet(lost ? "QLabel { background: #c62828; color: white; font-weight: bold; }"
                           : state == "Read only" ? "QLabel { background: #f9a825; }"
                                                  : QString());
}

void CViewerWindow::deviceFailed(const QString& message) {
    m_Session->markLost();
    statusBar()->showMessage(message, statusMessageMs);
    updateConnectionState();
}

void CViewerWindow::buildToolBar() {
    addToolBarBreak();
    QToolBar* bar = addToolBar(tr("View"));
    bar->setMovable(false);
    bar->addWidget(new QLabel(tr("Visibility ")));
    auto visibility = new QComboBox;
    visibility->setObjectName("visibility");
    visibility->addItems(CFeatureTree::visibilities);
    connect(visibility, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        m_Visibility = text;
        m_Tree->setVisibility(text);
    });
    bar->addWidget(visibility);
    auto filter = new QLineEdit;
    filter->setObjectName("filter");
    filter->setPlaceholderText(tr("Filter by name"));
    filter->setClearButtonEnabled(true);
    filter->setMinimumWidth(220);
    connect(filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_Filter = text;
        m_Tree->setFilter(text);
    });
    bar->addWidget(filter);
    bar->addSeparator();
    bar->addAction(tr("Save settings..."), this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, tr("Save settings"), "settings.txt");
        QString report;
        if (!path.isEmpty())
            saveSettings(path, report)
                ? statusBar()->showMessage(report, statusMessageMs)
                : static_cast<void>(QMessageBox::warning(this, tr("Save settings"), report));
    });
    bar->addAction(tr("Load settings..."), this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Load settings"));
        QString report;
        if (!path.isEmpty())
            loadSettings(path, report)
                ? statusBar()->showMessage(report, statusMessageMs)
                : static_cast<void>(QMessageBox::warning(this, tr("Load settings"), report));
    });
    bar->addAction(tr("Device files..."), this, [this] { CDeviceFilesDialog(collection(), this).exec(); });
}

// Polled features move, and a device that missed its heartbeat shows as lost.
void CViewerWindow::poll() {
    const bool wasLost = m_Session->lost();
    if (!wasLost) {
        try {
            collection().poll(m_SincePoll.restart());
        } catch (const Core::Exception::BaseException& error) {
            deviceFailed(tr("Polling failed: %1").arg(error.getMessage()));
        }
    }
    if (m_Session->lost() != wasLost || m_Tree->isEnabled() == m_Session->lost())
        updateConnectionState();
}

void CViewerWindow::showDetails() {
    QSharedPointer<IParameter> parameter = m_Tree->currentParameter();
    if (!parameter) {
        m_Details->clear();
        return;
    }
    QString out, err;
    QTextStream outStream(&out), errStream(&err);
    CFeatureInspector inspector(collection(), m_Session->nodeMap(), outStream, errStream, true, "Guru");
    const QJsonObject description = inspector.description(*parameter);
    QString html = "<table cellspacing=4>";
    static const QStringList keys = {"name",
                                     "displayName",
                                     "description",
                                     "type",
                                     "access",
                                     "visibility",
                                     "value",
                                     "unit",
                                     "representation",
                                     "min",
                                     "max",
                                     "increment",
                                     "entries",
                                     "selectingFeatures",
                                     "selectedFeatures",
                                     "alias"};
    for (const QString& key : keys) {
        const QJsonValue value = description[key];
        const bool empty =
            value.isArray() ? value.toArray().isEmpty() : value.toVariant().toString().isEmpty();
        if (!empty)
            html += detailRow(key, value);
    }
    m_Details->setHtml(html + "</table>");
}

QString CViewerWindow::detailsText() const {
    return m_Details->toPlainText();
}

// Runs one of the tool's settings commands; the report is what it printed.
bool CViewerWindow::runSettingsCommand(const std::function<int(CDeviceFilesCommands&)>& command,
                                       QString& report) {
    QString out, err;
    const int result = CDeviceFilesCommands::runCaptured(collection(), command, out, err);
    report = (out + err).trimmed();
    return result == CParameterTool::Done;
}

bool CViewerWindow::saveSettings(const QString& path, QString& report) {
    return runSettingsCommand([&](CDeviceFilesCommands& commands) { return commands.save(path); }, report);
}

bool CViewerWindow::loadSettings(const QString& path, QString& report) {
    return runSettingsCommand([&](CDeviceFilesCommands& commands) { return commands.load(path, true); },
                              report);
}
