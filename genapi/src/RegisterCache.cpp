// A cache of register bytes keyed by address and register; each register's Cachable decides what it keeps.
#include "RegisterCache.h"
#include <algorithm>
#include <cstring>

namespace GenApiEngine {
namespace {

constexpr int64_t maximumIndex = 1 << 16;
// Ranges whose overlapping rules are remembered, before they are forgotten all at once.
constexpr size_t maximumKnownRanges = 4096;

bool overlaps(int64_t a, int64_t aLength, int64_t b, int64_t bLength) {
    return a < b + bLength && b < a + aLength;
}

}  // namespace

size_t CRegisterCache::addRule(const SCacheRule& rule) {
    m_Rules.push_back(rule);
    const size_t index = m_Rules.size() - 1;
    if (rule.floating)
        return index;
    m_PatternsBounded = false;
    m_Overlapping.clear();
    if (rule.stride > 0)
        m_IndexedRules.push_back(index);
    else
        m_FixedRules.emplace(rule.address, index);
    if (rule.stride <= 0)
        m_LongestFixedRule = std::max(m_LongestFixedRule, rule.length);
    return index;
}

void CRegisterCache::boundPatterns() const {
    if (m_PatternsBounded)
        return;
    std::vector<int64_t> bases;
    for (const SCacheRule& rule : m_Rules) {
        if (!rule.floating)
            bases.push_back(rule.address);
    }
    std::sort(bases.begin(), bases.end());
    for (SCacheRule& rule : m_Rules) {
        const auto next = std::upper_bound(bases.begin(), bases.end(), rule.address);
        rule.end = next == bases.end() ? rule.address + rule.stride * maximumIndex : *next;
    }
    m_PatternsBounded = true;
}

bool CRegisterCache::matches(const SCacheRule& rule, int64_t address, int64_t length, bool bounded) const {
    if (length != rule.length || address < rule.address)
        return false;
    if (rule.stride <= 0)
        return address == rule.address;
    return (address - rule.address) % rule.stride == 0 && (!bounded || address + length <= rule.end);
}

// Within a transfer scope, the scope's registers at the bytes act (registers at a fixed address, else
// index patterns, else its one floating register of that length), and a transfer for none of them is not
// cached; outside any scope, the only register at the bytes acts. Several registers of one scope at the
// same bytes (fields of one word read by one formula) act together: a transfer cannot tell them apart.
CRegisterCache::SActing CRegisterCache::actingFor(int64_t address, int64_t length) const {
    boundPatterns();
    SActing acting;
    auto add = [&](size_t rule) {
        if (acting.count < SActing::capacity)
            acting.rules[acting.count] = rule;
        ++acting.count;
    };
    // An index pattern the scope names reaches every index; unnamed, it ends below the next register.
    auto candidate = [&](size_t rule) {
        if (m_Acting)
            return matches(m_Rules[rule], address, length, false) &&
                   std::find(m_Acting->begin(), m_Acting->end(), rule) != m_Acting->end();
        return matches(m_Rules[rule], address, length, true);
    };
    const auto fixed = m_FixedRules.equal_range(address);
    for (auto rule = fixed.first; rule != fixed.second; ++rule) {
        if (candidate(rule->second))
            add(rule->second);
    }
    if (acting.count == 0) {
        for (const size_t rule : m_IndexedRules) {
            if (candidate(rule))
                add(rule);
        }
    }
    if (acting.count == 0 && m_Acting) {
        for (const size_t rule : *m_Acting) {
            if (m_Rules[rule].floating && m_Rules[rule].length == length)
                add(rule);
        }
        if (acting.count > 1)
            acting.count = 0;
    }
    if ((!m_Acting && acting.count > 1) || acting.count > SActing::capacity)
        acting.count = 0;
    return acting;
}

bool CRegisterCache::read(int64_t address, int64_t length, void* buffer) const {
    const SActing acting = actingFor(address, length);
    const std::vector<uint8_t>* bytes = nullptr;
    for (size_t i = 0; i < acting.count; ++i) {
        if (!keeps(acting.rules[i]))
            return false;
        const auto entry = m_Entries.find({address, acting.rules[i]});
        if (entry == m_Entries.end() || static_cast<int64_t>(entry->second.size()) != length ||
            (bytes && *bytes != entry->second))
            return false;
        bytes = &entry->second;
    }
    if (!bytes)
        return false;
    std::memcpy(buffer, bytes->data(), static_cast<size_t>(length));
    return true;
}

void CRegisterCache::keep(int64_t address, size_t rule, int64_t length, const void* buffer) {
    if (m_Rules[rule].floating) {
        const auto previous = m_FloatingAt.find(rule);
        if (previous != m_FloatingAt.end() && previous->second != address)
            m_Entries.erase({previous->second, rule});
        m_FloatingAt[rule] = address;
    }
    const uint8_t* bytes = static_cast<const uint8_t*>(buffer);
    m_Entries[{address, rule}].assign(bytes, bytes + length);
    m_LongestEntry = std::max(m_LongestEntry, length);
}

void CRegisterCache::afterRead(int64_t address, int64_t length, const void* buffer) {
    const SActing acting = actingFor(address, length);
    for (size_t i = 0; i < acting.count; ++i) {
        if (keeps(acting.rules[i]))
            keep(address, acting.rules[i], length, buffer);
    }
}

void CRegisterCache::afterWrite(int64_t address, int64_t length, const void* buffer) {
    const SActing acting = actingFor(address, length);
    if (acting.count == 0) {
        dropOverlapping(address, length);
        if (m_WriteListener)
            m_WriteListener(address, length, noRule);
        return;
    }
    for (size_t i = 0; i < acting.count; ++i) {
        const size_t rule = acting.rules[i];
        if (keeps(rule) && m_Rules[rule].mode == GenApi::WriteThrough)
            keep(address, rule, length, buffer);
        else
            m_Entries.erase({address, rule});
    }
    for (size_t i = 0; i < acting.count && m_WriteListener; ++i)
        m_WriteListener(address, length, acting.rules[i]);
}

void CRegisterCache::invalidate(int64_t address, int64_t length) {
    dropOverlapping(address, length);
    if (m_WriteListener)
        m_WriteListener(address, length, noRule);
}

const std::vector<size_t>& CRegisterCache::rulesOverlapping(int64_t address, int64_t length) const {
    auto known = m_Overlapping.find({address, length});
    if (known == m_Overlapping.end()) {
        if (m_Overlapping.size() >= maximumKnownRanges)
            m_Overlapping.clear();
        known = m_Overlapping.emplace(std::make_pair(address, length), findRulesOverlapping(address, length))
                    .first;
    }
    return known->second;
}

std::vector<size_t> CRegisterCache::findRulesOverlapping(int64_t address, int64_t length) const {
    std::vector<size_t> found;
    boundPatterns();
    const int64_t first = address > INT64_MIN + m_LongestFixedRule ? address - m_LongestFixedRule : INT64_MIN;
    const auto last =
        address < INT64_MAX - length ? m_FixedRules.lower_bound(address + length) : m_FixedRules.end();
    for (auto rule = m_FixedRules.upper_bound(first); rule != last; ++rule) {
        if (overlaps(m_Rules[rule->second].address, m_Rules[rule->second].length, address, length))
            found.push_back(rule->second);
    }
    // An index reaches past where the pattern's cached entries end, so the whole reach counts.
    for (const size_t rule : m_IndexedRules) {
        const SCacheRule& pattern = m_Rules[rule];
        int64_t reach = 0;
        if (__builtin_mul_overflow(pattern.stride, maximumIndex, &reach) ||
            __builtin_add_overflow(reach, pattern.address + pattern.length, &reach))
            reach = INT64_MAX;
        if (pattern.address < address + length && address < reach)
            found.push_back(rule);
    }
    return found;
}

void CRegisterCache::invalidateRule(size_t rule) {
    if (rule >= m_Rules.size())
        return;
    if (m_Rules[rule].floating) {
        const auto at = m_FloatingAt.find(rule);
        if (at != m_FloatingAt.end()) {
            m_Entries.erase({at->second, rule});
            m_FloatingAt.erase(at);
        }
        return;
    }
    boundPatterns();
    for (auto entry = m_Entries.begin(); entry != m_Entries.end();)
        entry = entry->first.second == rule ? m_Entries.erase(entry) : std::next(entry);
}

// Only entries that start less than the longest entry's length before the range can reach into it.
void CRegisterCache::dropOverlapping(int64_t address, int64_t length) {
    const int64_t first = address > INT64_MIN + m_LongestEntry ? address - m_LongestEntry : INT64_MIN;
    const auto last =
        address < INT64_MAX - length ? m_Entries.lower_bound({address + length, 0}) : m_Entries.end();
    for (auto entry = m_Entries.upper_bound({first, noRule}); entry != last;) {
        const int64_t entryLength = static_cast<int64_t>(entry->second.size());
        entry = overlaps(entry->first.first, entryLength, address, length) ? m_Entries.erase(entry)
                                                                           : std::next(entry);
    }
}

bool CRegisterCache::isValid(int64_t address, int64_t length) const {
    for (auto entry = m_Entries.lower_bound({address, 0});
         entry != m_Entries.end() && entry->first.first == address; ++entry) {
        if (static_cast<int64_t>(entry->second.size()) == length)
            return true;
    }
    return false;
}

bool CRegisterCache::ruleIsValid(size_t rule) const {
    if (rule >= m_Rules.size() || m_Rules[rule].mode == GenApi::NoCache)
        return false;
    if (m_Rules[rule].stride > 0)
        return false;
    if (m_Rules[rule].floating) {
        const auto at = m_FloatingAt.find(rule);
        return at != m_FloatingAt.end() && m_Entries.count({at->second, rule}) != 0;
    }
    const auto entry = m_Entries.find({m_Rules[rule].address, rule});
    return entry != m_Entries.end() && static_cast<int64_t>(entry->second.size()) == m_Rules[rule].length;
}

}  // namespace GenApiEngine
