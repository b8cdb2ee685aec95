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
    : m_Links(links), m_ThroughCache(throughCache), m_Policy(defaultPolicy()) {
    m_Registers.setKeeping(keeping());
    dropAll();
}

ECachePolicy CValueCache::defaultPolicy() {
    static const ECachePolicy policy =
        GENICAM_NAMESPACE::GetValueOfEnvironmentVariable("GENAPI_ENGINE_VERIFY_CACHE") == "1"
            ? ECachePolicy::Verify
        : GENICAM_NAMESPACE::GetValueOfEnvironmentVariable("GENAPI_ENGINE_VALUE_CACHE") == "0"
            ? ECachePolicy::Off
            : ECachePolicy::On;
    return policy;
}

void CValueCache::setPolicy(ECachePolicy policy) {
    m_Policy = policy;
    m_Registers.setKeeping(keeping());
    dropAll();
}

void CValueCache::addRules(const std::vector<std::unique_ptr<CNodeBase>>& nodes,
                           const SPortRouting& routing) {
    for (const std::unique_ptr<CNodeBase>& owner : nodes) {
        const SNodeDescription& d = owner->description();
        int64_t address = 0;
        int64_t length = 0;
        if (!isRegisterKind(d.tag) || d.has("pLength") || !textToInteger(d.value("Length"), length))
            continue;
        int64_t stride = 0;
        for (const SProperty& property : d.properties) {
            if (property.name == "pIndex" && !indexStep(property, length, stride))
                stride = -1;
        }
        SCacheRule rule{0, length, 0, owner->GetCachingMode()};
        if (d.has("pAddress") || !constantAddress(d, address) || stride < 0) {
            rule.floating = true;
            m_Rules[owner.get()] = m_Registers.addRule(rule);
            owner->setFloatingRule(m_Rules[owner.get()]);
        } else {
            rule.address = address + routing.offsetOf(d.value("pPort"));
            rule.stride = stride;
            m_Rules[owner.get()] = m_Registers.addRule(rule);
        }
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
        CNodeBase* owner = rule != m_Rules.end() ? m_RuleOwners[rule->second] : const_cast<CNodeBase*>(reg);
        invalidateValues(m_Links.changedWith(owner, true));
    }
}

// A map that keeps nothing marks every value as out of date for good, at no cost to the reads.
void CValueCache::dropAll() {
    m_Registers.clear();
    m_AllInvalidAt = keeping() ? ++m_Clock : UINT64_MAX;
}

void CValueCache::registersWritten(int64_t address, int64_t length, size_t rule) {
    m_RegistersChangedAt = ++m_Clock;
    // A register written for a node: the node's own write reaches everything that depends on it.
    if (rule != CRegisterCache::noRule) {
        m_RuleOwners[rule]->invalidateValue(m_Clock);
        return;
    }
    for (const size_t overlapping : m_Registers.rulesOverlapping(address, length))
        invalidateValues(m_Links.changedWith(m_RuleOwners[overlapping], true));
}

const std::vector<size_t>* CValueCache::transferRules(const CNodeBase* node) {
    if (!m_ThroughCache)
        return nullptr;
    auto known = m_TransferRules.find(node);
    if (known == m_TransferRules.end()) {
        std::vector<size_t> rules;
        for (const CNodeBase* reg : m_Links.registersBehind(node, true)) {
            const auto rule = m_Rules.find(reg);
            if (rule != m_Rules.end())
                rules.push_back(rule->second);
        }
        known = m_TransferRules.emplace(node, std::move(rules)).first;
    }
    return &known->second;
}

void CValueCache::invalidateValues(const std::vector<CNodeBase*>& nodes, CNodeBase* written) {
    const uint64_t at = ++m_Clock;
    for (CNodeBase* node : nodes) {
        node->invalidateValue(at);
        for (CNodeBase* conditioned : m_Links.accessChangedWith(node))
            conditioned->dropAccessCache();
        if (node->floatingRule() != CRegisterCache::noRule)
            dropFloatingBytes(node, written);
    }
}

// A register at a computed place that something it depends on changed may now be elsewhere, so its bytes
// go, except those a write just filled.
void CValueCache::dropFloatingBytes(CNodeBase* node, CNodeBase* written) {
    if (written && m_Links.inValueChain(written, node))
        return;
    m_Registers.invalidateRule(node->floatingRule());
}

void CValueCache::noteRegistersChanged() {
    if (!m_ThroughCache)
        m_RegistersChangedAt = ++m_Clock;
}

}  // namespace GenApiEngine
