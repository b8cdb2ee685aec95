// The chunk adapters' common part: a chunk port for every chunk port node of the attached node map.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapter.h>
#include "AdapterPorts.h"

using namespace GENAPI_NAMESPACE;

CChunkAdapter::CChunkAdapter(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : m_ppChunkPorts(new std::vector<CChunkPort*>), m_MaxChunkCacheSize(MaxChunkCacheSize) {
    if (pNodeMap)
        AttachNodeMap(pNodeMap);
}

CChunkAdapter::~CChunkAdapter() {
    DetachNodeMap();
    delete m_ppChunkPorts;
}

void CChunkAdapter::AttachNodeMap(INodeMap* pNodeMap) {
    DetachNodeMap();
    if (!pNodeMap)
        return;
    GenApiEngine::attachPorts(pNodeMap, *m_ppChunkPorts, [](CChunkPort& port, INode* node) {
        IChunkPort* chunkPort = dynamic_cast<IChunkPort*>(node);
        return node->GetPrincipalInterfaceType() == intfIPort && chunkPort &&
               !chunkPort->GetChunkID().empty() && port.AttachPort(chunkPort);
    });
}

void CChunkAdapter::DetachNodeMap() {
    for (CChunkPort* port : *m_ppChunkPorts) {
        port->ClearCache();
        port->DetachChunk();
        port->DetachPort();
        delete port;
    }
    m_ppChunkPorts->clear();
}

void CChunkAdapter::DetachBuffer() {
    for (CChunkPort* port : *m_ppChunkPorts) {
        port->DetachChunk();
        port->InvalidateNode();
    }
}

void CChunkAdapter::UpdateBuffer(uint8_t* pBaseAddress) {
    for (CChunkPort* port : *m_ppChunkPorts)
        port->UpdateBuffer(pBaseAddress);
}

void CChunkAdapter::ClearCaches() {
    for (CChunkPort* port : *m_ppChunkPorts)
        port->ClearCache();
}
