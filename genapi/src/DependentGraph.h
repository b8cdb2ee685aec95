// Which nodes depend on a node, directly or through others, as GenApi lists them in a node's pDependent.
#ifndef GENAPI_ENGINE_DEPENDENTGRAPH_H
#define GENAPI_ENGINE_DEPENDENTGRAPH_H

#include <cstdint>
#include <string>
#include <vector>

namespace GenApiEngine {

class CXmlIndex;

// A node depends on every node its pointer elements but pAlias name (pValue, pFeature, pInvalidator, ...); a
// node named by pSelected depends on its selector instead; an enumeration depends on its entries, a
// converter on its two formula nodes and an integer formula on the nodes of its constants.
class CDependentGraph {
public:
    explicit CDependentGraph(const CXmlIndex& index);

    // Every node that depends on the named one, nearest first in GenApi's numbering: the names defined or
    // pointed to last in the description come first. Empty for a name the description does not define.
    std::vector<std::string> dependentsOf(const std::string& name) const;
    bool hasDependents(const std::string& name) const;
    // The registers (or nodes holding their own value) at the end of a node's value chain along pValue,
    // pValueIndexed, pValueDefault and pValueCopy, each once, in GenApi's numbering: its pTerminal.
    std::vector<std::string> terminalsOf(const std::string& name) const;
    // The nodes GenApi calls back when a node changes: the node and its dependents. A write changes the
    // registers at the end of the written node's value chain too, and they come with their dependents.
    std::vector<std::string> calledBackWith(const std::string& name, bool written) const;

private:
    uint32_t idOf(const std::string& name) const;
    void link(uint32_t node, uint32_t dependent);

    static constexpr uint32_t none = UINT32_MAX;
    const CXmlIndex& m_Index;
    std::vector<std::vector<uint32_t>> m_Dependents;
};

}  // namespace GenApiEngine

#endif
