// Cached register contents of a node map whose registers are reached through a user port.
#ifndef GENAPI_ENGINE_REGISTERCACHE_H
#define GENAPI_ENGINE_REGISTERCACHE_H

#include <GenApi/INode.h>
#include <cstdint>
#include <map>
#include <vector>

namespace GenApiEngine {

// Where a register lives and how it may be cached; indexed registers repeat every `stride` bytes, up to
// the next register the description places above them.
struct SCacheRule {
    int64_t address;
    int64_t length;
    int64_t stride;
    GenApi::ECachingMode mode;
    int64_t end = INT64_MAX;
};

class CRegisterCache {
public:
    // Adds a register; returns the rule's number, by which its entries can be dropped later.
    size_t addRule(const SCacheRule& rule);

    // Serves a read from the cache; false when the bytes must come from the device.
    bool read(int64_t address, int64_t length, void* buffer) const;
    // Keeps bytes just read from the device when their register may be cached.
    void afterRead(int64_t address, int64_t length, const void* buffer);
    // Write-through registers keep the written bytes; everything else the write touches is dropped.
    void afterWrite(int64_t address, int64_t length, const void* buffer);

    void invalidateRule(size_t rule);
    void invalidate(int64_t address, int64_t length);
    void clear() {
        m_Entries.clear();
        ++m_Generation;
    }
    bool isValid(int64_t address, int64_t length) const;
    bool ruleIsValid(size_t rule) const;
    // Moves on whenever cached bytes are dropped or replaced by a write.
    uint64_t generation() const { return m_Generation; }

private:
    // Ends every index pattern at the next register above its base; done once after rules change.
    void boundPatterns() const;
    GenApi::ECachingMode modeOf(int64_t address, int64_t length) const;
    bool matches(const SCacheRule& rule, int64_t address, int64_t length) const;

    mutable std::vector<SCacheRule> m_Rules;
    mutable bool m_PatternsBounded = false;
    // Rules by the address of their register, and the rules of index patterns, which match more.
    std::multimap<int64_t, size_t> m_FixedRules;
    std::vector<size_t> m_IndexedRules;
    std::map<int64_t, std::vector<uint8_t>> m_Entries;
    int64_t m_LongestEntry = 0;
    uint64_t m_Generation = 0;
};

}  // namespace GenApiEngine

#endif
