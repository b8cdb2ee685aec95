// Enumerations shared by all GenApi interfaces.
#ifndef GENAPI_TYPES_H
#define GENAPI_TYPES_H

#include <Base/GCTypes.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiDll.h>
#include <GenApi/Autovector.h>
#include <GenICamFwd.h>

namespace GENAPI_NAMESPACE {

typedef enum _ESign { Signed, Unsigned, _UndefinedSign } ESign;

typedef enum _EAccessMode { NI, NA, WO, RO, RW, _UndefinedAccesMode, _CycleDetectAccesMode } EAccessMode;

typedef enum _EVisibility {
    Beginner = 0,
    Expert = 1,
    Guru = 2,
    Invisible = 3,
    _UndefinedVisibility = 99
} EVisibility;

typedef enum _ECachingMode { NoCache, WriteThrough, WriteAround, _UndefinedCachingMode } ECachingMode;

typedef enum _ERepresentation {
    Linear,
    Logarithmic,
    Boolean,
    PureNumber,
    HexNumber,
    IPV4Address,
    MACAddress,
    _UndefinedRepresentation
} ERepresentation;

#ifndef NO_UNDEFINEDED_REPRESENTATION
#define _UndefindedRepresentation _UndefinedRepresentation
#endif

typedef enum _EEndianess { BigEndian, LittleEndian, _UndefinedEndian } EEndianess;

typedef enum _ENameSpace { Custom, Standard, _UndefinedNameSpace } ENameSpace;

typedef enum _EStandardNameSpace { None, GEV, IIDC, CL, USB, _UndefinedStandardNameSpace } EStandardNameSpace;

typedef enum _EYesNo { No = 0, Yes = 1, _UndefinedYesNo = 2 } EYesNo;

typedef GENICAM_NAMESPACE::gcstring_vector StringList_t;

typedef enum _ESlope { Increasing, Decreasing, Varying, Automatic, _UndefinedESlope } ESlope;

typedef enum _EXMLValidation {
    xvLoad = 0x00000001L,
    xvCycles = 0x00000002L,
    xvSFNC = 0x00000004L,
    xvDefault = 0x00000000L,
    xvAll = 0xffffffffL,
    _UndefinedEXMLValidation = 0x8000000L
} EXMLValidation;

typedef enum _EDisplayNotation {
    fnAutomatic,
    fnFixed,
    fnScientific,
    _UndefinedEDisplayNotation
} EDisplayNotation;

typedef enum _EInterfaceType {
    intfIValue,
    intfIBase,
    intfIInteger,
    intfIBoolean,
    intfICommand,
    intfIFloat,
    intfIString,
    intfIRegister,
    intfICategory,
    intfIEnumeration,
    intfIEnumEntry,
    intfIPort
} EInterfaceType;

typedef enum _ELinkType {
    ctParentNodes,
    ctReadingChildren,
    ctWritingChildren,
    ctInvalidatingChildren,
    ctDependingNodes,
    ctTerminalNodes,
    ctValueChangingChildren
} ELinkType;

typedef enum _EIncMode { noIncrement, fixedIncrement, listIncrement } EIncMode;

typedef enum _EInputDirection { idFrom, idTo, idNone } EInputDirection;

typedef enum _EGenApiSchemaVersion { v1_0 = 1, v1_1 = 2, _Undefined = -1 } EGenApiSchemaVersion;

typedef enum _ECallbackSuppressMode { csmOff = 0, csmActive = 1, csmOnce = 2 } ECallbackSuppressMode;

}  // namespace GENAPI_NAMESPACE

#endif
