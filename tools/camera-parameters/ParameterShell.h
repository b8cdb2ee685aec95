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
    // Reads and runs commands until quit, exit or the end of input; answers 0.
    int run();

private:
    // Runs one line as the tool runs its arguments; answers the command's exit code.
    int runLine(const QString& line);
    bool nextLine(bool interactive, QString& line);

    CDeviceSession& m_Session;
    const CToolOptions& m_Options;
    QTextStream& m_Out;
    QTextStream& m_Err;
};

#endif
