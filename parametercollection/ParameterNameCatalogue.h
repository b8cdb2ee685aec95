// Ready-made typed names of the features of every node map the library knows, one namespace a node map:
// TRCamera::ExposureTime is the FloatParameterName "@CameraDevice/ExposureTime". Each including unit
// gets its own copies (internal linkage); each is one literal-backed string, cheap to construct.
//
// The entries are generated at build time from parametercollection/catalogue/*.txt. Features that carry
// a camera maker's own prefix are not among them, since no source the project can use names them: run
// `parameter-names header --namespace NS --prefix @CameraDevice camera.xml` on a camera's description
// for typed names of all of its features, the maker's own included.
#ifndef PARAMETERCOLLECTION_PARAMETERNAMECATALOGUE_H
#define PARAMETERCOLLECTION_PARAMETERNAMECATALOGUE_H

#include "ParameterNames.h"
#include "SfncVersion.h"

#define PARAMETERCOLLECTION_CATALOGUE_NAME(Namespace, Type, Identifier, Path) \
    namespace ParameterCollection {                                           \
    namespace Namespace {                                                     \
    const Type Identifier(QStringLiteral(Path));                              \
    }                                                                         \
    }
#include <parametercollection/ParameterNameCatalogueEntries.inc>
#undef PARAMETERCOLLECTION_CATALOGUE_NAME

#endif
