// Formatting the table as a terminal text and as roff.
#include "CommandHelp.h"
#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

constexpr size_t termColumn = 51;
constexpr size_t lineWidth = 100;

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

}  // namespace

CCommandHelp::CCommandHelp(std::string program, std::string summary, std::string synopsis,
                           std::vector<SHelpSection> sections)
    : m_Program(std::move(program)),
      m_Summary(std::move(summary)),
      m_Synopsis(std::move(synopsis)),
      m_Sections(std::move(sections)) {}

// Words go on a line until it is full; following lines start at the indent.
std::string CCommandHelp::wrap(const std::string& text, size_t indent, size_t width) {
    std::istringstream words(text);
    std::string word, result;
    size_t column = indent;
    bool first = true;
    while (words >> word) {
        if (!first && column + 1 + word.size() > width) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
            first = true;
        }
        if (!first) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
        first = false;
    }
    return result;
}

std::string CCommandHelp::usage() const {
    std::string text = "Usage: " + m_Synopsis + "\n" + wrap(m_Summary, 0, lineWidth) + "\n";
    for (const SHelpSection& section : m_Sections) {
        text += "\n" + section.title + ":\n";
        for (const SHelpEntry& entry : section.entries) {
            std::string line = "  " + entry.term;
            line += line.size() + 1 < termColumn ? std::string(termColumn - line.size(), ' ')
                                                 : "\n" + std::string(termColumn, ' ');
            text += line + wrap(entry.text, termColumn, lineWidth) + "\n";
        }
        if (!section.paragraph.empty())
            text += wrap(section.paragraph, 0, lineWidth) + "\n";
    }
    return text;
}

// Backslashes and leading dots or quotes would be read as roff requests.
std::string CCommandHelp::roffEscaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    if (!escaped.empty() && (escaped[0] == '.' || escaped[0] == '\''))
        escaped.insert(0, "\\&");
    return escaped;
}

std::string CCommandHelp::manPage() const {
    std::string page = ".TH " + upper(m_Program) + " 1\n.SH NAME\n" + roffEscaped(m_Program) + " \\- " +
                       roffEscaped(m_Summary.substr(0, m_Summary.find('.'))) + "\n.SH SYNOPSIS\n" +
                       roffEscaped(m_Synopsis) + "\n.SH DESCRIPTION\n" + roffEscaped(m_Summary) + "\n";
    for (const SHelpSection& section : m_Sections) {
        page += ".SH " + upper(section.title) + "\n";
        for (const SHelpEntry& entry : section.entries)
            page += ".TP\n.B " + roffEscaped(entry.term) + "\n" + roffEscaped(entry.text) + "\n";
        if (!section.paragraph.empty())
            page += ".PP\n" + roffEscaped(section.paragraph) + "\n";
    }
    return page;
}
