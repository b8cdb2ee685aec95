// Collects register writes for one stacked port write: each entry keeps a copy of its bytes, and the
// entries come out as the array a stacked port takes (TEntry has Address, pBuffer and Size, as
// PORT_REGISTER_STACK_ENTRY does).
#ifndef GENAPI_REGISTERSETHELPER_H
#define GENAPI_REGISTERSETHELPER_H

#include <GenApi/GenApiNamespace.h>
#include <stddef.h>
#include <stdint.h>
#include <deque>
#include <vector>

namespace GENAPI_NAMESPACE {

template <class TEntry>
class CRegisterSetHelperT {
public:
    // Adds the bytes written at an address.
    void Add(uint64_t Address, const void* pBuffer, size_t Size) {
        const uint8_t* pBytes = static_cast<const uint8_t*>(pBuffer);
        m_Buffers.push_back(std::vector<uint8_t>(pBytes, pBytes + Size));
        TEntry Entry;
        Entry.Address = Address;
        Entry.pBuffer = m_Buffers.back().empty() ? NULL : &m_Buffers.back()[0];
        Entry.Size = Size;
        m_Entries.push_back(Entry);
    }
    // Adds an integer register's value in the register's byte order.
    template <class TValue>
    void AddValue(uint64_t Address, TValue Value, bool BigEndian) {
        uint8_t Bytes[sizeof(TValue)];
        for (size_t i = 0; i < sizeof(TValue); ++i) {
            const size_t Shift = 8 * (BigEndian ? sizeof(TValue) - 1 - i : i);
            Bytes[i] = static_cast<uint8_t>(static_cast<uint64_t>(Value) >> Shift);
        }
        Add(Address, Bytes, sizeof(TValue));
    }
    TEntry* GetEntries() { return m_Entries.empty() ? NULL : &m_Entries[0]; }
    size_t GetNumEntries() const { return m_Entries.size(); }
    void Clear() {
        m_Entries.clear();
        m_Buffers.clear();
    }

private:
    std::vector<TEntry> m_Entries;
    // A deque keeps every buffer where it is while more are added.
    std::deque<std::vector<uint8_t> > m_Buffers;
};

}  // namespace GENAPI_NAMESPACE

#endif
