// Option parsing of camera-parameters.
#include "ToolOptions.h"
#include "CommandHelp.h"

namespace {

const QStringList commands = {"list",     "get",  "set",      "watch",   "relations", "dump",  "devices",
                              "validate", "tree", "describe", "genicam", "execute",   "shell", "help",
                              "save",     "load", "files",    "file",    "chunks",    "events"};
const QStringList visibilities = {"Beginner", "Expert", "Guru", "Invisible"};

}  // namespace

CToolOptions::CToolOptions(const QStringList& all) {
    bool commandSeen = false;
    for (int index = 0; index < all.size() && m_Error.isEmpty(); ++index) {
        const QString& argument = all.at(index);
        if (argument.startsWith("--") || argument == "-h") {
            if (!takeOption(all, index))
                return;
        } else if (!commandSeen) {
            command = argument;
            commandSeen = true;
        } else {
            arguments.append(argument);
        }
    }
    if (m_Error.isEmpty())
        checkArguments();
}

bool CToolOptions::takeOption(const QStringList& all, int& index) {
    const QString option = all.at(index);
    const bool hasValue = index + 1 < all.size();
    if (option == "--json") {
        json = true;
    } else if (option == "--verify") {
        verify = true;
    } else if (option == "--allow-empty") {
        allowEmpty = true;
    } else if (option == "--all") {
        allNodes = true;
    } else if (option == "--help" || option == "-h") {
        help = true;
    } else if (option == "--man") {
        man = true;
        help = true;
    } else if (option == "--device" && hasValue) {
        device = all.at(++index);
    } else if (option == "--filter" && hasValue) {
        filter = all.at(++index);
    } else if (option == "--visibility" && hasValue) {
        const QString wanted = all.at(++index);
        for (const QString& known : visibilities) {
            if (known.compare(wanted, Qt::CaseInsensitive) == 0)
                visibility = known;
        }
        if (visibility.compare(wanted, Qt::CaseInsensitive) != 0)
            m_Error = "Unknown visibility '" + wanted + "'.";
    } else if (option == "--frames" && hasValue) {
        bool ok = false;
        frames = all.at(++index).toInt(&ok);
        if (!ok || frames < 1)
            m_Error = "--frames takes a number of frames, at least 1.";
    } else if (option == "--seconds" && hasValue) {
        bool ok = false;
        seconds = all.at(++index).toDouble(&ok);
        if (!ok || seconds < 0)
            m_Error = "--seconds takes a number of seconds.";
    } else {
        m_Error = hasValue || option == "--json" || option == "--allow-empty"
                      ? "Unknown option '" + option + "'."
                      : "Option '" + option + "' needs a value or is unknown.";
    }
    return m_Error.isEmpty();
}

void CToolOptions::checkArguments() {
    if (command == "help")
        help = true;
    if (help)
        return;
    if (!commands.contains(command)) {
        m_Error = "Unknown command '" + command + "'.";
    } else if ((command == "get" || command == "watch") && arguments.isEmpty()) {
        m_Error = command + " needs at least one parameter name.";
    } else if (command == "set" && settings().isEmpty()) {
        m_Error = "set needs NAME=VALUE pairs, or a parameter name and a value.";
    } else if (command == "relations" && arguments.size() != 1) {
        m_Error = "relations needs one parameter name.";
    } else if (command == "validate" && arguments.size() != 1) {
        m_Error = "validate needs one camera description file.";
    } else if ((command == "describe" || command == "execute") && arguments.size() != 1) {
        m_Error = command + " needs one parameter name.";
    } else if ((command == "save" || command == "load") && arguments.size() != 1) {
        m_Error = command + " needs one file name.";
    } else if (command == "file" &&
               !((arguments.value(0) == "get" && (arguments.size() == 2 || arguments.size() == 3)) ||
                 (arguments.value(0) == "put" && arguments.size() == 3))) {
        m_Error = "Use: file get NAME [OUTPUT] or file put NAME INPUT.";
    } else if ((command == "chunks" || command == "events") && !arguments.isEmpty()) {
        m_Error = command + " takes no arguments.";
    } else if (command == "tree" && arguments.size() > 1) {
        m_Error = "tree takes at most one category or feature name.";
    }
}

// NAME=VALUE splits at the first '=' (a value may hold more); two words without one are NAME VALUE.
QList<QPair<QString, QString>> CToolOptions::settings() const {
    QList<QPair<QString, QString>> pairs;
    bool allPairs = !arguments.isEmpty();
    for (const QString& argument : arguments)
        allPairs = allPairs && argument.indexOf('=') > 0;
    if (allPairs) {
        for (const QString& argument : arguments) {
            const int equals = argument.indexOf('=');
            pairs.append({argument.left(equals), argument.mid(equals + 1)});
        }
    } else if (arguments.size() == 2 && arguments.at(0).indexOf('=') < 0) {
        pairs.append({arguments.at(0), arguments.at(1)});
    }
    return pairs;
}

namespace {

// The commands, options and exit codes: --help and the manual page are both made from this table.
const CCommandHelp& commandHelp() {
    static const CCommandHelp help(
        "camera-parameters",
        "Lists, reads, writes and watches the parameters of a camera through the ParameterCollection "
        "library. The default device is the simulated camera, so that it runs without hardware.",
        "camera-parameters [--device sim|aravis:fake|aravis:ID|file:DESCRIPTION.xml] [--json] COMMAND "
        "[ARGUMENTS]",
        {{"Commands",
          {{"list [--visibility V] [--filter TEXT] [--all]", "features with type, access, visibility, value"},
           {"get NAME...",
            "values of parameters, read from the device afresh; R[0xADDRESS] or "
            "R[0xADDRESS:LENGTH] reads a register"},
           {"set NAME=VALUE... | set NAME VALUE",
            "write values in order, showing each; stops at the first refusal; R[0xADDRESS]=VALUE writes a "
            "register in the description's byte order"},
           {"watch NAME... [--seconds S]", "print each change while the device is polled"},
           {"relations NAME", "category features, selected and selecting features, and the category path"},
           {"chunks [--frames N]",
            "acquire N frames (10) and print each frame's chunk values (simulated camera or a device "
            "Aravis opens; ChunkModeActive on)"},
           {"events [--seconds S]",
            "acquire and print each event that arrives, with its data (simulated camera; an event's "
            "EventNotification on)"},
           {"dump", "every parameter as one JSON object a line"},
           {"devices",
            "the devices Aravis finds, by the name --device takes, with model, protocol and address"},
           {"tree [NAME] [--visibility V]",
            "the category tree with types, access and values (--json: the tree as JSON)"},
           {"describe NAME",
            "texts, type, access, limits, entries, selectors, alias and register address "
            "of one feature"},
           {"execute NAME [--seconds S]", "execute a command and wait until done"},
           {"genicam", "the device's camera description (XML)"},
           {"save FILE [--allow-empty]",
            "the camera's settings to a feature file; a device that marks "
            "nothing streamable fails unless --allow-empty"},
           {"load FILE [--verify]",
            "settings from a feature file, with how many were applied and each "
            "refusal on its own line; --verify reads them back and names every "
            "difference"},
           {"files", "the device's files with size and access"},
           {"file get NAME [OUTPUT]", "a device file to OUTPUT (or standard output)"},
           {"file put NAME INPUT", "a local file to a device file"},
           {"shell",
            "read commands from the terminal until quit; 'reconnect' opens a lost device again; "
            "Ctrl-C ends a watch, not the shell"},
           {"validate FILE",
            "check a camera description against its GenICam schema, its pointers and "
            "formulas, and load it (no device)"},
           {"help, -h, --help", "this text"}},
          "NAME is a full name such as @CameraDevice/Width or a bare feature name of the camera device."},
         {"Options",
          {{"--device DEVICE",
            "sim (the simulated camera, default), aravis:fake (Aravis' fake camera), "
            "aravis:ID (a camera Aravis finds) or file:DESCRIPTION.xml (a description "
            "over registers in memory, for browsing)"},
           {"--json",
            "one JSON object a line, numbers as numbers; errors as one object with the exit code "
            "on standard error"},
           {"--visibility V", "Beginner, Expert, Guru (default) or Invisible"},
           {"--filter TEXT", "only names that contain the text, in any case"},
           {"--all", "every node, not only features"},
           {"--seconds S", "how long watch and events run, how long execute waits"},
           {"--frames N", "how many frames chunks prints"}},
          ""},
         {"Exit codes",
          {{"0", "done"},
           {"1", "device or other failure (a device that stopped answering)"},
           {"2", "wrong usage"},
           {"3", "unknown parameter"},
           {"4", "value refused"},
           {"5", "parameter not writable or not readable"},
           {"6", "device not found"},
           {"7", "feature file unreadable or without settings"},
           {"130", "interrupted (Ctrl-C)"}},
          ""}});
    return help;
}

}  // namespace

QString CToolOptions::usage() {
    return QString::fromStdString(commandHelp().usage());
}

QString CToolOptions::manPage() {
    return QString::fromStdString(commandHelp().manPage());
}
