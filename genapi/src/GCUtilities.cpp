// Environment, tokenising and URL helpers of the GenICam base layer.
#include <Base/GCUtilities.h>
#include <GenICamVersion.h>
#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace GENICAM_NAMESPACE {

bool GetValueOfEnvironmentVariable(const gcstring& VariableName, gcstring& VariableContent) {
    const char* value = std::getenv(VariableName.c_str());
    if (!value)
        return false;
    VariableContent = value;
    return true;
}

gcstring GetValueOfEnvironmentVariable(const gcstring& VariableName) {
    gcstring content;
    GetValueOfEnvironmentVariable(VariableName, content);
    return content;
}

bool DoesEnvironmentVariableExist(const gcstring& VariableName) {
    return std::getenv(VariableName.c_str()) != NULL;
}

// Replaces every $(NAME) by the value of the environment variable NAME.
void ReplaceEnvironmentVariables(gcstring& Buffer, bool ReplaceBlankBy20) {
    size_t start;
    while ((start = Buffer.find("$(")) != GCSTRING_NPOS) {
        const size_t end = Buffer.find(')', start);
        if (end == GCSTRING_NPOS)
            break;
        const gcstring name = Buffer.substr(start + 2, end - start - 2);
        gcstring value;
        if (!GetValueOfEnvironmentVariable(name, value)) {
            throw RUNTIME_EXCEPTION("Environment variable '%s' not found", name.c_str());
        }
        Buffer = Buffer.substr(0, start) + value + Buffer.substr(end + 1);
    }
    if (ReplaceBlankBy20) {
        size_t blank;
        while ((blank = Buffer.find(' ')) != GCSTRING_NPOS) {
            Buffer = Buffer.substr(0, blank) + "%20" + Buffer.substr(blank + 1);
        }
    }
}

gcstring UrlEncode(const gcstring& Input) {
    gcstring out;
    for (size_t i = 0; i < Input.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(Input.c_str()[i]);
        if (std::isalnum(c) || c == '-' || c == '_' || c == '.' || c == '~' || c == '/' || c == ':') {
            out += static_cast<char>(c);
        } else {
            char hex[4];
            std::snprintf(hex, sizeof(hex), "%%%02X", c);
            out += hex;
        }
    }
    return out;
}

gcstring UrlDecode(const gcstring& Input) {
    gcstring out;
    const char* s = Input.c_str();
    for (size_t i = 0; i < Input.size(); ++i) {
        if (s[i] == '%' && i + 2 < Input.size() + 0 && std::isxdigit(static_cast<unsigned char>(s[i + 1])) &&
            std::isxdigit(static_cast<unsigned char>(s[i + 2]))) {
            const char hex[3] = {s[i + 1], s[i + 2], 0};
            out += static_cast<char>(std::strtol(hex, NULL, 16));
            i += 2;
        } else {
            out += s[i];
        }
    }
    return out;
}

size_t Tokenize(const gcstring& str, gcstring_vector& Tokens, const gcstring& delimiters) {
    size_t count = 0;
    size_t start = str.find_first_not_of(delimiters, 0);
    while (start != GCSTRING_NPOS) {
        const size_t end = str.find_first_of(delimiters, start);
        Tokens.push_back(str.substr(start, end == GCSTRING_NPOS ? GCSTRING_NPOS : end - start));
        ++count;
        start = (end == GCSTRING_NPOS) ? GCSTRING_NPOS : str.find_first_not_of(delimiters, end);
    }
    return count;
}

gcstring GetGenICamCacheFolder() {
    return GetValueOfEnvironmentVariable(GENICAM_CACHE_VERSION);
}
gcstring GetGenICamLogConfig() {
    return GetValueOfEnvironmentVariable(GENICAM_LOG_CONFIG_VERSION);
}

}  // namespace GENICAM_NAMESPACE
