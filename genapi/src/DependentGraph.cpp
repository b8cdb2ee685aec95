// Builds the dependents of every node once and answers closures over them.
#include "DependentGraph.h"
#include "XmlIndex.h"
#include <algorithm>

namespace GenApiEngine {

CDependentGraph::CDependentGraph(const CXmlIndex& index) : m_Index(index) {
    const std::vector<SNodeDescription>& nodes = index.nodes();
    for (const SNodeDescription& node : nodes)
        addVertex(node.name, node.rank);
    for (const SNodeDescription& node : nodes) {
        if (isConverter(node.tag)) {
            addVertex(node.name + convertToSuffix, node.convertRank);
            addVertex(node.name + convertFromSuffix, node.convertRank + 1);
        }
    }
    uint32_t formulaNode = static_cast<uint32_t>(nodes.size());
    for (uint32_t self = 0; self < nodes.size(); ++self) {
        const SNodeDescription& node = nodes[self];
        for (const SProperty& property : node.properties) {
            if (property.name.empty() || property.name[0] != 'p')
                continue;
            const uint32_t target = idOf(property.value);
            if (target == none)
                continue;
            if (property.name == "pSelected")
                link(self, target);
            else
                link(target, self);
        }
        for (const std::string& entry : node.entries)
            link(idOf(entry), self);
        if (!isConverter(node.tag))
            continue;
        for (const uint32_t formula : {formulaNode, formulaNode + 1}) {
            link(formula, self);
            for (const std::string& variable : node.values("pVariable"))
                link(idOf(variable), formula);
        }
        formulaNode += 2;
    }
}

uint32_t CDependentGraph::idOf(const std::string& name) const {
    const SNodeDescription* node = m_Index.find(name);
    return node ? static_cast<uint32_t>(node - m_Index.nodes().data()) : none;
}

void CDependentGraph::addVertex(const std::string& name, uint32_t rank) {
    m_Names.push_back(name);
    m_Ranks.push_back(rank);
    m_Dependents.emplace_back();
}

void CDependentGraph::link(uint32_t node, uint32_t dependent) {
    if (node == none || node == dependent)
        return;
    std::vector<uint32_t>& dependents = m_Dependents[node];
    if (std::find(dependents.begin(), dependents.end(), dependent) == dependents.end())
        dependents.push_back(dependent);
}

bool CDependentGraph::hasDependents(const std::string& name) const {
    const uint32_t node = idOf(name);
    return node != none && !m_Dependents[node].empty();
}

std::vector<std::string> CDependentGraph::dependentsOf(const std::string& name) const {
    const uint32_t start = idOf(name);
    if (start == none)
        return {};
    std::vector<bool> seen(m_Names.size(), false);
    seen[start] = true;
    std::vector<uint32_t> reached;
    std::vector<uint32_t> pending{start};
    while (!pending.empty()) {
        const uint32_t node = pending.back();
        pending.pop_back();
        for (const uint32_t dependent : m_Dependents[node]) {
            if (seen[dependent])
                continue;
            seen[dependent] = true;
            reached.push_back(dependent);
            pending.push_back(dependent);
        }
    }
    std::sort(reached.begin(), reached.end(),
              [this](uint32_t a, uint32_t b) { return m_Ranks[a] > m_Ranks[b]; });
    std::vector<std::string> names;
    names.reserve(reached.size());
    for (const uint32_t node : reached)
        names.push_back(m_Names[node]);
    return names;
}

}  // namespace GenApiEngine
