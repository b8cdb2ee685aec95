// The value cache of a node map: the register bytes it keeps, the clock that tells which kept node values
// are still valid, and what a write or an invalidation takes from both.
#ifndef GENAPI_ENGINE_VALUECACHE_H
#define GENAPI_ENGINE_VALUECACHE_H

#include "NodeLinks.h"
#include "RegisterCache.h"
#include <GenApiEngine/CachePolicy.h>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace GenApiEngine {

class CNodeBase;
struct SPortRouting;

class CValueCache {
public:
    // throughCache: the register transfers pass this cache (a map over user ports); over a device Aravis
    // opened they do not, so no register has a known place.
    CValueCache(const CNodeLinks& links, bool throughCache);

    // A rule per register whose address and length are constants; an index repeats it by its offset.
    void addRules(const std::vector<std::unique_ptr<CNodeBase>>& nodes, const SPortRouting& routing);
    CRegisterCache& registers() { return m_Registers; }

    // The policy a map starts with, from the environment: GENAPI_ENGINE_VERIFY_CACHE=1 verifies every kept
    // value served against a fresh evaluation, GENAPI_ENGINE_VALUE_CACHE=0 keeps nothing.
    static ECachePolicy defaultPolicy();
    ECachePolicy policy() const { return m_Policy; }
    // Changing the policy drops everything kept.
    void setPolicy(ECachePolicy policy);
    bool verifying() const { return m_Policy == ECachePolicy::Verify; }
    bool keeping() const { return m_Policy != ECachePolicy::Off; }

    // Node values are kept with the clock's time of their computation; a value computed before its node
    // was last invalidated (or before every value was) is computed again.
    uint64_t clock() const { return m_Clock; }
    uint64_t validSince(const CNodeBase& node, bool followsRegisterChanges) const;
    // Whether a node reads a register whose place the cache does not know, so that it cannot tell which
    // writes reach it: such a node's value is computed again after any register changes.
    bool behindUnplacedRegister(const CNodeBase* node) const;
    // Whether every register a node's value is computed from has its bytes kept.
    bool holds(const CNodeBase* node) const;

    // Drops the bytes behind a node (all of them for a port); whatever depends on them computes again.
    void drop(const CNodeBase* node);
    void dropAll();
    // The register that wrote (when known; else every register whose bytes the write reached) and all that
    // depends on it compute their values again.
    void registersWritten(int64_t address, int64_t length, size_t rule);
    // The rules of the registers a node's value is computed from, for the transfers its evaluation makes;
    // null when the registers are not reached through this cache.
    const std::vector<size_t>* transferRules(const CNodeBase* node);
    // The nodes' values change, and with them the access of every node they are a condition of; the bytes
    // of the written node's own registers stay.
    void invalidateValues(const std::vector<CNodeBase*>& nodes, CNodeBase* written = nullptr);
    // A change through a device Aravis opened may reach any register.
    void noteRegistersChanged();

private:
    void dropFloatingBytes(CNodeBase* node, CNodeBase* written);

    const CNodeLinks& m_Links;
    bool m_ThroughCache;
    ECachePolicy m_Policy;
    CRegisterCache m_Registers;
    std::map<const CNodeBase*, size_t> m_Rules;
    std::vector<CNodeBase*> m_RuleOwners;
    uint64_t m_Clock = 1;
    uint64_t m_AllInvalidAt = 1;
    uint64_t m_RegistersChangedAt = 1;
    std::map<const CNodeBase*, std::vector<size_t>> m_TransferRules;
};

}  // namespace GenApiEngine

#endif
