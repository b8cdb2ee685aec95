// Which nodes each selector selects, and which selectors select each node, as GenApi lists them.
#ifndef GENAPI_ENGINE_SELECTORLINKS_H
#define GENAPI_ENGINE_SELECTORLINKS_H

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace GenApiEngine {

class CNodeBase;
class CXmlIndex;

class CSelectorLinks {
public:
    // Links every selector of the description; `node` finds the map's node of a name (null for none).
    void link(const CXmlIndex& index, const std::function<CNodeBase*(const std::string&)>& node);

    // A selector's pSelected nodes, then every node that reads one of them, breadth first.
    const std::vector<CNodeBase*>& selectedBy(const CNodeBase* selector) const;
    // The selectors that name the node in pSelected, then those that reach it through others.
    const std::vector<CNodeBase*>& selectorsOf(const CNodeBase* node) const;

private:
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_Selected;
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_Selecting;
};

}  // namespace GenApiEngine

#endif
