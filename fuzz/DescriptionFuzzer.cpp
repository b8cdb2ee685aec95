// Arbitrary text as a camera description: loaded, and when it loads, every node asked what a client asks,
// its properties included.
#include <GenApi/GenApi.h>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    GenApi::CNodeMapRef map;
    try {
        map._LoadXMLFromString(GenICam::gcstring(reinterpret_cast<const char*>(data), size));
    } catch (const GenICam::GenericException&) {
        return 0;
    }
    GenApi::NodeList_t nodes;
    map._GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        try {
            node->GetAccessMode();
            node->GetVisibility();
            node->GetCachingMode();
            if (GenApi::IValue* value = dynamic_cast<GenApi::IValue*>(node)) {
                if (GenApi::IsReadable(node))
                    value->ToString();
            }
            GENICAM_NAMESPACE::gcstring_vector names;
            node->GetPropertyNames(names);
            for (size_t i = 0; i < names.size(); ++i) {
                GENICAM_NAMESPACE::gcstring text, attribute;
                node->GetProperty(names[i], text, attribute);
            }
        } catch (const GenICam::GenericException&) {
        }
    }
    return 0;
}
