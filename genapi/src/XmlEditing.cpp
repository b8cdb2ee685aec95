// libxml2 based editing of whole descriptions.
#include "XmlEditing.h"
#include "XmlIndex.h"
#include <Base/GCException.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <set>
#include <vector>

namespace GenApiEngine {
namespace {

struct DocumentDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
typedef std::unique_ptr<xmlDoc, DocumentDeleter> DocumentPtr;

DocumentPtr parse(const std::string& xml) {
    DocumentPtr document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "description.xml", NULL,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE));
    if (!document || !xmlDocGetRootElement(document.get())) {
        throw RUNTIME_EXCEPTION("The camera description is not well-formed XML");
    }
    return document;
}

std::string nameOf(xmlNode* node) {
    xmlChar* value = xmlGetProp(node, BAD_CAST "Name");
    if (!value)
        return std::string();
    std::string name(reinterpret_cast<const char*>(value));
    xmlFree(value);
    return name;
}

// The node elements directly below the root or inside its groups.
std::vector<xmlNode*> nodeElements(xmlNode* parent) {
    std::vector<xmlNode*> found;
    for (xmlNode* child = parent->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        if (xmlStrEqual(child->name, BAD_CAST "Group")) {
            const std::vector<xmlNode*> inner = nodeElements(child);
            found.insert(found.end(), inner.begin(), inner.end());
        } else if (xmlHasProp(child, BAD_CAST "Name")) {
            found.push_back(child);
        }
    }
    return found;
}

}  // namespace

std::string documentText(xmlDoc* document) {
    xmlChar* buffer = nullptr;
    int size = 0;
    xmlDocDumpMemory(document, &buffer, &size);
    std::string text(reinterpret_cast<const char*>(buffer), static_cast<size_t>(size));
    xmlFree(buffer);
    return text;
}

std::string injectDescription(const std::string& target, const std::string& injected) {
    DocumentPtr targetDocument = parse(target);
    DocumentPtr injectedDocument = parse(injected);
    xmlNode* targetRoot = xmlDocGetRootElement(targetDocument.get());
    for (xmlNode* node : nodeElements(xmlDocGetRootElement(injectedDocument.get()))) {
        const std::string name = nameOf(node);
        for (xmlNode* existing : nodeElements(targetRoot)) {
            if (nameOf(existing) != name)
                continue;
            xmlUnlinkNode(existing);
            xmlFreeNode(existing);
        }
        xmlAddChild(targetRoot, xmlDocCopyNode(node, targetDocument.get(), 1));
    }
    return documentText(targetDocument.get());
}

std::string extractSubtree(const std::string& xml, const std::string& rootName, bool renameToRoot) {
    const CXmlIndex index(xml);
    if (!index.find(rootName))
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' not found", rootName.c_str());
    std::set<std::string> keep{rootName};
    std::vector<std::string> work{rootName};
    while (!work.empty()) {
        const SNodeDescription* node = index.find(work.back());
        work.pop_back();
        if (!node)
            continue;
        std::vector<std::string> targets(node->entries);
        for (const SProperty& property : node->properties) {
            if (property.name.size() > 1 && property.name[0] == 'p')
                targets.push_back(property.value);
        }
        for (const std::string& target : targets) {
            const SNodeDescription* reached = index.find(target);
            const std::string owner = reached && !reached->parent.empty() ? reached->parent : target;
            if (keep.insert(owner).second)
                work.push_back(owner);
        }
    }
    DocumentPtr document = parse(xml);
    for (xmlNode* node : nodeElements(xmlDocGetRootElement(document.get()))) {
        const std::string name = nameOf(node);
        if (keep.count(name) == 0) {
            xmlUnlinkNode(node);
            xmlFreeNode(node);
        } else if (renameToRoot && name == rootName) {
            xmlSetProp(node, BAD_CAST "Name", BAD_CAST "Root");
        }
    }
    return documentText(document.get());
}

}  // namespace GenApiEngine
