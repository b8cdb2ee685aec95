// Walks a camera description with libxml2 and records each node's properties in document order.
#include "XmlIndex.h"
#include "TextForms.h"
#include <Base/GCException.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <algorithm>
#include <cctype>
#include <cstring>
#include <unordered_map>

namespace GenApiEngine {

const char* const convertToSuffix = "_ConvertTo";
const char* const convertFromSuffix = "_ConvertFrom";

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

std::string contentOf(xmlNode* node) {
    xmlChar* content = xmlNodeGetContent(node);
    if (!content)
        return std::string();
    std::string text(reinterpret_cast<const char*>(content));
    xmlFree(content);
    return text;
}

std::string textOf(xmlNode* node) {
    return trimmed(contentOf(node));
}

// Texts written for people and formulas keep their whitespace, as GenApi keeps it; names and numbers do not.
bool keepsWhitespace(const std::string& property) {
    static const char* const kept[] = {"ToolTip",     "Description", "DisplayName", "Formula",
                                       "FormulaFrom", "FormulaTo",   "Expression"};
    for (const char* name : kept) {
        if (property == name)
            return true;
    }
    return false;
}

std::string escapedXml(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '&':
                escaped += "&amp;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

// The elements inside an Extension as GenApi hands them out: every element with its closing tag, no
// whitespace between elements.
void serializeInto(xmlNode* first, std::string& out) {
    for (xmlNode* node = first; node; node = node->next) {
        if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
            out += escapedXml(trimmed(reinterpret_cast<const char*>(node->content)));
            continue;
        }
        if (node->type != XML_ELEMENT_NODE)
            continue;
        out += '<' + elementName(node);
        for (xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
            const char* name = reinterpret_cast<const char*>(attribute->name);
            out += std::string(" ") + name + "=\"" + escapedXml(attributeOf(node, name)) + '"';
        }
        out += '>';
        serializeInto(node->children, out);
        out += "</" + elementName(node) + '>';
    }
}

SProperty propertyOf(xmlNode* child) {
    const std::string name = elementName(child);
    if (name == "Extension") {
        std::string inner;
        serializeInto(child->children, inner);
        return SProperty{name, inner, std::string()};
    }
    return SProperty{name, keepsWhitespace(name) ? contentOf(child) : textOf(child), attributesOf(child)};
}

// A node defined inside another where a pointer would name it: an element with a Name and elements of its
// own (an IntSwissKnife that gives a register its address, say), not an entry or a pointer.
bool isInlineNode(xmlNode* node) {
    const std::string tag = elementName(node);
    return xmlHasProp(node, BAD_CAST "Name") && hasElementChildren(node) && tag[0] != 'p' &&
           tag != "EnumEntry" && tag != "StructEntry";
}

// GenApi names a node defined inside a named node "_<enclosing>_<name>"; one inside a StructReg, which
// has no name, keeps its own.
std::string inlineNodeName(const std::string& enclosing, const std::string& name) {
    return enclosing.empty() ? name : "_" + enclosing + "_" + name;
}

// Walks the description in document order and names every node the first time it is defined or pointed
// to; a converter's two formula nodes follow its own elements, ConvertTo first.
void mentionWithin(xmlNode* element, const std::string& enclosing,
                   std::unordered_map<std::string, uint32_t>& ranks) {
    const auto see = [&ranks](const std::string& name) {
        ranks.emplace(name, static_cast<uint32_t>(ranks.size()));
    };
    for (xmlNode* child = element->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        const std::string tag = elementName(child);
        if (tag == "Extension")
            continue;
        if (tag[0] == 'p' && !hasElementChildren(child)) {
            see(textOf(child));
        } else if (xmlHasProp(child, BAD_CAST "Name") && tag[0] != 'p') {
            const std::string xmlName = attributeOf(child, "Name");
            std::string name = xmlName;
            if (tag == "EnumEntry")
                name = "EnumEntry_" + enclosing + "_" + xmlName;
            else if (isInlineNode(child))
                name = inlineNodeName(enclosing, xmlName);
            see(name);
            mentionWithin(child, xmlName, ranks);
            if (isConverter(tag)) {
                see(name + convertToSuffix);
                see(name + convertFromSuffix);
            }
        } else {
            mentionWithin(child, enclosing, ranks);
        }
    }
}

bool isNodeElement(xmlNode* node) {
    return node->type == XML_ELEMENT_NODE && xmlHasProp(node, BAD_CAST "Name");
}

// The link an inline node stands for: a formula inside a register adds to the register's address, as
// pAddress does.
SProperty inlineLink(xmlNode* node, const std::string& enclosing) {
    return SProperty{"pAddress", inlineNodeName(enclosing, attributeOf(node, "Name")), std::string()};
}

}  // namespace

bool hasElementChildren(xmlNode* node) {
    for (xmlNode* child = node->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE)
            return true;
    }
    return false;
}

const std::string& SNodeDescription::value(const std::string& property) const {
    for (const SProperty& p : properties) {
        if (p.name == property)
            return p.value;
    }
    return emptyText;
}

bool isValuePointer(const std::string& property) {
    return property == "pValue" || property == "pVariable" || property == "pIndex" ||
           property == "pValueIndexed" || property == "pValueDefault" || property == "pAddress" ||
           property == "pLength" || property == "pValueCopy";
}

bool isRegisterKind(const std::string& tag) {
    return tag == "IntReg" || tag == "MaskedIntReg" || tag == "FloatReg" || tag == "StringReg" ||
           tag == "Register" || tag == "StructEntry";
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
        addImpliedNodes(rankMentions(root));
    }
    if (keepDocument)
        m_Document = document;
    else
        xmlFreeDoc(document);
}

CXmlIndex::CXmlIndex(std::vector<SNodeDescription> nodes, std::map<std::string, size_t> byName,
                     std::map<std::string, std::string> rootAttributes)
    : m_Nodes(std::move(nodes)), m_ByName(std::move(byName)), m_RootAttributes(std::move(rootAttributes)) {}

namespace {

// Whether a leaf element's text starts or ends with whitespace, looked up without copying it.
bool isPadded(xmlNode* leaf) {
    const xmlNode* text = leaf->children;
    if (!text || text->type != XML_TEXT_NODE || !text->content || !text->content[0])
        return false;
    const char* content = reinterpret_cast<const char*>(text->content);
    const size_t length = std::strlen(content);
    return std::isspace(static_cast<unsigned char>(content[0])) ||
           std::isspace(static_cast<unsigned char>(content[length - 1])) || text->next;
}

bool trimLeafTexts(xmlNode* element) {
    bool changed = false;
    for (xmlNode* child = element->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        if (hasElementChildren(child)) {
            changed = trimLeafTexts(child) || changed;
            continue;
        }
        if (!isPadded(child) || keepsWhitespace(elementName(child)))
            continue;
        const std::string content = contentOf(child);
        const std::string bare = trimmed(content);
        if (bare.size() == content.size())
            continue;
        xmlNodeSetContent(child, nullptr);
        xmlNodeAddContent(child, BAD_CAST bare.c_str());
        changed = true;
    }
    return changed;
}

}  // namespace

bool trimPaddedTexts(_xmlDoc* document) {
    xmlNode* root = document ? xmlDocGetRootElement(document) : nullptr;
    return root && trimLeafTexts(root);
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
        } else if (isInlineNode(child)) {
            shared.push_back(inlineLink(child, std::string()));
            indexNode(child, std::string(), std::vector<SProperty>());
        } else {
            shared.push_back(propertyOf(child));
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
    std::vector<xmlNode*> inlined;
    for (xmlNode* child = node->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        const std::string property = elementName(child);
        if (property == "EnumEntry") {
            nested.push_back(child);
            continue;
        }
        if (isInlineNode(child)) {
            inlined.push_back(child);
            description.properties.push_back(inlineLink(child, description.xmlName));
            continue;
        }
        description.properties.push_back(propertyOf(child));
    }

    // A struct entry's own elements override those of its StructReg (an entry's AccessMode, say); all
    // occurrences of an inherited element come along (several pInvalidator, say).
    const size_t own = description.properties.size();
    for (const SProperty& shared : inherited) {
        const auto begin = description.properties.begin();
        const bool overridden = std::any_of(begin, begin + static_cast<std::ptrdiff_t>(own),
                                            [&](const SProperty& p) { return p.name == shared.name; });
        if (!overridden)
            description.properties.push_back(shared);
    }

    const size_t index = m_Nodes.size();
    if (m_ByName.find(description.name) == m_ByName.end())
        m_ByName[description.name] = index;
    const std::string name = description.name;
    m_Nodes.push_back(std::move(description));
    for (xmlNode* child : inlined)
        indexInlineNode(child, name);
    for (xmlNode* child : nested) {
        const std::string childName = attributeOf(child, "Name");
        m_Nodes[index].entries.push_back("EnumEntry_" + name + "_" + childName);
        indexNode(child, name, std::vector<SProperty>());
    }
}

// A node defined inside a named node, under the name GenApi gives it; Aravis knows it by its own.
void CXmlIndex::indexInlineNode(void* element, const std::string& enclosing) {
    const size_t index = m_Nodes.size();
    indexNode(element, std::string(), std::vector<SProperty>());
    SNodeDescription& node = m_Nodes[index];
    node.definedName = node.xmlName;
    node.name = node.xmlName = inlineNodeName(enclosing, node.definedName);
    m_ByName.erase(node.definedName);
    m_ByName.emplace(node.name, index);
}

std::unordered_map<std::string, uint32_t> CXmlIndex::rankMentions(void* root) {
    std::unordered_map<std::string, uint32_t> ranks;
    mentionWithin(static_cast<xmlNode*>(root), std::string(), ranks);
    for (SNodeDescription& node : m_Nodes)
        node.rank = ranks[node.name];
    return ranks;
}

namespace {

// A converter's formula node: FormulaTo over FROM, or FormulaFrom over TO, with the converter's variables.
SNodeDescription formulaNodeOf(const SNodeDescription& converter, bool to,
                               const std::unordered_map<std::string, uint32_t>& ranks) {
    SNodeDescription formula;
    formula.name = converter.name + (to ? convertToSuffix : convertFromSuffix);
    formula.tag = converter.tag == "IntConverter" ? "IntSwissKnife" : "SwissKnife";
    formula.nameSpace = "Custom";
    for (const SProperty& property : converter.properties) {
        if (property.name == "pVariable" || property.name == "Constant" || property.name == "Expression")
            formula.properties.push_back(property);
    }
    formula.properties.push_back(
        SProperty{"Formula", converter.value(to ? "FormulaTo" : "FormulaFrom"), std::string()});
    formula.properties.push_back(SProperty{"InputDirection", to ? "To" : "From", std::string()});
    const auto rank = ranks.find(formula.name);
    formula.rank = rank == ranks.end() ? converter.rank : rank->second;
    return formula;
}

// The integer node holding a constant of an integer formula.
SNodeDescription constantNodeOf(const SNodeDescription& formula, const SProperty& constant) {
    SNodeDescription node;
    node.name = constantNodeName(formula, constant);
    node.tag = "Integer";
    node.nameSpace = "Custom";
    node.properties.push_back(SProperty{"Value", constant.value, std::string()});
    node.rank = formula.rank;
    return node;
}

}  // namespace

// GenApi makes nodes a description only implies: each converter gets two formula nodes, and each constant
// of an integer formula becomes an integer node "_<formula>_<constant>".
void CXmlIndex::addImpliedNodes(const std::unordered_map<std::string, uint32_t>& ranks) {
    std::vector<SNodeDescription> implied;
    for (const SNodeDescription& node : m_Nodes) {
        if (isConverter(node.tag)) {
            implied.push_back(formulaNodeOf(node, true, ranks));
            implied.push_back(formulaNodeOf(node, false, ranks));
        }
        for (const SProperty& property : node.properties) {
            if (!constantNodeName(node, property).empty())
                implied.push_back(constantNodeOf(node, property));
        }
    }
    for (SNodeDescription& node : implied)
        addImplied(std::move(node));
}

void CXmlIndex::addImplied(SNodeDescription node) {
    if (m_ByName.count(node.name))
        return;
    node.xmlName = node.name;
    node.implied = true;
    m_ByName[node.name] = m_Nodes.size();
    m_Nodes.push_back(std::move(node));
}

std::string constantNodeName(const SNodeDescription& formula, const SProperty& constant) {
    if (formula.tag != "IntSwissKnife" || constant.name != "Constant")
        return std::string();
    return "_" + formula.name + "_" + nameAttribute(constant);
}

std::string nameAttribute(const SProperty& property) {
    return property.attribute.compare(0, 5, "Name=") == 0 ? property.attribute.substr(5) : std::string();
}

bool isConverter(const std::string& tag) {
    return tag == "Converter" || tag == "IntConverter";
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
