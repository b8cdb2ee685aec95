// Port nodes: raw access to a user port or to the Aravis device.
#ifndef GENAPI_ENGINE_PORTNODE_H
#define GENAPI_ENGINE_PORTNODE_H

#include <GenApi/IPort.h>
#include "NodeBase.h"

namespace GenApiEngine {

class CPortNode : public CNodeBase, public virtual GenApi::IPort {
public:
    CPortNode(CNodeMapImpl& map, const SNodeDescription& description, ArvGcNode* arvNode);

    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;

private:
    void checkTransfer(const void* pBuffer, int64_t Length, const char* method) const;
};

}  // namespace GenApiEngine

#endif
