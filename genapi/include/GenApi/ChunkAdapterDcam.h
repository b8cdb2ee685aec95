// Chunk adapter for IIDC (DCAM) payloads: chunk data followed by trailers that name the chunk by a GUID,
// optionally closed by a CRC-32 over everything before it.
#ifndef GENAPI_CHUNKADAPTERDCAM_H
#define GENAPI_CHUNKADAPTERDCAM_H

#include <Base/GCTypes.h>
#include <GenApi/ChunkAdapter.h>
#include <GenApi/Compatibility.h>

namespace GENAPI_NAMESPACE {

#ifndef _WIN32
typedef struct _GUID {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} GUID;
#endif

#pragma pack(push, 1)
// The GUID's 16 bytes are the chunk ID as the description writes it; the lengths are big-endian quadlets,
// InverseChunkLength being the bitwise complement of ChunkLength.
typedef struct DCAM_CHUNK_TRAILER {
    GUID ChunkGUID;
    uint32_t ChunkLength;
    uint32_t InverseChunkLength;
} DCAM_CHUNK_TRAILER;

typedef struct DCAM_CHECKSUM {
    uint32_t CRCChecksum;
} DCAM_CHECKSUM;
#pragma pack(pop)

class GENAPI_DECL CChunkAdapterDcam : public CChunkAdapter {
public:
    CChunkAdapterDcam(INodeMap* pNodeMap = NULL, int64_t MaxChunkCacheSize = -1);
    virtual ~CChunkAdapterDcam();
    // True when the trailers, walked from the end (or from before a CRC), consume the buffer exactly.
    virtual bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength);
    virtual void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                              AttachStatistics_t* pAttachStatistics = NULL);
    // True when the buffer ends with a checksum quadlet.
    bool HasCRC(uint8_t* pBuffer, int64_t BufferLength);
    // True when the buffer's checksum matches its contents (false without one).
    bool CheckCRC(uint8_t* pBuffer, int64_t BufferLength);
};

}  // namespace GENAPI_NAMESPACE

#endif
