// MurmurHash3_x64_128 by Austin Appleby (public domain), with words read as little-endian on every machine,
// so that a text hashes the same whatever the byte order.
#include "ContentHash.h"
#include <cstdio>
#include <cstring>

namespace GenApiEngine {
namespace {

const uint64_t c1 = 0x87c37b91114253d5ULL;
const uint64_t c2 = 0x4cf5ad432745937fULL;

uint64_t rotate(uint64_t x, int r) {
    return (x << r) | (x >> (64 - r));
}

uint64_t finalMix(uint64_t k) {
    k ^= k >> 33;
    k *= 0xff51afd7ed558ccdULL;
    k ^= k >> 33;
    k *= 0xc4ceb9fe1a85ec53ULL;
    k ^= k >> 33;
    return k;
}

uint64_t littleEndianWord(const uint8_t* bytes, size_t count) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    if (count == 8) {
        uint64_t word;
        std::memcpy(&word, bytes, 8);
        return word;
    }
#endif
    uint64_t word = 0;
    for (size_t i = count; i-- > 0;)
        word = (word << 8) | bytes[i];
    return word;
}

uint64_t mixLow(uint64_t k) {
    k *= c1;
    k = rotate(k, 31);
    return k * c2;
}

uint64_t mixHigh(uint64_t k) {
    k *= c2;
    k = rotate(k, 33);
    return k * c1;
}

}  // namespace

std::string SContentHash::text() const {
    char digits[33];
    std::snprintf(digits, sizeof digits, "%016llx%016llx", static_cast<unsigned long long>(high),
                  static_cast<unsigned long long>(low));
    return digits;
}

SContentHash contentHash(const void* data, size_t size, uint64_t start) {
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    const size_t blocks = size / 16;
    uint64_t h1 = start;
    uint64_t h2 = start;
    for (size_t i = 0; i < blocks; ++i) {
        h1 ^= mixLow(littleEndianWord(bytes + i * 16, 8));
        h1 = rotate(h1, 27) + h2;
        h1 = h1 * 5 + 0x52dce729;
        h2 ^= mixHigh(littleEndianWord(bytes + i * 16 + 8, 8));
        h2 = rotate(h2, 31) + h1;
        h2 = h2 * 5 + 0x38495ab5;
    }
    const uint8_t* tail = bytes + blocks * 16;
    const size_t rest = size & 15;
    if (rest > 8)
        h2 ^= mixHigh(littleEndianWord(tail + 8, rest - 8));
    if (rest > 0)
        h1 ^= mixLow(littleEndianWord(tail, rest < 8 ? rest : 8));
    h1 ^= size;
    h2 ^= size;
    h1 += h2;
    h2 += h1;
    h1 = finalMix(h1);
    h2 = finalMix(h2);
    h1 += h2;
    h2 += h1;
    SContentHash hash;
    hash.low = h1;
    hash.high = h2;
    return hash;
}

}  // namespace GenApiEngine
