// The shell on GNU readline: a completion generator over the command and feature names of the device.
#include "ParameterShell.h"
#include "DescriptionValidation.h"
#include "ParameterTool.h"
#include <QProcess>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <readline/history.h>
#include <readline/readline.h>

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

const QStringList shellCommands = {"list", "get",      "set",     "watch",   "relations", "dump",
                                   "tree", "describe", "genicam", "execute", "validate",  "devices",
                                   "help", "quit",     "save",    "load",    "files",     "file"};

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

int CParameterShell::run() {
    for (;;) {
        char* raw = readline("camera-parameters> ");
        if (!raw)
            break;
        const QString line = QString::fromUtf8(raw).trimmed();
        std::free(raw);
        if (line.isEmpty())
            continue;
        add_history(line.toUtf8().constData());
        if (line == "quit" || line == "exit")
            break;
        runLine(line);
        m_Out.flush();
        m_Err.flush();
    }
    return CParameterTool::Done;
}

int CParameterShell::runLine(const QString& line) {
    QStringList words = QProcess::splitCommand(line);
    if (m_Options.json)
        words.prepend("--json");
    // Commands work on the shell's device unless they name one themselves (which is then refused).
    if (!words.contains("--device"))
        words = QStringList({"--device", m_Options.device}) + words;
    const CToolOptions options(words);
    if (options.help) {
        m_Out << CToolOptions::usage();
        return CParameterTool::Done;
    }
    if (!options.valid()) {
        m_Err << options.errorText() << "\n";
        return CParameterTool::WrongUsage;
    }
    if (options.command == "shell" || options.device != m_Options.device) {
        m_Err << "The shell works on the device it opened; leave it to open another.\n";
        return CParameterTool::WrongUsage;
    }
    if (options.command == "validate")
        return validateDescriptionFile(options.arguments.first(), m_Out, m_Err);
    return CParameterTool(m_Session.collection(), m_Session.nodeMap(), options, m_Out, m_Err).run();
}
