// Cached register contents of a node map whose registers are reached through a user port: each register
// keeps its own bytes under its own caching mode, as GenApi's registers do.
#ifndef GENAPI_ENGINE_REGISTERCACHE_H
#define GENAPI_ENGINE_REGISTERCACHE_H

#include <GenApi/INode.h>
#include <cstdint>
#include <cstddef>
#include <functional>
#include <map>
#include <vector>

namespace GenApiEngine {

// Where a register lives and how it may be cached; indexed registers repeat every `stride` bytes, up to
// the next register the description places above them. A floating register's address is computed from
// other nodes: it keeps the bytes of the one address it was last transferred at, and only the transfers
// made for it reach them.
struct SCacheRule {
    int64_t address;
    int64_t length;
    int64_t stride;
    GenApi::ECachingMode mode;
    int64_t end = INT64_MAX;
    bool floating = false;
};

class CRegisterCache {
public:
    static constexpr size_t noRule = SIZE_MAX;

    // Adds a register; returns the rule's number, by which its entries can be dropped later.
    size_t addRule(const SCacheRule& rule);

    // Serves a read from the cache; false when the bytes must come from the device.
    bool read(int64_t address, int64_t length, void* buffer) const;
    // Keeps bytes just read from the device when their register may be cached.
    void afterRead(int64_t address, int64_t length, const void* buffer);
    // A write-through register keeps the bytes it wrote; the other registers at those bytes keep theirs,
    // since in GenApi only the links of the description tell one register that another changed. A write
    // whose register is unknown drops every register's bytes it touches.
    void afterWrite(int64_t address, int64_t length, const void* buffer);

    void invalidateRule(size_t rule);
    bool isFloating(size_t rule) const { return rule < m_Rules.size() && m_Rules[rule].floating; }
    // Drops every entry the range overlaps, because the device's bytes there may have changed.
    void invalidate(int64_t address, int64_t length);
    void clear() {
        m_Entries.clear();
        m_FloatingAt.clear();
    }
    // Whether any register keeps bytes at all (the map's cache policy); turning it off drops them.
    void setKeeping(bool keeping) {
        m_Keeping = keeping;
        if (!keeping)
            clear();
    }
    bool isValid(int64_t address, int64_t length) const;
    bool ruleIsValid(size_t rule) const;

    // Told of every range a write changed (or may have changed, when it failed), after the entries it
    // overlaps are dropped, with the rule of the register that wrote (noRule when unknown).
    void setWriteListener(std::function<void(int64_t address, int64_t length, size_t rule)> listener) {
        m_WriteListener = std::move(listener);
    }
    // The rules with a register sharing bytes with the range; worked out once per range, since a device
    // is written at the same few places again and again.
    const std::vector<size_t>& rulesOverlapping(int64_t address, int64_t length) const;

private:
    friend class CTransferScope;
    // The registers a transfer of these bytes acts for; none when no register can be told.
    struct SActing {
        static constexpr size_t capacity = 4;
        size_t rules[capacity];
        size_t count = 0;
    };
    SActing actingFor(int64_t address, int64_t length) const;
    bool keeps(size_t rule) const {
        return m_Keeping && rule != noRule && m_Rules[rule].mode != GenApi::NoCache;
    }
    void keep(int64_t address, size_t rule, int64_t length, const void* buffer);
    // Ends every index pattern at the next register above its base; done once after rules change.
    void boundPatterns() const;
    bool matches(const SCacheRule& rule, int64_t address, int64_t length, bool bounded) const;
    void dropOverlapping(int64_t address, int64_t length);
    std::vector<size_t> findRulesOverlapping(int64_t address, int64_t length) const;

    mutable std::vector<SCacheRule> m_Rules;
    mutable bool m_PatternsBounded = false;
    // Rules by the address of their register, and the rules of index patterns, which match more.
    std::multimap<int64_t, size_t> m_FixedRules;
    std::vector<size_t> m_IndexedRules;
    // Kept bytes by address and the rule of the register that keeps them.
    std::map<std::pair<int64_t, size_t>, std::vector<uint8_t>> m_Entries;
    const std::vector<size_t>* m_Acting = nullptr;
    // The address a floating rule keeps bytes at.
    std::map<size_t, int64_t> m_FloatingAt;
    bool m_Keeping = true;
    int64_t m_LongestEntry = 0;
    int64_t m_LongestFixedRule = 0;
    std::function<void(int64_t, int64_t, size_t)> m_WriteListener;
    mutable std::map<std::pair<int64_t, int64_t>, std::vector<size_t>> m_Overlapping;
};

// Names the registers on whose behalf the transfers inside the scope run (those behind the node being
// read or written), so that each transfer reaches the bytes of its own register; scopes nest.
class CTransferScope {
public:
    CTransferScope(CRegisterCache* cache, const std::vector<size_t>* rules) : m_Cache(cache) {
        if (m_Cache) {
            m_Saved = m_Cache->m_Acting;
            m_Cache->m_Acting = rules;
        }
    }
    ~CTransferScope() {
        if (m_Cache)
            m_Cache->m_Acting = m_Saved;
    }
    CTransferScope(const CTransferScope&) = delete;
    CTransferScope& operator=(const CTransferScope&) = delete;

private:
    CRegisterCache* m_Cache;
    const std::vector<size_t>* m_Saved = nullptr;
};

}  // namespace GenApiEngine

#endif
