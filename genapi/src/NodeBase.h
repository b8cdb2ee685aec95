// The part every engine node shares: INode metadata, access, callbacks, selector relations and user data.
#ifndef GENAPI_ENGINE_NODEBASE_H
#define GENAPI_ENGINE_NODEBASE_H

#include <GenApi/INode.h>
#include <GenApi/ISelector.h>
#include <GenApi/IUserData.h>
#include <GenApi/NodeCallback.h>
#include "NodeErrors.h"
#include "RegisterCache.h"
#include "XmlIndex.h"
#include <arv.h>
#include <atomic>
#include <functional>
#include <initializer_list>
#include <type_traits>
#include <memory>
#include <vector>

namespace GenApiEngine {

class CNodeMapImpl;

class CNodeBase : public virtual GenApi::INode, public virtual GenApi::ISelector, public GenApi::IUserData {
public:
    CNodeBase(CNodeMapImpl& map, const SNodeDescription& description, GenApi::EInterfaceType principalType);
    ~CNodeBase() override;

    // IBase
    GenApi::EAccessMode GetAccessMode() const override;

    // INode
    GenICam::gcstring GetName(bool FullQualified = false) const override;
    GenApi::ENameSpace GetNameSpace() const override;
    GenApi::EVisibility GetVisibility() const override;
    void InvalidateNode() override;
    bool IsCachable() const override;
    GenApi::EYesNo IsAccessModeCacheable() const override;
    GenApi::ECachingMode GetCachingMode() const override;
    int64_t GetPollingTime() const override;
    GenICam::gcstring GetToolTip() const override;
    GenICam::gcstring GetDescription() const override;
    GenICam::gcstring GetDisplayName() const override;
    GenICam::gcstring GetDeviceName() const override;
    void GetChildren(GenApi::NodeList_t& Children,
                     GenApi::ELinkType LinkType = GenApi::ctReadingChildren) const override;
    void GetParents(GenApi::NodeList_t& Parents) const override;
    GenApi::CallbackHandleType RegisterCallback(GenApi::CNodeCallback* pCallback) override;
    bool DeregisterCallback(GenApi::CallbackHandleType hCallback) override;
    GenApi::INodeMap* GetNodeMap() const override;
    GenICam::gcstring GetEventID() const override;
    bool IsStreamable() const override;
    void GetPropertyNames(GenICam::gcstring_vector& PropertyNames) const override;
    bool GetProperty(const GenICam::gcstring& PropertyName, GenICam::gcstring& ValueStr,
                     GenICam::gcstring& AttributeStr) override;
    void ImposeAccessMode(GenApi::EAccessMode ImposedAccessMode) override;
    void ImposeVisibility(GenApi::EVisibility ImposedVisibility) override;
    GenApi::INode* GetAlias() const override;
    GenApi::INode* GetCastAlias() const override;
    GenICam::gcstring GetDocuURL() const override;
    bool IsDeprecated() const override;
    GenApi::EInterfaceType GetPrincipalInterfaceType() const override;
    bool IsFeature() const override;

    // ISelector
    bool IsSelector() const override;
    void GetSelectedFeatures(GenApi::FeatureList_t& Features) const override;
    void GetSelectingFeatures(GenApi::FeatureList_t& Features) const override;

    // IUserData
    GenApi::UserData_t GetUserData() const override { return m_UserData; }
    GenApi::UserData_t SetUserData(GenApi::UserData_t userData) override;

    // Engine side.
    const SNodeDescription& description() const { return m_Description; }
    const std::string& name() const { return m_Description.name; }
    CNodeMapImpl& map() const { return m_Map; }
    // Aravis' node, made when first asked for; null when Aravis has none.
    ArvGcNode* arvNode() const {
        return m_ArvResolved.load(std::memory_order_acquire) ? m_ArvNode : resolveArvNode();
    }
    // Only nodes with callbacks are collected for firing after a change.
    bool hasCallbacks() const { return !m_Callbacks.empty(); }
    // Only nodes with cbPostOutsideLock callbacks take part in the firing after the lock is released.
    bool hasOutsideCallbacks() const { return m_OutsideCallbacks > 0; }
    // Set while the node waits in the map's list of nodes to call back; kept by the map.
    mutable bool m_QueuedForCallbacks = false;
    // Calls the callbacks registered for the given type, with the map lock held.
    void fireCallbacks(GenApi::ECallbackType type);
    // Calls the cbPostOutsideLock callbacks without holding the map lock.
    void fireCallbacksOutsideLock();
    // Marks the feature reachable from the category "Root".
    void setIsFeature() { m_IsFeature = true; }
    // Raise on behalf of a helper that serves this node (formula evaluation).
    [[noreturn]] void raiseError(EError kind, const char* method, const std::string& problem) const {
        raise(kind, method, problem);
    }
    [[noreturn]] void raiseFromAravis(GError* error, const char* method) const { raise(error, method); }
    // Forgets the cached access mode, because something it depends on changed.
    virtual void dropAccessCache() const;
    // Under GENAPI_ENGINE_VERIFY_CACHE=1: aborts when the kept access differs from a fresh one.
    void verifyKeptAccess() const;
    // Under GENAPI_ENGINE_VERIFY_CACHE=1: names the node, what it kept and what it has instead, and aborts.
    [[noreturn]] void abortOnStale(const std::string& kept, const std::string& fresh) const;
    // What a change of this node reaches: the nodes whose values change with it, and the nodes whose
    // access changes with its value. The node map works both out once, when first needed.
    struct SReach {
        // Reached when the node is invalidated [0] and when it is written [1].
        bool changedKnown[2] = {false, false};
        bool accessKnown = false;
        std::vector<CNodeBase*> changed[2];
        std::vector<CNodeBase*> access;
        // Called back when the node is invalidated [0] and when it is written [1].
        bool calledBackKnown[2] = {false, false};
        std::vector<CNodeBase*> calledBack[2];
        // The node and the nodes its pValue links lead to, in order.
        bool chainKnown = false;
        std::vector<CNodeBase*> chain;
    };
    SReach& reach() const {
        if (!m_Reach)
            m_Reach.reset(new SReach);
        return *m_Reach;
    }
    // The value clock's time at which something the node's value depends on last changed.
    uint64_t valueInvalidAt() const { return m_ValueInvalidAt; }
    void invalidateValue(uint64_t at) const { m_ValueInvalidAt = at; }
    // The value cache's rule for a register at a computed address (noRule for any other node).
    size_t floatingRule() const { return m_FloatingRule; }
    void setFloatingRule(size_t rule) { m_FloatingRule = rule; }

protected:
    bool accessModeCacheable() const;
    // Access before the imposed modes: what the node's kind and its pValue chain allow.
    virtual GenApi::EAccessMode naturalAccessMode() const;
    // Access GenApi asks for before the node's own conditions (a category's features, a value's limits);
    // RW when the kind asks for none.
    virtual GenApi::EAccessMode accessAskedFirst() const { return GenApi::RW; }
    // The access, evaluated again when the last answer was the RW a failed evaluation left behind (an
    // enumeration's read asks so in GenApi, where an integer's read takes that RW).
    GenApi::EAccessMode accessAskedAgain() const;
    // Access of the node a pointer property names, or the fallback when it names none.
    GenApi::EAccessMode accessOfPointer(const char* property, GenApi::EAccessMode fallback) const;
    CNodeBase* pointee(const char* property) const;
    static bool integerOf(CNodeBase* target, int64_t& value);
    // As integerOf, but an exception of the node's evaluation passes on.
    static bool readIntegerOf(CNodeBase* target, int64_t& value);
    // Access of a register node: its AccessMode (RO by default) combined with its port's access.
    GenApi::EAccessMode registerAccessMode() const;
    // Access of a formula (swiss knife or converter): NI when one of its variables or its pValue is not
    // implemented, else NA when one is not available, else the access its kind gives.
    GenApi::EAccessMode formulaAccessMode(GenApi::EAccessMode own) const;
    // NI when a node one of the links names is not implemented; with unavailableToo, else NA when one is
    // not available; else own.
    GenApi::EAccessMode accessThroughLinks(std::initializer_list<const char*> links, GenApi::EAccessMode own,
                                           bool unavailableToo) const;
    GenApi::EAccessMode accessOfConditions() const;
    // RW when the condition holds (or is not consulted), else the access it gives its node.
    GenApi::EAccessMode accessOfCondition(const char* property, gboolean (*test)(ArvGcFeatureNode*, GError**),
                                          GenApi::EAccessMode failed) const;

    // Reads a limit through Aravis; a node that describes no such limit, or that Aravis does not know (the
    // nodes a description implies), gets GenApi's default instead.
    template <typename T, typename Call>
    T limitOr(const char* method, const char* property, T fallback, Call call) const {
        const bool described = m_Description.has(property) || m_Description.has(std::string("p") + property);
        if (!described && !arvNode())
            return fallback;
        GError* error = nullptr;
        const T result = call(&error);
        if (!error)
            return result;
        if (!described && error->domain == ARV_GC_ERROR) {
            g_error_free(error);
            return fallback;
        }
        raise(error, method);
    }

    // Calls Aravis with an error slot and raises what it reports.
    template <typename Call>
    auto arvCall(const char* method, Call call) const -> decltype(call(static_cast<GError**>(nullptr))) {
        const CTransferScope scope = transferScope();
        GError* error = nullptr;
        if constexpr (std::is_void_v<decltype(call(&error))>) {
            call(&error);
            if (error)
                raise(error, method);
        } else {
            auto result = call(&error);
            if (error)
                raise(error, method);
            return result;
        }
    }

    // The transfers of an Aravis call act for the registers this node's value is computed from.
    CTransferScope transferScope() const;
    void checkReadable(const char* method) const;
    // Raises GenApi's null-pointer logical error when the value depends on a formula it cannot evaluate.
    void raiseIfFormulaUnsupported(const char* method) const;
    void checkWritable(const char* method) const;
    [[noreturn]] void raise(EError kind, const char* method, const std::string& problem) const;
    // Raises the exception behind an Aravis error, preferring the original exception of a user port.
    [[noreturn]] void raise(GError* error, const char* method) const;
    // The Aravis feature node, or null for nodes Aravis does not know.
    ArvGcFeatureNode* feature() const;
    // Tells the map this node changed, so that callbacks of it and its dependents fire.
    void changed();

private:
    bool evaluatesTrue(const char* property, gboolean (*test)(ArvGcFeatureNode*, GError**),
                       const char* method) const;
    GenApi::EVisibility mostVisibleFeature(GenApi::EVisibility fallback) const;
    bool usesUnsupportedFormula() const;
    // True when the test holds for a node this one's value is computed from (pValue, pVariable, ...).
    bool anyValueSource(const std::function<bool(const SProperty&, const CNodeBase&)>& test) const;
    bool isCondition(const char* property) const;
    GenApi::EAccessMode computeAccessMode() const;
    ArvGcNode* resolveArvNode() const;
    bool isRegistered(GenApi::CNodeCallback* callback) const;
    static void callSafely(GenApi::CNodeCallback* callback, GenApi::ECallbackType type);

    CNodeMapImpl& m_Map;
    const SNodeDescription& m_Description;
    mutable ArvGcNode* m_ArvNode = nullptr;
    mutable std::atomic<bool> m_ArvResolved{false};
    GenApi::EInterfaceType m_PrincipalType;
    GenApi::EAccessMode m_ImposedAccess = GenApi::RW;
    GenApi::EAccessMode m_DescribedImposedAccess = GenApi::RW;
    mutable GenApi::EAccessMode m_CachedAccess = GenApi::_UndefinedAccesMode;
    mutable uint64_t m_AccessGeneration = 0;
    // The kept access is the RW a failed evaluation left behind, not an evaluated answer.
    mutable bool m_AccessAssumed = false;
    mutable uint64_t m_ValueInvalidAt = 0;
    mutable std::unique_ptr<SReach> m_Reach;
    mutable GenApi::EYesNo m_AccessCacheable = GenApi::_UndefinedYesNo;
    GenApi::EVisibility m_ImposedVisibility = GenApi::Beginner;
    std::vector<GenApi::CNodeCallback*> m_Callbacks;
    int m_OutsideCallbacks = 0;
    GenApi::UserData_t m_UserData = nullptr;
    bool m_IsFeature = false;
    mutable int m_AccessDepth = 0;
    mutable GenApi::EYesNo m_UnsupportedFormula = GenApi::_UndefinedYesNo;
    mutable const std::vector<size_t>* m_TransferRules = nullptr;
    mutable bool m_TransferRulesKnown = false;
    size_t m_FloatingRule = CRegisterCache::noRule;
};

}  // namespace GenApiEngine

#endif
