// The camera description a node map of this engine was made from.
#ifndef GENAPI_ENGINE_NODEMAPDESCRIPTION_H
#define GENAPI_ENGINE_NODEMAPDESCRIPTION_H

#include <GenApi/INodeMap.h>
#include <string>

namespace GenApiEngine {

// The GenICam XML as the engine loaded it (unzipped); throws GenICam::InvalidArgumentException for a
// node map that is not one of this engine's.
GENAPI_DECL std::string descriptionText(GenApi::INodeMap* nodeMap);

}  // namespace GenApiEngine

#endif
