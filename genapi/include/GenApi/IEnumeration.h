// Interface of enumeration nodes.
#ifndef GENAPI_IENUMERATION_H
#define GENAPI_IENUMERATION_H

#include <GenApi/IValue.h>
#include <GenApi/IEnumEntry.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IEnumeration : virtual public IValue {
    virtual void GetSymbolics(StringList_t & Symbolics) = 0;
    virtual void GetEntries(NodeList_t & Entries) = 0;
    virtual IEnumeration& operator=(const GENICAM_NAMESPACE::gcstring& ValueStr) = 0;
    virtual void SetIntValue(int64_t Value, bool Verify = true) = 0;
    virtual GENICAM_NAMESPACE::gcstring operator*() = 0;
    virtual int64_t GetIntValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual IEnumEntry* GetEntryByName(const GENICAM_NAMESPACE::gcstring& Symbolic) = 0;
    virtual IEnumEntry* GetEntry(const int64_t IntValue) = 0;
    virtual IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
