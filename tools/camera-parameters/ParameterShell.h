// camera-parameters shell: one opened device, commands read from the terminal with line editing,
// history and completion of commands and feature names, until quit.
#ifndef TOOLS_CAMERAPARAMETERS_PARAMETERSHELL_H
#define TOOLS_CAMERAPARAMETERS_PARAMETERSHELL_H

#include "DeviceSession.h"
#include "ToolOptions.h"
#include <QStringList>
#include <QTextStream>

class CParameterShell {
public:
    CParameterShell(CDeviceSession& session, const CToolOptions& options, QTextStream& out, QTextStream& err);
    ~CParameterShell();
    // Reads and runs commands until quit, exit or the end of input; answers the exit code of the last
    // failed command, 0 when none failed.
    int run();

private:
    // Runs one line as the tool runs its arguments; answers the command's exit code.
    int runLine(const QString& line);
    int runCommand(const CToolOptions& options, QTextStream& err);
    int reconnect(QTextStream& err);
    bool nextLine(bool interactive, QString& line);

    CDeviceSession& m_Session;
    const CToolOptions& m_Options;
    QTextStream& m_Out;
    QTextStream& m_Err;
};

#endif
