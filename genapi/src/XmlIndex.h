// An index of a camera description: every node with its element type and properties as written.
#ifndef GENAPI_ENGINE_XMLINDEX_H
#define GENAPI_ENGINE_XMLINDEX_H

#include <cstdint>
#include <map>
#include <unordered_map>
#include <string>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace GenApiEngine {

// One property element of a node: its name, its text and its attributes.
struct SProperty {
    std::string name;
    std::string value;
    std::string attribute;
};

// The address step of a pIndex element: its Offset attribute, or else the register's length; false when
// a node gives the offset (pOffset) or the attribute is no number.
bool indexStep(const SProperty& index, int64_t length, int64_t& step);
// Register nodes read and write device memory themselves; their access comes from AccessMode and the port.
bool isRegisterKind(const std::string& tag);
// Pointer properties a node's value is computed from.
bool isValuePointer(const std::string& property);

// A converter's formula nodes, which GenApi creates beside it: its name with these endings.
extern const char* const convertToSuffix;
extern const char* const convertFromSuffix;
bool isConverter(const std::string& tag);
// The Name attribute of a pVariable, Constant or Expression element, or an empty string.
std::string nameAttribute(const SProperty& property);
struct SNodeDescription;
// The node GenApi makes of a Constant of an integer formula, "_<formula>_<constant>", or an empty name for
// a constant of another kind of node.
std::string constantNodeName(const SNodeDescription& formula, const SProperty& constant);

// One node of the description; enumeration entries get GenApi's "EnumEntry_<Enumeration>_<Entry>" names.
struct SNodeDescription {
    std::string name;
    std::string xmlName;
    // The Name the description gives a node that GenApi names otherwise (one defined inside another node);
    // empty when it is xmlName.
    std::string definedName;
    std::string tag;
    std::string nameSpace;
    std::vector<SProperty> properties;
    std::vector<std::string> entries;
    std::string parent;
    // Where GenApi numbers the node: the order in which the description first defines or points to each
    // name, a converter's formula nodes right after the converter's own elements.
    uint32_t rank = 0;
    // Made by the engine, as GenApi makes it, for what the description only implies (see addImpliedNodes).
    bool implied = false;

    // The first value of a property, or an empty string.
    const std::string& value(const std::string& property) const;
    bool has(const std::string& property) const;
    // Every value of a property that may occur several times, in document order.
    std::vector<std::string> values(const std::string& property) const;
};

// Whether an element holds other elements (a node, a structure) rather than only text (a property).
bool hasElementChildren(_xmlNode* element);

// Trims the whitespace around names and numbers in the parsed document (a description may write
// "<pPort>\n  Device\n</pPort>"), where Aravis takes texts as written; true when it changed any.
bool trimPaddedTexts(_xmlDoc* document);

class CXmlIndex {
public:
    // Parses the description text; throws GenICam::RuntimeException when it is not well-formed XML. With
    // keepDocument, the parsed document stays for document() until releaseDocument(), so that it need not
    // be parsed again to be rewritten.
    explicit CXmlIndex(const std::string& xml, bool keepDocument = false);
    // An index kept from an earlier parse (the description cache).
    CXmlIndex(std::vector<SNodeDescription> nodes, std::map<std::string, size_t> byName,
              std::map<std::string, std::string> rootAttributes);
    ~CXmlIndex();
    CXmlIndex(const CXmlIndex&) = delete;
    CXmlIndex& operator=(const CXmlIndex&) = delete;
    _xmlDoc* document() const { return m_Document; }
    void releaseDocument();

    const std::vector<SNodeDescription>& nodes() const { return m_Nodes; }
    const SNodeDescription* find(const std::string& name) const;
    // An attribute of the root element (ModelName, VendorName, SchemaMajorVersion, ...).
    std::string rootAttribute(const std::string& name) const;
    const std::map<std::string, std::string>& rootAttributes() const { return m_RootAttributes; }
    // The node each name finds.
    const std::map<std::string, size_t>& byName() const { return m_ByName; }

private:
    void indexChildren(void* element);
    void indexStructReg(void* element);
    void indexNode(void* element, const std::string& parent, const std::vector<SProperty>& inherited);
    void indexInlineNode(void* element, const std::string& enclosing);
    // Numbers every node as GenApi does (see SNodeDescription::rank); the numbers of all names mentioned.
    std::unordered_map<std::string, uint32_t> rankMentions(void* root);
    void addImpliedNodes(const std::unordered_map<std::string, uint32_t>& ranks);
    void addImplied(SNodeDescription node);

    std::vector<SNodeDescription> m_Nodes;
    std::map<std::string, size_t> m_ByName;
    std::map<std::string, std::string> m_RootAttributes;
    _xmlDoc* m_Document = nullptr;
};

}  // namespace GenApiEngine

#endif
