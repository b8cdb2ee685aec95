#pragma once
// The name of a GenApi visibility, with the caller's own text for a value outside the four levels.
#include <GenApi/GenApi.h>
#include <QString>

namespace ParameterCollection {
namespace Internal {

inline QString visibilityText(GENAPI_NAMESPACE::EVisibility visibility, const QString& undefinedText) {
    switch (visibility) {
        case GENAPI_NAMESPACE::Beginner:
            return QStringLiteral("Beginner");
        case GENAPI_NAMESPACE::Expert:
            return QStringLiteral("Expert");
        case GENAPI_NAMESPACE::Guru:
            return QStringLiteral("Guru");
        case GENAPI_NAMESPACE::Invisible:
            return QStringLiteral("Invisible");
        default:
            return undefinedText;
    }
}

}  // namespace Internal
}  // namespace ParameterCollection
