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

// A reference forwarding the selector interface to a bound node.
template <class T, class I = ISelector>
class CSelectorRefT : public CBaseRefT<T, I> {
public:
    virtual bool IsSelector() const { return this->Bound()->IsSelector(); }
    virtual void GetSelectedFeatures(FeatureList_t& Features) const {
        this->Bound()->GetSelectedFeatures(Features);
    }
    virtual void GetSelectingFeatures(FeatureList_t& Features) const {
        this->Bound()->GetSelectingFeatures(Features);
    }
};

typedef CSelectorRefT<ISelector> CSelectorRef;

}  // namespace GENAPI_NAMESPACE

#endif
