// Interface of category nodes.
#ifndef GENAPI_ICATEGORY_H
#define GENAPI_ICATEGORY_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT ICategory : virtual public IValue {
    virtual void GetFeatures(FeatureList_t & Features) const = 0;
};

// A reference forwarding the category interface to a bound node.
template <class T, class I = ICategory>
class CCategoryRefT : public CValueRefT<T, I> {
public:
    virtual void GetFeatures(FeatureList_t& Features) const { this->Bound()->GetFeatures(Features); }
};

typedef CCategoryRefT<ICategory> CCategoryRef;

}  // namespace GENAPI_NAMESPACE

#endif
