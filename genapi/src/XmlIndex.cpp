// Walks a camera description with libxml2 and records each node's properties in document order.
#include "XmlIndex.h"
#include "TextForms.h"
#include <Base/GCException.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

namespace GenApiEngine {
namespace {

const std::string emptyText;

std::string elementName(xmlNode* node) {
    return reinterpret_cast<const char*>(node->name);
}

std::string attributeOf(xmlNode* node, const char* name) {
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    if (!value)
        return std::string();
    std::string text(reinterpret_cast<const char*>(value));
    xmlFree(value);
    return text;
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    const size_t last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

std::string textOf(xmlNode* node) {
    xmlChar* content = xmlNodeGetContent(node);
    if (!content)
        return std::string();
    std::string text(reinterpret_cast<const char*>(content));
    xmlFree(content);
    return trimmed(text);
}

// Attribute values of a property element, e.g. the variable name of a pVariable, joined by blanks.
std::string attributesOf(xmlNode* node) {
    std::string joined;
    for (xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
        xmlChar* value = xmlNodeListGetString(node->doc, attribute->children, 1);
        if (!joined.empty())
            joined += ' ';
        joined += reinterpret_cast<const char*>(attribute->name);
        joined += '=';
        if (value) {
            joined += reinterpret_cast<const char*>(value);
            xmlFree(value);
        }
    }
    return joined;
}

bool isNodeElement(xmlNode* node) {
    return node->type == XML_ELEMENT_NODE && xmlHasProp(node, BAD_CAST "Name");
}

}  // namespace

const std::string& SNodeDescription::value(const std::string& property) const {
    for (const SProperty& p : properties) {
        if (p.name == property)
            return p.value;
    }
    return emptyText;
}

bool indexStep(const SProperty& index, int64_t length, int64_t& step) {
    if (index.attribute.find("pOffset") != std::string::npos)
        return false;
    step = length;
    return index.attribute.compare(0, 7, "Offset=") != 0 || textToInteger(index.attribute.substr(7), step);
}

bool SNodeDescription::has(const std::string& property) const {
    for (const SProperty& p : properties) {
        if (p.name == property)
            return true;
    }
    return false;
}

std::vector<std::string> SNodeDescription::values(const std::string& property) const {
    std::vector<std::string> found;
    for (const SProperty& p : properties) {
        if (p.name == property)
            found.push_back(p.value);
    }
    return found;
}

CXmlIndex::CXmlIndex(const std::string& xml, bool keepDocument) {
    xmlDoc* document = xmlReadMemory(
        xml.data(), static_cast<int>(xml.size()), "description.xml", NULL,
        XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE);
    if (!document)
        throw RUNTIME_EXCEPTION("The camera description is not well-formed XML");
    xmlNode* root = xmlDocGetRootElement(document);
    if (root) {
        for (xmlAttr* attribute = root->properties; attribute; attribute = attribute->next) {
            m_RootAttributes[reinterpret_cast<const char*>(attribute->name)] =
                attributeOf(root, reinterpret_cast<const char*>(attribute->name));
        }
        indexChildren(root);
    }
    if (keepDocument)
        m_Document = document;
    else
        xmlFreeDoc(document);
}

CXmlIndex::~CXmlIndex() {
    releaseDocument();
}

void CXmlIndex::releaseDocument() {
    if (m_Document)
        xmlFreeDoc(m_Document);
    m_Document = nullptr;
}

void CXmlIndex::indexChildren(void* element) {
    for (xmlNode* child = static_cast<xmlNode*>(element)->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        if (elementName(child) == "Group") {
            indexChildren(child);
        } else if (elementName(child) == "StructReg") {
            indexStructReg(child);
        } else if (isNodeElement(child)) {
            indexNode(child, std::string(), std::vector<SProperty>());
        }
    }
}

// A struct register is no node itself: each of its entries becomes a node with the register's properties.
void CXmlIndex::indexStructReg(void* element) {
    std::vector<SProperty> shared;
    std::vector<xmlNode*> entries;
    for (xmlNode* child = static_cast<xmlNode*>(element)->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        if (elementName(child) == "StructEntry") {
            entries.push_back(child);
        } else {
            shared.push_back(SProperty{elementName(child), textOf(child), attributesOf(child)});
        }
    }
    for (xmlNode* entry : entries)
        indexNode(entry, std::string(), shared);
}

// Records one node; the entries of an enumeration become nodes of their own.
void CXmlIndex::indexNode(void* element, const std::string& parent, const std::vector<SProperty>& inherited) {
    xmlNode* node = static_cast<xmlNode*>(element);
    SNodeDescription description;
    description.xmlName = attributeOf(node, "Name");
    description.tag = elementName(node);
    description.nameSpace = attributeOf(node, "NameSpace");
    if (description.nameSpace.empty())
        description.nameSpace = "Custom";
    description.parent = parent;
    description.name = description.xmlName;
    if (description.tag == "EnumEntry")
        description.name = "EnumEntry_" + parent + "_" + description.xmlName;
    std::vector<xmlNode*> nested;
    for (xmlNode* child = node->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        const std::string property = elementName(child);
        if (property == "EnumEntry") {
            nested.push_back(child);
            continue;
        }
        if (property == "Extension")
            continue;
        description.properties.push_back(SProperty{property, textOf(child), attributesOf(child)});
    }

    // A struct entry's own elements override those of its StructReg (an entry's AccessMode, say).
    for (const SProperty& shared : inherited) {
        if (!description.has(shared.name))
            description.properties.push_back(shared);
    }

    const size_t index = m_Nodes.size();
    if (m_ByName.find(description.name) == m_ByName.end())
        m_ByName[description.name] = index;
    const std::string name = description.name;
    m_Nodes.push_back(std::move(description));
    for (xmlNode* child : nested) {
        const std::string childName = attributeOf(child, "Name");
        m_Nodes[index].entries.push_back("EnumEntry_" + name + "_" + childName);
        indexNode(child, name, std::vector<SProperty>());
    }
}

const SNodeDescription* CXmlIndex::find(const std::string& name) const {
    const auto found = m_ByName.find(name);
    return found == m_ByName.end() ? nullptr : &m_Nodes[found->second];
}

std::string CXmlIndex::rootAttribute(const std::string& name) const {
    const auto found = m_RootAttributes.find(name);
    return found == m_RootAttributes.end() ? std::string() : found->second;
}

}  // namespace GenApiEngine
