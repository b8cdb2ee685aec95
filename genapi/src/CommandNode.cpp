// ICommand: Execute through Aravis, IsDone by comparing the command register with the command value.
#include "CommandNode.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <GenApi/IInteger.h>
#include <cstdlib>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CCommandNode::CCommandNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CValueNode(map, description, intfICommand) {}

int64_t CCommandNode::commandValue() {
    if (IInteger* source = dynamic_cast<IInteger*>(pointee("pCommandValue")))
        return source->GetValue();
    int64_t value = 1;
    textToInteger(description().value("CommandValue"), value);
    return value;
}

void CCommandNode::Execute(bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("Execute");
    if (!arvNode() || !ARV_IS_GC_COMMAND(arvNode()))
        raise(EError::LogicalError, "Execute", "node is no command");
    if (!writeToValueNode(commandValue(), Verify))
        arvCall("Execute", [&](GError** e) { arv_gc_command_execute(ARV_GC_COMMAND(arvNode()), e); });
    m_Executing = true;
    changed();
}

// A command whose register cannot be read counts as done; finishing fires the callbacks of dependants.
bool CCommandNode::IsDone(bool) {
    CMapEntry entry(map());
    const EAccessMode mode = GetAccessMode();
    if (mode == NI)
        raise(EError::Access, "IsDone", "Node is not implemented.");
    const bool done = !running();
    if (done && m_Executing) {
        m_Executing = false;
        changed();
    }
    return done;
}

// Running while its register holds the command value; a register that cannot be read never runs.
bool CCommandNode::running() {
    IInteger* source = dynamic_cast<IInteger*>(pointee("pValue"));
    return source && IsReadable(source) && source->GetValue() == commandValue();
}

// GenApi's text of a readable command is "1" from Execute until the command is done, and "0" otherwise,
// even where the register holds the command value without an Execute; reading the text does not end an
// execution the way IsDone does.
gcstring CCommandNode::ToString(bool, bool) {
    CMapEntry entry(map());
    checkReadable("ToString");
    return m_Executing && running() ? "1" : "0";
}

// Any text but "0" or "false" executes the command.
void CCommandNode::FromString(const gcstring& ValueStr, bool Verify) {
    bool execute = true;
    if (textToBoolean(ValueStr.c_str(), execute) && !execute)
        return;
    Execute(Verify);
}

void CCommandNode::poll() {
    if (m_Executing && IsReadable(GetAccessMode()))
        IsDone(false);
}

}  // namespace GenApiEngine
