// Node elements are kept as a byte encoding of their element trees: '<' tag, then name and value of each
// attribute, then an empty name; '"' text; '>' closes the element. Every string ends with a zero byte, which
// XML text cannot contain. Making a node replays its encoding as Aravis' parser would build it.
#include "AravisDocument.h"
#include "AravisLock.h"
#include "XmlEditing.h"
#include "XmlIndex.h"
#include <libxml/tree.h>
#include <cstring>
#include <memory>

namespace GenApiEngine {

// Reads the encoding within its bounds; a string without its zero byte ends the reading.
struct SCursor {
    const char* at;
    const char* end;

    bool done() const { return at >= end; }
    char op() { return *at++; }
    const char* string() {
        const void* zero = std::memchr(at, 0, static_cast<size_t>(end - at));
        if (!zero) {
            at = end;
            return nullptr;
        }
        const char* text = at;
        at = static_cast<const char*>(zero) + 1;
        return text;
    }
};

namespace {

const char openTag = '<';
const char textNode = '"';
const char closeTag = '>';

std::string qualifiedName(xmlNode* element) {
    std::string name;
    if (element->ns && element->ns->prefix) {
        name = reinterpret_cast<const char*>(element->ns->prefix);
        name += ':';
    }
    return name + reinterpret_cast<const char*>(element->name);
}

void appendString(std::string& out, const xmlChar* text) {
    out += text ? reinterpret_cast<const char*>(text) : "";
    out += '\0';
}

// Aravis keeps the text of elements without element children; whitespace between elements it refuses.
void encode(xmlNode* element, std::string& out) {
    out += openTag;
    appendString(out, BAD_CAST qualifiedName(element).c_str());
    for (xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
        xmlChar* value = xmlNodeListGetString(element->doc, attribute->children, 1);
        appendString(out, attribute->name);
        appendString(out, value);
        xmlFree(value);
    }
    out += '\0';
    if (!hasElementChildren(element)) {
        xmlChar* content = xmlNodeGetContent(element);
        if (content && *content) {
            out += textNode;
            appendString(out, content);
        }
        xmlFree(content);
    }
    for (xmlNode* child = element->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE)
            encode(child, out);
    }
    out += closeTag;
}

// Every element below the root or its groups is a unit: a node, or a register structure whose entries are.
void encodeNodes(xmlNode* parent, std::string& units, std::vector<uint32_t>& offsets) {
    for (xmlNode* child = parent->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        if (xmlStrEqual(child->name, BAD_CAST "Group")) {
            encodeNodes(child, units, offsets);
        } else {
            offsets.push_back(static_cast<uint32_t>(units.size()));
            encode(child, units);
        }
    }
}

// The root element with its attributes and no children, which Aravis parses to start the document.
std::string rootElementText(xmlDoc* document) {
    std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> root(xmlNewDoc(BAD_CAST "1.0"), xmlFreeDoc);
    xmlDocSetRootElement(root.get(), xmlDocCopyNode(xmlDocGetRootElement(document), root.get(), 2));
    return documentText(root.get());
}

// Links Aravis follows when it evaluates a node; categories, selected features and invalidators it does not.
bool isFollowedLink(const char* tag) {
    return tag[0] == 'p' && tag[1] >= 'A' && tag[1] <= 'Z' && std::strcmp(tag, "pFeature") != 0 &&
           std::strcmp(tag, "pSelected") != 0 && std::strcmp(tag, "pInvalidator") != 0;
}

// Reads the attributes after a tag; the Name attribute, or null.
const char* readAttributes(SCursor& cursor, ArvDomElement* element) {
    const char* name = nullptr;
    while (!cursor.done()) {
        const char* attribute = cursor.string();
        if (!attribute || !*attribute)
            break;
        const char* value = cursor.string();
        if (!value)
            break;
        if (element)
            arv_dom_element_set_attribute(element, attribute, value);
        if (std::strcmp(attribute, "Name") == 0)
            name = value;
    }
    return name;
}

}  // namespace

CAravisDocument* CAravisDocument::fromDocument(xmlDoc* document) {
    std::unique_ptr<CAravisDocument> made(new CAravisDocument());
    made->m_RootText = rootElementText(document);
    encodeNodes(xmlDocGetRootElement(document), made->m_Units, made->m_Offsets);
    made->m_Made.assign(made->m_Offsets.size(), false);
    return made.release();
}

CAravisDocument* CAravisDocument::fromUnits(std::string rootText, std::string units,
                                            std::vector<uint32_t> offsets) {
    uint32_t previous = 0;
    for (uint32_t offset : offsets) {
        if (offset < previous || offset >= units.size())
            return nullptr;
        previous = offset;
    }
    std::unique_ptr<CAravisDocument> made(new CAravisDocument());
    made->m_RootText = std::move(rootText);
    made->m_Units = std::move(units);
    made->m_Offsets = std::move(offsets);
    made->m_Made.assign(made->m_Offsets.size(), false);
    return made.release();
}

CAravisDocument::CAravisDocument(ArvGc* complete) : m_Genicam(complete), m_Complete(true) {
    g_object_ref(m_Genicam);
}

CAravisDocument::~CAravisDocument() {
    if (m_Genicam)
        g_object_unref(m_Genicam);
}

bool CAravisDocument::attach(ArvDevice* device) {
    if (m_Complete)
        return true;
    const std::lock_guard<std::mutex> parsing(aravisLock());
    m_Genicam = arv_gc_new(device, m_RootText.data(), m_RootText.size());
    return m_Genicam != nullptr;
}

size_t CAravisDocument::madeUnits() const {
    size_t made = 0;
    for (bool unit : m_Made)
        made += unit ? 1 : 0;
    return made;
}

ArvGcNode* CAravisDocument::node(const std::string& name) {
    if (!m_Genicam)
        return nullptr;
    if (!m_Complete) {
        indexNames();
        const auto found = m_Definitions.find(name);
        if (found != m_Definitions.end())
            makeWithReferences(found->second);
    }
    return arv_gc_get_node(m_Genicam, name.c_str());
}

ArvGcNode* CAravisDocument::entry(const std::string& enumeration, const std::string& entry) {
    ArvGcNode* owner = node(enumeration);
    if (!owner || !ARV_IS_GC_ENUMERATION(owner))
        return nullptr;
    ArvGcNode* found = nullptr;
    for (const GSList* item = arv_gc_enumeration_get_entries(ARV_GC_ENUMERATION(owner)); item;
         item = item->next) {
        const char* entryName =
            arv_gc_feature_node_get_name(ARV_GC_FEATURE_NODE(item->data));  // null if nameless
        if (entryName && entry == entryName)
            found = ARV_GC_NODE(item->data);
    }
    return found;
}

// Enumeration entries are left out: Aravis finds them through their enumeration, and an entry's name
// (On, Off) must not take the place of a node of that name. Nothing inside an element Aravis does not know
// (an Extension, say, whose elements may carry Name attributes of their own) defines a node.
void CAravisDocument::indexNames() {
    if (m_Indexed)
        return;
    m_Indexed = true;
    for (uint32_t unit = 0; unit < m_Offsets.size(); ++unit) {
        SCursor cursor = unitCursor(unit);
        int depth = 0;
        int unknownDepth = 0;
        while (!cursor.done()) {
            const char op = cursor.op();
            if (op == openTag) {
                ++depth;
                const char* tag = cursor.string();
                const char* name = readAttributes(cursor, nullptr);
                if (unknownDepth > 0 || !tag || !knowsTag(tag))
                    ++unknownDepth;
                else if (name && std::strcmp(tag, "EnumEntry") != 0)
                    m_Definitions[name] = unit;
            } else if (op == textNode) {
                cursor.string();
            } else {
                --depth;
                unknownDepth = unknownDepth > 0 ? unknownDepth - 1 : 0;
            }
            if (depth <= 0)
                break;
        }
    }
}

bool CAravisDocument::knowsTag(const char* tag) {
    const auto known = m_KnownTags.find(tag);
    if (known != m_KnownTags.end())
        return known->second;
    ArvDomElement* element = arv_dom_document_create_element(ARV_DOM_DOCUMENT(m_Genicam), tag);
    if (element)
        g_object_unref(element);
    return m_KnownTags[tag] = element != nullptr;
}

SCursor CAravisDocument::unitCursor(size_t unit) const {
    const size_t end = unit + 1 < m_Offsets.size() ? m_Offsets[unit + 1] : m_Units.size();
    return SCursor{m_Units.data() + m_Offsets[unit], m_Units.data() + end};
}

void CAravisDocument::makeWithReferences(size_t first) {
    std::vector<size_t> work{first};
    std::vector<std::string> references;
    while (!work.empty()) {
        const size_t unit = work.back();
        work.pop_back();
        if (m_Made[unit])
            continue;
        references.clear();
        make(unit, references);
        for (const std::string& reference : references) {
            const auto found = m_Definitions.find(reference);
            if (found != m_Definitions.end() && !m_Made[found->second])
                work.push_back(found->second);
        }
    }
}

// Replays a unit as Aravis' parser builds a document: an element Aravis refuses is left out with
// everything inside it, attributes are set once the element is in the document.
void CAravisDocument::make(size_t unit, std::vector<std::string>& references) {
    m_Made[unit] = true;
    ArvDomDocument* document = ARV_DOM_DOCUMENT(m_Genicam);
    std::vector<ArvDomNode*> open{ARV_DOM_NODE(arv_dom_document_get_document_element(document))};
    std::vector<std::string> defined;
    SCursor cursor = unitCursor(unit);
    int refused = 0;  // depth inside a refused element
    bool followed = false;
    while (!cursor.done()) {
        const char op = cursor.op();
        if (op == openTag) {
            const char* tag = cursor.string();
            ArvDomElement* element = nullptr;
            if (!refused && tag && open.back()) {
                // A refused child is released by the append itself.
                element = arv_dom_document_create_element(document, tag);
                if (element && !arv_dom_node_append_child(open.back(), ARV_DOM_NODE(element)))
                    element = nullptr;
            }
            const char* name = readAttributes(cursor, element);
            if (!element) {
                ++refused;
                continue;
            }
            open.push_back(ARV_DOM_NODE(element));
            followed = isFollowedLink(tag);
            if (name && std::strcmp(tag, "EnumEntry") != 0 && ARV_IS_GC_FEATURE_NODE(element)) {
                const auto definition = m_Definitions.find(name);
                if (definition != m_Definitions.end() && definition->second == unit)
                    m_Winners[name] = ARV_GC_FEATURE_NODE(element);
                defined.emplace_back(name);
            } else if (name && std::strcmp(tag, "EnumEntry") == 0) {
                defined.emplace_back(name);
            }
        } else if (op == textNode) {
            const char* text = cursor.string();
            if (!refused && text && open.size() > 1) {
                arv_dom_node_append_child(open.back(),
                                          ARV_DOM_NODE(arv_dom_document_create_text_node(document, text)));
                if (followed)
                    references.emplace_back(text);
            }
        } else if (refused) {
            --refused;
        } else {
            open.pop_back();
            followed = false;
        }
        if (open.size() <= 1 && refused == 0)
            break;
    }
    registerWinners(defined);
}

// A name defined twice is registered by Aravis for the definition made last; the one Aravis' own parse
// leaves registered (the last in the document) takes it back.
void CAravisDocument::registerWinners(const std::vector<std::string>& defined) {
    for (const std::string& name : defined) {
        const auto winner = m_Winners.find(name);
        if (winner != m_Winners.end() &&
            ARV_GC_NODE(winner->second) != arv_gc_get_node(m_Genicam, name.c_str()))
            arv_gc_register_feature_node(m_Genicam, winner->second);
    }
}

}  // namespace GenApiEngine
