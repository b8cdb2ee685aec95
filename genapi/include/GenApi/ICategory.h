// Interface of category nodes.
#ifndef GENAPI_ICATEGORY_H
#define GENAPI_ICATEGORY_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT ICategory : virtual public IValue {
    virtual void GetFeatures(FeatureList_t & Features) const = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
