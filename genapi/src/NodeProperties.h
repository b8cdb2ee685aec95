// A node's properties as GenApi lists them: the description's elements in GenApi's text forms, the
// defaults GenApi fills in, and the links it works out (pDependent, pTerminal, pSelecting, ...).
#ifndef GENAPI_ENGINE_NODEPROPERTIES_H
#define GENAPI_ENGINE_NODEPROPERTIES_H

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace GenApiEngine {

class CNodeBase;
struct SNodeDescription;

class CNodeProperties {
public:
    // Works out what the description and the node's kind decide; what depends on the node's state
    // (visibility, caching mode, dependents, terminals, slope) is worked out each time it is asked for. The
    // map lock must be held.
    explicit CNodeProperties(const CNodeBase& node);
    // Deferred values refer to the object that made them.
    CNodeProperties(const CNodeProperties&) = delete;
    CNodeProperties& operator=(const CNodeProperties&) = delete;

    bool describes(const CNodeBase& node) const { return &m_Node == &node; }
    // The names in GenApi's order (alphabetical).
    std::vector<std::string> names() const;
    // False for a name the node does not have, and for one it lists without a value (an entry's
    // DeviceName).
    bool get(const std::string& name, std::string& value, std::string& attribute) const;

private:
    // A value that costs a walk or an evaluation is worked out only when asked for; one that is not
    // listedWhenEmpty is listed only when it has a value.
    struct SEntry {
        std::string value;
        std::string attribute;
        bool defined = true;
        std::function<std::string()> deferred;
        bool listedWhenEmpty = true;
    };

    void addDescribed();
    void addCommon();
    void addKindDefaults();
    void addLinks();
    void set(const std::string& name, const std::string& value, const std::string& attribute = std::string());
    void setDefault(const std::string& name, const std::string& value);
    void setList(const std::string& name, const std::vector<std::string>& values);
    void defer(const std::string& name, std::function<std::string()> work, bool listedWhenEmpty = true);
    bool has(const std::string& name) const { return m_Entries.count(name) != 0; }
    std::string textForm(const std::string& property, const std::string& value) const;
    bool isFloatKind() const;
    std::string automaticSlope() const;
    std::vector<std::string> terminals() const;

    const CNodeBase& m_Node;
    const SNodeDescription& m_Description;
    std::map<std::string, SEntry> m_Entries;
};

}  // namespace GenApiEngine

#endif
