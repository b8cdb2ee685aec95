// A cache of register bytes keyed by address; the description's Cachable decides what may be kept.
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
    m_PatternsBounded = false;
    m_Overlapping.clear();
    const size_t index = m_Rules.size() - 1;
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
    for (const SCacheRule& rule : m_Rules)
        bases.push_back(rule.address);
    std::sort(bases.begin(), bases.end());
    for (SCacheRule& rule : m_Rules) {
        const auto next = std::upper_bound(bases.begin(), bases.end(), rule.address);
        rule.end = next == bases.end() ? rule.address + rule.stride * maximumIndex : *next;
    }
    m_PatternsBounded = true;
}

bool CRegisterCache::matches(const SCacheRule& rule, int64_t address, int64_t length) const {
    if (length != rule.length || address < rule.address)
        return false;
    if (rule.stride <= 0)
        return address == rule.address;
    return (address - rule.address) % rule.stride == 0 && address + length <= rule.end;
}

// Registers at a fixed address decide before index patterns; where several registers claim the bytes,
// all must allow caching (NoCache wins).
GenApi::ECachingMode CRegisterCache::modeOf(int64_t address, int64_t length) const {
    boundPatterns();
    bool found = false;
    GenApi::ECachingMode mode = GenApi::WriteThrough;
    const auto fixed = m_FixedRules.equal_range(address);
    for (auto rule = fixed.first; rule != fixed.second; ++rule) {
        if (!matches(m_Rules[rule->second], address, length))
            continue;
        found = true;
        mode = GenApi::Combine(mode, m_Rules[rule->second].mode);
    }
    if (found)
        return mode;
    for (const size_t rule : m_IndexedRules) {
        if (!matches(m_Rules[rule], address, length))
            continue;
        found = true;
        mode = GenApi::Combine(mode, m_Rules[rule].mode);
    }
    return found ? mode : GenApi::NoCache;
}

bool CRegisterCache::read(int64_t address, int64_t length, void* buffer) const {
    const auto entry = m_Entries.find(address);
    if (entry == m_Entries.end() || static_cast<int64_t>(entry->second.size()) != length)
        return false;
    std::memcpy(buffer, entry->second.data(), static_cast<size_t>(length));
    return true;
}

void CRegisterCache::afterRead(int64_t address, int64_t length, const void* buffer) {
    if (modeOf(address, length) == GenApi::NoCache)
        return;
    const uint8_t* bytes = static_cast<const uint8_t*>(buffer);
    m_Entries[address].assign(bytes, bytes + length);
    m_LongestEntry = std::max(m_LongestEntry, length);
}

void CRegisterCache::afterWrite(int64_t address, int64_t length, const void* buffer) {
    dropOverlapping(address, length);
    if (modeOf(address, length) == GenApi::WriteThrough) {
        const uint8_t* bytes = static_cast<const uint8_t*>(buffer);
        m_Entries[address].assign(bytes, bytes + length);
        m_LongestEntry = std::max(m_LongestEntry, length);
    }
    if (m_WriteListener)
        m_WriteListener(address, length);
}

void CRegisterCache::invalidate(int64_t address, int64_t length) {
    dropOverlapping(address, length);
    if (m_WriteListener)
        m_WriteListener(address, length);
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
    boundPatterns();
    for (auto entry = m_Entries.begin(); entry != m_Entries.end();) {
        const int64_t length = static_cast<int64_t>(entry->second.size());
        entry = matches(m_Rules[rule], entry->first, length) ? m_Entries.erase(entry) : std::next(entry);
    }
}

// Only entries that start less than the longest entry's length before the range can reach into it.
void CRegisterCache::dropOverlapping(int64_t address, int64_t length) {
    const int64_t first = address > INT64_MIN + m_LongestEntry ? address - m_LongestEntry : INT64_MIN;
    const auto last =
        address < INT64_MAX - length ? m_Entries.lower_bound(address + length) : m_Entries.end();
    for (auto entry = m_Entries.upper_bound(first); entry != last;) {
        const int64_t entryLength = static_cast<int64_t>(entry->second.size());
        entry =
            overlaps(entry->first, entryLength, address, length) ? m_Entries.erase(entry) : std::next(entry);
    }
}

bool CRegisterCache::isValid(int64_t address, int64_t length) const {
    const auto entry = m_Entries.find(address);
    return entry != m_Entries.end() && static_cast<int64_t>(entry->second.size()) == length;
}

bool CRegisterCache::ruleIsValid(size_t rule) const {
    if (rule >= m_Rules.size() || m_Rules[rule].mode == GenApi::NoCache)
        return false;
    if (m_Rules[rule].stride > 0)
        return false;
    return isValid(m_Rules[rule].address, m_Rules[rule].length);
}

}  // namespace GenApiEngine
