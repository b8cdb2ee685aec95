// The link table of a node map: every pointer property of every node given its role once, when the
// description loads, and what the map derives from it (dependents, conditions, invalidators, reach).
#ifndef GENAPI_ENGINE_NODELINKS_H
#define GENAPI_ENGINE_NODELINKS_H

#include <GenApi/Types.h>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace GenApiEngine {

class CNodeBase;

class CNodeLinks {
public:
    using FNodeByName = std::function<CNodeBase*(const std::string&)>;

    // Links every node to the nodes its pointers, entries and constants name; registers at one fixed
    // address of one port depend on each other.
    CNodeLinks(const std::vector<std::unique_ptr<CNodeBase>>& nodes, FNodeByName nodeByName);

    // The nodes that read a node, name it as their pInvalidator or are selected by it.
    const std::vector<CNodeBase*>& dependents(const CNodeBase* node) const;
    // The nodes a node reads.
    const std::vector<CNodeBase*>& references(const CNodeBase* node) const;
    // The nodes that name a node as their pInvalidator.
    const std::vector<CNodeBase*>& invalidatedBy(const CNodeBase* node) const;
    // The nodes whose value is computed from a node's (pValue, pVariable, pIndex, ...).
    std::vector<CNodeBase*> valueSources(const CNodeBase* node) const;
    // The register nodes a node reads, directly or through other nodes; ports excluded.
    // With valueOnly, only through the pointers the value is computed from.
    std::vector<const CNodeBase*> registersBehind(const CNodeBase* node, bool valueOnly) const;

    // The node and the nodes its value goes to through pValue, link by link, each once.
    std::vector<CNodeBase*> valueChain(CNodeBase* node) const;
    bool inValueChain(CNodeBase* node, const CNodeBase* target) const;
    // The nodes GenApi lists for a node under a link type (INode::GetChildren), each once.
    std::vector<CNodeBase*> linked(const CNodeBase* node, GenApi::ELinkType type) const;

    // The changed node and everything that depends on it, and for a write also what its value is written
    // to and what depends on that; worked out once per node, since the links never change.
    const std::vector<CNodeBase*>& changedWith(CNodeBase* node, bool written) const;
    // The nodes whose access a change of a node's value reaches: those it is a condition of, and
    // everything that reads them. A node's access never depends on its own value.
    const std::vector<CNodeBase*>& accessChangedWith(CNodeBase* node) const;

private:
    void link(CNodeBase* from, CNodeBase* to);
    void linkPointers(CNodeBase* node);
    // Depending nodes upwards through the dependents, terminal nodes downwards through the references.
    void walk(const CNodeBase* node, bool upwards, std::vector<CNodeBase*>& found) const;
    void collectChanged(CNodeBase* node, bool written, std::vector<CNodeBase*>& changed) const;

    FNodeByName m_NodeByName;
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_Dependents;
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_References;
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_InvalidatedBy;
    // The nodes that name a node as their pIsImplemented, pIsAvailable or pIsLocked.
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_ConditionOf;
    // The categories that list a feature: its parents too, though they read nothing of it.
    std::map<const CNodeBase*, std::vector<CNodeBase*>> m_ListedBy;
};

}  // namespace GenApiEngine

#endif
