// Category nodes: read-only groups of features.
#ifndef GENAPI_ENGINE_CATEGORYNODE_H
#define GENAPI_ENGINE_CATEGORYNODE_H

#include <GenApi/ICategory.h>
#include "NodeBase.h"

namespace GenApiEngine {

class CCategoryNode : public CNodeBase, public virtual GenApi::ICategory {
public:
    CCategoryNode(CNodeMapImpl& map, const SNodeDescription& description, ArvGcNode* arvNode);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return true; }

    void GetFeatures(GenApi::FeatureList_t& Features) const override;

protected:
    GenApi::EAccessMode accessAskedFirst() const override;
};

}  // namespace GenApiEngine

#endif
