// Saving the streamable features of a node map to a text, and loading them back, in GenApi's
// feature-bag format: a magic first line, then one "Name<TAB>Value" line per feature, selected features
// once per combination of their selectors ("Name<TAB>{Selector=Value}<TAB>Value").
#ifndef TAVRIN_FEATUREPERSISTENCE_H
#define TAVRIN_FEATUREPERSISTENCE_H

#include "TavrinExport.h"
#include <GenApi/GenApi.h>

namespace Tavrin {

class TAVRIN_EXPORT CFeaturePersistence {
public:
    // Loads a feature file; with validate every written feature is read back and compared. Entries the
    // device refuses because of their order are retried; what still fails raises one GenICam exception
    // whose description names every failing feature, after the rest of the stream has been applied.
    static void Load(const GenICam::gcstring& fileName, GenApi::INodeMap* nodeMap, bool validate);
    static void LoadFromString(const GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap,
                               bool validate);
    // Writes every streamable feature that can be read and written, in the order of the node map; floats
    // as the shortest text that reads back to the same value.
    static void SaveToString(GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap);
};

}  // namespace Tavrin

#endif
