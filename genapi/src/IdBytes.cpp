// Chunk and event IDs as bytes.
#include "IdBytes.h"
#include <cctype>
#include <cstring>

namespace GenApiEngine {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (lower >= 'a' && lower <= 'f')
        return lower - 'a' + 10;
    return -1;
}

// Skips leading zero bytes.
void significant(const uint8_t*& bytes, int& length) {
    while (length > 0 && *bytes == 0) {
        ++bytes;
        --length;
    }
}

}  // namespace

std::vector<uint8_t> idBytes(const std::string& text) {
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = hexDigit(text[i]);
        const int low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0)
            break;
        bytes.push_back(static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
}

bool idNumber(const uint8_t* bytes, int length, uint64_t& number) {
    if (length <= 0)
        return false;
    significant(bytes, length);
    if (length > 8)
        return false;
    number = 0;
    for (int i = 0; i < length; ++i)
        number = (number << 8) | bytes[i];
    return true;
}

bool sameId(const uint8_t* a, int aLength, const uint8_t* b, int bLength) {
    if (aLength <= 0 || bLength <= 0)
        return false;
    significant(a, aLength);
    significant(b, bLength);
    return aLength == bLength && std::memcmp(a, b, static_cast<size_t>(aLength)) == 0;
}

void keepId(const std::string& text, uint8_t*& bytes, int& length, uint64_t& number, bool& numberValid) {
    const std::vector<uint8_t> id = idBytes(text);
    delete[] bytes;
    bytes = id.empty() ? nullptr : new uint8_t[id.size()];
    if (bytes)
        std::memcpy(bytes, id.data(), id.size());
    length = static_cast<int>(id.size());
    numberValid = idNumber(bytes, length, number);
}

}  // namespace GenApiEngine
