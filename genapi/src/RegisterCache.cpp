// A cache of register bytes keyed by address; the description's Cachable decides what may be kept.
#include "RegisterCache.h"
#include <cstring>

namespace GenApiEngine {
namespace {

constexpr int64_t maximumIndex = 1 << 16;

bool overlaps(int64_t a, int64_t aLength, int64_t b, int64_t bLength) {
    return a < b + bLength && b < a + aLength;
}

}  // namespace

size_t CRegisterCache::addRule(const SCacheRule& rule) {
    m_Rules.push_back(rule);
    return m_Rules.size() - 1;
}

bool CRegisterCache::matches(const SCacheRule& rule, int64_t address, int64_t length) const {
    if (length != rule.length || address < rule.address)
        return false;
    if (rule.stride <= 0)
        return address == rule.address;
    const int64_t offset = address - rule.address;
    return offset % rule.stride == 0 && offset / rule.stride < maximumIndex;
}

// Registers at a fixed address decide first, since an indexed register's pattern may reach past them;
// every register that claims the bytes must allow caching for them to be kept (NoCache wins).
GenApi::ECachingMode CRegisterCache::modeOf(int64_t address, int64_t length) const {
    for (const bool indexed : {false, true}) {
        bool found = false;
        GenApi::ECachingMode mode = GenApi::WriteThrough;
        for (const SCacheRule& rule : m_Rules) {
            if ((rule.stride > 0) != indexed || !matches(rule, address, length))
                continue;
            found = true;
            mode = GenApi::Combine(mode, rule.mode);
        }
        if (found)
            return mode;
    }
    return GenApi::NoCache;
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
}

void CRegisterCache::afterWrite(int64_t address, int64_t length, const void* buffer) {
    invalidate(address, length);
    if (modeOf(address, length) != GenApi::WriteThrough)
        return;
    const uint8_t* bytes = static_cast<const uint8_t*>(buffer);
    m_Entries[address].assign(bytes, bytes + length);
}

void CRegisterCache::invalidateRule(size_t rule) {
    if (rule >= m_Rules.size())
        return;
    for (auto entry = m_Entries.begin(); entry != m_Entries.end();) {
        const int64_t length = static_cast<int64_t>(entry->second.size());
        entry = matches(m_Rules[rule], entry->first, length) ? m_Entries.erase(entry) : std::next(entry);
    }
}

void CRegisterCache::invalidate(int64_t address, int64_t length) {
    for (auto entry = m_Entries.begin(); entry != m_Entries.end();) {
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
