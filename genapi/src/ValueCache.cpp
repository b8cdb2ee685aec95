// Keeps register bytes and node values valid until a write or an invalidation reaches them.
#include "ValueCache.h"
#include "NodeBase.h"
#include "PortRouting.h"
#include "TextForms.h"
#include "XmlIndex.h"
#include <Base/GCUtilities.h>
#include <algorithm>

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {
namespace {
const bool verifyingCache =
    GENICAM_NAMESPACE::GetValueOfEnvironmentVariable("GENAPI_ENGINE_VERIFY_CACHE") == "1";

// A register's address is the sum of its Address elements when it has no computed part.
bool constantAddress(const SNodeDescription& d, int64_t& address) {
    const std::vector<std::string> parts = d.values("Address");
    address = 0;
    for (const std::string& part : parts) {
        int64_t value = 0;
        if (!textToInteger(part, value))
            return false;
        address += value;
    }
    return !parts.empty();
}

// An address computed from nodes (pAddress, pIndex) over a constant length.
bool computedPlace(const CNodeBase& reg) {
    const SNodeDescription& d = reg.description();
    return !d.has("pLength") && (d.has("pAddress") || d.has("pIndex"));
}

}  // namespace

CValueCache::CValueCache(const CNodeLinks& links, bool throughCache)
    : m_Links(links), m_ThroughCache(throughCache) {}

bool CValueCache::verifying() {
    return verifyingCache;
}

bool CValueCache::keeping() {
    static const bool keeps =
        GENICAM_NAMESPACE::GetValueOfEnvironmentVariable("GENAPI_ENGINE_VALUE_CACHE") != "0";
    return keeps;
}

void CValueCache::addRules(const std::vector<std::unique_ptr<CNodeBase>>& nodes,
                           const SPortRouting& routing) {
    for (const std::unique_ptr<CNodeBase>& owner : nodes) {
        const SNodeDescription& d = owner->description();
        int64_t address = 0;
        int64_t length = 0;
        if (!isRegisterKind(d.tag) || d.has("pAddress") || !constantAddress(d, address) ||
            !textToInteger(d.value("Length"), length))
            continue;
        int64_t stride = 0;
        for (const SProperty& property : d.properties) {
            if (property.name == "pIndex" && !indexStep(property, length, stride))
                stride = -1;
        }
        if (stride < 0)
            continue;
        const ECachingMode mode = owner->GetCachingMode();
        address += routing.offsetOf(d.value("pPort"));
        m_Rules[owner.get()] = m_Registers.addRule(SCacheRule{address, length, stride, mode});
        m_RuleOwners.push_back(owner.get());
    }
}

uint64_t CValueCache::validSince(const CNodeBase& node, bool followsRegisterChanges) const {
    const uint64_t since = std::max(node.valueInvalidAt(), m_AllInvalidAt);
    return followsRegisterChanges ? std::max(since, m_RegistersChangedAt) : since;
}

// A register whose address is computed from nodes is placed as well: it depends on those nodes, so it
// computes its value again when they change, as in GenApi.
bool CValueCache::behindUnplacedRegister(const CNodeBase* node) const {
    for (const CNodeBase* reg : m_Links.registersBehind(node, false)) {
        if (!m_ThroughCache || (m_Rules.find(reg) == m_Rules.end() && !computedPlace(*reg)))
            return true;
    }
    return false;
}

bool CValueCache::behindComputedPlace(const CNodeBase* node) const {
    for (const CNodeBase* reg : m_Links.registersBehind(node, false)) {
        if (m_Rules.find(reg) == m_Rules.end() && computedPlace(*reg))
            return true;
    }
    return false;
}

bool CValueCache::holds(const CNodeBase* node) const {
    for (const CNodeBase* reg : m_Links.registersBehind(node, true)) {
        const auto rule = m_Rules.find(reg);
        if (rule == m_Rules.end() || !m_Registers.ruleIsValid(rule->second))
            return false;
    }
    return true;
}

// Dropped bytes may read differently next time, so whatever depends on their registers is computed again.
void CValueCache::drop(const CNodeBase* node) {
    if (node->description().tag == "Port" || !m_ThroughCache) {
        dropAll();
        return;
    }
    m_RegistersChangedAt = ++m_Clock;
    for (const CNodeBase* reg : m_Links.registersBehind(node, false)) {
        const auto rule = m_Rules.find(reg);
        if (rule != m_Rules.end())
            m_Registers.invalidateRule(rule->second);
        // A register at a computed place keeps no bytes here, only its value: that goes.
        CNodeBase* owner = rule != m_Rules.end() ? m_RuleOwners[rule->second] : const_cast<CNodeBase*>(reg);
        invalidateValues(m_Links.changedWith(owner, true));
    }
}

void CValueCache::dropAll() {
    m_Registers.clear();
    m_AllInvalidAt = ++m_Clock;
}

void CValueCache::registersWritten(int64_t address, int64_t length) {
    m_RegistersChangedAt = ++m_Clock;
    for (const size_t rule : m_Registers.rulesOverlapping(address, length))
        invalidateValues(m_Links.changedWith(m_RuleOwners[rule], true));
}

void CValueCache::invalidateValues(const std::vector<CNodeBase*>& nodes) {
    const uint64_t at = ++m_Clock;
    for (CNodeBase* node : nodes) {
        node->invalidateValue(at);
        for (CNodeBase* conditioned : m_Links.accessChangedWith(node))
            conditioned->dropAccessCache();
    }
}

void CValueCache::noteRegistersChanged() {
    if (!m_ThroughCache)
        m_RegistersChangedAt = ++m_Clock;
}

}  // namespace GenApiEngine
