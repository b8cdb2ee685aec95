// Aravis' model of a description, made one node at a time: a node and everything it reads are handed to
// Aravis the first time the engine asks for the node, instead of building all of them when a description
// is loaded, since a map typically uses a small part of a large description.
#ifndef GENAPI_ENGINE_ARAVISDOCUMENT_H
#define GENAPI_ENGINE_ARAVISDOCUMENT_H

#include <arv.h>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

struct _xmlDoc;

namespace GenApiEngine {

struct SCursor;

class CAravisDocument {
public:
    // The node elements of a parsed description (as the engine edited it for Aravis), kept in a compact
    // form until they are asked for.
    static CAravisDocument* fromDocument(_xmlDoc* document);
    // The same from the form units() and rootText() gave; false when the form is malformed.
    static CAravisDocument* fromUnits(std::string rootText, std::string units, std::vector<uint32_t> offsets);
    // A document Aravis parsed completely (a device Aravis opened); holds a reference to it.
    explicit CAravisDocument(ArvGc* complete);
    ~CAravisDocument();
    CAravisDocument(const CAravisDocument&) = delete;
    CAravisDocument& operator=(const CAravisDocument&) = delete;

    // Creates the Aravis document over the device that serves its ports; required before node().
    bool attach(ArvDevice* device);
    ArvGc* genicam() const { return m_Genicam; }
    // Aravis' node of a name, made with everything it reads first; null when Aravis has none.
    ArvGcNode* node(const std::string& name);
    // Aravis' entry of an enumeration.
    ArvGcNode* entry(const std::string& enumeration, const std::string& entry);
    // How many node elements are made so far, and how many there are (both 0 for a complete document).
    size_t madeUnits() const;
    size_t unitCount() const { return m_Offsets.size(); }

    // The compact form, for the description cache: the root element without children, and each node
    // element's encoding with where it starts.
    const std::string& rootText() const { return m_RootText; }
    const std::string& units() const { return m_Units; }
    const std::vector<uint32_t>& offsets() const { return m_Offsets; }

private:
    CAravisDocument() = default;
    void indexNames();
    bool knowsTag(const char* tag);
    SCursor unitCursor(size_t unit) const;
    void makeWithReferences(size_t unit);
    void make(size_t unit, std::vector<std::string>& references);
    void registerWinners(const std::vector<std::string>& defined);

    ArvGc* m_Genicam = nullptr;
    bool m_Complete = false;
    std::string m_RootText;
    std::string m_Units;
    std::vector<uint32_t> m_Offsets;
    std::vector<bool> m_Made;
    // The unit that defines each name last, as Aravis' own parse would leave it registered.
    std::unordered_map<std::string, uint32_t> m_Definitions;
    std::unordered_map<std::string, ArvGcFeatureNode*> m_Winners;
    std::unordered_map<std::string, bool> m_KnownTags;
    bool m_Indexed = false;
};

}  // namespace GenApiEngine

#endif
