// The message for a feature name that matches nothing, with the closest feature of the node map as a
// suggestion when one is close enough to be a typing slip.
#ifndef TOOLS_CAMERA_PARAMETERS_NAMESUGGESTION_H
#define TOOLS_CAMERA_PARAMETERS_NAMESUGGESTION_H

#include <GenApi/GenApi.h>
#include <QString>

class CNameSuggestion {
public:
    // "Unknown parameter 'NAME'." and, when a feature is close, " Did you mean 'FEATURE'?", in the form
    // the name was given ("@CameraDevice/..." or bare); ends with a line break.
    static QString unknownParameterText(const QString& name, GENAPI_NAMESPACE::INodeMap* nodeMap);
    // The feature of the map closest to the name by edit distance (letter case ignored), or an empty text
    // when none is within a third of the name's length (at least two edits).
    static QString closestFeature(const QString& featureName, GENAPI_NAMESPACE::INodeMap* nodeMap);
    static int editDistance(const QString& a, const QString& b);
};

#endif
