// Selector links: GenApi's selected and selecting lists, worked out once when the description loads.
#include "SelectorLinks.h"
#include "NodeBase.h"
#include "ReadCycles.h"
#include "XmlIndex.h"
#include <algorithm>

namespace GenApiEngine {
namespace {

void addUnique(std::vector<CNodeBase*>& list, CNodeBase* node) {
    if (std::find(list.begin(), list.end(), node) == list.end())
        list.push_back(node);
}

// Every node that reads each name through a reading link, in the order GenApi made them.
std::map<std::string, std::vector<const SNodeDescription*>> readersOf(const CXmlIndex& index) {
    std::map<std::string, std::vector<const SNodeDescription*>> readers;
    for (const SNodeDescription& description : index.nodes()) {
        for (const SProperty& property : description.properties) {
            if (isReadingLink(property.name))
                readers[property.value].push_back(&description);
        }
    }
    for (auto& entry : readers) {
        std::vector<const SNodeDescription*>& list = entry.second;
        std::stable_sort(list.begin(), list.end(), [](const SNodeDescription* a, const SNodeDescription* b) {
            return a->rank < b->rank;
        });
        list.erase(std::unique(list.begin(), list.end()), list.end());
    }
    return readers;
}

}  // namespace

// GenApi extends a selector's pSelected nodes by every node that reads one of them, and so on: breadth
// first, each node's readers in the order GenApi made them. A selector of registers so also selects the
// features over them, and the formulas that read a selected value.
void CSelectorLinks::link(const CXmlIndex& index, const std::function<CNodeBase*(const std::string&)>& node) {
    std::map<std::string, std::vector<const SNodeDescription*>> readers = readersOf(index);
    std::vector<CNodeBase*> selectors;
    for (const SNodeDescription& description : index.nodes()) {
        const std::vector<std::string> targets = description.values("pSelected");
        CNodeBase* selector = node(description.name);
        if (!selector || targets.empty())
            continue;
        selectors.push_back(selector);
        std::vector<CNodeBase*>& selected = m_Selected[selector];
        for (const std::string& target : targets)
            if (CNodeBase* direct = node(target))
                addUnique(selected, direct);
        for (size_t next = 0; next < selected.size(); ++next) {
            for (const SNodeDescription* reader : readers[selected[next]->name()]) {
                CNodeBase* readerNode = node(reader->name);
                if (readerNode && readerNode != selector)
                    addUnique(selected, readerNode);
            }
        }
    }
    // A node lists the selectors that name it in pSelected before those that select it through others.
    for (const bool named : {true, false}) {
        for (CNodeBase* selector : selectors) {
            const std::vector<std::string> targets = selector->description().values("pSelected");
            for (CNodeBase* feature : selectedBy(selector)) {
                const bool isNamed =
                    std::find(targets.begin(), targets.end(), feature->name()) != targets.end();
                if (isNamed == named)
                    addUnique(m_Selecting[feature], selector);
            }
        }
    }
}

const std::vector<CNodeBase*>& CSelectorLinks::selectedBy(const CNodeBase* selector) const {
    static const std::vector<CNodeBase*> none;
    const auto found = m_Selected.find(selector);
    return found == m_Selected.end() ? none : found->second;
}

const std::vector<CNodeBase*>& CSelectorLinks::selectorsOf(const CNodeBase* node) const {
    static const std::vector<CNodeBase*> none;
    const auto found = m_Selecting.find(node);
    return found == m_Selecting.end() ? none : found->second;
}

}  // namespace GenApiEngine
