// Builds engine nodes over Aravis' document, links their dependencies and runs the lock/callback protocol.
#include "NodeMapImpl.h"
#include <Base/GCUtilities.h>
#include "AravisDocument.h"
#include "DescriptionCache.h"
#include "BooleanNode.h"
#include "CategoryNode.h"
#include "CommandNode.h"
#include "EnumerationNode.h"
#include "FloatNode.h"
#include "IntegerNode.h"
#include "NodeWriteConcatenator.h"
#include "PortDevice.h"
#include "PortNode.h"
#include "QuietXmlErrors.h"
#include "RegisterNode.h"
#include "StringNode.h"
#include "TextForms.h"
#include "PortRouting.h"
#include "ReadCycles.h"
#include <GenApi/GenApiVersion.h>
#include <GenApi/IPortConstruct.h>
#include <algorithm>
#include <cstdlib>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;
using GENICAM_NAMESPACE::gcstring_vector;

namespace GenApiEngine {
namespace {

std::unique_ptr<CNodeBase> makeNode(CNodeMapImpl& map, const SNodeDescription& d) {
    const std::string& t = d.tag;
    if (t == "Integer" || t == "IntSwissKnife" || t == "IntConverter")
        return std::make_unique<CIntegerNode>(map, d);
    if (t == "IntReg" || t == "MaskedIntReg" || t == "StructEntry") {
        return std::make_unique<CRegisterNodeT<CIntegerNode>>(map, d);
    }
    if (t == "Float" || t == "SwissKnife" || t == "Converter")
        return std::make_unique<CFloatNode>(map, d);
    if (t == "FloatReg")
        return std::make_unique<CRegisterNodeT<CFloatNode>>(map, d);
    if (t == "String")
        return std::make_unique<CStringNode>(map, d);
    if (t == "StringReg")
        return std::make_unique<CRegisterNodeT<CStringNode>>(map, d);
    if (t == "Register")
        return std::make_unique<CRegisterNode>(map, d);
    if (t == "Boolean")
        return std::make_unique<CBooleanNode>(map, d);
    if (t == "Command")
        return std::make_unique<CCommandNode>(map, d);
    if (t == "Enumeration")
        return std::make_unique<CEnumerationNode>(map, d);
    if (t == "EnumEntry")
        return std::make_unique<CEnumEntryNode>(map, d);
    if (t == "Category")
        return std::make_unique<CCategoryNode>(map, d);
    if (t == "Port")
        return std::make_unique<CPortNode>(map, d);
    return std::make_unique<CNodeBase>(map, d, intfIBase);
}

uint16_t versionPart(const std::string& text) {
    return static_cast<uint16_t>(std::strtoul(text.c_str(), nullptr, 10));
}

}  // namespace

CNodeMapImpl* CNodeMapImpl::createFromXml(const std::string& xml, const gcstring& deviceName, CLock* userLock,
                                          ECacheUsage_t cacheUsage) {
    const CQuietXmlErrors quiet;
    const CDescriptionCache cache =
        cacheUsage == CacheUsage_Ignore ? CDescriptionCache("") : CDescriptionCache::fromEnvironment();
    SPreparedDescription prepared;
    if (cacheUsage == CacheUsage_ForceWrite || !cache.load(xml, prepared)) {
        prepared = prepare(xml);
        if (cacheUsage != CacheUsage_ForceRead)
            cache.store(xml, prepared);
    }
    return createOverPorts(xml, std::move(prepared), deviceName, userLock);
}

// The index is built once: it fails early, with a GenICam exception, on text that is not XML, and the
// node map keeps it. Aravis gets the parsed document as the engine edits it.
SPreparedDescription CNodeMapImpl::prepare(const std::string& xml) {
    SPreparedDescription prepared;
    prepared.index.reset(new CXmlIndex(xml, true));
    CXmlIndex& index = *prepared.index;
    refuseReadCycles(index);
    const SPortRouting routing = routePorts(index);
    trimPaddedTexts(index.document());
    if (routing.tagged())
        tagPortAddresses(index.document(), routing);
    prepared.aravis.reset(CAravisDocument::fromDocument(index.document()));
    index.releaseDocument();
    return prepared;
}

CNodeMapImpl* CNodeMapImpl::createOverPorts(const std::string& xml, SPreparedDescription prepared,
                                            const gcstring& deviceName, CLock* userLock) {
    ArvDevice* device = createPortDevice();
    if (!prepared.aravis->attach(device)) {
        g_object_unref(device);
        throw RUNTIME_EXCEPTION("The camera description could not be loaded");
    }
    return new CNodeMapImpl(device, std::move(prepared.aravis), true, xml, std::move(prepared.index),
                            deviceName, userLock);
}

CNodeMapImpl* CNodeMapImpl::createForDevice(ArvDevice* device, const gcstring& deviceName) {
    size_t size = 0;
    const char* xml = arv_device_get_genicam_xml(device, &size);
    ArvGc* genicam = arv_device_get_genicam(device);
    if (!xml || !genicam)
        throw RUNTIME_EXCEPTION("The device has no camera description");
    std::unique_ptr<CXmlIndex> index(new CXmlIndex(std::string(xml, size)));
    refuseReadCycles(*index);
    g_object_ref(device);
    return new CNodeMapImpl(device, std::unique_ptr<CAravisDocument>(new CAravisDocument(genicam)), false,
                            std::string(xml, size), std::move(index), deviceName, nullptr);
}

CNodeMapImpl::CNodeMapImpl(ArvDevice* device, std::unique_ptr<CAravisDocument> aravis, bool ownsDevice,
                           const std::string& xml, std::unique_ptr<CXmlIndex> index,
                           const gcstring& deviceName, CLock* userLock)
    : m_Device(device),
      m_Aravis(std::move(aravis)),
      m_OwnsDevice(ownsDevice),
      m_Index(std::move(index)),
      m_DeviceName(deviceName),
      m_Xml(xml),
      m_Lock(userLock ? userLock : &m_OwnLock) {
    createNodes();
    m_Links.reset(new CNodeLinks(m_Nodes, [this](const std::string& name) { return node(name); }));
    markFeatures();
    m_Values.reset(new CValueCache(*m_Links, m_OwnsDevice));
    m_Selectors.link(*m_Index, [this](const std::string& name) { return node(name); });
    if (m_OwnsDevice) {
        m_Routing = routePorts(*m_Index);
        setTagShift(m_Device, m_Routing.shift);
        m_Values->addRules(m_Nodes, m_Routing);
        CValueCache& values = *m_Values;
        values.registers().setWriteListener([&values](int64_t address, int64_t length, size_t rule) {
            values.registersWritten(address, length, rule);
        });
        setDeviceCache(m_Device, &values.registers());
    } else {
        m_Control.reset(new CDeviceControl(m_Device));
        m_LastControl = m_Control->state();
    }
}

// The device goes before the control watch: releasing it ends its heartbeat thread, which may still be
// setting the watch's flag.
CNodeMapImpl::~CNodeMapImpl() {
    if (m_Control)
        m_Control->disconnect();
    m_Nodes.clear();
    destroyRetired();
    m_Aravis.reset();
    g_object_unref(m_Device);
    m_Control.reset();
}

const std::vector<CNodeBase*>& CNodeMapImpl::selectedBy(const CNodeBase* selector) const {
    return m_Selectors.selectedBy(selector);
}

const std::vector<CNodeBase*>& CNodeMapImpl::selectorsOf(const CNodeBase* node) const {
    return m_Selectors.selectorsOf(node);
}

void CNodeMapImpl::Destroy() {
    delete this;
}

void CNodeMapImpl::createNodes() {
    m_Nodes.reserve(m_Index->nodes().size());
    m_ByName.reserve(m_Index->nodes().size());
    for (const SNodeDescription& description : m_Index->nodes()) {
        std::unique_ptr<CNodeBase> node = makeNode(*this, description);
        m_ByName.emplace(description.name, node.get());
        if (node->GetPollingTime() > 0)
            m_PollElapsed[node.get()] = 0;
        m_Nodes.push_back(std::move(node));
    }
}

// Enumeration entries are looked up through their enumeration, since entry names repeat across
// enumerations; a node the description defines inside another goes by the name it was given there.
ArvGcNode* CNodeMapImpl::aravisNode(const SNodeDescription& description) const {
    if (description.tag == "EnumEntry")
        return m_Aravis->entry(description.parent, description.xmlName);
    return m_Aravis->node(description.definedName.empty() ? description.xmlName : description.definedName);
}

// Features are the nodes reachable from the category "Root".
void CNodeMapImpl::markFeatures() {
    std::vector<CNodeBase*> work;
    if (CNodeBase* root = node("Root"))
        work.push_back(root);
    std::set<CNodeBase*> seen(work.begin(), work.end());
    while (!work.empty()) {
        CNodeBase* category = work.back();
        work.pop_back();
        category->setIsFeature();
        for (const std::string& featureName : category->description().values("pFeature")) {
            CNodeBase* feature = node(featureName);
            if (feature && seen.insert(feature).second)
                work.push_back(feature);
        }
    }
}

// Asked once per outermost engine call: a port changing its access in the middle of one call is seen by
// the next.
void CNodeMapImpl::checkPortAccess() const {
    if (m_PortsCheckedIn == m_OutermostCalls)
        return;
    m_PortsCheckedIn = m_OutermostCalls;
    checkDeviceControl();
    for (SPortAccess& known : m_PortAccess) {
        const EAccessMode mode = known.port->GetAccessMode();
        if (known.mode == mode)
            continue;
        known.mode = mode;
        ++m_AccessGeneration;
    }
}

EDeviceControl CNodeMapImpl::deviceControl() const {
    return m_Control ? m_Control->state() : EDeviceControl::NotApplicable;
}

// The device port's access follows the device's control; a device that is lost keeps no value either.
void CNodeMapImpl::checkDeviceControl() const {
    const EDeviceControl control = deviceControl();
    if (control == m_LastControl)
        return;
    m_LastControl = control;
    ++m_AccessGeneration;
    if (control == EDeviceControl::Lost)
        m_Values->dropAll();
}

void CNodeMapImpl::invalidate(CNodeBase* node) const {
    if (node->description().tag == "Port") {
        invalidatePort(node);
        return;
    }
    // As GenApi, only a register's own invalidation drops its cached bytes: a feature invalidated
    // computes its value again from the bytes its registers keep.
    if (isRegisterKind(node->description().tag))
        m_Values->drop(node);
    dropAccessFrom(node);
    noteChanged(node, false);
}

// Everything read through a port may have changed: every kept value and access goes at once, and only
// the nodes with callbacks need to know what depends on the port.
void CNodeMapImpl::invalidatePort(CNodeBase* port) const {
    m_Values->drop(port);
    ++m_AccessGeneration;
    if (m_SuppressMode == csmOff && m_CallbackCount > 0)
        queueCallbacks(calledBackWith(port, false));
}

void CNodeMapImpl::dropAccessFrom(CNodeBase* node) const {
    for (CNodeBase* reached : m_Links->changedWith(node, false))
        reached->dropAccessCache();
}

CNodeBase* CNodeMapImpl::node(const std::string& name) const {
    const auto found = m_ByName.find(name);
    return found == m_ByName.end() ? nullptr : found->second;
}

IPort* CNodeMapImpl::userPort(const std::string& portName) const {
    const auto found = m_UserPorts.find(portName);
    return found == m_UserPorts.end() ? nullptr : found->second;
}

void CNodeMapImpl::enter() const {
    m_Lock->Lock();
    if (m_Depth++ == 0)
        ++m_OutermostCalls;
}

// The outermost call fires the collected callbacks: inside the lock first, then after releasing it.
void CNodeMapImpl::leave() const {
    if (m_Depth > 1 || (m_Pending.empty() && m_FiredInside.empty() && m_SuppressMode != csmOnce)) {
        --m_Depth;
        m_Lock->Unlock();
        return;
    }
    fireInsideLock();
    // Nodes without cbPostOutsideLock callbacks have nothing to call after the lock is released.
    m_FiredInside.erase(std::remove_if(m_FiredInside.begin(), m_FiredInside.end(),
                                       [](CNodeBase* node) { return !node->hasOutsideCallbacks(); }),
                        m_FiredInside.end());
    if (m_FiredInside.empty()) {
        --m_Depth;
        m_Lock->Unlock();
        return;
    }
    std::vector<CNodeBase*> outside;
    outside.swap(m_FiredInside);
    if (!outside.empty())
        ++m_OutsideFirings;
    --m_Depth;
    m_Lock->Unlock();
    if (outside.empty())
        return;
    for (CNodeBase* node : outside)
        node->fireCallbacksOutsideLock();
    CMapEntry entry(*this);
    if (--m_OutsideFirings == 0)
        destroyRetired();
}

// A callback deregistered while callbacks are fired outside the lock is destroyed when that is over.
void CNodeMapImpl::retire(CNodeCallback* callback) const {
    if (m_OutsideFirings > 0) {
        m_Retired.push_back(callback);
    } else {
        callback->Destroy();
    }
}

void CNodeMapImpl::destroyRetired() const {
    std::vector<CNodeCallback*> retired;
    retired.swap(m_Retired);
    for (CNodeCallback* callback : retired)
        callback->Destroy();
}

void CNodeMapImpl::fireInsideLock() const {
    for (int round = 0; round < 100 && !m_Pending.empty(); ++round) {
        m_Batch.swap(m_Pending);
        for (CNodeBase* node : m_Batch)
            node->m_QueuedForCallbacks = false;
        for (CNodeBase* node : m_Batch) {
            node->fireCallbacks(cbPostInsideLock);
            m_FiredInside.push_back(node);
        }
        m_Batch.clear();
    }
    for (CNodeBase* node : m_Pending)
        node->m_QueuedForCallbacks = false;
    m_Pending.clear();
    if (m_SuppressMode == csmOnce)
        const_cast<CNodeMapImpl*>(this)->m_SuppressMode = csmOff;
}

// A write changes what the written node's value goes to, so registers that name any of that as their
// pInvalidator drop their bytes; an invalidation reaches only the node and what depends on it.
void CNodeMapImpl::noteChanged(CNodeBase* node, bool written) const {
    const std::vector<CNodeBase*>& changed = m_Links->changedWith(node, written);
    m_Values->invalidateValues(changed, written ? node : nullptr);
    m_Values->noteRegistersChanged();
    for (CNodeBase* candidate : written ? changed : calledBackWith(node, false)) {
        for (CNodeBase* target : m_Links->invalidatedBy(candidate)) {
            // The registers a write just filled keep what was written, as GenApi caches a written value
            // after the invalidation it causes.
            if (!written || !m_Links->inValueChain(node, target))
                m_Values->drop(target);
        }
    }
    if (m_SuppressMode == csmOff && m_CallbackCount > 0)
        queueCallbacks(calledBackWith(node, written));
}

const std::vector<CNodeBase*>& CNodeMapImpl::calledBackWith(CNodeBase* node, bool written) const {
    CNodeBase::SReach& reach = node->reach();
    if (!reach.calledBackKnown[written]) {
        for (const std::string& name : dependentGraph().calledBackWith(node->description().name, written)) {
            if (CNodeBase* calledBack = this->node(name))
                reach.calledBack[written].push_back(calledBack);
        }
        reach.calledBackKnown[written] = true;
    }
    return reach.calledBack[written];
}

void CNodeMapImpl::queueCallback(CNodeBase* node) const {
    if (node->hasCallbacks() && !node->m_QueuedForCallbacks) {
        node->m_QueuedForCallbacks = true;
        m_Pending.push_back(node);
    }
}

void CNodeMapImpl::queueCallbacks(const std::vector<CNodeBase*>& nodes) const {
    for (CNodeBase* node : nodes) {
        queueCallback(node);
    }
}

void CNodeMapImpl::GetNodes(NodeList_t& Nodes) const {
    CMapEntry entry(*this);
    Nodes.clear();
    for (const std::unique_ptr<CNodeBase>& node : m_Nodes)
        Nodes.push_back(node.get());
}

INode* CNodeMapImpl::GetNode(const gcstring& Name) const {
    std::string name = Name.c_str();
    for (const char* prefix : {"Std::", "Cust::"}) {
        if (name.compare(0, std::string(prefix).size(), prefix) == 0)
            name = name.substr(std::string(prefix).size());
    }
    return node(name);
}

void CNodeMapImpl::InvalidateNodes() const {
    CMapEntry entry(*this);
    m_Values->dropAll();
    ++m_AccessGeneration;
    if (m_SuppressMode != csmOff)
        return;
    for (const std::unique_ptr<CNodeBase>& node : m_Nodes) {
        queueCallback(node.get());
    }
}

// Aravis reaches every register through the map's one device, so the first port (or "Device") serves them.
bool CNodeMapImpl::Connect(IPort* pPort, const gcstring& PortName) const {
    CMapEntry entry(*this);
    CNodeBase* target = node(PortName.c_str());
    if (!pPort || !target || target->description().tag != "Port" || !m_OwnsDevice)
        return false;
    m_UserPorts[PortName.c_str()] = pPort;
    userPortsChanged();
    const int tag = m_Routing.tagOf(PortName.c_str());
    if (tag > 0)
        setTaggedPort(m_Device, tag, pPort);
    else if (m_UserPorts.size() == 1 || PortName == "Device" || m_Routing.tagged())
        setDevicePort(m_Device, pPort);
    if (IPortConstruct* construct = dynamic_cast<IPortConstruct*>(pPort))
        construct->SetPortImpl(dynamic_cast<IPort*>(target));
    else if (IPortStackedConstruct* stacked = dynamic_cast<IPortStackedConstruct*>(pPort))
        stacked->SetPortImpl(dynamic_cast<IPortStacked*>(target));
    target->InvalidateNode();
    return true;
}

// The access of every user port is asked afresh at the next call.
void CNodeMapImpl::userPortsChanged() const {
    m_PortAccess.clear();
    for (const auto& port : m_UserPorts)
        m_PortAccess.push_back(SPortAccess{port.second, _UndefinedAccesMode});
    ++m_AccessGeneration;
}

// Takes a port connected by Connect off its port node again (chunk and event ports when they detach).
void CNodeMapImpl::disconnect(const std::string& portName) const {
    CMapEntry entry(*this);
    CNodeBase* target = node(portName);
    const auto found = m_UserPorts.find(portName);
    if (!target || found == m_UserPorts.end())
        return;
    m_UserPorts.erase(found);
    userPortsChanged();
    const int tag = m_Routing.tagOf(portName);
    if (tag > 0)
        setTaggedPort(m_Device, tag, nullptr);
    else if (m_UserPorts.empty() || portName == "Device")
        setDevicePort(m_Device, nullptr);
    target->InvalidateNode();
}

bool CNodeMapImpl::Connect(IPort* pPort) const {
    if (node("Device"))
        return Connect(pPort, "Device");
    const CNodeBase* only = nullptr;
    for (const std::unique_ptr<CNodeBase>& candidate : m_Nodes) {
        if (candidate->description().tag != "Port")
            continue;
        if (only)
            return false;
        only = candidate.get();
    }
    return only && Connect(pPort, only->name().c_str());
}

bool CNodeMapImpl::Connect(IPortStacked* pPort, const gcstring& PortName) {
    return Connect(static_cast<IPort*>(pPort), PortName);
}

bool CNodeMapImpl::Connect(IPortStacked* pPort) {
    return Connect(static_cast<IPort*>(pPort));
}

const CDependentGraph& CNodeMapImpl::dependentGraph() const {
    if (!m_DependentGraph)
        m_DependentGraph.reset(new CDependentGraph(*m_Index));
    return *m_DependentGraph;
}

const CNodeProperties& CNodeMapImpl::propertiesOf(const CNodeBase& node) const {
    if (!m_LastProperties || !m_LastProperties->describes(node))
        m_LastProperties.reset(new CNodeProperties(node));
    return *m_LastProperties;
}

gcstring CNodeMapImpl::GetDeviceName() {
    return m_DeviceName;
}

void CNodeMapImpl::Poll(int64_t ElapsedTime) {
    CMapEntry entry(*this);
    for (auto& polled : m_PollElapsed) {
        polled.second += ElapsedTime;
        if (polled.second < polled.first->GetPollingTime())
            continue;
        polled.second = 0;
        // GenApi's poll of a command asks whether an execution has finished; it invalidates nothing.
        if (CCommandNode* command = dynamic_cast<CCommandNode*>(polled.first))
            command->poll();
        else
            invalidate(polled.first);
    }
}

CLock& CNodeMapImpl::GetLock() const {
    return *m_Lock;
}

uint64_t CNodeMapImpl::GetNumNodes() const {
    return m_Nodes.size();
}

bool CNodeMapImpl::ParseSwissKnifes(gcstring_vector*) const {
    return true;
}

CNodeWriteConcatenator* CNodeMapImpl::NewNodeWriteConcatenator() const {
    return new CNodeWriteConcatenatorImpl();
}

bool CNodeMapImpl::ConcatenatedWrite(CNodeWriteConcatenator* pConcatenatedWrite, bool,
                                     gcstring_vector* pErrorList) {
    CNodeWriteConcatenatorImpl* writes = dynamic_cast<CNodeWriteConcatenatorImpl*>(pConcatenatedWrite);
    if (!writes)
        return false;
    CMapEntry entry(*this);
    bool succeeded = true;
    for (const auto& write : writes->writes()) {
        try {
            IValue* value = dynamic_cast<IValue*>(node(write.first));
            if (!value)
                throw ACCESS_EXCEPTION("Node '%s' is not present or has no value", write.first.c_str());
            value->FromString(write.second.c_str());
        } catch (const GENICAM_NAMESPACE::GenericException& e) {
            succeeded = false;
            if (!pErrorList)
                throw;
            pErrorList->push_back(e.GetDescription());
        }
    }
    return succeeded;
}

void CNodeMapImpl::SetSuppressCallbackMode(ECallbackSuppressMode Mode) {
    m_SuppressMode = Mode;
}

gcstring CNodeMapImpl::GetModelName() {
    return m_Index->rootAttribute("ModelName").c_str();
}
gcstring CNodeMapImpl::GetVendorName() {
    return m_Index->rootAttribute("VendorName").c_str();
}
gcstring CNodeMapImpl::GetToolTip() {
    return m_Index->rootAttribute("ToolTip").c_str();
}
gcstring CNodeMapImpl::GetStandardNameSpace() {
    return m_Index->rootAttribute("StandardNameSpace").c_str();
}
gcstring CNodeMapImpl::GetProductGuid() {
    return m_Index->rootAttribute("ProductGuid").c_str();
}
gcstring CNodeMapImpl::GetVersionGuid() {
    return m_Index->rootAttribute("VersionGuid").c_str();
}

void CNodeMapImpl::GetGenApiVersion(Version_t& Version, uint16_t& Build) {
    Version.Major = GENAPI_VERSION_MAJOR;
    Version.Minor = GENAPI_VERSION_MINOR;
    Version.SubMinor = GENAPI_VERSION_SUBMINOR;
    Build = GENAPI_VERSION_BUILD;
}

void CNodeMapImpl::GetSchemaVersion(Version_t& Version) {
    Version.Major = versionPart(m_Index->rootAttribute("SchemaMajorVersion"));
    Version.Minor = versionPart(m_Index->rootAttribute("SchemaMinorVersion"));
    Version.SubMinor = versionPart(m_Index->rootAttribute("SchemaSubMinorVersion"));
}

void CNodeMapImpl::GetDeviceVersion(Version_t& Version) {
    Version.Major = versionPart(m_Index->rootAttribute("MajorVersion"));
    Version.Minor = versionPart(m_Index->rootAttribute("MinorVersion"));
    Version.SubMinor = versionPart(m_Index->rootAttribute("SubMinorVersion"));
}

UserData_t CNodeMapImpl::SetUserData(UserData_t userData) {
    UserData_t previous = m_UserData;
    m_UserData = userData;
    return previous;
}

}  // namespace GenApiEngine

namespace GENAPI_NAMESPACE {

// A handle is the address of the callback object, which knows the node it is registered on.
void Deregister(CallbackHandleType pCallbackInfo) {
    CNodeCallback* callback = reinterpret_cast<CNodeCallback*>(pCallbackInfo);
    if (callback && callback->GetNode())
        callback->GetNode()->DeregisterCallback(pCallbackInfo);
}

}  // namespace GENAPI_NAMESPACE
