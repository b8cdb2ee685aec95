// IBoolean over Aravis' boolean node; the text form is "1" or "0".
#include "BooleanNode.h"
#include "NodeMapImpl.h"
#include "TextForms.h"

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CBooleanNode::CBooleanNode(CNodeMapImpl& map, const SNodeDescription& description, ArvGcNode* arvNode)
    : CValueNode(map, description, arvNode, intfIBoolean) {}

ArvGcBoolean* CBooleanNode::boolean(const char* method) const {
    if (!arvNode() || !ARV_IS_GC_BOOLEAN(arvNode()))
        raise(EError::LogicalError, method, "node has no boolean value");
    return ARV_GC_BOOLEAN(arvNode());
}

bool CBooleanNode::GetValue(bool, bool IgnoreCache) const {
    CMapEntry entry(map());
    checkReadable("GetValue");
    dropCacheIf(IgnoreCache);
    return arvCall("GetValue",
                   [&](GError** e) { return arv_gc_boolean_get_value(boolean("GetValue"), e); }) != FALSE;
}

void CBooleanNode::SetValue(bool Value, bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("SetValue");
    arvCall("SetValue",
            [&](GError** e) { arv_gc_boolean_set_value(boolean("SetValue"), Value ? TRUE : FALSE, e); });
    changed();
}

gcstring CBooleanNode::ToString(bool Verify, bool IgnoreCache) {
    return GetValue(Verify, IgnoreCache) ? "1" : "0";
}

void CBooleanNode::FromString(const gcstring& ValueStr, bool Verify) {
    bool value = false;
    if (!textToBoolean(ValueStr.c_str(), value)) {
        raise(
            EError::InvalidArgument, "FromString",
            formatText("Node '%s' : cannot convert string '%s' to bool.", name().c_str(), ValueStr.c_str()));
    }
    SetValue(value, Verify);
}

}  // namespace GenApiEngine
