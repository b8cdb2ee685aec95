// IString over Aravis' string interface, with a length check before writing.
#include "StringNode.h"
#include "NodeMapImpl.h"
#include <GenApi/IRegister.h>
#include <cinttypes>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CStringNode::CStringNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CValueNode(map, description, intfIString) {}

ArvGcString* CStringNode::string(const char* method) const {
    if (!arvNode() || !ARV_IS_GC_STRING(arvNode()))
        raise(EError::LogicalError, method, "node has no string value");
    return ARV_GC_STRING(arvNode());
}

EAccessMode CStringNode::naturalAccessMode() const {
    if (isRegisterKind(description().tag))
        return registerAccessMode();
    return CNodeBase::naturalAccessMode();
}

gcstring CStringNode::GetValue(bool, bool IgnoreCache) {
    CMapEntry entry(map());
    checkReadable("GetValue");
    const CCacheBypass bypass(*this, IgnoreCache);
    return cachedValue(m_Value, IgnoreCache, [&] {
        // A register whose length evaluates to zero holds the empty string; Aravis does not accept it.
        IRegister* reg = dynamic_cast<IRegister*>(this);
        const int64_t length = reg ? reg->GetLength() : -1;
        if (length == 0)
            return gcstring();
        requireRegisterBuffer(length);
        if (IString* source = dynamic_cast<IString*>(pointee("pValue")))
            return source->GetValue();
        const char* text =
            arvCall("GetValue", [&](GError** e) { return arv_gc_string_get_value(string("GetValue"), e); });
        return gcstring(text ? text : "");
    });
}

void CStringNode::SetValue(const gcstring& Value, bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("SetValue");
    const int64_t maximum = GetMaxLength();
    if (static_cast<int64_t>(Value.size()) > maximum) {
        raise(EError::OutOfRange, "SetValue",
              formatText("String length %zu is greater than the maximum length %" PRId64 ".", Value.size(),
                         maximum));
    }
    arvCall("SetValue", [&](GError** e) { arv_gc_string_set_value(string("SetValue"), Value.c_str(), e); });
    changed();
}

IString& CStringNode::operator=(const gcstring& Value) {
    SetValue(Value);
    return *this;
}

// The register length for writable strings; a string that cannot be written reports its current length.
int64_t CStringNode::GetMaxLength(bool) {
    CMapEntry entry(map());
    if (!IsWritable(GetAccessMode()))
        return static_cast<int64_t>(GetValue().size());
    return arvCall("GetMaxLength",
                   [&](GError** e) { return arv_gc_string_get_max_length(string("GetMaxLength"), e); });
}

gcstring CStringNode::ToString(bool Verify, bool IgnoreCache) {
    return GetValue(Verify, IgnoreCache);
}

void CStringNode::FromString(const gcstring& ValueStr, bool Verify) {
    SetValue(ValueStr, Verify);
}

}  // namespace GenApiEngine
