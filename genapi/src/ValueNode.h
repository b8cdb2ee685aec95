// The part of IValue every valued engine node shares: whether a read would come from the cache, and the
// value cache itself.
#ifndef GENAPI_ENGINE_VALUENODE_H
#define GENAPI_ENGINE_VALUENODE_H

#include <GenApi/IValue.h>
#include "NodeBase.h"
#include <string>

namespace GenApiEngine {

class CValueNode : public CNodeBase, public virtual GenApi::IValue {
public:
    using CNodeBase::CNodeBase;

    // True when every register behind the value holds cached bytes.
    bool IsValueCacheValid() const override;

protected:
    // A value kept from one read to the next, with the value clock's time at which it was computed.
    template <typename T>
    struct SCachedValue {
        uint64_t computedAt = 0;
        T value{};
        GenApi::EYesNo keeps = GenApi::_UndefinedYesNo;  // for limits: whether the limit is kept at all
        bool constant = false;                           // for limits: a number of the description
    };

    // A read that ignores the cache drops the cached bytes of the registers behind the value before it
    // and again after it, so that what it read is not kept either: as in GenApi, the plain read after an
    // ignore-cache read goes to the device again.
    class CCacheBypass {
    public:
        CCacheBypass(const CValueNode& node, bool ignoreCache) : m_Node(ignoreCache ? &node : nullptr) {
            drop();
        }
        ~CCacheBypass() { drop(); }
        CCacheBypass(const CCacheBypass&) = delete;
        CCacheBypass& operator=(const CCacheBypass&) = delete;

    private:
        void drop() const;
        const CValueNode* m_Node;
    };

    // Answers the kept value while nothing has been written or invalidated since it was computed, as
    // GenApi keeps a node's value; a NoCache node, or a read that ignores the cache, computes afresh.
    template <typename T, typename Compute>
    T cachedValue(SCachedValue<T>& slot, bool ignoreCache, Compute compute) const {
        return keptValue(slot, keepsValue(), ignoreCache, compute);
    }
    // A limit is kept when the description gives it as a number (then for good, once read), or names a
    // node that keeps its value.
    template <typename T, typename Compute>
    T cachedLimit(SCachedValue<T>& slot, const char* limit, Compute compute) const {
        if (slot.keeps == GenApi::_UndefinedYesNo) {
            const bool pointed = description().has(std::string("p") + limit);
            // A register's limit the description does not give follows from its length, bits and sign.
            const bool ofLayout = !pointed && !description().has(limit) &&
                                  isRegisterKind(description().tag) && !description().has("pLength");
            slot.keeps = limitKeepsValue(limit) || ofLayout ? GenApi::Yes : GenApi::No;
            slot.constant = (description().has(limit) && !pointed) || ofLayout;
        }
        if (slot.constant && slot.computedAt != 0)
            return slot.value;
        return keptValue(slot, slot.keeps == GenApi::Yes, false, compute);
    }
    bool keepsValue() const;
    // Hands a value to the engine's integer node that pValue names, as any write would, so that its
    // pValueCopy nodes and callbacks follow (Aravis writes only the pValue chain); false when pValue names
    // no such node.
    bool writeToValueNode(int64_t value, bool verify);
    // Writes a value just written to pValue to every pValueCopy as well, through their own interface I.
    template <typename I, typename T>
    void writeCopies(T value, bool verify) {
        for (const SProperty& property : description().properties) {
            if (property.name != "pValueCopy")
                continue;
            if (I* copy = dynamic_cast<I*>(pointeeNamed(property.value)))
                copy->SetValue(value, verify);
        }
    }

private:
    CNodeBase* pointeeNamed(const std::string& name) const;
    bool limitKeepsValue(const char* limit) const;
    template <typename T, typename Compute>
    T keptValue(SCachedValue<T>& slot, bool keep, bool ignoreCache, Compute compute) const {
        if (keep && !ignoreCache && slot.computedAt >= validSince()) {
            if (verifyingValueCache())
                checkCachedValue(slot.value, compute());
            return slot.value;
        }
        const uint64_t now = valueClock();
        const T value = compute();
        if (keep) {
            slot.computedAt = now;
            slot.value = value;
        }
        return value;
    }

    uint64_t valueClock() const;
    // The time before which a kept value of this node is out of date.
    uint64_t validSince() const;
    bool verifyingValueCache() const;
    template <typename T>
    void checkCachedValue(const T& cached, const T& fresh) const {
        if (!sameValue(cached, fresh))
            abortOnStale(describe(cached), describe(fresh));
    }
    static bool sameValue(double cached, double fresh) {
        return cached == fresh || (cached != cached && fresh != fresh);
    }
    template <typename T>
    static bool sameValue(const T& cached, const T& fresh) {
        return cached == fresh;
    }
    static std::string describe(double value);
    static std::string describe(int64_t value);
    static std::string describe(bool value) { return value ? "true" : "false"; }
    static std::string describe(const GENICAM_NAMESPACE::gcstring& value) { return value.c_str(); }

    mutable GenApi::EYesNo m_KeepsValue = GenApi::_UndefinedYesNo;
    mutable GenApi::EYesNo m_FollowsRegisterChanges = GenApi::_UndefinedYesNo;
};

}  // namespace GenApiEngine

#endif
