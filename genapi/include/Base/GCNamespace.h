// Versioned namespace names of the GenICam base layer.
#ifndef GENICAM_GCNAMESPACE_H
#define GENICAM_GCNAMESPACE_H

#include <_GenICamVersion.h>

#define GENICAM_SEP_UNDERSCORE(a, b, c) a##_##b##_##c
#define GENICAM_SEP_UNDERSCORE_COMPANY(a, b, c, d) a##_##b##_##c##_##d
#define GENICAM_EXPAND_SEP(a, b, c) GENICAM_SEP_UNDERSCORE(a, b, c)
#define GENICAM_EXPAND_SEP_COMPANY(a, b, c, d) GENICAM_SEP_UNDERSCORE_COMPANY(a, b, c, d)

#ifndef GENICAM_NAMESPACE_DEFINED
#define GENICAM_NAMESPACE_DEFINED
#ifdef GENICAM_COMPANY_SUFFIX
#define GENICAM_NAMESPACE \
    GENICAM_EXPAND_SEP_COMPANY(GenICam, GENICAM_VERSION_MAJOR, GENICAM_VERSION_MINOR, GENICAM_COMPANY_SUFFIX)
#else
#define GENICAM_NAMESPACE GENICAM_EXPAND_SEP(GenICam, GENICAM_VERSION_MAJOR, GENICAM_VERSION_MINOR)
#endif
#endif

namespace GENICAM_NAMESPACE {}
#ifndef GENICAM_SUPPRESS_NAMESPACE_ALIAS
namespace GenICam = GENICAM_NAMESPACE;
#endif

#ifndef GCBASE_API
#define GCBASE_API __attribute__((visibility("default")))
#endif
#ifndef GCBASE_RTTI_CLASS_API
#define GCBASE_RTTI_CLASS_API __attribute__((visibility("default")))
#endif

#endif
