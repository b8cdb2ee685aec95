// A digit of a counter over selector values: one selector, or a set of them.
#ifndef GENAPI_ISELECTORDIGIT_H
#define GENAPI_ISELECTORDIGIT_H

#include <GenApi/GenApiDll.h>
#include <GenApi/Types.h>
#include <GenApi/Container.h>
#include <GenApi/SelectorState.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT ISelectorDigit {
    virtual bool SetFirst() = 0;
    virtual bool SetNext(bool Tick = true) = 0;
    virtual void Restore() = 0;
    virtual GENICAM_NAMESPACE::gcstring ToString() = 0;
    virtual void GetSelectorList(FeatureList_t & SelectorList, bool Incremental = false) = 0;
    virtual ~ISelectorDigit() {}
};

}  // namespace GENAPI_NAMESPACE

#endif
