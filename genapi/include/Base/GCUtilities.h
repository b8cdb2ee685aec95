// Small GenICam helpers: checked integral casts, environment access, tokenising, URL coding.
#ifndef GENICAM_GCUTILITIES_H
#define GENICAM_GCUTILITIES_H

#include <Base/GCException.h>
#include <Base/GCStringVector.h>

#define PLATFORM_NAME "Linux"
#define GENICAM_UNUSED(unused_var) (void)(unused_var)
#define GENICAM_DEPRECATED(FUNCTION) FUNCTION __attribute__((deprecated))

namespace GENICAM_NAMESPACE {

// Returns the value of an environment variable, or an empty string.
GCBASE_API gcstring GetValueOfEnvironmentVariable(const gcstring& VariableName);
GCBASE_API bool GetValueOfEnvironmentVariable(const gcstring& VariableName, gcstring& VariableContent);
GCBASE_API bool DoesEnvironmentVariableExist(const gcstring& VariableName);
GCBASE_API void ReplaceEnvironmentVariables(gcstring& Buffer, bool ReplaceBlankBy20 = false);
GCBASE_API gcstring UrlEncode(const gcstring& Input);
GCBASE_API gcstring UrlDecode(const gcstring& Input);
// Splits a string at any of the delimiter characters, appending the pieces to Tokens.
GCBASE_API size_t Tokenize(const gcstring& str, gcstring_vector& Tokens, const gcstring& delimiters = " ");
GCBASE_API gcstring GetGenICamCacheFolder();
GCBASE_API gcstring GetGenICamLogConfig();

// Casts between integral types and raises when the value does not survive the round trip.
template <typename Td, typename Ts>
inline Td INTEGRAL_CAST2(Ts s) {
    const Td d = static_cast<Td>(s);
    if (static_cast<Ts>(d) != s || ((d < Td(0)) != (s < Ts(0)))) {
        throw RUNTIME_EXCEPTION("INTEGRAL_CAST failed");
    }
    return d;
}

template <typename T>
inline T INTEGRAL_CAST(int64_t ll) {
    return INTEGRAL_CAST2<T, int64_t>(ll);
}

}  // namespace GENICAM_NAMESPACE

#endif
