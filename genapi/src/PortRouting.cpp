// Port tags: chosen from the description's ports and addresses, written into the text Aravis parses.
#include "PortRouting.h"
#include "NodeErrors.h"
#include "TextForms.h"
#include <Base/GCException.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace GenApiEngine {
namespace {

// Tags sit just below the sign bit, above any address a device is likely to compute at run time (a base
// address read from the device or held by an Integer), not only above the addresses written in the text.
constexpr int signBit = 63;
constexpr int64_t chunkPseudoAddresses = INT64_MAX - 15;

int bitLength(uint64_t value) {
    int bits = 0;
    while (value) {
        ++bits;
        value >>= 1;
    }
    return bits;
}

// The number of bits the largest constant address or length of the description needs, plus a margin for
// indices and computed offsets.
int addressBits(const CXmlIndex& index) {
    uint64_t largest = 0;
    for (const SNodeDescription& node : index.nodes()) {
        for (const SProperty& property : node.properties) {
            int64_t value = 0;
            // The pseudo addresses of chunk ports (chunk base address and length) are no device addresses.
            if ((property.name == "Address" || property.name == "Length") &&
                textToInteger(property.value, value) && value < chunkPseudoAddresses)
                largest = std::max(largest, static_cast<uint64_t>(value));
        }
    }
    return bitLength(largest) + 8;
}

std::string textOfChild(xmlNode* element, const char* name) {
    for (xmlNode* child = element->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST name)) {
            xmlChar* content = xmlNodeGetContent(child);
            std::string text(content ? reinterpret_cast<const char*>(content) : "");
            xmlFree(content);
            const size_t first = text.find_first_not_of(" \t\r\n");
            const size_t last = text.find_last_not_of(" \t\r\n");
            return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
        }
    }
    return std::string();
}

void removeChildren(xmlNode* element, const char* name) {
    xmlNode* child = element->children;
    while (child) {
        xmlNode* next = child->next;
        if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST name)) {
            xmlUnlinkNode(child);
            xmlFreeNode(child);
        }
        child = next;
    }
}

void tagElements(xmlNode* parent, const SPortRouting& routing) {
    for (xmlNode* element = parent->children; element; element = element->next) {
        if (element->type != XML_ELEMENT_NODE)
            continue;
        if (xmlStrEqual(element->name, BAD_CAST "Group")) {
            tagElements(element, routing);
            continue;
        }
        xmlChar* name = xmlGetProp(element, BAD_CAST "Name");
        const std::string nodeName = name ? reinterpret_cast<const char*>(name) : "";
        xmlFree(name);
        if (xmlStrEqual(element->name, BAD_CAST "Port")) {
            if (routing.tagOf(nodeName) > 0) {
                removeChildren(element, "ChunkID");
                removeChildren(element, "EventID");
            }
            continue;
        }
        const int64_t offset = routing.offsetOf(textOfChild(element, "pPort"));
        if (offset == 0)
            continue;
        const std::string text = formatText("0x%llx", static_cast<unsigned long long>(offset));
        xmlAddChild(element,
                    xmlNewDocNode(element->doc, element->ns, BAD_CAST "Address", BAD_CAST text.c_str()));
    }
}

}  // namespace

int SPortRouting::tagOf(const std::string& portName) const {
    const auto found = tags.find(portName);
    return found == tags.end() ? 0 : found->second;
}

int64_t SPortRouting::offsetOf(const std::string& portName) const {
    return tagged() ? static_cast<int64_t>(tagOf(portName)) << shift : 0;
}

SPortRouting routePorts(const CXmlIndex& index) {
    SPortRouting routing;
    std::vector<std::string> ports;
    for (const SNodeDescription& node : index.nodes()) {
        if (node.tag == "Port")
            ports.push_back(node.name);
    }
    if (ports.size() < 2)
        return routing;
    const bool hasDevice = index.find("Device") && index.find("Device")->tag == "Port";
    const std::string main = hasDevice ? "Device" : ports.front();
    int next = 1;
    for (const std::string& port : ports)
        routing.tags[port] = port == main ? 0 : next++;
    const int shift = signBit - bitLength(static_cast<uint64_t>(next));
    if (addressBits(index) > shift) {
        routing.tags.clear();
        return routing;
    }
    routing.shift = shift;
    return routing;
}

void tagPortAddresses(xmlDoc* document, const SPortRouting& routing) {
    if (!document || !xmlDocGetRootElement(document))
        throw RUNTIME_EXCEPTION("The camera description is not well-formed XML");
    tagElements(xmlDocGetRootElement(document), routing);
}

}  // namespace GenApiEngine
