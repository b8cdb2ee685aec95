// Interface for attaching a user pointer to a node or a node map.
#ifndef GENAPI_IUSERDATA_H
#define GENAPI_IUSERDATA_H

#include <GenICamFwd.h>
#include <GenApi/GenApiDll.h>

namespace GENAPI_NAMESPACE {

typedef void* UserData_t;

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IUserData {
    virtual UserData_t GetUserData() const = 0;
    virtual UserData_t SetUserData(UserData_t userData) = 0;
    virtual ~IUserData() {}
};

}  // namespace GENAPI_NAMESPACE

#endif
