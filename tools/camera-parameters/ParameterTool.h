// Runs one command of camera-parameters on an opened device and answers the exit code.
#ifndef TOOLS_CAMERAPARAMETERS_PARAMETERTOOL_H
#define TOOLS_CAMERAPARAMETERS_PARAMETERTOOL_H

#include "DeviceSession.h"
#include "ParameterPrinter.h"
#include "ToolOptions.h"
#include <GenApi/GenApi.h>
#include <QTextStream>
#include <functional>
#include <parametercollection/Exceptions.h>
#include <parametercollection/ParameterCollection.h>

class CParameterTool {
public:
    enum EExitCode {
        Done = 0,
        Failed = 1,
        WrongUsage = 2,
        UnknownParameter = 3,
        ValueRefused = 4,
        AccessRefused = 5,
        DeviceNotFound = 6,
        BadFile = 7,       // a feature file that cannot be read or holds no settings
        Interrupted = 130  // Ctrl-C ended the command
    };

    CParameterTool(CDeviceSession& session, const CToolOptions& options, QTextStream& out, QTextStream& err);
    int run();
    // Says once on opening when another application controls the device, so that refused writes are
    // understood.
    static void reportControl(const CDeviceSession& session, QTextStream& err);
    // Asks a running watch to end, from a signal handler (a lock-free store); takeInterrupt answers and
    // clears the request.
    static void requestInterrupt();
    static bool takeInterrupt();

private:
    int list();
    int get();
    int set();
    int setOne(const QString& name, const QString& value);
    int getRegister(const QString& name);
    int setRegister(const QString& name, const QString& value);
    int transferRegister(const QString& name, const char* done, const std::function<void()>& transfer);
    int watch();
    int relations();
    int dump();
    // The parameter of a full or bare name; null (with a message) when there is none.
    QSharedPointer<ParameterCollection::IParameter> find(const QString& name);
    bool listed(ParameterCollection::IParameter& parameter);
    // Names the device that failed a call, marks it lost, and answers the exit code for it.
    int deviceStoppedAnswering(const QString& message);
    // A lost device is named instead of serving what was read from it before.
    bool refuseLostDevice(int& result);

    CDeviceSession& m_Session;
    ParameterCollection::CParameterCollection& m_Collection;
    GenApi::INodeMap* m_NodeMap;
    const CToolOptions& m_Options;
    QTextStream& m_Out;
    QTextStream& m_Err;
    CParameterPrinter m_Printer;
};

#endif
