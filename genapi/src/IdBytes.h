// Chunk and event IDs: the hexadecimal text of a description as bytes, and comparisons between them.
#ifndef GENAPI_ENGINE_IDBYTES_H
#define GENAPI_ENGINE_IDBYTES_H

#include <cstdint>
#include <string>
#include <vector>

namespace GenApiEngine {

// The whole bytes of a hexadecimal ID, case-insensitive; an odd last digit is dropped, as GenApi does.
std::vector<uint8_t> idBytes(const std::string& text);
// The ID as a number, when its significant bytes fit 64 bits.
bool idNumber(const uint8_t* bytes, int length, uint64_t& number);
// Equal IDs: the same bytes once leading zero bytes are left out.
bool sameId(const uint8_t* a, int aLength, const uint8_t* b, int bLength);
// Replaces an ID kept as a byte buffer (owned, delete[]) and a number with the ID of the given text.
void keepId(const std::string& text, uint8_t*& bytes, int& length, uint64_t& number, bool& numberValid);

}  // namespace GenApiEngine

#endif
