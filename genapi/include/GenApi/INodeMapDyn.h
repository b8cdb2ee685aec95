// A node map that is built node by node after it was made. The engine's maps are made whole from one
// description and do not answer as one: a dynamic_cast to it gives null.
#ifndef GENAPI_INODEMAPDYN_H
#define GENAPI_INODEMAPDYN_H

#include <Base/GCBase.h>
#include <GenApi/INodeMap.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT INodeMapDyn : virtual public INodeMap {
    virtual INode* CreateNode(const GENICAM_NAMESPACE::gcstring& Type,
                              const GENICAM_NAMESPACE::gcstring& Name) = 0;
    virtual void FinalConstruct(bool DetermineDependencies = true) = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
