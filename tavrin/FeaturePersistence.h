// Saving the streamable features of a node map to a text, and loading them back, in GenApi's
// feature-bag format: a magic first line, then one "Name<TAB>Value" line per feature.
#ifndef TAVRIN_FEATUREPERSISTENCE_H
#define TAVRIN_FEATUREPERSISTENCE_H

#include "TavrinExport.h"
#include <Base/GCString.h>
#include <GenApi/INodeMap.h>

namespace Tavrin {

class TAVRIN_EXPORT CFeaturePersistence {
public:
    // Loads a feature file; with validate every written feature is read back and compared.
    // Failures raise GenICam exceptions whose descriptions name the feature.
    static void Load(const GenICam::gcstring& fileName, GenApi::INodeMap* nodeMap, bool validate);
    static void LoadFromString(const GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap,
                               bool validate);
    // Writes every streamable feature that can be read and written, in the order of the node map.
    static void SaveToString(GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap);
};

}  // namespace Tavrin

#endif
