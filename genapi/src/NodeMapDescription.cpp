// The description text kept by the engine's node maps.
#include <GenApiEngine/NodeMapDescription.h>
#include "NodeMapImpl.h"

namespace GenApiEngine {

std::string descriptionText(GenApi::INodeMap* nodeMap) {
    const CNodeMapImpl* map = dynamic_cast<const CNodeMapImpl*>(nodeMap);
    if (!map)
        throw INVALID_ARGUMENT_EXCEPTION("The node map was not made by this engine");
    return map->xml();
}

}  // namespace GenApiEngine
