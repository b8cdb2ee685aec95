// Feature streams through GenApi's feature bag: saving stores every streamable feature with all of its
// selector combinations, loading retries order-dependent refusals and reports every failure by name.
#include "FeaturePersistence.h"
#include <GenApi/GenApi.h>
#include <fstream>
#include <sstream>
#include <string>

namespace Tavrin {

void CFeaturePersistence::LoadFromString(const GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap,
                                         bool validate) {
    if (!nodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("No node map to load the feature stream into");
    std::istringstream stream(std::string(featureStream.c_str(), featureStream.size()));
    GenApi::CFeatureBag bag;
    stream >> bag;
    GenICam::gcstring_vector errors;
    if (bag.LoadFromBag(nodeMap, validate, &errors))
        return;
    // One refusal a line, so that a reader can count and show them.
    std::string text = "The feature stream could not be loaded completely: " + std::to_string(errors.size()) +
                       (errors.size() == 1 ? " setting" : " settings") + " refused";
    for (const GenICam::gcstring& error : errors)
        text += std::string("\n") + error.c_str();
    // Constructed from the whole text: the formatting macro would cut a long list short.
    throw GenICam::RuntimeException(text.c_str(), __FILE__, __LINE__);
}

void CFeaturePersistence::Load(const GenICam::gcstring& fileName, GenApi::INodeMap* nodeMap, bool validate) {
    std::ifstream file(fileName.c_str(), std::ios::binary);
    if (!file)
        throw RUNTIME_EXCEPTION("Cannot open the feature file '%s'", fileName.c_str());
    std::ostringstream content;
    content << file.rdbuf();
    LoadFromString(content.str().c_str(), nodeMap, validate);
}

void CFeaturePersistence::SaveToString(GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap) {
    if (!nodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("No node map to save a feature stream from");
    GenApi::CFeatureBag bag;
    bag.StoreToBag(nodeMap);
    // The bag's stream operator is the form GenApi documents; some releases' ToString() does not write
    // the bag at all.
    std::ostringstream text;
    text << bag;
    featureStream = text.str().c_str();
}

}  // namespace Tavrin
