// Port nodes: raw access to a user port or to the Aravis device.
#ifndef GENAPI_ENGINE_PORTNODE_H
#define GENAPI_ENGINE_PORTNODE_H

#include <GenApi/IChunkPort.h>
#include "NodeBase.h"

namespace GenApiEngine {

// Every port node answers as a chunk port; one without a ChunkID has an empty one.
class CPortNode : public CNodeBase, public virtual GenApi::IChunkPort {
public:
    CPortNode(CNodeMapImpl& map, const SNodeDescription& description, ArvGcNode* arvNode);

    GenICam::gcstring GetChunkID() const override;
    GenApi::EYesNo CacheChunkData() const override;

    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;

private:
    void checkTransfer(const void* pBuffer, int64_t Length, const char* method) const;
};

}  // namespace GenApiEngine

#endif
