// IBoolean over Aravis' boolean node; the text form is "1" or "0".
#include "BooleanNode.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <GenApi/IInteger.h>

#include <cinttypes>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CBooleanNode::CBooleanNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CValueNode(map, description, intfIBoolean) {}

ArvGcBoolean* CBooleanNode::boolean(const char* method) const {
    if (!arvNode() || !ARV_IS_GC_BOOLEAN(arvNode()))
        raise(EError::LogicalError, method, "node has no boolean value");
    return ARV_GC_BOOLEAN(arvNode());
}

int64_t CBooleanNode::describedValue(const char* property, int64_t fallback) const {
    int64_t value = fallback;
    textToInteger(description().value(property), value);
    return value;
}

// The integer behind the boolean must be its on or its off value; any other value is an error.
bool CBooleanNode::GetValue(bool Verify, bool IgnoreCache) const {
    CMapEntry entry(map());
    checkReadable("GetValue");
    raiseIfFormulaUnsupported("GetValue");
    const CCacheBypass bypass(*this, IgnoreCache);
    return cachedValue(m_Value, IgnoreCache || Verify, [&] { return computeValue(Verify, IgnoreCache); });
}

bool CBooleanNode::computeValue(bool Verify, bool IgnoreCache) const {
    IInteger* source = dynamic_cast<IInteger*>(pointee("pValue"));
    if (!source) {
        return arvCall("GetValue",
                       [&](GError** e) { return arv_gc_boolean_get_value(boolean("GetValue"), e); }) != FALSE;
    }
    const int64_t value = source->GetValue(Verify, IgnoreCache);
    const int64_t on = describedValue("OnValue", 1);
    const int64_t off = describedValue("OffValue", 0);
    if (value == on)
        return true;
    if (value == off)
        return false;
    raise(EError::LogicalError, "GetValue",
          formatText("Value '%" PRId64 "' is neither true (%" PRId64 ") nor false (%" PRId64 ")", value, on,
                     off));
}

void CBooleanNode::SetValue(bool Value, bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("SetValue");
    if (!writeToValueNode(Value ? describedValue("OnValue", 1) : describedValue("OffValue", 0), Verify))
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
