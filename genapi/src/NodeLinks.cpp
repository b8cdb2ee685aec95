// Gives every pointer property its role once and walks the links for the reach of a change.
#include "NodeLinks.h"
#include "NodeBase.h"
#include "XmlIndex.h"
#include <algorithm>
#include <set>

namespace GenApiEngine {
namespace {

const std::vector<CNodeBase*> noNodes;

// Pointers that only structure the description and carry no value dependency.
bool isStructuralPointer(const std::string& property) {
    return property == "pFeature" || property == "pAlias" || property == "pCastAlias" || property == "pError";
}

bool isConditionPointer(const std::string& property) {
    return property == "pIsImplemented" || property == "pIsAvailable" || property == "pIsLocked";
}

void addUnique(std::vector<CNodeBase*>& list, CNodeBase* node) {
    if (std::find(list.begin(), list.end(), node) == list.end())
        list.push_back(node);
}

void appendUnique(std::vector<CNodeBase*>& list, std::set<CNodeBase*>& seen, CNodeBase* node) {
    if (node && seen.insert(node).second)
        list.push_back(node);
}

const std::vector<CNodeBase*>& listOf(const std::map<const CNodeBase*, std::vector<CNodeBase*>>& lists,
                                      const CNodeBase* node) {
    const auto found = lists.find(node);
    return found == lists.end() ? noNodes : found->second;
}

}  // namespace

CNodeLinks::CNodeLinks(const std::vector<std::unique_ptr<CNodeBase>>& nodes, FNodeByName nodeByName)
    : m_NodeByName(std::move(nodeByName)) {
    std::map<std::string, std::vector<CNodeBase*>> registersByAddress;
    for (const std::unique_ptr<CNodeBase>& owner : nodes) {
        CNodeBase* node = owner.get();
        linkPointers(node);
        const SNodeDescription& description = node->description();
        if (isRegisterKind(description.tag) && description.has("Address") && !description.has("pAddress") &&
            !description.has("pIndex")) {
            registersByAddress[description.value("pPort") + "|" + description.value("Address")].push_back(
                node);
        }
    }
    for (auto& group : registersByAddress) {
        for (CNodeBase* a : group.second) {
            for (CNodeBase* b : group.second) {
                if (a != b)
                    addUnique(m_Dependents[a], b);
            }
        }
    }
}

void CNodeLinks::link(CNodeBase* from, CNodeBase* to) {
    addUnique(m_References[from], to);
    addUnique(m_Dependents[to], from);
}

// A node reads what its pointers, its entries and its formula's constants name; a selector's selected
// nodes and a pInvalidator's target depend on it without being read.
void CNodeLinks::linkPointers(CNodeBase* node) {
    const SNodeDescription& description = node->description();
    for (const SProperty& property : description.properties) {
        if (property.name.size() < 2 || property.name[0] != 'p' || isStructuralPointer(property.name))
            continue;
        CNodeBase* target = m_NodeByName(property.value);
        if (!target || target == node)
            continue;
        if (isConditionPointer(property.name))
            addUnique(m_ConditionOf[target], node);
        if (property.name == "pSelected") {
            addUnique(m_Dependents[node], target);
        } else if (property.name == "pInvalidator") {
            addUnique(m_Dependents[target], node);
            addUnique(m_InvalidatedBy[target], node);
        } else {
            link(node, target);
        }
    }
    for (const std::string& entryName : description.entries) {
        if (CNodeBase* entry = m_NodeByName(entryName))
            link(node, entry);
    }
    for (const std::string& featureName : description.values("pFeature")) {
        if (CNodeBase* feature = m_NodeByName(featureName))
            addUnique(m_ListedBy[feature], node);
    }
    for (const SProperty& property : description.properties) {
        if (property.name != "Constant")
            continue;
        if (CNodeBase* constant = m_NodeByName(constantNodeName(description, property)))
            link(node, constant);
    }
}

const std::vector<CNodeBase*>& CNodeLinks::dependents(const CNodeBase* node) const {
    return listOf(m_Dependents, node);
}

const std::vector<CNodeBase*>& CNodeLinks::references(const CNodeBase* node) const {
    return listOf(m_References, node);
}

const std::vector<CNodeBase*>& CNodeLinks::invalidatedBy(const CNodeBase* node) const {
    return listOf(m_InvalidatedBy, node);
}

std::vector<CNodeBase*> CNodeLinks::valueSources(const CNodeBase* node) const {
    std::vector<CNodeBase*> sources;
    for (const SProperty& property : node->description().properties) {
        if (!isValuePointer(property.name))
            continue;
        if (CNodeBase* source = m_NodeByName(property.value))
            sources.push_back(source);
    }
    return sources;
}

std::vector<const CNodeBase*> CNodeLinks::registersBehind(const CNodeBase* node, bool valueOnly) const {
    std::vector<const CNodeBase*> registers;
    std::vector<const CNodeBase*> work{node};
    std::set<const CNodeBase*> seen{node};
    while (!work.empty()) {
        const CNodeBase* current = work.back();
        work.pop_back();
        if (isRegisterKind(current->description().tag))
            registers.push_back(current);
        for (const CNodeBase* child : valueOnly ? valueSources(current) : references(current)) {
            if (child->description().tag != "Port" && seen.insert(child).second)
                work.push_back(child);
        }
    }
    return registers;
}

std::vector<CNodeBase*> CNodeLinks::valueChain(CNodeBase* node) const {
    std::vector<CNodeBase*> chain{node};
    for (CNodeBase* current = node; current->description().has("pValue");) {
        current = m_NodeByName(current->description().value("pValue"));
        if (!current || std::find(chain.begin(), chain.end(), current) != chain.end())
            break;
        chain.push_back(current);
    }
    return chain;
}

// Asked on every write, so the chain is worked out once per node.
bool CNodeLinks::inValueChain(CNodeBase* node, const CNodeBase* target) const {
    if (node == target)
        return true;
    CNodeBase::SReach& reach = node->reach();
    if (!reach.chainKnown) {
        reach.chain = valueChain(node);
        reach.chainKnown = true;
    }
    return std::find(reach.chain.begin(), reach.chain.end(), target) != reach.chain.end();
}

std::vector<CNodeBase*> CNodeLinks::linked(const CNodeBase* node, GenApi::ELinkType type) const {
    using namespace GENAPI_NAMESPACE;
    const SNodeDescription& description = node->description();
    std::vector<CNodeBase*> found;
    std::set<CNodeBase*> seen;
    auto pointee = [&](const char* property) {
        return description.has(property) ? m_NodeByName(description.value(property)) : nullptr;
    };
    switch (type) {
        case ctParentNodes:
            for (CNodeBase* parent : dependents(node))
                appendUnique(found, seen, parent);
            for (CNodeBase* category : listOf(m_ListedBy, node))
                appendUnique(found, seen, category);
            break;
        case ctReadingChildren:
            // A category reads its features, in the order it lists them.
            for (const std::string& featureName : description.values("pFeature"))
                appendUnique(found, seen, m_NodeByName(featureName));
            for (CNodeBase* child : references(node))
                appendUnique(found, seen, child);
            break;
        case ctWritingChildren:
            appendUnique(found, seen, pointee("pValue"));
            if (isRegisterKind(description.tag))
                appendUnique(found, seen, pointee("pPort"));
            break;
        case ctInvalidatingChildren:
            for (const std::string& target : description.values("pInvalidator"))
                appendUnique(found, seen, m_NodeByName(target));
            break;
        case ctValueChangingChildren:
            for (CNodeBase* source : valueSources(node))
                appendUnique(found, seen, source);
            break;
        case ctDependingNodes:
        case ctTerminalNodes:
            walk(node, type == ctDependingNodes, found);
            break;
    }
    return found;
}

void CNodeLinks::walk(const CNodeBase* node, bool upwards, std::vector<CNodeBase*>& found) const {
    std::set<CNodeBase*> seen;
    std::vector<const CNodeBase*> work{node};
    std::set<const CNodeBase*> visited{node};
    while (!work.empty()) {
        const CNodeBase* current = work.back();
        work.pop_back();
        const std::vector<CNodeBase*>& next = upwards ? dependents(current) : references(current);
        if (!upwards && next.empty() && current != node)
            appendUnique(found, seen, const_cast<CNodeBase*>(current));
        for (CNodeBase* reached : next) {
            if (!visited.insert(reached).second)
                continue;
            if (upwards)
                appendUnique(found, seen, reached);
            work.push_back(reached);
        }
    }
}

void CNodeLinks::collectChanged(CNodeBase* node, bool written, std::vector<CNodeBase*>& changed) const {
    std::vector<CNodeBase*> work = written ? valueChain(node) : std::vector<CNodeBase*>{node};
    std::set<CNodeBase*> seen(work.begin(), work.end());
    while (!work.empty()) {
        CNodeBase* current = work.back();
        work.pop_back();
        changed.push_back(current);
        for (CNodeBase* dependent : dependents(current)) {
            if (seen.insert(dependent).second)
                work.push_back(dependent);
        }
    }
}

const std::vector<CNodeBase*>& CNodeLinks::changedWith(CNodeBase* node, bool written) const {
    CNodeBase::SReach& reach = node->reach();
    if (!reach.changedKnown[written]) {
        collectChanged(node, written, reach.changed[written]);
        reach.changedKnown[written] = true;
    }
    return reach.changed[written];
}

const std::vector<CNodeBase*>& CNodeLinks::accessChangedWith(CNodeBase* node) const {
    CNodeBase::SReach& reach = node->reach();
    if (reach.accessKnown)
        return reach.access;
    std::set<CNodeBase*> seen;
    for (CNodeBase* target : listOf(m_ConditionOf, node)) {
        for (CNodeBase* affected : changedWith(target, true)) {
            if (seen.insert(affected).second)
                reach.access.push_back(affected);
        }
    }
    reach.accessKnown = true;
    return reach.access;
}

}  // namespace GenApiEngine
