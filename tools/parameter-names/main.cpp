// parameter-names: typed name constants for the features of a camera description.
//   parameter-names list DESCRIPTION [--namespace NS --prefix @NodeMap] [--output FILE]
//   parameter-names header --namespace NS --prefix @NodeMap DESCRIPTION|LIST [--output FILE]
//   parameter-names catalogue --output FILE LIST...
#include "CommandHelp.h"
#include "FeatureList.h"
#include <cctype>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>

namespace {

// The commands and exit codes: --help and the manual page are both made from this table.
const CCommandHelp& commandHelp() {
    static const CCommandHelp help(
        "parameter-names",
        "Typed name constants for the features of a camera description, so that a program names a feature "
        "with its type checked by the compiler.",
        "parameter-names list|header|catalogue ...",
        {{"Commands",
          {{"list DESCRIPTION [--namespace NS --prefix @NodeMap] [--output FILE]",
            "the typed features of a camera description (GenICam XML or ZIP), one 'Name<TAB>Interface' a "
            "line"},
           {"header --namespace NS --prefix @NodeMap DESCRIPTION|LIST.txt [--output FILE]",
            "a C++ header with one typed name constant a feature, for example NS::Width; NS must be a C++ "
            "namespace name (nested ones joined by ::)"},
           {"catalogue --output FILE LIST.txt...", "the entries of the library's catalogue from list files"},
           {"help, -h, --help", "this text"}},
          "Output files are written whole or not at all."},
         {"Exit codes",
          {{"0", "done"}, {"1", "a description or list that cannot be read"}, {"2", "wrong usage"}},
          ""}});
    return help;
}

// A mistake in how the program was called, as opposed to bad input files.
class CUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct SArguments {
    std::string command;
    std::map<std::string, std::string> options;
    std::vector<std::string> inputs;
};

SArguments parse(int argc, char** argv) {
    SArguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word.compare(0, 2, "--") == 0) {
            if (i + 1 >= argc)
                throw CUsageError("option " + word + " needs a value");
            arguments.options[word.substr(2)] = argv[++i];
        } else if (arguments.command.empty()) {
            arguments.command = word;
        } else {
            arguments.inputs.push_back(word);
        }
    }
    return arguments;
}

void emit(const SArguments& arguments, const std::string& text) {
    const auto output = arguments.options.find("output");
    if (output == arguments.options.end())
        std::cout << text;
    else
        writeFileAtomically(output->second, text);
}

// The words C++ keeps for itself, which no namespace can be named.
bool isKeyword(const std::string& word) {
    static const std::set<std::string> keywords = {
        "alignas",     "alignof",   "and",        "and_eq",    "asm",      "auto",         "bitand",
        "bitor",       "bool",      "break",      "case",      "catch",    "char",         "char8_t",
        "char16_t",    "char32_t",  "class",      "compl",     "concept",  "const",        "consteval",
        "constexpr",   "constinit", "const_cast", "continue",  "co_await", "co_return",    "co_yield",
        "decltype",    "default",   "delete",     "do",        "double",   "dynamic_cast", "else",
        "enum",        "explicit",  "export",     "extern",    "false",    "float",        "for",
        "friend",      "goto",      "if",         "inline",    "int",      "long",         "mutable",
        "namespace",   "new",       "noexcept",   "not",       "not_eq",   "nullptr",      "operator",
        "or",          "or_eq",     "private",    "protected", "public",   "register",     "reinterpret_cast",
        "requires",    "return",    "short",      "signed",    "sizeof",   "static",       "static_assert",
        "static_cast", "struct",    "switch",     "template",  "this",     "thread_local", "throw",
        "true",        "try",       "typedef",    "typeid",    "typename", "union",        "unsigned",
        "using",       "virtual",   "void",       "volatile",  "wchar_t",  "while",        "xor",
        "xor_eq"};
    return keywords.count(word) > 0;
}

// A C++ namespace name, nested ones joined by "::"; anything else would make a header that does not compile.
bool isNamespaceName(const std::string& name) {
    size_t start = 0;
    for (;;) {
        const size_t end = name.find("::", start);
        const std::string part =
            name.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (part.empty() || std::isdigit(static_cast<unsigned char>(part[0])) || isKeyword(part))
            return false;
        for (const char c : part) {
            if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_')
                return false;
        }
        if (end == std::string::npos)
            return true;
        start = end + 2;
    }
}

SFeatureList listOf(const SArguments& arguments, const std::string& input) {
    const bool listFile = input.size() > 4 && input.compare(input.size() - 4, 4, ".txt") == 0;
    SFeatureList list = listFile ? readListFile(input) : SFeatureList{};
    if (!listFile)
        list.features = featuresOfDescription(input);
    const auto nameSpace = arguments.options.find("namespace");
    const auto prefix = arguments.options.find("prefix");
    if (nameSpace != arguments.options.end()) {
        if (!isNamespaceName(nameSpace->second))
            throw CUsageError("--namespace " + nameSpace->second + " is not a C++ namespace name");
        list.nameSpace = nameSpace->second;
    }
    if (prefix != arguments.options.end())
        list.prefix = prefix->second;
    return list;
}

int run(const SArguments& arguments) {
    if (arguments.command == "list" && arguments.inputs.size() == 1) {
        emit(arguments, listText(listOf(arguments, arguments.inputs[0])));
        return 0;
    }
    if (arguments.command == "header" && arguments.inputs.size() == 1) {
        const SFeatureList list = listOf(arguments, arguments.inputs[0]);
        if (list.nameSpace.empty() || list.prefix.empty() || list.prefix[0] != '@')
            throw CListError("header needs --namespace NS and --prefix @NodeMap");
        emit(arguments, headerText(list, arguments.inputs[0]));
        return 0;
    }
    if (arguments.command == "catalogue" && !arguments.inputs.empty() && arguments.options.count("output")) {
        std::vector<SFeatureList> lists;
        for (const std::string& input : arguments.inputs)
            lists.push_back(readListFile(input));
        emit(arguments, "// Generated by parameter-names from the catalogue's list files; do not edit.\n" +
                            catalogueEntries(lists));
        return 0;
    }
    std::cerr << commandHelp().usage();
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--help" || word == "-h" || word == "help") {
            std::cout << commandHelp().usage();
            return 0;
        }
        if (word == "--man") {
            std::cout << commandHelp().manPage();
            return 0;
        }
    }
    try {
        return run(parse(argc, argv));
    } catch (const CUsageError& e) {
        std::cerr << "parameter-names: " << e.what() << "\nRun 'parameter-names --help' for the commands.\n";
        return 2;
    } catch (const CListError& e) {
        std::cerr << "parameter-names: " << e.what() << "\n";
        return 1;
    }
}
