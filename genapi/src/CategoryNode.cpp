// ICategory: the features a category lists, sub-categories included, in description order.
#include "CategoryNode.h"
#include "NodeMapImpl.h"
#include <GenApi/IValue.h>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CCategoryNode::CCategoryNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CNodeBase(map, description, intfICategory) {}

void CCategoryNode::GetFeatures(FeatureList_t& Features) const {
    Features.clear();
    for (const std::string& featureName : description().values("pFeature")) {
        if (IValue* value = dynamic_cast<IValue*>(map().node(featureName)))
            Features.push_back(value);
    }
}

gcstring CCategoryNode::ToString(bool, bool) {
    return GetDisplayName();
}

// A category whose features are all not implemented is not implemented itself.
EAccessMode CCategoryNode::accessAskedFirst() const {
    FeatureList_t features;
    GetFeatures(features);
    if (features.empty())
        return RO;
    for (IValue* feature : features) {
        if (feature->GetNode()->GetAccessMode() != NI)
            return RO;
    }
    return NI;
}

EAccessMode CCategoryNode::GetAccessMode() const {
    CMapEntry entry(map());
    if (m_KeptAccess != _UndefinedAccesMode)
        return m_KeptAccess;
    const EAccessMode mode = CNodeBase::GetAccessMode();
    if (mode != _CycleDetectAccesMode && accessModeCacheable())
        m_KeptAccess = mode;
    return mode;
}

void CCategoryNode::dropAccessCache() const {
    m_KeptAccess = _UndefinedAccesMode;
    CNodeBase::dropAccessCache();
}

void CCategoryNode::FromString(const gcstring&, bool) {
    raise(EError::Access, "FromString", "Node is not writable.");
}

}  // namespace GenApiEngine
