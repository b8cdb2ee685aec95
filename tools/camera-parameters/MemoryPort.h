// A register space in memory behind one port of a description, so that a description file can be browsed
// and written without its camera: every byte reads zero until written.
#ifndef TOOLS_CAMERAPARAMETERS_MEMORYPORT_H
#define TOOLS_CAMERAPARAMETERS_MEMORYPORT_H

#include <GenApi/GenApi.h>
#include <GenApi/PortImpl.h>
#include <cstdint>
#include <map>
#include <mutex>

class CMemoryPort : public GenApi::CPortImpl {
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    // Only written bytes are kept, since descriptions place registers anywhere in a 64-bit space.
    std::map<int64_t, uint8_t> m_Bytes;
    std::mutex m_Mutex;
};

#endif
