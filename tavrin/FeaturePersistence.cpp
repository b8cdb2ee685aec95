// Feature streams: the bag magic line, comments starting with "#", then "Name<TAB>Value" lines;
// a value may be empty (an empty string feature).
#include "FeaturePersistence.h"
#include <Base/GCException.h>
#include <GenApi/IValue.h>
#include <fstream>
#include <sstream>
#include <string>

namespace Tavrin {
namespace {

const char* const bagMagic = "{05D8C294-F295-4dfb-9D01-096BD04049F4}";

bool persistable(GenApi::INode* node) {
    const GenApi::EAccessMode mode = node->GetAccessMode();
    return node->IsStreamable() && mode == GenApi::RW && dynamic_cast<GenApi::IValue*>(node) != nullptr;
}

void loadEntry(GenApi::INodeMap* nodeMap, const std::string& name, const std::string& value, bool validate) {
    GenApi::IValue* feature = dynamic_cast<GenApi::IValue*>(nodeMap->GetNode(name.c_str()));
    if (!feature)
        throw RUNTIME_EXCEPTION("Feature '%s' of the stream is not in the node map", name.c_str());
    feature->FromString(value.c_str(), true);
    if (validate && feature->ToString(false, true) != value.c_str()) {
        throw RUNTIME_EXCEPTION("Feature '%s' reads '%s' after '%s' was loaded", name.c_str(),
                                feature->ToString().c_str(), value.c_str());
    }
}

}  // namespace

void CFeaturePersistence::LoadFromString(const GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap,
                                         bool validate) {
    if (!nodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("No node map to load the feature stream into");
    std::istringstream stream(featureStream.c_str());
    std::string line;
    if (!std::getline(stream, line))
        throw RUNTIME_EXCEPTION("The stream is eof");
    if (line.find(bagMagic) == std::string::npos) {
        throw RUNTIME_EXCEPTION(
            "The stream is not a GenApi feature stream since it is missing the magic GUID in the first line");
    }
    while (std::getline(stream, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        const size_t tab = line.find('\t');
        if (tab == std::string::npos || tab == 0) {
            throw RUNTIME_EXCEPTION("The stream holds incomplete key - value - set");
        }
        loadEntry(nodeMap, line.substr(0, tab), line.substr(tab + 1), validate);
    }
}

void CFeaturePersistence::Load(const GenICam::gcstring& fileName, GenApi::INodeMap* nodeMap, bool validate) {
    std::ifstream file(fileName.c_str());
    if (!file)
        throw RUNTIME_EXCEPTION("Cannot open the feature file '%s'", fileName.c_str());
    std::ostringstream content;
    content << file.rdbuf();
    LoadFromString(content.str().c_str(), nodeMap, validate);
}

void CFeaturePersistence::SaveToString(GenICam::gcstring& featureStream, GenApi::INodeMap* nodeMap) {
    if (!nodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("No node map to save a feature stream from");
    std::ostringstream stream;
    stream << "# " << bagMagic << "\n";
    GenApi::NodeList_t nodes;
    nodeMap->GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        if (!persistable(node))
            continue;
        stream << node->GetName().c_str() << "\t" << dynamic_cast<GenApi::IValue*>(node)->ToString().c_str()
               << "\n";
    }
    featureStream = stream.str().c_str();
}

}  // namespace Tavrin
