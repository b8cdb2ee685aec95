// A 128-bit hash of bytes (MurmurHash3, x64 variant), to key and check cached descriptions quickly.
#ifndef GENAPI_ENGINE_CONTENTHASH_H
#define GENAPI_ENGINE_CONTENTHASH_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace GenApiEngine {

struct SContentHash {
    uint64_t low = 0;
    uint64_t high = 0;

    bool operator==(const SContentHash& other) const { return low == other.low && high == other.high; }
    bool operator!=(const SContentHash& other) const { return !(*this == other); }
    // 32 hexadecimal digits.
    std::string text() const;
};

SContentHash contentHash(const void* data, size_t size, uint64_t start = 0);

}  // namespace GenApiEngine

#endif
