// Arbitrary bytes as a description cache entry for the simulated camera's description. Bytes that start
// as an entry does are the whole entry, read by a load through the factory; any others are an entry's
// payload, sealed with a valid header so that the reader gets past the checksums, and the Aravis model it
// holds is made node by node. Run once with FUZZ_WRITE_PAYLOAD=<file> to write the payload of a real entry.
#include <AravisDocument.h>
#include <DescriptionCache.h>
#include <GenApi/GenApi.h>
#include <SimulatedCamera.h>
#include <glib.h>
#include <cstdint>
#include <cstdlib>
#include <fstream>

using namespace GenApiEngine;

namespace {

const std::string& description() {
    return SimCamera::CSimulatedCamera::description();
}

std::string cacheFolder;

void readEveryNode(GenApi::INodeMap* map) {
    GenApi::NodeList_t nodes;
    map->GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        try {
            node->GetAccessMode();
            if (GenApi::IValue* value = dynamic_cast<GenApi::IValue*>(node)) {
                if (GenApi::IsReadable(node))
                    value->ToString();
            }
        } catch (const GenICam::GenericException&) {
        }
    }
}

void loadThroughFactory(const std::string& entry) {
    std::ofstream(CDescriptionCache(cacheFolder).entryPath(description()), std::ios::binary | std::ios::trunc)
        << entry;
    GenApi::CNodeMapFactory factory(GENICAM_NAMESPACE::gcstring(description().c_str(), description().size()),
                                    GenApi::CacheUsage_ForceRead);
    GenApi::INodeMap* map = factory.CreateNodeMap();
    readEveryNode(map);
    dynamic_cast<GenApi::IDestroy*>(map)->Destroy();
}

void makeEveryNode(const std::string& payload) {
    SPreparedDescription prepared;
    if (!CDescriptionCache::decode(CDescriptionCache::seal(description(), payload), description(), prepared))
        return;
    if (!prepared.aravis->attach(nullptr))
        return;
    for (const SNodeDescription& node : prepared.index->nodes()) {
        if (node.tag == "EnumEntry")
            prepared.aravis->entry(node.parent, node.xmlName);
        else
            prepared.aravis->node(node.xmlName);
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    char* folder = g_dir_make_tmp("description-cache-fuzz-XXXXXX", nullptr);
    cacheFolder = folder ? folder : "/tmp";
    g_free(folder);
    setenv(GENICAM_CACHE_VERSION, cacheFolder.c_str(), 1);
    if (const char* path = std::getenv("FUZZ_WRITE_PAYLOAD")) {
        GenApi::CNodeMapFactory factory(
            GENICAM_NAMESPACE::gcstring(description().c_str(), description().size()),
            GenApi::CacheUsage_ForceWrite);
        dynamic_cast<GenApi::IDestroy*>(factory.CreateNodeMap())->Destroy();
        std::ifstream file(CDescriptionCache(cacheFolder).entryPath(description()), std::ios::binary);
        const std::string entry((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        // The header's size does not depend on the payload.
        std::ofstream(path, std::ios::binary)
            << entry.substr(CDescriptionCache::seal(description(), "").size());
        std::exit(0);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    try {
        if (bytes.compare(0, 8, "GENAPIEC") == 0)
            loadThroughFactory(bytes);
        else
            makeEveryNode(bytes);
    } catch (const GenICam::GenericException&) {
    }
    return 0;
}
