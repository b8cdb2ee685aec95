// Option parsing of camera-parameters.
#include "ToolOptions.h"

namespace {

const QStringList commands = {"list",    "get",      "set",  "watch",    "relations", "dump",
                              "devices", "validate", "tree", "describe", "genicam",   "execute",
                              "shell",   "help",     "save", "load",     "files",     "file"};
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

QString CToolOptions::usage() {
    return "Usage: camera-parameters [--device sim|aravis:fake|aravis:ID] [--json] COMMAND [ARGUMENTS]\n"
           "\n"
           "Commands:\n"
           "  list [--visibility V] [--filter TEXT] [--all]   features with type, access, visibility, value\n"
           "  get NAME...                                      values of parameters\n"
           "  set NAME=VALUE... | set NAME VALUE               write values in order, showing each; stops\n"
           "                                                   at the first refusal\n"
           "  watch NAME... [--seconds S]                      print each change while the device is polled\n"
           "  relations NAME                                   category features, selected and selecting\n"
           "                                                   features, and the category path\n"
           "  dump                                             every parameter as one JSON object a line\n"
           "  devices                                          the devices Aravis finds\n"
           "  tree [NAME] [--visibility V]                     the category tree with types, access and\n"
           "                                                   values (--json: the tree as JSON)\n"
           "  describe NAME                                    texts, type, access, limits, entries,\n"
           "                                                   selectors and alias of one feature\n"
           "  execute NAME [--seconds S]                       execute a command and wait until done\n"
           "  genicam                                          the device's camera description (XML)\n"
           "  save FILE [--allow-empty]                        the camera's settings to a feature file; a\n"
           "                                                   device that marks nothing streamable fails\n"
           "                                                   unless --allow-empty\n"
           "  load FILE [--verify]                             settings from a feature file, with how many\n"
           "                                                   were applied and each refusal on its own\n"
           "                                                   line; --verify reads them back and names\n"
           "                                                   every difference\n"
           "  files                                            the device's files with size and access\n"
           "  file get NAME [OUTPUT]                           a device file to OUTPUT (or standard output)\n"
           "  file put NAME INPUT                              a local file to a device file\n"
           "  shell                                            read commands from the terminal until quit;\n"
           "                                                   'reconnect' opens a lost device again\n"
           "  help, -h, --help                                 this text\n"
           "  validate FILE                                    check a camera description against its\n"
           "                                                   GenICam schema and load it (no device)\n"
           "\n"
           "NAME is a full name such as @CameraDevice/Width or a bare feature name of the camera device.\n"
           "Visibilities: Beginner, Expert, Guru (default), Invisible.\n"
           "Exit codes: 0 done, 1 device or other failure, 2 wrong usage, 3 unknown parameter,\n"
           "4 value refused, 5 parameter not writable or not readable, 6 device not found,\n"
           "7 feature file unreadable or without settings.\n";
}
