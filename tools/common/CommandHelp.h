// One table of a program's commands, options and exit codes, from which both its --help text and its
// manual page are made, so that the two never tell different things.
#ifndef TOOLS_COMMON_COMMANDHELP_H
#define TOOLS_COMMON_COMMANDHELP_H

#include <string>
#include <vector>

struct SHelpEntry {
    std::string term;  // a command with its arguments, an option, or an exit code
    std::string text;  // what it does, one paragraph
};

struct SHelpSection {
    std::string title;  // "Commands", "Options", "Exit codes", ...
    std::vector<SHelpEntry> entries;
    std::string paragraph;  // text after the entries, may be empty
};

class CCommandHelp {
public:
    CCommandHelp(std::string program, std::string summary, std::string synopsis,
                 std::vector<SHelpSection> sections);

    // The --help text: the synopsis, then each section with its terms in a column, wrapped to 100
    // columns.
    std::string usage() const;
    // The manual page in roff (man(7)), section 1.
    std::string manPage() const;

private:
    static std::string wrap(const std::string& text, size_t indent, size_t width);
    static std::string roffEscaped(const std::string& text);

    std::string m_Program;
    std::string m_Summary;
    std::string m_Synopsis;
    std::vector<SHelpSection> m_Sections;
};

#endif
