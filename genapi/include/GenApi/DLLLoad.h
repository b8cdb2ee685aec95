// Node maps compiled into a shared library (GenApi 1's generated descriptions) were made by one exported
// function of this type. The engine loads descriptions from XML; it declares the type for code that names it.
#ifndef GENAPI_DLLLOAD_H
#define GENAPI_DLLLOAD_H

#include <GenApi/INodeMap.h>
#include <GenApi/GenApiVersion.h>

namespace GENAPI_NAMESPACE {

typedef INodeMap* (*CreateNodeMapFromDllFn_t)(const char* pDeviceName);

}  // namespace GENAPI_NAMESPACE

#endif
