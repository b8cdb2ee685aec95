// Interface of the selector relations of a node.
#ifndef GENAPI_ISELECTOR_H
#define GENAPI_ISELECTOR_H

#include <GenApi/IBase.h>
#include <GenApi/Container.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT ISelector : virtual public IBase {
    virtual bool IsSelector() const = 0;
    virtual void GetSelectedFeatures(FeatureList_t&) const = 0;
    virtual void GetSelectingFeatures(FeatureList_t&) const = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
