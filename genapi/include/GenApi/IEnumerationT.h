// Typed enumerations: the interface and the reference through which generated parameter classes read
// and write an enumeration as a C++ enumeration whose values index the entries they name.
#ifndef GENAPI_IENUMERATIONT_H
#define GENAPI_IENUMERATIONT_H

#include <GenApi/GenApiDll.h>
#include <GenApi/Types.h>
#include <GenApi/Pointer.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/Compatibility.h>
#include <vector>

namespace GENAPI_NAMESPACE {

template <typename EnumT>
GENICAM_INTERFACE IEnumerationT : public IEnumeration {
    virtual void SetValue(EnumT Value, bool Verify = true) = 0;
    virtual IEnumeration& operator=(EnumT Value) = 0;
    virtual EnumT GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual EnumT operator()() = 0;
    virtual IEnumeration& operator=(const GENICAM_NAMESPACE::gcstring& ValueStr) = 0;
    virtual IEnumEntry* GetEntry(const EnumT Value) = 0;
    virtual IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) = 0;
};

// Binds an enumeration node and maps each C++ value (an index given by SetEnumReference) to the integer
// value of the entry it names; entries the device lacks stay unmapped and are refused.
template <class EnumT>
class CEnumerationTRef : public CValueRefT<IEnumerationT<EnumT>, IEnumeration>, public IEnumReference {
public:
    virtual void SetReference(IBase* pBase) {
        CValueRefT<IEnumerationT<EnumT>, IEnumeration>::SetReference(pBase);
        m_EnumExists.assign(m_EnumExists.size(), false);
    }
    virtual void SetNumEnums(int NumEnums) {
        m_EnumValues.assign(NumEnums < 0 ? 0 : NumEnums, 0);
        m_EnumExists.assign(m_EnumValues.size(), false);
    }
    virtual void SetEnumReference(int Index, GENICAM_NAMESPACE::gcstring Name) {
        if (!this->m_Ptr || Index < 0 || static_cast<size_t>(Index) >= m_EnumValues.size())
            return;
        IEnumEntry* pEntry = this->m_Ptr->GetEntryByName(Name);
        m_EnumExists[Index] = pEntry != NULL;
        if (pEntry)
            m_EnumValues[Index] = pEntry->GetValue();
    }

    // Typed access
    virtual void SetValue(EnumT Value, bool Verify = true) {
        this->Bound()->SetIntValue(IntValueOf(Value), Verify);
    }
    virtual IEnumeration& operator=(EnumT Value) {
        SetValue(Value);
        return *this;
    }
    virtual EnumT GetValue(bool Verify = false, bool IgnoreCache = false) {
        const int64_t IntValue = this->Bound()->GetIntValue(Verify, IgnoreCache);
        for (size_t Index = 0; Index < m_EnumValues.size(); ++Index)
            if (m_EnumExists[Index] && m_EnumValues[Index] == IntValue)
                return static_cast<EnumT>(Index);
        throw ACCESS_EXCEPTION("Unknown IntValue %" FMT_I64 "d", IntValue);
    }
    virtual EnumT operator()() { return GetValue(); }
    virtual IEnumeration& operator=(const GENICAM_NAMESPACE::gcstring& ValueStr) {
        this->Bound()->FromString(ValueStr);
        return *this;
    }
    virtual IEnumeration& operator=(const char* pValue) {
        return operator=(GENICAM_NAMESPACE::gcstring(pValue));
    }
    virtual IEnumEntry* GetEntry(const EnumT Value) {
        const size_t Index = static_cast<size_t>(Value);
        if (Index >= m_EnumValues.size() || !m_EnumExists[Index])
            return NULL;
        return this->Bound()->GetEntry(m_EnumValues[Index]);
    }
    virtual IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) {
        return this->Bound()->GetCurrentEntry(Verify, IgnoreCache);
    }

    // The enumeration's own interface
    virtual void GetSymbolics(StringList_t& Symbolics) { this->Bound()->GetSymbolics(Symbolics); }
    virtual void GetEntries(NodeList_t& Entries) { this->Bound()->GetEntries(Entries); }
    virtual void SetIntValue(int64_t Value, bool Verify = true) { this->Bound()->SetIntValue(Value, Verify); }
    virtual GENICAM_NAMESPACE::gcstring operator*() { return this->Bound()->ToString(); }
    virtual int64_t GetIntValue(bool Verify = false, bool IgnoreCache = false) {
        return this->Bound()->GetIntValue(Verify, IgnoreCache);
    }
    virtual IEnumEntry* GetEntryByName(const GENICAM_NAMESPACE::gcstring& Symbolic) {
        return this->Bound()->GetEntryByName(Symbolic);
    }
    virtual IEnumEntry* GetEntry(const int64_t IntValue) { return this->Bound()->GetEntry(IntValue); }

private:
    int64_t IntValueOf(EnumT Value) const {
        const size_t Index = static_cast<size_t>(Value);
        if (Index >= m_EnumValues.size() || !m_EnumExists[Index])
            throw ACCESS_EXCEPTION("EnumEntry %d not present", static_cast<int>(Value));
        return m_EnumValues[Index];
    }

    std::vector<int64_t> m_EnumValues;
    std::vector<bool> m_EnumExists;
};

}  // namespace GENAPI_NAMESPACE

#endif
