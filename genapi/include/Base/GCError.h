// Error codes shared by the GenICam modules, with GenTL's values.
#ifndef GENICAM_GCERROR_H
#define GENICAM_GCERROR_H

#include <Base/GCTypes.h>

namespace GENICAM_NAMESPACE {

typedef int32_t GC_ERROR;

typedef enum GCErrorID {
    GC_ERR_SUCCESS = 0,
    GC_ERR_ERROR = -1001,
    GC_ERR_NOT_INITIALIZED = -1002,
    GC_ERR_NOT_IMPLEMENTED = -1003,
    GC_ERR_RESOURCE_IN_USE = -1004,
    GC_ERR_ACCESS_DENIED = -1005,
    GC_ERR_INVALID_HANDLE = -1006,
    GC_ERR_INVALID_ID = -1007,
    GC_ERR_NO_DATA = -1008,
    GC_ERR_INVALID_PARAMETER = -1009,
    GC_ERR_IO = -1010,
    GC_ERR_TIMEOUT = -1011,
    GC_ERR_ABORT = -1012,
    GC_ERR_INVALID_BUFFER = -1013,
    GC_ERR_NOT_AVAILABLE = -1014,
    GC_ERR_INVALID_ADDRESS = -1015,
    GC_ERR_BUFFER_TOO_SMALL = -1016,
    GC_ERR_INVALID_INDEX = -1017,
    GC_ERR_PARSING_CHUNK_DATA = -1018,
    GC_ERR_INVALID_VALUE = -1019,
    GC_ERR_RESOURCE_EXHAUSTED = -1020,
    GC_ERR_OUT_OF_MEMORY = -1021,
    GC_ERR_BUSY = -1022,
    GC_ERR_AMBIGUOUS = -1023,
    GC_ERR_CUSTOM_ID = -10000
} GCErrorID;

// The module an error comes from.
typedef enum GCModuleID {
    GCModule_Base = 0,
    GCModule_GenApi = 1,
    GCModule_Log = 2,
    GCModule_CLProtocol = 3,
    GCModule_GenTL = 4,
    GCModule_Custom = 100
} GCModuleID;

}  // namespace GENICAM_NAMESPACE

#endif
