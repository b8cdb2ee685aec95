// The port that serves one chunk of a payload buffer to the chunk port node whose ChunkID it matches.
#ifndef GENAPI_CHUNKPORT_H
#define GENAPI_CHUNKPORT_H

#include <GenApi/Pointer.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/INodeMap.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CChunkPort : public IPortConstruct {
public:
    CChunkPort(IPort* pPort = NULL);
    virtual ~CChunkPort();

    // RW while a chunk (or a kept copy of one) is attached, NA otherwise.
    virtual EAccessMode GetAccessMode() const;
    virtual EInterfaceType GetPrincipalInterfaceType() const;
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length);
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length);
    virtual void SetPortImpl(IPort* pPort);
    virtual void SetPortImpl(IPortStacked* pPort);
    virtual EYesNo GetSwapEndianess() { return No; }

    void InvalidateNode();
    // Serves the given chunk port node; false when it is no chunk port.
    bool AttachPort(IPort* pPort);
    void DetachPort();
    // Lets the port read Length bytes at pBaseAddress + ChunkOffset, keeping a copy when Cache is set.
    void AttachChunk(uint8_t* pBaseAddress, int64_t ChunkOffset, int64_t Length, bool Cache);
    void DetachChunk();
    int GetChunkIDLength() { return m_ChunkIDLength; }
    bool CheckChunkID(uint8_t* pChunkIDBuffer, int ChunkIDLength);
    bool CheckChunkID(uint64_t ChunkID);
    // The same chunk at the same offset of another buffer.
    void UpdateBuffer(uint8_t* pBaseAddress);
    void ClearCache();

protected:
    CLock& GetLock() const;

    uint8_t* m_pBaseAddress;
    int64_t m_ChunkOffset;
    int64_t m_Length;
    int64_t m_LengthAlloc;
    CNodePtr m_ptrPort;
    uint8_t* m_pChunkIDBuffer;
    int m_ChunkIDLength;
    uint8_t* m_pChunkData;
    bool m_CacheData;
    uint64_t m_ChunkIDNumber;
    bool m_ChunkIDNumberValid;

private:
    CChunkPort(const CChunkPort&);
    CChunkPort& operator=(const CChunkPort&);
};

}  // namespace GENAPI_NAMESPACE

#endif
