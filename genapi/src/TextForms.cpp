// Formatting and parsing of GenApi's value texts.
#include "TextForms.h"
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <sstream>

namespace GenApiEngine {
namespace {

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// Parses "a<sep>b<sep>..." with every part a number of the given base and at most maxPart.
bool parseGroups(const std::string& text, char separator, size_t groups, int base, int64_t& value) {
    std::stringstream parts(text);
    std::string part;
    uint64_t result = 0;
    size_t count = 0;
    while (std::getline(parts, part, separator)) {
        char* end = nullptr;
        if (part.empty() || part.size() > 3)
            return false;
        const unsigned long number = std::strtoul(part.c_str(), &end, base);
        if (*end != '\0' || number > 255)
            return false;
        result = (result << 8) | number;
        ++count;
    }
    if (count != groups)
        return false;
    value = static_cast<int64_t>(result);
    return true;
}

}  // namespace

std::string integerToText(int64_t value, GenApi::ERepresentation representation) {
    char buffer[64];
    const uint64_t bits = static_cast<uint64_t>(value);
    switch (representation) {
        case GenApi::HexNumber:
            std::snprintf(buffer, sizeof(buffer), "0x%llx", static_cast<unsigned long long>(bits));
            break;
        case GenApi::IPV4Address:
            std::snprintf(buffer, sizeof(buffer), "%u.%u.%u.%u", unsigned(bits >> 24 & 0xff),
                          unsigned(bits >> 16 & 0xff), unsigned(bits >> 8 & 0xff), unsigned(bits & 0xff));
            break;
        case GenApi::MACAddress:
            std::snprintf(buffer, sizeof(buffer), "%02x:%02x:%02x:%02x:%02x:%02x",
                          unsigned(bits >> 40 & 0xff), unsigned(bits >> 32 & 0xff),
                          unsigned(bits >> 24 & 0xff), unsigned(bits >> 16 & 0xff),
                          unsigned(bits >> 8 & 0xff), unsigned(bits & 0xff));
            break;
        default:
            std::snprintf(buffer, sizeof(buffer), "%lld", static_cast<long long>(value));
            break;
    }
    return buffer;
}

bool textToInteger(const std::string& raw, int64_t& value) {
    const std::string text = trimmed(raw);
    if (text.empty())
        return false;
    if (text.find('.') != std::string::npos)
        return parseGroups(text, '.', 4, 10, value);
    if (text.find(':') != std::string::npos)
        return parseGroups(text, ':', 6, 16, value);
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    char* end = nullptr;
    errno = 0;
    if (hex) {
        const unsigned long long bits = std::strtoull(text.c_str() + 2, &end, 16);
        value = static_cast<int64_t>(bits);
    } else {
        value = std::strtoll(text.c_str(), &end, 10);
    }
    return errno == 0 && end && *end == '\0';
}

std::string floatToText(double value, GenApi::EDisplayNotation notation, int64_t precision) {
    std::ostringstream text;
    if (precision < 0)
        precision = 6;
    if (notation == GenApi::fnFixed)
        text << std::fixed;
    if (notation == GenApi::fnScientific)
        text << std::scientific;
    text << std::setprecision(static_cast<int>(precision)) << value;
    return text.str();
}

bool textToFloat(const std::string& raw, double& value) {
    const std::string text = trimmed(raw);
    if (text.empty())
        return false;
    char* end = nullptr;
    errno = 0;
    value = std::strtod(text.c_str(), &end);
    return errno != ERANGE && end && *end == '\0';
}

bool textToBoolean(const std::string& raw, bool& value) {
    std::string text = trimmed(raw);
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (text == "1" || text == "true") {
        value = true;
        return true;
    }
    if (text == "0" || text == "false") {
        value = false;
        return true;
    }
    return false;
}

std::string bytesToText(const std::vector<uint8_t>& bytes) {
    std::string text = "0x";
    char digits[3];
    for (uint8_t byte : bytes) {
        std::snprintf(digits, sizeof(digits), "%02x", byte);
        text += digits;
    }
    return text;
}

bool textToBytes(const std::string& raw, std::vector<uint8_t>& bytes) {
    std::string text = trimmed(raw);
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
        text = text.substr(2);
    if (text.size() % 2 != 0)
        return false;
    bytes.clear();
    for (size_t i = 0; i < text.size(); i += 2) {
        if (!std::isxdigit(static_cast<unsigned char>(text[i])) ||
            !std::isxdigit(static_cast<unsigned char>(text[i + 1]))) {
            return false;
        }
        bytes.push_back(static_cast<uint8_t>(std::strtoul(text.substr(i, 2).c_str(), nullptr, 16)));
    }
    return true;
}

}  // namespace GenApiEngine
