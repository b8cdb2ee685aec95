// The window's parts, the polling that moves polled features, and the settings and files actions.
#include "ViewerWindow.h"
#include "DeviceFilesCommands.h"
#include "DeviceFilesDialog.h"
#include "FeatureInspector.h"
#include "ParameterTool.h"
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
      m_Tree(new CFeatureTree(m_Session->collection(), m_Session->nodeMap())),
      m_Details(new QTextBrowser),
      m_PollTimer(new QTimer(this)) {
    setWindowTitle(tr("Camera parameters - %1").arg(device));
    auto splitter = new QSplitter;
    splitter->addWidget(m_Tree);
    splitter->addWidget(m_Details);
    splitter->setSizes({700, 380});
    setCentralWidget(splitter);
    buildToolBar();
    connect(m_Tree, &CFeatureTree::refused, this,
            [this](const QString& message) { statusBar()->showMessage(message, statusMessageMs); });
    connect(m_Tree, &QTreeWidget::currentItemChanged, this, &CViewerWindow::showDetails);
    connect(m_Tree, &CFeatureTree::refreshed, this, [this](CFeatureRow* row) {
        if (row->item() == m_Tree->currentItem())
            showDetails();
    });
    connect(m_PollTimer, &QTimer::timeout, this, &CViewerWindow::poll);
    m_SincePoll.start();
    m_PollTimer->start(pollIntervalMs);
    statusBar()->showMessage(tr("%1 features").arg(m_Tree->shownFeatures().size()), statusMessageMs);
    resize(1080, 720);
}

// The rows go before the session: their parameters are released while the collection still exists.
CViewerWindow::~CViewerWindow() {
    m_PollTimer->stop();
    delete centralWidget();
}

void CViewerWindow::buildToolBar() {
    QToolBar* bar = addToolBar(tr("View"));
    bar->setMovable(false);
    bar->addWidget(new QLabel(tr("Visibility ")));
    auto visibility = new QComboBox;
    visibility->setObjectName("visibility");
    visibility->addItems(CFeatureTree::visibilities);
    connect(visibility, &QComboBox::currentTextChanged, m_Tree, &CFeatureTree::setVisibility);
    bar->addWidget(visibility);
    auto filter = new QLineEdit;
    filter->setObjectName("filter");
    filter->setPlaceholderText(tr("Filter by name"));
    filter->setClearButtonEnabled(true);
    connect(filter, &QLineEdit::textChanged, m_Tree, &CFeatureTree::setFilter);
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

void CViewerWindow::poll() {
    try {
        collection().poll(m_SincePoll.restart());
    } catch (const Core::Exception::BaseException& error) {
        statusBar()->showMessage(tr("Polling failed: %1").arg(error.getMessage()), statusMessageMs);
    }
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
