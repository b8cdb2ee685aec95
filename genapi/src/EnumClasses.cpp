// Text conversions of GenApi's enumerations, driven by one table per enumeration.
#include <GenApi/EnumClasses.h>
#include <Base/GCException.h>

namespace GENAPI_NAMESPACE {
namespace {

template <typename E>
struct EnumText {
    E value;
    const char* text;
};

template <typename E, size_t N>
bool fromText(const EnumText<E> (&table)[N], const GENICAM_NAMESPACE::gcstring& text, E* pValue) {
    if (!pValue)
        return false;
    for (size_t i = 0; i < N; ++i) {
        if (text == table[i].text) {
            *pValue = table[i].value;
            return true;
        }
    }
    return false;
}

template <typename E, size_t N>
GENICAM_NAMESPACE::gcstring toText(const EnumText<E> (&table)[N], E value, const char* fallback) {
    for (size_t i = 0; i < N; ++i) {
        if (table[i].value == value)
            return table[i].text;
    }
    return fallback;
}

const EnumText<ESign> signTexts[] = {{Signed, "Signed"}, {Unsigned, "Unsigned"}};
const EnumText<EEndianess> endianessTexts[] = {{BigEndian, "BigEndian"}, {LittleEndian, "LittleEndian"}};
const EnumText<ERepresentation> representationTexts[] = {
    {Linear, "Linear"},         {Logarithmic, "Logarithmic"}, {Boolean, "Boolean"},
    {PureNumber, "PureNumber"}, {HexNumber, "HexNumber"},     {IPV4Address, "IPV4Address"},
    {MACAddress, "MACAddress"}};
const EnumText<EVisibility> visibilityTexts[] = {
    {Beginner, "Beginner"}, {Expert, "Expert"}, {Guru, "Guru"}, {Invisible, "Invisible"}};
const EnumText<EAccessMode> accessModeTexts[] = {{RW, "RW"}, {RO, "RO"}, {WO, "WO"}, {NA, "NA"}, {NI, "NI"}};
const EnumText<ECachingMode> cachingModeTexts[] = {
    {NoCache, "NoCache"}, {WriteThrough, "WriteThrough"}, {WriteAround, "WriteAround"}};
const EnumText<ENameSpace> nameSpaceTexts[] = {{Custom, "Custom"}, {Standard, "Standard"}};
const EnumText<EYesNo> yesNoTexts[] = {{Yes, "Yes"}, {No, "No"}};
const EnumText<EStandardNameSpace> standardNameSpaceTexts[] = {
    {None, "None"}, {GEV, "GEV"}, {IIDC, "IIDC"}, {CL, "CL"}, {USB, "USB"}};
const EnumText<ESlope> slopeTexts[] = {
    {Increasing, "Increasing"}, {Decreasing, "Decreasing"}, {Varying, "Varying"}, {Automatic, "Automatic"}};
const EnumText<EDisplayNotation> displayNotationTexts[] = {
    {fnAutomatic, "Automatic"}, {fnFixed, "Fixed"}, {fnScientific, "Scientific"}};
const EnumText<EInputDirection> inputDirectionTexts[] = {{idFrom, "From"}, {idTo, "To"}, {idNone, "None"}};
const EnumText<EGenApiSchemaVersion> schemaVersionTexts[] = {{v1_0, "v1_0"}, {v1_1, "v1_1"}};

}  // namespace

#define GENAPI_DEFINE_ENUM_CLASS(ClassName, EnumType, table, fallback)                          \
    bool ClassName::FromString(const GENICAM_NAMESPACE::gcstring& ValueStr, EnumType* pValue) { \
        return fromText(table, ValueStr, pValue);                                               \
    }                                                                                           \
    void ClassName::ToString(GENICAM_NAMESPACE::gcstring& ValueStr, EnumType* pValue) {         \
        if (!pValue)                                                                            \
            throw INVALID_ARGUMENT_EXCEPTION("NULL argument pValue");                           \
        ValueStr = toText(table, *pValue, fallback);                                            \
    }                                                                                           \
    GENICAM_NAMESPACE::gcstring ClassName::ToString(EnumType Value) {                           \
        return toText(table, Value, fallback);                                                  \
    }

GENAPI_DEFINE_ENUM_CLASS(ESignClass, ESign, signTexts, "_UndefinedSign")
GENAPI_DEFINE_ENUM_CLASS(EEndianessClass, EEndianess, endianessTexts, "_UndefinedEndian")
GENAPI_DEFINE_ENUM_CLASS(ERepresentationClass, ERepresentation, representationTexts,
                         "_UndefinedRepresentation")
GENAPI_DEFINE_ENUM_CLASS(EVisibilityClass, EVisibility, visibilityTexts, "_UndefinedVisibility")
GENAPI_DEFINE_ENUM_CLASS(EAccessModeClass, EAccessMode, accessModeTexts, "_UndefinedAccessMode")
GENAPI_DEFINE_ENUM_CLASS(ECachingModeClass, ECachingMode, cachingModeTexts, "_UndefinedCachingMode")
GENAPI_DEFINE_ENUM_CLASS(ENameSpaceClass, ENameSpace, nameSpaceTexts, "_UndefinedNameSpace")
GENAPI_DEFINE_ENUM_CLASS(EYesNoClass, EYesNo, yesNoTexts, "_UndefinedYesNo")
GENAPI_DEFINE_ENUM_CLASS(EStandardNameSpaceClass, EStandardNameSpace, standardNameSpaceTexts,
                         "_UndefinedStandardNameSpace")
GENAPI_DEFINE_ENUM_CLASS(ESlopeClass, ESlope, slopeTexts, "_UndefinedESlope")
GENAPI_DEFINE_ENUM_CLASS(EDisplayNotationClass, EDisplayNotation, displayNotationTexts,
                         "_UndefinedEDisplayNotation")
GENAPI_DEFINE_ENUM_CLASS(EInputDirectionClass, EInputDirection, inputDirectionTexts,
                         "_UndefinedEInputDirection")
GENAPI_DEFINE_ENUM_CLASS(EGenApiSchemaVersionClass, EGenApiSchemaVersion, schemaVersionTexts, "_Undefined")

}  // namespace GENAPI_NAMESPACE
