// ICategory: the features a category lists, sub-categories included, in description order.
#include "CategoryNode.h"
#include "NodeMapImpl.h"
#include <GenApi/IValue.h>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CCategoryNode::CCategoryNode(CNodeMapImpl& map, const SNodeDescription& description, ArvGcNode* arvNode)
    : CNodeBase(map, description, arvNode, intfICategory) {}

void CCategoryNode::GetFeatures(FeatureList_t& Features) const {
    Features.clear();
    for (const std::string& featureName : description().values("pFeature")) {
        if (IValue* value = dynamic_cast<IValue*>(map().node(featureName)))
            Features.push_back(value);
    }
}

gcstring CCategoryNode::ToString(bool, bool) {
    return gcstring();
}

void CCategoryNode::FromString(const gcstring&, bool) {
    raise(EError::Access, "FromString", "Node is not writable.");
}

}  // namespace GenApiEngine
