// Sparse register memory: a byte not written reads zero.
#include "MemoryPort.h"

void CMemoryPort::Read(void* pBuffer, int64_t Address, int64_t Length) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    uint8_t* bytes = static_cast<uint8_t*>(pBuffer);
    for (int64_t offset = 0; offset < Length; ++offset) {
        const auto found = m_Bytes.find(Address + offset);
        bytes[offset] = found == m_Bytes.end() ? 0 : found->second;
    }
}

void CMemoryPort::Write(const void* pBuffer, int64_t Address, int64_t Length) {
    std::lock_guard<std::mutex> lock(m_Mutex);
    const uint8_t* bytes = static_cast<const uint8_t*>(pBuffer);
    for (int64_t offset = 0; offset < Length; ++offset)
        m_Bytes[Address + offset] = bytes[offset];
}
