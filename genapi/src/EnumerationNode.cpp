// IEnumeration over Aravis' enumeration: entries are engine nodes with GenApi's names and access modes.
#include "EnumerationNode.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <GenApi/IInteger.h>
#include <algorithm>
#include <cinttypes>
#include <cstdlib>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CEnumerationNode::CEnumerationNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CValueNode(map, description, intfIEnumeration) {}

ArvGcEnumeration* CEnumerationNode::enumeration(const char* method) const {
    if (!arvNode() || !ARV_IS_GC_ENUMERATION(arvNode()))
        raise(EError::LogicalError, method, "node is no enumeration");
    return ARV_GC_ENUMERATION(arvNode());
}

// The entries follow from the description alone, so they are looked up once.
const std::vector<CEnumEntryNode*>& CEnumerationNode::entries() const {
    if (!m_EntriesKnown) {
        for (const std::string& entryName : description().entries) {
            if (CEnumEntryNode* entry = dynamic_cast<CEnumEntryNode*>(map().node(entryName)))
                m_Entries.push_back(entry);
        }
        m_EntriesKnown = true;
    }
    return m_Entries;
}

// Only the entries that can currently be chosen are listed by symbolic name.
void CEnumerationNode::GetSymbolics(StringList_t& Symbolics) {
    CMapEntry entry(map());
    Symbolics.clear();
    for (CEnumEntryNode* candidate : entries()) {
        if (IsAvailable(candidate->GetAccessMode()))
            Symbolics.push_back(candidate->GetSymbolic());
    }
}

void CEnumerationNode::GetEntries(NodeList_t& Entries) {
    CMapEntry entry(map());
    Entries.clear();
    for (CEnumEntryNode* candidate : entries())
        Entries.push_back(candidate);
}

// The value is the integer behind pValue, read through the engine so that integer converters keep
// every bit.
int64_t CEnumerationNode::GetIntValue(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    if (!IsReadable(accessAskedAgain()))
        raise(EError::Access, "GetIntValue", "Node is not readable.");
    raiseIfFormulaUnsupported("GetIntValue");
    const CCacheBypass bypass(*this, IgnoreCache);
    return cachedValue(m_Value, IgnoreCache || Verify, [&] {
        if (IInteger* source = dynamic_cast<IInteger*>(pointee("pValue")))
            return source->GetValue(Verify, IgnoreCache);
        return static_cast<int64_t>(arvCall("GetIntValue", [&](GError** e) {
            return arv_gc_enumeration_get_int_value(enumeration("GetIntValue"), e);
        }));
    });
}

void CEnumerationNode::SetIntValue(int64_t Value, bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("SetIntValue");
    IEnumEntry* target = GetEntry(Value);
    if (!target) {
        raise(EError::OutOfRange, "SetIntValue",
              formatText("Failed to write enumeration value. Enum entry with value %" PRId64 " not present.",
                         Value));
    }
    if (!IsAvailable(target)) {
        raise(EError::Access, "SetIntValue",
              formatText("Failed to write enumeration value. Enum entry '%s' is not available.",
                         target->GetSymbolic().c_str()));
    }
    if (!writeToValueNode(Value, Verify)) {
        arvCall("SetIntValue", [&](GError** e) {
            return arv_gc_enumeration_set_int_value(enumeration("SetIntValue"), Value, e);
        });
    }
    changed();
}

IEnumEntry* CEnumerationNode::GetEntryByName(const gcstring& Symbolic) {
    for (CEnumEntryNode* candidate : entries()) {
        if (candidate->GetSymbolic() == Symbolic)
            return candidate;
    }
    return nullptr;
}

IEnumEntry* CEnumerationNode::GetEntry(const int64_t IntValue) {
    CMapEntry entry(map());
    for (CEnumEntryNode* candidate : entries()) {
        if (candidate->GetValue() == IntValue)
            return candidate;
    }
    return nullptr;
}

IEnumEntry* CEnumerationNode::GetCurrentEntry(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    return GetEntry(GetIntValue(Verify, IgnoreCache));
}

gcstring CEnumerationNode::ToString(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    const int64_t value = GetIntValue(Verify, IgnoreCache);
    IEnumEntry* current = GetEntry(value);
    if (!current) {
        raise(EError::InvalidArgument, "ToString",
              formatText("Feature '%s' : cannot convert value '%" PRId64 "', the value is invalid.",
                         name().c_str(), value));
    }
    return current->GetSymbolic();
}

void CEnumerationNode::FromString(const gcstring& ValueStr, bool Verify) {
    CMapEntry entry(map());
    IEnumEntry* target = GetEntryByName(ValueStr);
    if (!target) {
        raise(EError::InvalidArgument, "FromString",
              formatText("Feature '%s' : cannot convert value '%s', the value is invalid.", name().c_str(),
                         ValueStr.c_str()));
    }
    SetIntValue(target->GetValue(), Verify);
}

// An enumeration none of whose entries is implemented is not implemented either, and one none of whose
// entries is available is not available.
EAccessMode CEnumerationNode::naturalAccessMode() const {
    const std::vector<CEnumEntryNode*> all = entries();
    const bool anyImplemented = std::any_of(
        all.begin(), all.end(), [](CEnumEntryNode* candidate) { return candidate->GetAccessMode() != NI; });
    if (!all.empty() && !anyImplemented)
        return NI;
    const bool anyAvailable = std::any_of(all.begin(), all.end(), [](CEnumEntryNode* candidate) {
        return IsAvailable(candidate->GetAccessMode());
    });
    if (!all.empty() && !anyAvailable)
        return NA;
    return CValueNode::naturalAccessMode();
}

IEnumeration& CEnumerationNode::operator=(const gcstring& ValueStr) {
    FromString(ValueStr);
    return *this;
}

CEnumEntryNode::CEnumEntryNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CNodeBase(map, description, intfIEnumEntry) {}

// An entry's value is a constant of the description, read once.
int64_t CEnumEntryNode::GetValue() {
    CMapEntry entry(map());
    if (m_ValueKnown)
        return m_Value;
    if (!arvNode() || !ARV_IS_GC_ENUM_ENTRY(arvNode())) {
        textToInteger(description().value("Value"), m_Value);
    } else {
        m_Value = arvCall("GetValue", [&](GError** e) {
            return arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(arvNode()), e);
        });
    }
    m_ValueKnown = true;
    return m_Value;
}

gcstring CEnumEntryNode::GetSymbolic() const {
    return description().xmlName.c_str();
}

double CEnumEntryNode::GetNumericValue() {
    const std::string& text = description().value("NumericValue");
    return text.empty() ? static_cast<double>(GetValue()) : std::strtod(text.c_str(), nullptr);
}

bool CEnumEntryNode::IsSelfClearing() {
    return description().value("IsSelfClearing") == "Yes";
}

// An entry's text is its integer value.
gcstring CEnumEntryNode::ToString(bool, bool) {
    return formatText("%" PRId64, GetValue()).c_str();
}

void CEnumEntryNode::FromString(const gcstring&, bool) {
    raise(EError::Access, "FromString", "Node is not writable.");
}

}  // namespace GenApiEngine
