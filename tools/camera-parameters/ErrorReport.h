// Where a command's error messages go: straight to standard error for people, or, with --json, collected
// and printed as one JSON object {"exitCode": N, "errors": [...]} when the command ends, so that a script
// reads every outcome the same way.
#ifndef TOOLS_CAMERAPARAMETERS_ERRORREPORT_H
#define TOOLS_CAMERAPARAMETERS_ERRORREPORT_H

#include <QString>
#include <QTextStream>

class CErrorReport {
public:
    CErrorReport(QTextStream& err, bool json);
    CErrorReport(const CErrorReport&) = delete;
    CErrorReport& operator=(const CErrorReport&) = delete;

    QTextStream& stream() { return m_Json ? m_Buffer : m_Err; }
    // Prints the collected messages (as JSON when asked for) and answers the exit code.
    int finish(int exitCode);

private:
    QTextStream& m_Err;
    bool m_Json;
    QString m_Text;
    QTextStream m_Buffer;
};

#endif
