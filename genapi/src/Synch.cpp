// GenApi::CLock, the recursive lock of every node map.
#include <GenApi/Synch.h>
#include "RecursiveMutex.h"

namespace GENAPI_NAMESPACE {

GENAPI_ENGINE_DEFINE_CLOCK(CLock)

}  // namespace GENAPI_NAMESPACE
