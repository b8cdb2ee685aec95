// Lists every feature of a camera's node map by category, with its type, access and value.
// Default device: the simulated camera; "--device aravis:ID" opens a device Aravis knows
// ("aravis:fake" for Aravis' fake camera).
#include <GenApi/GenApi.h>
#include <GenApi/EnumClasses.h>
#include <GenApiEngine/AravisDevices.h>
#include <SimulatedDevice.h>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>

using namespace GenApi;

namespace {

const char* typeName(EInterfaceType type) {
    switch (type) {
        case intfIInteger:
            return "Integer";
        case intfIBoolean:
            return "Boolean";
        case intfICommand:
            return "Command";
        case intfIFloat:
            return "Float";
        case intfIString:
            return "String";
        case intfIRegister:
            return "Register";
        case intfICategory:
            return "Category";
        case intfIEnumeration:
            return "Enumeration";
        case intfIEnumEntry:
            return "EnumEntry";
        case intfIPort:
            return "Port";
        default:
            return "Value";
    }
}

std::string valueText(INode* node) {
    IValue* value = dynamic_cast<IValue*>(node);
    if (!value || !IsReadable(node) || node->GetPrincipalInterfaceType() == intfICommand)
        return "";
    try {
        std::string text = value->ToString().c_str();
        if (text.size() > 40)
            text = text.substr(0, 37) + "...";
        if (IFloat* f = dynamic_cast<IFloat*>(node))
            text += std::string(" ") + f->GetUnit().c_str();
        if (IInteger* i = dynamic_cast<IInteger*>(node))
            text += std::string(" ") + i->GetUnit().c_str();
        return text;
    } catch (const GenICam::GenericException& e) {
        return std::string("<") + e.GetDescription() + ">";
    }
}

void list(INode* node, int depth) {
    std::cout << std::string(static_cast<size_t>(depth) * 2, ' ') << std::left << std::setw(40 - depth * 2)
              << node->GetName().c_str() << std::setw(12) << typeName(node->GetPrincipalInterfaceType())
              << std::setw(4) << EAccessModeClass::ToString(node->GetAccessMode()).c_str() << valueText(node)
              << "\n";
    if (ICategory* category = dynamic_cast<ICategory*>(node)) {
        FeatureList_t features;
        category->GetFeatures(features);
        for (IValue* feature : features)
            list(feature->GetNode(), depth + 1);
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::string device = "sim";
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--device") == 0)
            device = argv[i + 1];
    }
    try {
        std::unique_ptr<SimCamera::CSimulatedDevice> simulated;
        CNodeMapRef aravisMap;
        INodeMap* map = nullptr;
        if (device == "sim") {
            simulated = std::make_unique<SimCamera::CSimulatedDevice>();
            map = simulated->nodeMap();
        } else if (device.rfind("aravis:", 0) == 0) {
            const std::string id = device.substr(7);
            aravisMap =
                id == "fake" ? GenApiEngine::createAravisFakeDevice() : GenApiEngine::openAravisDevice(id);
            map = aravisMap._Ptr;
        } else {
            std::cerr << "Unknown device '" << device << "': use sim or aravis:ID\n";
            return 2;
        }
        CDeviceInfoPtr info(map);
        std::cout << info->GetVendorName() << " " << info->GetModelName() << ": " << map->GetNumNodes()
                  << " nodes\n";
        INode* root = map->GetNode("Root");
        if (!root) {
            std::cerr << "The node map has no category Root\n";
            return 1;
        }
        list(root, 0);
    } catch (const GenICam::GenericException& e) {
        std::cerr << "Error: " << e.GetDescription() << "\n";
        return 1;
    }
    return 0;
}
