// Port nodes: raw access to a user port or to the Aravis device.
#ifndef GENAPI_ENGINE_PORTNODE_H
#define GENAPI_ENGINE_PORTNODE_H

#include <GenApi/IChunkPort.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/IPortStacked.h>
#include "NodeBase.h"

namespace GenApiEngine {

// Every port node answers as a chunk port (one without a ChunkID has an empty one) and records its writes
// into a write list while asked to; a stacked write is a sequence of single ones.
class CPortNode : public CNodeBase,
                  public virtual GenApi::IChunkPort,
                  public GenApi::IPortRecorder,
                  public GenApi::IPortStacked {
public:
    CPortNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring GetChunkID() const override;
    GenApi::EYesNo CacheChunkData() const override;

    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;
    // The entries one after the other: the user port takes them as single writes too.
    void Write(GenApi::PORT_REGISTER_STACK_ENTRY* pEntries, size_t numEntries) override;

    void Replay(GenApi::IPortWriteList* pPortRecorder, bool Invalidate = true) override;
    void StartRecording(GenApi::IPortWriteList* pPortRecorder) override;
    void StopRecording() override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;

private:
    void checkTransfer(const void* pBuffer, int64_t Length, const char* method) const;
    void recordThroughDevice(GenApi::IPortWriteList* list);

    GenApi::IPortWriteList* m_Recording = nullptr;
};

}  // namespace GenApiEngine

#endif
