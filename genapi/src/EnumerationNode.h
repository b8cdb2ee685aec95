// Enumeration nodes and their entries.
#ifndef GENAPI_ENGINE_ENUMERATIONNODE_H
#define GENAPI_ENGINE_ENUMERATIONNODE_H

#include <GenApi/IEnumeration.h>
#include "ValueNode.h"

namespace GenApiEngine {

class CEnumEntryNode;

class CEnumerationNode : public CValueNode, public virtual GenApi::IEnumeration {
public:
    CEnumerationNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;

    void GetSymbolics(GenApi::StringList_t& Symbolics) override;
    void GetEntries(GenApi::NodeList_t& Entries) override;
    GenApi::IEnumeration& operator=(const GenICam::gcstring& ValueStr) override;
    void SetIntValue(int64_t Value, bool Verify = true) override;
    GenICam::gcstring operator*() override { return ToString(); }
    int64_t GetIntValue(bool Verify = false, bool IgnoreCache = false) override;
    GenApi::IEnumEntry* GetEntryByName(const GenICam::gcstring& Symbolic) override;
    GenApi::IEnumEntry* GetEntry(const int64_t IntValue) override;
    GenApi::IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override;

private:
    const std::vector<CEnumEntryNode*>& entries() const;
    ArvGcEnumeration* enumeration(const char* method) const;

    SCachedValue<int64_t> m_Value;
    mutable std::vector<CEnumEntryNode*> m_Entries;
    mutable bool m_EntriesKnown = false;
};

class CEnumEntryNode : public CNodeBase, public virtual GenApi::IEnumEntry {
public:
    CEnumEntryNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return true; }

    int64_t GetValue() override;
    GenICam::gcstring GetSymbolic() const override;
    double GetNumericValue() override;
    bool IsSelfClearing() override;

protected:
    GenApi::EAccessMode naturalAccessMode() const override { return GenApi::RO; }

private:
    int64_t m_Value = 0;
    bool m_ValueKnown = false;
};

}  // namespace GenApiEngine

#endif
