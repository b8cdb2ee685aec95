// Text conversions of GenApi's enumerations.
#ifndef GENAPI_ENUMCLASSES_H
#define GENAPI_ENUMCLASSES_H

#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

#define GENAPI_DECLARE_ENUM_CLASS(ClassName, EnumType)                                         \
    class GENAPI_DECL ClassName {                                                              \
    public:                                                                                    \
        static bool FromString(const GENICAM_NAMESPACE::gcstring& ValueStr, EnumType* pValue); \
        static void ToString(GENICAM_NAMESPACE::gcstring& ValueStr, EnumType* pValue);         \
        static GENICAM_NAMESPACE::gcstring ToString(EnumType Value);                           \
    }

GENAPI_DECLARE_ENUM_CLASS(ESignClass, ESign);
GENAPI_DECLARE_ENUM_CLASS(EEndianessClass, EEndianess);
GENAPI_DECLARE_ENUM_CLASS(ERepresentationClass, ERepresentation);
GENAPI_DECLARE_ENUM_CLASS(EVisibilityClass, EVisibility);
GENAPI_DECLARE_ENUM_CLASS(EAccessModeClass, EAccessMode);
GENAPI_DECLARE_ENUM_CLASS(ECachingModeClass, ECachingMode);
GENAPI_DECLARE_ENUM_CLASS(ENameSpaceClass, ENameSpace);
GENAPI_DECLARE_ENUM_CLASS(EYesNoClass, EYesNo);
GENAPI_DECLARE_ENUM_CLASS(EStandardNameSpaceClass, EStandardNameSpace);
GENAPI_DECLARE_ENUM_CLASS(ESlopeClass, ESlope);
GENAPI_DECLARE_ENUM_CLASS(EDisplayNotationClass, EDisplayNotation);
GENAPI_DECLARE_ENUM_CLASS(EInputDirectionClass, EInputDirection);
GENAPI_DECLARE_ENUM_CLASS(EGenApiSchemaVersionClass, EGenApiSchemaVersion);

#undef GENAPI_DECLARE_ENUM_CLASS

}  // namespace GENAPI_NAMESPACE

#endif
