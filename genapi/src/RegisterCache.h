// Cached register contents of a node map whose registers are reached through a user port.
#ifndef GENAPI_ENGINE_REGISTERCACHE_H
#define GENAPI_ENGINE_REGISTERCACHE_H

#include <GenApi/INode.h>
#include <cstdint>
#include <functional>
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
    // Drops every entry the range overlaps, because the device's bytes there may have changed.
    void invalidate(int64_t address, int64_t length);
    void clear() { m_Entries.clear(); }
    bool isValid(int64_t address, int64_t length) const;
    bool ruleIsValid(size_t rule) const;

    // Told of every range a write changed (or may have changed, when it failed), after the entries it
    // overlaps are dropped.
    void setWriteListener(std::function<void(int64_t address, int64_t length)> listener) {
        m_WriteListener = std::move(listener);
    }
    // The rules with a register sharing bytes with the range; worked out once per range, since a device
    // is written at the same few places again and again.
    const std::vector<size_t>& rulesOverlapping(int64_t address, int64_t length) const;

private:
    // Ends every index pattern at the next register above its base; done once after rules change.
    void boundPatterns() const;
    GenApi::ECachingMode modeOf(int64_t address, int64_t length) const;
    bool matches(const SCacheRule& rule, int64_t address, int64_t length) const;
    void dropOverlapping(int64_t address, int64_t length);
    std::vector<size_t> findRulesOverlapping(int64_t address, int64_t length) const;

    mutable std::vector<SCacheRule> m_Rules;
    mutable bool m_PatternsBounded = false;
    // Rules by the address of their register, and the rules of index patterns, which match more.
    std::multimap<int64_t, size_t> m_FixedRules;
    std::vector<size_t> m_IndexedRules;
    std::map<int64_t, std::vector<uint8_t>> m_Entries;
    int64_t m_LongestEntry = 0;
    int64_t m_LongestFixedRule = 0;
    std::function<void(int64_t, int64_t)> m_WriteListener;
    mutable std::map<std::pair<int64_t, int64_t>, std::vector<size_t>> m_Overlapping;
};

}  // namespace GenApiEngine

#endif
