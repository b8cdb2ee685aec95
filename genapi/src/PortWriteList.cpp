// A recorded list of port writes and its replay.
#include <GenApi/GenApi.h>
#include <GenApi/PortWriteList.h>
#include <vector>

using namespace GENAPI_NAMESPACE;

struct CPortWriteList::SEntries {
    struct SEntry {
        int64_t address;
        std::vector<uint8_t> bytes;
    };
    std::vector<SEntry> entries;
};

CPortWriteList::CPortWriteList() : m_pEntries(new SEntries), m_Cookie(-1) {}

CPortWriteList::~CPortWriteList() {
    delete m_pEntries;
}

void CPortWriteList::Write(const void* pBuffer, int64_t Address, int64_t Length) {
    if (!pBuffer || Length < 0)
        throw INVALID_ARGUMENT_EXCEPTION("Invalid buffer or length written to the port write list");
    const uint8_t* bytes = static_cast<const uint8_t*>(pBuffer);
    m_pEntries->entries.push_back(SEntries::SEntry{Address, std::vector<uint8_t>(bytes, bytes + Length)});
}

void CPortWriteList::Replay(IPort* pPort) {
    if (!pPort)
        throw INVALID_ARGUMENT_EXCEPTION("No port to replay the write list into");
    for (const SEntries::SEntry& entry : m_pEntries->entries)
        pPort->Write(entry.bytes.data(), entry.address, static_cast<int64_t>(entry.bytes.size()));
}

void CPortWriteList::SetCookie(const int64_t Value) {
    m_Cookie = Value;
}

int64_t CPortWriteList::GetCookie() {
    return m_Cookie;
}
