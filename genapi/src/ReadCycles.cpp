// A depth-first walk over the reading links of every node; a link back into the current path is a cycle.
#include "ReadCycles.h"
#include <Base/GCException.h>
#include <unordered_map>

namespace GenApiEngine {

bool isReadingLink(const std::string& property) {
    if (property.size() < 4 || property[0] != 'p')
        return false;
    static const char* const links[] = {"pValue",        "pMin",          "pMax",           "pInc",
                                        "pVariable",     "pIndex",        "pAddress",       "pLength",
                                        "pValueIndexed", "pValueDefault", "pIsImplemented", "pIsAvailable",
                                        "pIsLocked",     "pCommandValue"};
    for (const char* link : links) {
        if (property == link)
            return true;
    }
    return false;
}

namespace {

enum class EVisit { NotSeen, OnPath, Done };

class CCycleSearch {
public:
    explicit CCycleSearch(const CXmlIndex& index) : m_Index(index) {}

    std::vector<std::string> run() {
        for (const SNodeDescription& node : m_Index.nodes()) {
            if (visit(node.name))
                return m_Cycle;
        }
        return {};
    }

private:
    // True once a cycle is found; m_Path holds the nodes from the start down to the current one.
    bool visit(const std::string& name) {
        EVisit& state = m_State[name];
        if (state == EVisit::Done)
            return false;
        if (state == EVisit::OnPath) {
            closeCycle(name);
            return true;
        }
        const SNodeDescription* node = m_Index.find(name);
        if (!node) {
            state = EVisit::Done;
            return false;
        }
        state = EVisit::OnPath;
        m_Path.push_back(name);
        for (const SProperty& property : node->properties) {
            if (isReadingLink(property.name) && !property.value.empty() && visit(property.value))
                return true;
        }
        m_Path.pop_back();
        m_State[name] = EVisit::Done;
        return false;
    }

    void closeCycle(const std::string& name) {
        auto start = m_Path.begin();
        while (*start != name)
            ++start;
        m_Cycle.assign(start, m_Path.end());
        m_Cycle.push_back(name);
    }

    const CXmlIndex& m_Index;
    std::unordered_map<std::string, EVisit> m_State;
    std::vector<std::string> m_Path;
    std::vector<std::string> m_Cycle;
};

}  // namespace

std::vector<std::string> findReadCycle(const CXmlIndex& index) {
    return CCycleSearch(index).run();
}

void refuseReadCycles(const CXmlIndex& index) {
    const std::vector<std::string> cycle = findReadCycle(index);
    if (cycle.empty())
        return;
    std::string text = "read cycle detected : ";
    for (size_t i = 0; i < cycle.size(); ++i)
        text += (i ? " -> " : "") + cycle[i];
    throw RUNTIME_EXCEPTION("%s", text.c_str());
}

}  // namespace GenApiEngine
