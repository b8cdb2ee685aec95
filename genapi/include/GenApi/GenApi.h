// Umbrella header of GenApi.
#ifndef GENAPI_GENAPI_H
#define GENAPI_GENAPI_H

#include <Base/GCBase.h>
#include <GenApi/Types.h>
#include <GenApi/Pointer.h>
#include <GenApi/IBase.h>
#include <GenApi/INode.h>
#include <GenApi/IValue.h>
#include <GenApi/ICategory.h>
#include <GenApi/IInteger.h>
#include <GenApi/IFloat.h>
#include <GenApi/IRegister.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IBoolean.h>
#include <GenApi/IPort.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortStacked.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/IChunkPort.h>
#include <GenApi/IString.h>
#include <GenApi/ICommand.h>
#include <GenApi/ISelector.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IDestroy.h>
#include <GenApi/IUserData.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/NodeMapRef.h>
#include <GenApi/NodeCallback.h>
#include <GenApi/Persistence.h>
#include <GenApi/StructPort.h>
#include <GenApi/SelectorSet.h>
#include <GenApi/GenApiLinkage.h>

#endif
