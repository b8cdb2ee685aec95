// INode for every engine node: metadata from the description index, access through Aravis' evaluation.
#include "NodeBase.h"
#include "NodeMapImpl.h"
#include "PortDevice.h"
#include <GenApi/EnumClasses.h>
#include <GenApi/IBoolean.h>
#include <GenApi/IInteger.h>
#include <GenApi/IValue.h>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <cstdlib>
#include <map>
#include <set>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;
using GENICAM_NAMESPACE::gcstring_vector;

namespace GenApiEngine {
namespace {

// Runs a function with a depth counter raised, so that cyclic descriptions cannot recurse forever.
class CDepthGuard {
public:
    explicit CDepthGuard(int& depth) : m_Depth(++depth) {}
    ~CDepthGuard() { --m_Depth; }
    bool tooDeep() const { return m_Depth > 64; }

private:
    int& m_Depth;
};

}  // namespace

CNodeBase::CNodeBase(CNodeMapImpl& map, const SNodeDescription& description, EInterfaceType principalType)
    : m_Map(map), m_Description(description), m_PrincipalType(principalType) {
    if (!EAccessModeClass::FromString(m_Description.value("ImposedAccessMode").c_str(),
                                      &m_DescribedImposedAccess)) {
        m_DescribedImposedAccess = RW;
    }
}

CNodeBase::~CNodeBase() {
    for (CNodeCallback* callback : m_Callbacks)
        callback->Destroy();
}

ArvGcFeatureNode* CNodeBase::feature() const {
    ArvGcNode* node = arvNode();
    return node && ARV_IS_GC_FEATURE_NODE(node) ? ARV_GC_FEATURE_NODE(node) : nullptr;
}

// Under the map lock, since making Aravis' node changes the document all the map's nodes share.
ArvGcNode* CNodeBase::resolveArvNode() const {
    GenApi::AutoLock lock(m_Map.GetLock());
    if (!m_ArvResolved.load(std::memory_order_relaxed)) {
        m_ArvNode = m_Map.aravisNode(m_Description);
        m_ArvResolved.store(true, std::memory_order_release);
    }
    return m_ArvNode;
}

CNodeBase* CNodeBase::pointee(const char* property) const {
    const std::string& target = m_Description.value(property);
    return target.empty() ? nullptr : m_Map.node(target);
}

void CNodeBase::raise(EError kind, const char* method, const std::string& problem) const {
    raiseNodeError(kind, name(), method, problem);
}

void CNodeBase::raise(GError* error, const char* method) const {
    const std::exception_ptr portError = takePortError(m_Map.device());
    if (portError) {
        if (error)
            g_error_free(error);
        rethrowPortError(portError, name(), method);
    }
    raiseFromGError(error, name(), method);
}

void CNodeBase::checkReadable(const char* method) const {
    if (!IsReadable(GetAccessMode()))
        raise(EError::Access, method, "Node is not readable.");
}

void CNodeBase::checkWritable(const char* method) const {
    if (!IsWritable(GetAccessMode()))
        raise(EError::Access, method, "Node is not writable.");
}

void CNodeBase::changed() {
    m_Map.noteChanged(this, true);
}

// GenApi reads pIsImplemented, pIsAvailable and pIsLocked as integers or booleans; one that names a node
// of another kind is not consulted, nor is a boolean condition of a category.
bool CNodeBase::isCondition(const char* property) const {
    if (!m_Description.has(property))
        return false;
    const CNodeBase* condition = pointee(property);
    if (!condition)
        return true;
    const EInterfaceType kind = condition->GetPrincipalInterfaceType();
    return kind == intfIInteger || (kind == intfIBoolean && m_PrincipalType != intfICategory);
}

// Answered by an integer or boolean node, so from the value that node keeps; nothing when it is no such
// node, or is not readable or cannot answer (the caller then asks Aravis, which reports what is wrong).
bool CNodeBase::integerOf(CNodeBase* target, int64_t& value) {
    try {
        return readIntegerOf(target, value);
    } catch (const GenICam::GenericException&) {
        return false;
    }
}

bool CNodeBase::readIntegerOf(CNodeBase* target, int64_t& value) {
    if (!target || (target->m_PrincipalType != intfIInteger && target->m_PrincipalType != intfIBoolean))
        return false;
    GenApi::IInteger* integer = dynamic_cast<GenApi::IInteger*>(target);
    GenApi::IBoolean* boolean = dynamic_cast<GenApi::IBoolean*>(target);
    if ((!integer && !boolean) || !IsReadable(target->GetAccessMode()))
        return false;
    value = integer ? integer->GetValue() : (boolean->GetValue() ? 1 : 0);
    return true;
}

bool CNodeBase::evaluatesTrue(const char* property, gboolean (*test)(ArvGcFeatureNode*, GError**),
                              const char* method) const {
    // A condition that fails to evaluate fails the access mode, as in GenApi.
    CNodeBase* condition = pointee(property);
    int64_t value = 0;
    if (readIntegerOf(condition, value))
        return value != 0;
    if (condition)
        condition->raiseIfFormulaUnsupported(method);
    GError* error = nullptr;
    const gboolean result = test(feature(), &error);
    if (error)
        raise(error, method);
    return result != FALSE;
}

// The registers are looked up once: the description does not change.
CTransferScope CNodeBase::transferScope() const {
    CValueCache* values = m_Map.valueCache();
    if (!values)
        return CTransferScope(nullptr, nullptr);
    if (!m_TransferRulesKnown) {
        m_TransferRules = values->transferRules(this);
        m_TransferRulesKnown = true;
    }
    return CTransferScope(&values->registers(), m_TransferRules);
}

EAccessMode CNodeBase::accessOfPointer(const char* property, EAccessMode fallback) const {
    const CNodeBase* target = pointee(property);
    return target ? target->GetAccessMode() : fallback;
}

EAccessMode CNodeBase::registerAccessMode() const {
    EAccessMode mode = RO;
    EAccessModeClass::FromString(m_Description.value("AccessMode").c_str(), &mode);
    // A register whose address cannot be worked out, because a node it is computed from is not there, is
    // not there either.
    for (const SProperty& property : m_Description.properties) {
        if (property.name != "pIndex" && property.name != "pAddress")
            continue;
        const CNodeBase* address = m_Map.node(property.value);
        const EAccessMode addressAccess = address ? address->GetAccessMode() : RW;
        if (addressAccess == NI || addressAccess == NA)
            return addressAccess;
    }
    return Combine(mode, accessOfPointer("pPort", NI));
}

EAccessMode CNodeBase::accessThroughLinks(std::initializer_list<const char*> links, EAccessMode own,
                                          bool unavailableToo) const {
    bool unavailable = false;
    for (const SProperty& property : m_Description.properties) {
        if (std::none_of(links.begin(), links.end(), [&](const char* link) { return property.name == link; }))
            continue;
        const CNodeBase* target = m_Map.node(property.value);
        const EAccessMode access = target ? target->GetAccessMode() : RW;
        if (access == NI)
            return NI;
        unavailable = unavailable || (unavailableToo && access == NA);
    }
    return unavailable ? NA : own;
}

EAccessMode CNodeBase::formulaAccessMode(EAccessMode own) const {
    return accessThroughLinks({"pVariable", "pValue"}, own, true);
}

// A condition that cannot be read passes its own access on (a pIsAvailable that is not implemented makes
// its node not implemented); one that reads false makes its node not implemented or not available. RW when
// both hold.
EAccessMode CNodeBase::accessOfConditions() const {
    const EAccessMode implemented =
        accessOfCondition("pIsImplemented", arv_gc_feature_node_is_implemented, NI);
    return implemented != RW ? implemented
                             : accessOfCondition("pIsAvailable", arv_gc_feature_node_is_available, NA);
}

EAccessMode CNodeBase::accessOfCondition(const char* property, gboolean (*test)(ArvGcFeatureNode*, GError**),
                                         EAccessMode failed) const {
    if (!isCondition(property))
        return RW;
    const EAccessMode access = accessOfPointer(property, RW);
    if (access == NI || access == NA)
        return access;
    return evaluatesTrue(property, test, "GetAccessMode") ? RW : failed;
}

EAccessMode CNodeBase::naturalAccessMode() const {
    return accessOfPointer("pValue", RW);
}

// GenApi's order: not implemented, not available, the kind's own access, locked, then the imposed modes.
// Served from the cache while nothing the access depends on has changed (see the map's generation).
EAccessMode CNodeBase::GetAccessMode() const {
    CMapEntry entry(m_Map);
    if (m_AccessDepth == 0)
        m_Map.checkPortAccess();
    const uint64_t generation = m_Map.accessGeneration();
    if (m_AccessGeneration == generation && m_CachedAccess == _CycleDetectAccesMode) {
        // An evaluation under way (a read cycle) answers RW, as in GenApi.
        if (m_AccessDepth > 0)
            return RW;
        // One that an exception ended left GenApi's cycle mark behind: a node whose access cannot be kept
        // answers RW from then on, until something its access depends on changes; a cacheable one is
        // evaluated again, since only its kept answer was lost.
        if (!accessModeCacheable()) {
            m_CachedAccess = RW;
            m_AccessAssumed = true;
            return RW;
        }
        m_AccessGeneration = 0;
    }
    if (m_AccessGeneration == generation) {
        if (m_Map.values().verifying() && !m_AccessAssumed)
            verifyKeptAccess();
        return m_CachedAccess;
    }
    m_AccessAssumed = false;
    m_CachedAccess = _CycleDetectAccesMode;
    m_AccessGeneration = generation;
    const EAccessMode mode = computeAccessMode();
    if (m_AccessGeneration == generation && mode != _CycleDetectAccesMode && accessModeCacheable())
        m_CachedAccess = mode;
    else
        m_AccessGeneration = 0;
    return mode;
}

// The access evaluated again when the last answer was the RW a failed evaluation left behind.
EAccessMode CNodeBase::accessAskedAgain() const {
    if (m_AccessAssumed)
        dropAccessCache();
    return GetAccessMode();
}

void CNodeBase::verifyKeptAccess() const {
    const EAccessMode fresh = computeAccessMode();
    if (fresh == m_CachedAccess || fresh == _CycleDetectAccesMode)
        return;
    abortOnStale(("access " + EAccessModeClass::ToString(m_CachedAccess)).c_str(),
                 EAccessModeClass::ToString(fresh).c_str());
}

void CNodeBase::abortOnStale(const std::string& kept, const std::string& fresh) const {
    std::fprintf(stderr, "GENAPI_ENGINE_VERIFY_CACHE: node '%s' answered %s from its cache, but has %s\n",
                 name().c_str(), kept.c_str(), fresh.c_str());
    std::abort();
}

void CNodeBase::dropAccessCache() const {
    m_AccessGeneration = 0;
}

bool CNodeBase::accessModeCacheable() const {
    if (m_AccessCacheable == _UndefinedYesNo)
        m_AccessCacheable = IsAccessModeCacheable();
    return m_AccessCacheable == Yes;
}

// GenApi's order: not implemented, not available, the kind's own access, locked, then the imposed modes.
EAccessMode CNodeBase::computeAccessMode() const {
    CDepthGuard guard(m_AccessDepth);
    if (guard.tooDeep())
        return _CycleDetectAccesMode;
    // A category asks its features and a value its limits first, as GenApi does, even when the node's own
    // conditions decide: an exception there ends the evaluation before the conditions are read.
    const EAccessMode first = accessAskedFirst();
    if (feature()) {
        const EAccessMode conditions = accessOfConditions();
        if (conditions != RW)
            return conditions;
    } else if (m_PrincipalType != intfIEnumEntry && !m_Description.implied) {
        return NI;
    }
    EAccessMode mode = m_PrincipalType == intfICategory ? first : first == NI ? NI : naturalAccessMode();
    if (mode == NI || mode == NA || mode == _CycleDetectAccesMode)
        return mode;
    if (IsWritable(mode) && isCondition("pIsLocked") &&
        evaluatesTrue("pIsLocked", arv_gc_feature_node_is_locked, "GetAccessMode")) {
        mode = (mode == RW) ? RO : NA;
    }
    return Combine(Combine(mode, m_DescribedImposedAccess), m_ImposedAccess);
}

gcstring CNodeBase::GetName(bool FullQualified) const {
    if (!FullQualified)
        return name().c_str();
    return gcstring(GetNameSpace() == Standard ? "Std::" : "Cust::") + name().c_str();
}

ENameSpace CNodeBase::GetNameSpace() const {
    return m_Description.nameSpace == "Standard" ? Standard : Custom;
}

// A category is as visible as its most visible feature, whatever visibility it states itself; only a
// category without features keeps its own.
EVisibility CNodeBase::GetVisibility() const {
    EVisibility visibility = Beginner;
    EVisibilityClass::FromString(m_Description.value("Visibility").c_str(), &visibility);
    if (m_PrincipalType == intfICategory)
        visibility = mostVisibleFeature(visibility);
    return Combine(visibility, m_ImposedVisibility);
}

EVisibility CNodeBase::mostVisibleFeature(EVisibility fallback) const {
    CDepthGuard guard(m_AccessDepth);
    EVisibility visibility = Invisible;
    bool anyFeature = false;
    for (const std::string& featureName : m_Description.values("pFeature")) {
        const CNodeBase* feature = guard.tooDeep() ? nullptr : m_Map.node(featureName);
        if (!feature)
            continue;
        anyFeature = true;
        visibility = std::min(visibility, feature->GetVisibility());
    }
    return anyFeature ? visibility : fallback;
}

// GenApi cannot evaluate a formula that has named constants beside an enumeration variable: it fails
// with a null pointer, and so does reading anything computed from such a formula.
void CNodeBase::raiseIfFormulaUnsupported(const char* method) const {
    if (m_UnsupportedFormula == _UndefinedYesNo)
        m_UnsupportedFormula = usesUnsupportedFormula() ? Yes : No;
    if (m_UnsupportedFormula == Yes)
        raise(EError::LogicalError, method, "NULL pointer dereferenced");
}

bool CNodeBase::anyValueSource(const std::function<bool(const SProperty&, const CNodeBase&)>& test) const {
    for (const SProperty& property : m_Description.properties) {
        if (!isValuePointer(property.name))
            continue;
        const CNodeBase* target = m_Map.node(property.value);
        if (target && test(property, *target))
            return true;
    }
    return false;
}

bool CNodeBase::usesUnsupportedFormula() const {
    CDepthGuard guard(m_AccessDepth);
    if (guard.tooDeep())
        return false;
    const std::string& tag = m_Description.tag;
    const bool formula =
        tag == "SwissKnife" || tag == "IntSwissKnife" || tag == "Converter" || tag == "IntConverter";
    return anyValueSource([&](const SProperty& property, const CNodeBase& target) {
        const bool enumerationBesideConstants = formula && property.name == "pVariable" &&
                                                m_Description.has("Constant") &&
                                                target.GetPrincipalInterfaceType() == intfIEnumeration;
        return enumerationBesideConstants || target.usesUnsupportedFormula();
    });
}

void CNodeBase::InvalidateNode() {
    CMapEntry entry(m_Map);
    m_Map.invalidate(this);
}

bool CNodeBase::IsCachable() const {
    return GetCachingMode() != NoCache;
}

EYesNo CNodeBase::IsAccessModeCacheable() const {
    CMapEntry entry(m_Map);
    // The access cannot be kept when a node it is worked out from (a condition, the value, a formula's
    // variable) cannot keep its value or its own access.
    static const std::set<std::string> accessLinks = {"pIsImplemented", "pIsAvailable", "pIsLocked", "pValue",
                                                      "pVariable"};
    for (const SProperty& property : m_Description.properties) {
        if (!accessLinks.count(property.name))
            continue;
        const CNodeBase* target = m_Map.node(property.value);
        if (target && (!target->IsCachable() || target->IsAccessModeCacheable() == No))
            return No;
    }
    return Yes;
}

// The node's own Cachable when it names one, otherwise the most restrictive mode of its value sources.
// A node without its own Cachable takes its mode from the nodes its value is computed from. Float
// registers and float formulas (SwissKnife, and the formulas behind converters) are WriteAround by
// default; integer formulas pass only NoCache on from their variables.
ECachingMode CNodeBase::GetCachingMode() const {
    CMapEntry entry(m_Map);
    ECachingMode mode = WriteThrough;
    if (ECachingModeClass::FromString(m_Description.value("Cachable").c_str(), &mode))
        return mode;
    CDepthGuard guard(m_AccessDepth);
    if (guard.tooDeep())
        return NoCache;
    const std::string& tag = m_Description.tag;
    const bool floatFormula = tag == "SwissKnife" || tag == "Converter" || tag == "IntConverter";
    mode = (floatFormula || tag == "FloatReg") ? WriteAround : WriteThrough;
    anyValueSource([&](const SProperty&, const CNodeBase& target) {
        const ECachingMode targetMode = target.GetCachingMode();
        if (tag != "IntSwissKnife" || targetMode == NoCache)
            mode = Combine(mode, targetMode);
        return false;
    });
    return mode;
}

int64_t CNodeBase::GetPollingTime() const {
    const std::string& text = m_Description.value("PollingTime");
    return text.empty() ? -1 : std::strtoll(text.c_str(), nullptr, 0);
}

gcstring CNodeBase::GetToolTip() const {
    return m_Description.value("ToolTip").c_str();
}

gcstring CNodeBase::GetDescription() const {
    return m_Description.value("Description").c_str();
}

gcstring CNodeBase::GetDisplayName() const {
    const std::string& displayName = m_Description.value("DisplayName");
    return displayName.empty() ? m_Description.xmlName.c_str() : displayName.c_str();
}

gcstring CNodeBase::GetDeviceName() const {
    return m_Map.GetDeviceName();
}

void CNodeBase::GetChildren(NodeList_t& Children, ELinkType LinkType) const {
    CMapEntry entry(m_Map);
    Children.clear();
    for (CNodeBase* child : m_Map.links().linked(this, LinkType))
        Children.push_back(child);
}

void CNodeBase::GetParents(NodeList_t& Parents) const {
    GetChildren(Parents, ctParentNodes);
}

namespace {

// The type a callback was registered for: GenApi keeps it in a protected member, which a class derived
// from the callback base may name.
struct SCallbackType : CNodeCallback {
    static ECallbackType of(const CNodeCallback* callback) {
        constexpr ECallbackType CNodeCallback::*type = &SCallbackType::m_CallbackType;
        return callback->*type;
    }
};

}  // namespace

CallbackHandleType CNodeBase::RegisterCallback(CNodeCallback* pCallback) {
    CMapEntry entry(m_Map);
    m_Callbacks.push_back(pCallback);
    m_OutsideCallbacks += SCallbackType::of(pCallback) == cbPostOutsideLock;
    m_Map.countCallbacks(1);
    return reinterpret_cast<CallbackHandleType>(pCallback);
}

bool CNodeBase::DeregisterCallback(CallbackHandleType hCallback) {
    CMapEntry entry(m_Map);
    const auto found =
        std::find(m_Callbacks.begin(), m_Callbacks.end(), reinterpret_cast<CNodeCallback*>(hCallback));
    if (found == m_Callbacks.end())
        return false;
    CNodeCallback* callback = *found;
    m_Callbacks.erase(found);
    m_OutsideCallbacks -= SCallbackType::of(callback) == cbPostOutsideLock;
    m_Map.countCallbacks(-1);
    m_Map.retire(callback);
    return true;
}

bool CNodeBase::isRegistered(CNodeCallback* callback) const {
    return std::find(m_Callbacks.begin(), m_Callbacks.end(), callback) != m_Callbacks.end();
}

// Inside the lock: each callback still registered at its turn is called, so that a callback may
// deregister itself or others.
void CNodeBase::fireCallbacks(ECallbackType type) {
    // The common case, one callback, needs no copy of the list: it is registered now.
    if (m_Callbacks.size() == 1) {
        callSafely(m_Callbacks.front(), type);
        return;
    }
    const std::vector<CNodeCallback*> snapshot = m_Callbacks;
    for (CNodeCallback* callback : snapshot) {
        if (isRegistered(callback))
            callSafely(callback, type);
    }
}

// Outside the lock: the list is read under the lock, and a callback deregistered meanwhile is not
// called (the map keeps it alive until the firing is over).
void CNodeBase::fireCallbacksOutsideLock() {
    std::vector<CNodeCallback*> snapshot;
    {
        CMapEntry entry(m_Map);
        snapshot = m_Callbacks;
    }
    for (CNodeCallback* callback : snapshot) {
        bool registered;
        {
            CMapEntry entry(m_Map);
            registered = isRegistered(callback);
        }
        if (registered)
            callSafely(callback, cbPostOutsideLock);
    }
}

void CNodeBase::callSafely(CNodeCallback* callback, ECallbackType type) {
    try {
        (*callback)(type);
    } catch (...) {
        // A failing client callback must not stop the others or unwind through the engine.
    }
}

INodeMap* CNodeBase::GetNodeMap() const {
    return &m_Map;
}

gcstring CNodeBase::GetEventID() const {
    return m_Description.value("EventID").c_str();
}

bool CNodeBase::IsStreamable() const {
    return m_Description.value("Streamable") == "Yes";
}

void CNodeBase::GetPropertyNames(gcstring_vector& PropertyNames) const {
    CMapEntry entry(m_Map);
    PropertyNames.clear();
    for (const std::string& name : m_Map.propertiesOf(*this).names())
        PropertyNames.push_back(name.c_str());
}

// Several occurrences of a property (pFeature, pSelected, ...) come back tab-separated.
bool CNodeBase::GetProperty(const gcstring& PropertyName, gcstring& ValueStr, gcstring& AttributeStr) {
    CMapEntry entry(m_Map);
    std::string value;
    std::string attribute;
    const bool found = m_Map.propertiesOf(*this).get(PropertyName.c_str(), value, attribute);
    ValueStr = value.c_str();
    AttributeStr = attribute.c_str();
    return found;
}

void CNodeBase::ImposeAccessMode(EAccessMode ImposedAccessMode) {
    CMapEntry entry(m_Map);
    m_ImposedAccess = ImposedAccessMode;
    m_Map.dropAccessFrom(this);
    changed();
}

void CNodeBase::ImposeVisibility(EVisibility ImposedVisibility) {
    CMapEntry entry(m_Map);
    m_ImposedVisibility = ImposedVisibility;
    changed();
}

INode* CNodeBase::GetAlias() const {
    return pointee("pAlias");
}

INode* CNodeBase::GetCastAlias() const {
    return pointee("pCastAlias");
}

gcstring CNodeBase::GetDocuURL() const {
    return m_Description.value("DocuURL").c_str();
}

bool CNodeBase::IsDeprecated() const {
    return m_Description.value("IsDeprecated") == "Yes";
}

EInterfaceType CNodeBase::GetPrincipalInterfaceType() const {
    return m_PrincipalType;
}

bool CNodeBase::IsFeature() const {
    return m_IsFeature;
}

bool CNodeBase::IsSelector() const {
    return m_Description.has("pSelected");
}

void CNodeBase::GetSelectedFeatures(FeatureList_t& Features) const {
    Features.clear();
    for (CNodeBase* selected : m_Map.selectedBy(this)) {
        if (IValue* value = dynamic_cast<IValue*>(selected))
            Features.push_back(value);
    }
}

void CNodeBase::GetSelectingFeatures(FeatureList_t& Features) const {
    Features.clear();
    for (CNodeBase* selector : m_Map.selectorsOf(this)) {
        if (IValue* value = dynamic_cast<IValue*>(selector))
            Features.push_back(value);
    }
}

UserData_t CNodeBase::SetUserData(UserData_t userData) {
    UserData_t previous = m_UserData;
    m_UserData = userData;
    return previous;
}

}  // namespace GenApiEngine
