// The dialog runs the tool's file commands and shows what they print.
#include "DeviceFilesDialog.h"
#include "DeviceFilesCommands.h"
#include "ParameterTool.h"
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

CDeviceFilesDialog::CDeviceFilesDialog(ParameterCollection::CParameterCollection& collection, QWidget* parent)
    : QDialog(parent), m_Collection(collection), m_Files(new QListWidget), m_Log(new QPlainTextEdit) {
    setWindowTitle(tr("Device files"));
    m_Files->setFont(QFont(QStringLiteral("monospace")));
    m_Log->setReadOnly(true);
    auto downloadButton = new QPushButton(tr("Download..."));
    auto uploadButton = new QPushButton(tr("Upload..."));
    connect(downloadButton, &QPushButton::clicked, this, [this] {
        const QString name = selectedFile();
        const QString path =
            name.isEmpty() ? QString() : QFileDialog::getSaveFileName(this, tr("Save %1").arg(name), name);
        if (!path.isEmpty())
            download(name, path);
    });
    connect(uploadButton, &QPushButton::clicked, this, [this] {
        const QString name = selectedFile();
        const QString path =
            name.isEmpty() ? QString() : QFileDialog::getOpenFileName(this, tr("Upload to %1").arg(name));
        if (!path.isEmpty())
            upload(name, path);
    });
    auto buttons = new QHBoxLayout;
    buttons->addWidget(downloadButton);
    buttons->addWidget(uploadButton);
    buttons->addStretch();
    auto close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->addWidget(close);
    auto layout = new QVBoxLayout(this);
    layout->addWidget(m_Files, 2);
    layout->addLayout(buttons);
    layout->addWidget(m_Log, 1);
    resize(560, 420);
    refreshList();
}

QString CDeviceFilesDialog::selectedFile() const {
    QListWidgetItem* item = m_Files->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

void CDeviceFilesDialog::log(const QString& out, const QString& err) {
    if (!out.trimmed().isEmpty())
        m_Log->appendPlainText(out.trimmed());
    if (!err.trimmed().isEmpty())
        m_Log->appendPlainText(err.trimmed());
}

// Runs one of the tool's file commands with its output going to strings; answers its exit code.
int CDeviceFilesDialog::run(const std::function<int(CDeviceFilesCommands&)>& command, QString& out) {
    QString err;
    const int result = CDeviceFilesCommands::runCaptured(m_Collection, command, out, err);
    log(QString(), err);
    return result;
}

void CDeviceFilesDialog::refreshList() {
    QString out;
    run([](CDeviceFilesCommands& commands) { return commands.files(); }, out);
    m_Files->clear();
    for (const QString& line : out.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        auto item = new QListWidgetItem(line, m_Files);
        item->setData(Qt::UserRole, line.section(QLatin1Char(' '), 0, 0));
    }
}

bool CDeviceFilesDialog::download(const QString& name, const QString& path) {
    QString out;
    const int result = run([&](CDeviceFilesCommands& commands) { return commands.get(name, path); }, out);
    log(out, QString());
    return result == CParameterTool::Done;
}

bool CDeviceFilesDialog::upload(const QString& name, const QString& path) {
    QString out;
    const int result = run([&](CDeviceFilesCommands& commands) { return commands.put(name, path); }, out);
    log(out, QString());
    refreshList();
    return result == CParameterTool::Done;
}
