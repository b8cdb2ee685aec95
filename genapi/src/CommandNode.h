// Command nodes: executing writes the command value; the command is done once the device clears it.
#ifndef GENAPI_ENGINE_COMMANDNODE_H
#define GENAPI_ENGINE_COMMANDNODE_H

#include <GenApi/ICommand.h>
#include "ValueNode.h"

namespace GenApiEngine {

class CCommandNode : public CValueNode, public virtual GenApi::ICommand {
public:
    CCommandNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

    void Execute(bool Verify = true) override;
    void operator()() override { Execute(); }
    bool IsDone(bool Verify = true) override;
    // A polled command is asked whether it is done only while it runs; finishing fires its callbacks.
    void poll();

private:
    int64_t commandValue();
    bool running();

    bool m_Executing = false;
};

}  // namespace GenApiEngine

#endif
