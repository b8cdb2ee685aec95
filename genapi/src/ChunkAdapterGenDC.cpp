// Chunk adapter for GenDC metadata components: the USB3 Vision trailer walk.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterGenDC.h>

using namespace GENAPI_NAMESPACE;

CChunkAdapterGenDC::CChunkAdapterGenDC(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapterU3V(pNodeMap, MaxChunkCacheSize) {}

CChunkAdapterGenDC::~CChunkAdapterGenDC() {}
