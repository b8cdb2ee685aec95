// Running a program of the project and collecting its exit code and output.
#ifndef TESTS_TOOL_PROCESSRUN_H
#define TESTS_TOOL_PROCESSRUN_H

#include <QProcess>
#include <QStringList>
#include <gtest/gtest.h>

struct SRun {
    int exitCode;
    QString out;
    QString err;
};

inline SRun runProgram(const QString& program, const QStringList& arguments,
                       const QByteArray& input = QByteArray()) {
    QProcess process;
    process.start(program, arguments);
    if (!input.isEmpty())
        process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(60000)) << arguments.join(' ').toStdString();
    return SRun{process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
}

#endif
