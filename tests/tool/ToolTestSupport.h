// What the tests of camera-parameters share: running it, its shell, descriptions written for a test, and
// tmux for the interactive shell.
#ifndef TESTS_TOOL_TOOLTESTSUPPORT_H
#define TESTS_TOOL_TOOLTESTSUPPORT_H

#include "ProcessRun.h"
#include <QFile>
#include <QProcess>
#include <QThread>

inline SRun runTool(const QStringList& arguments) {
    return runProgram(CAMERA_PARAMETERS_TOOL, arguments);
}

// Runs a shell session with the given lines on its standard input.
inline SRun runShell(const QStringList& lines, const QStringList& options = QStringList()) {
    return runProgram(CAMERA_PARAMETERS_TOOL, options + QStringList{"shell"},
                      (lines.join('\n') + "\nquit\n").toUtf8());
}

// Writes a description with the given nodes to the path, the header on lines 1 to 5; answers the path.
inline QString writeDescription(const QString& path, const QString& nodes) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription xmlns="http://www.genicam.org/GenApi/Version_1_1" ModelName="Test" VendorName="Test"
 StandardNameSpace="None" SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
 MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ProductGuid="11111111-2222-3333-4444-555555555555"
 VersionGuid="11111111-2222-3333-4444-666666666666">
)" + nodes.toUtf8() +
               "</RegisterDescription>\n");
    return path;
}

// Runs tmux with the given arguments and answers what it printed.
inline QString tmux(const QStringList& arguments) {
    QProcess process;
    process.start("tmux", arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

// Waits until the pane shows the text, or the milliseconds pass.
inline bool paneShows(const QString& session, const QString& text, int milliseconds = 5000) {
    for (int waited = 0; waited < milliseconds; waited += 50) {
        if (tmux({"capture-pane", "-t", session, "-p"}).contains(text))
            return true;
        QThread::msleep(50);
    }
    return false;
}

#endif
