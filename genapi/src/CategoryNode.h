// Category nodes: read-only groups of features.
#ifndef GENAPI_ENGINE_CATEGORYNODE_H
#define GENAPI_ENGINE_CATEGORYNODE_H

#include <GenApi/ICategory.h>
#include "NodeBase.h"

namespace GenApiEngine {

class CCategoryNode : public CNodeBase, public virtual GenApi::ICategory {
public:
    CCategoryNode(CNodeMapImpl& map, const SNodeDescription& description);

    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return true; }

    void GetFeatures(GenApi::FeatureList_t& Features) const override;
    GenApi::EAccessMode GetAccessMode() const override;
    void dropAccessCache() const override;

protected:
    GenApi::EAccessMode accessAskedFirst() const override;

private:
    // As GenApi, a category keeps the access it found until one of its own conditions changes: its
    // features changing (a chunk or event port attached, say) does not reach it.
    mutable GenApi::EAccessMode m_KeptAccess = GenApi::_UndefinedAccesMode;
};

}  // namespace GenApiEngine

#endif
