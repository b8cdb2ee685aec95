// Builds the dependents of every node once and answers closures over them.
#include "DependentGraph.h"
#include "NodeBase.h"
#include "XmlIndex.h"
#include <algorithm>
#include <set>

namespace GenApiEngine {

CDependentGraph::CDependentGraph(const CXmlIndex& index) : m_Index(index) {
    const std::vector<SNodeDescription>& nodes = index.nodes();
    m_Dependents.resize(nodes.size());
    for (uint32_t self = 0; self < nodes.size(); ++self) {
        const SNodeDescription& node = nodes[self];
        for (const SProperty& property : node.properties) {
            if (property.name == "Constant")
                link(idOf(constantNodeName(node, property)), self);
            // An alias names another node for the user; it reads nothing from it.
            if (property.name.empty() || property.name[0] != 'p' || property.name == "pAlias" ||
                property.name == "pCastAlias")
                continue;
            const uint32_t target = idOf(property.value);
            if (property.name == "pSelected")
                link(self, target);
            else
                link(target, self);
        }
        for (const std::string& entry : node.entries)
            link(idOf(entry), self);
        // A converter depends on the formula nodes the description implies for it.
        if (isConverter(node.tag)) {
            link(idOf(node.name + convertToSuffix), self);
            link(idOf(node.name + convertFromSuffix), self);
        }
    }
}

uint32_t CDependentGraph::idOf(const std::string& name) const {
    const SNodeDescription* node = m_Index.find(name);
    return node ? static_cast<uint32_t>(node - m_Index.nodes().data()) : none;
}

void CDependentGraph::link(uint32_t node, uint32_t dependent) {
    if (node == none || dependent == none || node == dependent)
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
    std::vector<bool> seen(m_Dependents.size(), false);
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
    const std::vector<SNodeDescription>& nodes = m_Index.nodes();
    std::sort(reached.begin(), reached.end(),
              [&nodes](uint32_t a, uint32_t b) { return nodes[a].rank > nodes[b].rank; });
    std::vector<std::string> names;
    names.reserve(reached.size());
    for (const uint32_t node : reached)
        names.push_back(nodes[node].name);
    return names;
}

std::vector<std::string> CDependentGraph::terminalsOf(const std::string& name) const {
    const SNodeDescription* start = m_Index.find(name);
    if (!start)
        return {};
    std::vector<const SNodeDescription*> found;
    std::set<const SNodeDescription*> visited;
    std::vector<const SNodeDescription*> pending{start};
    while (!pending.empty()) {
        const SNodeDescription& node = *pending.back();
        pending.pop_back();
        if (!visited.insert(&node).second)
            continue;
        if (isRegisterKind(node.tag) || node.tag == "EnumEntry") {
            found.push_back(&node);
            continue;
        }
        bool linked = false;
        for (const SProperty& property : node.properties) {
            if (property.name == "pValue" || property.name == "pValueIndexed" ||
                property.name == "pValueDefault" || property.name == "pValueCopy") {
                if (const SNodeDescription* target = m_Index.find(property.value)) {
                    pending.push_back(target);
                    linked = true;
                }
            }
        }
        const bool holdsValue = node.has("Value") || node.has("ValueIndexed") || node.has("ValueDefault");
        if (!linked && holdsValue && node.tag != "IntSwissKnife" && node.tag != "SwissKnife")
            found.push_back(&node);
    }
    // GenApi keeps them in the order its nodes were made.
    std::sort(found.begin(), found.end(),
              [](const SNodeDescription* a, const SNodeDescription* b) { return a->rank < b->rank; });
    std::vector<std::string> names;
    names.reserve(found.size());
    for (const SNodeDescription* node : found)
        names.push_back(node->name);
    return names;
}

std::vector<std::string> CDependentGraph::calledBackWith(const std::string& name, bool written) const {
    std::vector<std::string> names;
    std::set<std::string> seen;
    const auto add = [&](const std::string& changed) {
        if (seen.insert(changed).second)
            names.push_back(changed);
        for (std::string& dependent : dependentsOf(changed)) {
            if (seen.insert(dependent).second)
                names.push_back(std::move(dependent));
        }
    };
    add(name);
    if (written) {
        for (const std::string& terminal : terminalsOf(name))
            add(terminal);
    }
    return names;
}

}  // namespace GenApiEngine
