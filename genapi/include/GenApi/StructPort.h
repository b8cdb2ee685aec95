// A memory-backed port over a plain data structure, for tests.
#ifndef GENAPI_STRUCTPORT_H
#define GENAPI_STRUCTPORT_H

#include <GenApi/PortImpl.h>
#include <cstring>

namespace GENAPI_NAMESPACE {

template <class CDataStruct>
class CTestPortStruct : public CPortImpl, public CDataStruct {
public:
    CTestPortStruct(int64_t BaseAddress = 0) : m_BaseAddress(BaseAddress) {
        MemSet(0);
        ResetStatistics();
    }
    virtual EAccessMode GetAccessMode() const { return RW; }
    virtual EInterfaceType GetPrincipalInterfaceType() const { return intfIPort; }
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) {
        if (!InBounds(Address, Length))
            throw RUNTIME_EXCEPTION("CTestPortStruct::Read - Invalid address and/or length");
        memcpy(pBuffer, Data() + (Address - m_BaseAddress), static_cast<size_t>(Length));
        ++m_NumReads;
    }
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) {
        if (!InBounds(Address, Length))
            throw RUNTIME_EXCEPTION("CTestPortStruct::Write - Invalid address and/or length");
        memcpy(Data() + (Address - m_BaseAddress), pBuffer, static_cast<size_t>(Length));
        ++m_NumWrites;
    }
    void MemSet(char c) { memset(Data(), c, sizeof(CDataStruct)); }
    void ResetStatistics() {
        m_NumReads = 0;
        m_NumWrites = 0;
    }
    int64_t GetNumReads() const { return m_NumReads; }
    int64_t GetNumWrites() const { return m_NumWrites; }

private:
    char* Data() { return reinterpret_cast<char*>(static_cast<CDataStruct*>(this)); }
    bool InBounds(int64_t Address, int64_t Length) const {
        return Length >= 0 && Address >= m_BaseAddress &&
               Address + Length <= m_BaseAddress + static_cast<int64_t>(sizeof(CDataStruct));
    }
    int64_t m_BaseAddress;
    int64_t m_NumReads;
    int64_t m_NumWrites;
};

}  // namespace GENAPI_NAMESPACE

#endif
