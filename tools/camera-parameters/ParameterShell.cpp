// The shell on GNU readline: a completion generator over the command and feature names of the device.
#include "ParameterShell.h"
#include "DescriptionValidation.h"
#include "ErrorReport.h"
#include "ParameterTool.h"
#include <QProcess>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <readline/history.h>
#include <readline/readline.h>
#include <string>
#include <unistd.h>

namespace {

// Readline calls plain functions; the words it may complete live here while a shell runs.
QStringList completionWords;

char* nextCompletion(const char* text, int state) {
    static int index = 0;
    if (state == 0)
        index = 0;
    const QString prefix = QString::fromUtf8(text);
    while (index < completionWords.size()) {
        const QString& word = completionWords.at(index++);
        if (word.startsWith(prefix))
            return strdup(word.toUtf8().constData());
    }
    return nullptr;
}

char** complete(const char* text, int, int) {
    rl_attempted_completion_over = 1;  // no file names
    return rl_completion_matches(text, nextCompletion);
}

const QStringList shellCommands = {"list",     "get",     "set",     "watch",    "relations", "dump", "tree",
                                   "describe", "genicam", "execute", "validate", "devices",   "help", "quit",
                                   "save",     "load",    "files",   "file",     "reconnect"};

void onInterrupt(int) {
    CParameterTool::requestInterrupt();
}

// While a command runs, Ctrl-C ends that command (a watch), not the shell; at the prompt it ends the shell.
class CInterruptScope {
public:
    CInterruptScope() {
        struct sigaction action {};
        action.sa_handler = onInterrupt;
        sigemptyset(&action.sa_mask);
        sigaction(SIGINT, &action, &m_Previous);
        CParameterTool::takeInterrupt();
    }
    ~CInterruptScope() { sigaction(SIGINT, &m_Previous, nullptr); }
    CInterruptScope(const CInterruptScope&) = delete;
    CInterruptScope& operator=(const CInterruptScope&) = delete;

private:
    struct sigaction m_Previous {};
};

}  // namespace

CParameterShell::CParameterShell(CDeviceSession& session, const CToolOptions& options, QTextStream& out,
                                 QTextStream& err)
    : m_Session(session), m_Options(options), m_Out(out), m_Err(err) {
    completionWords = shellCommands;
    for (const QSharedPointer<ParameterCollection::IParameter>& parameter :
         session.collection().getAllParameter()) {
        completionWords.append(parameter->getName());
    }
    completionWords.removeDuplicates();
    rl_attempted_completion_function = complete;
}

CParameterShell::~CParameterShell() {
    rl_attempted_completion_function = nullptr;
    completionWords.clear();
}

// The shell answers the exit code of its last failed command (an interrupted watch is none), so that a
// script feeding it commands can tell.
int CParameterShell::run() {
    const bool interactive = isatty(STDIN_FILENO);
    int status = CParameterTool::Done;
    QString line;
    while (nextLine(interactive, line)) {
        if (line.isEmpty())
            continue;
        if (line == "quit" || line == "exit")
            break;
        int result = CParameterTool::Done;
        {
            CInterruptScope interruptible;
            result = runLine(line);
        }
        if (result != CParameterTool::Done && result != CParameterTool::Interrupted)
            status = result;
        m_Out.flush();
        m_Err.flush();
    }
    return status;
}

// A terminal gets readline's prompt, editing and history; other input is read line by line without a
// prompt, so that piped commands give only their own output.
bool CParameterShell::nextLine(bool interactive, QString& line) {
    if (!interactive) {
        std::string text;
        if (!std::getline(std::cin, text))
            return false;
        line = QString::fromStdString(text).trimmed();
        return true;
    }
    char* raw = readline("camera-parameters> ");
    if (!raw)
        return false;
    line = QString::fromUtf8(raw).trimmed();
    std::free(raw);
    if (!line.isEmpty())
        add_history(line.toUtf8().constData());
    return true;
}

int CParameterShell::runLine(const QString& line) {
    QStringList words = QProcess::splitCommand(line);
    if (m_Options.json)
        words.prepend("--json");
    // Commands work on the shell's device unless they name one themselves (which is then refused).
    if (!words.contains("--device"))
        words = QStringList({"--device", m_Options.device}) + words;
    const CToolOptions options(words);
    CErrorReport report(m_Err, options.json);
    return report.finish(runCommand(options, report.stream()));
}

int CParameterShell::runCommand(const CToolOptions& options, QTextStream& err) {
    if (options.help) {
        m_Out << CToolOptions::usage();
        return CParameterTool::Done;
    }
    if (options.command == "reconnect")
        return reconnect(err);
    if (!options.valid()) {
        err << options.errorText() << "\n";
        return CParameterTool::WrongUsage;
    }
    if (options.command == "shell" || options.device != m_Options.device) {
        err << "The shell works on the device it opened; leave it to open another.\n";
        return CParameterTool::WrongUsage;
    }
    if (options.command == "validate")
        return validateDescriptionFile(options.arguments.first(), m_Out, err, options.json);
    const int result = CParameterTool(m_Session, options, m_Out, err).run();
    if (m_Session.lost())
        err << "'reconnect' opens device '" << m_Session.device() << "' again.\n";
    return result;
}

// The device is closed and opened again; a device still gone leaves the shell without one until the next
// reconnect.
int CParameterShell::reconnect(QTextStream& err) {
    try {
        m_Session.reconnect();
    } catch (const GenICam::GenericException& e) {
        err << "Cannot open device '" << m_Session.device() << "': " << e.GetDescription() << "\n";
        return CParameterTool::DeviceNotFound;
    }
    CParameterTool::reportControl(m_Session, err);
    m_Out << "Device '" << m_Session.device() << "' opened again.\n";
    return CParameterTool::Done;
}
