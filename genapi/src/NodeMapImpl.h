// The engine's node map: the nodes of one description over an Aravis GenICam document and device.
#ifndef GENAPI_ENGINE_NODEMAPIMPL_H
#define GENAPI_ENGINE_NODEMAPIMPL_H

#include <GenApi/IDestroy.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/INodeMap.h>
#include <GenApi/NodeMapFactory.h>
#include <GenApi/IUserData.h>
#include <GenApi/NodeCallback.h>
#include "DependentGraph.h"
#include "DescriptionCache.h"
#include "DeviceControl.h"
#include "NodeProperties.h"
#include "PortRouting.h"
#include "SelectorLinks.h"
#include "NodeLinks.h"
#include "ValueCache.h"
#include "XmlIndex.h"
#include <arv.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace GenApiEngine {

class CNodeBase;

class CNodeMapImpl : public GenApi::INodeMap,
                     public GenApi::IDestroy,
                     public GenApi::IDeviceInfo,
                     public GenApi::IUserData {
public:
    // A map over a description whose registers are reached through user ports connected later; the
    // description cache is used as the factory's cache usage asks, when the environment names one.
    static CNodeMapImpl* createFromXml(const std::string& xml, const GenICam::gcstring& deviceName,
                                       GenApi::CLock* userLock,
                                       GenApi::ECacheUsage_t cacheUsage = GenApi::CacheUsage_Ignore);
    // A map over a device Aravis opened; the map keeps a reference to the device.
    static CNodeMapImpl* createForDevice(ArvDevice* device, const GenICam::gcstring& deviceName);

    // INodeMap
    void GetNodes(GenApi::NodeList_t& Nodes) const override;
    GenApi::INode* GetNode(const GenICam::gcstring& Name) const override;
    void InvalidateNodes() const override;
    bool Connect(GenApi::IPort* pPort, const GenICam::gcstring& PortName) const override;
    bool Connect(GenApi::IPort* pPort) const override;
    bool Connect(GenApi::IPortStacked* pPort, const GenICam::gcstring& PortName) override;
    bool Connect(GenApi::IPortStacked* pPort) override;
    GenICam::gcstring GetDeviceName() override;
    void Poll(int64_t ElapsedTime) override;
    GenApi::CLock& GetLock() const override;
    uint64_t GetNumNodes() const override;
    bool ParseSwissKnifes(GenICam::gcstring_vector* pErrorList = NULL) const override;
    GenApi::CNodeWriteConcatenator* NewNodeWriteConcatenator() const override;
    bool ConcatenatedWrite(GenApi::CNodeWriteConcatenator* pConcatenatedWrite, bool featureStreaming = true,
                           GenICam::gcstring_vector* pErrorList = NULL) override;
    void SetSuppressCallbackMode(GenApi::ECallbackSuppressMode Mode) override;

    // IDestroy
    void Destroy() override;

    // IDeviceInfo
    GenICam::gcstring GetModelName() override;
    GenICam::gcstring GetVendorName() override;
    GenICam::gcstring GetToolTip() override;
    GenICam::gcstring GetStandardNameSpace() override;
    void GetGenApiVersion(Version_t& Version, uint16_t& Build) override;
    void GetSchemaVersion(Version_t& Version) override;
    void GetDeviceVersion(Version_t& Version) override;
    GenICam::gcstring GetProductGuid() override;
    GenICam::gcstring GetVersionGuid() override;

    // IUserData
    GenApi::UserData_t GetUserData() const override { return m_UserData; }
    GenApi::UserData_t SetUserData(GenApi::UserData_t userData) override;

    // Engine side, used by the nodes.
    CNodeBase* node(const std::string& name) const;
    ArvDevice* device() const { return m_Device; }
    // Aravis' node for a node of the description, made when first asked for; the map lock must be held.
    ArvGcNode* aravisNode(const SNodeDescription& description) const;
    const CAravisDocument& aravis() const { return *m_Aravis; }
    const CXmlIndex& index() const { return *m_Index; }
    // The description text the map was made from.
    const std::string& xml() const { return m_Xml; }
    // The features a selector selects: its pSelected nodes, then every node that reads one of them.
    const std::vector<CNodeBase*>& selectedBy(const CNodeBase* selector) const;
    // The selectors whose selected features include the node: those that name it first.
    const std::vector<CNodeBase*>& selectorsOf(const CNodeBase* node) const;
    // The user port connected for a port node, or null when the port is served by the Aravis device.
    GenApi::IPort* userPort(const std::string& portName) const;
    void disconnect(const std::string& portName) const;
    void userPortsChanged() const;
    bool servedByDevice() const { return !m_OwnsDevice; }
    // Who controls the device of a map Aravis opened (NotApplicable for maps over user ports).
    EDeviceControl deviceControl() const;
    // The address offset that routes transfers of a port's registers to that port.
    int64_t portOffset(const std::string& portName) const { return m_Routing.offsetOf(portName); }
    // The link table: what every node reads and what depends on it.
    const CNodeLinks& links() const { return *m_Links; }
    // The register bytes and node values the map keeps.
    CValueCache& values() const { return *m_Values; }
    // Null while the map is being built.
    CValueCache* valueCache() const { return m_Values.get(); }
    // The dependents GenApi lists in pDependent, worked out when first asked for; the map lock must be held.
    const CDependentGraph& dependentGraph() const;
    // A node's properties; the list of the node asked last is kept, since a client asks for a node's names
    // and then for each of them. The map lock must be held.
    const CNodeProperties& propertiesOf(const CNodeBase& node) const;

    // Cached access modes are valid while they carry the current generation; a user port that reports
    // another access mode than before starts a new one.
    uint64_t accessGeneration() const { return m_AccessGeneration; }
    void checkPortAccess() const;
    void checkDeviceControl() const;

    // Every engine call holds the map lock through one of these; callbacks fire when the outermost ends.
    void enter() const;
    void leave() const;
    // Keeps count of the callbacks registered on the map's nodes, so that a change with nobody to tell
    // works out no callback set at all.
    void countCallbacks(int delta) const { m_CallbackCount += delta; }
    // Takes a deregistered callback: destroyed now, or after the callbacks being fired outside the lock.
    void retire(GenApi::CNodeCallback* callback) const;

    // Marks a node as changed, by a write or by an invalidation: the values of what depends on it are
    // computed again, nodes that name a changed node as their pInvalidator lose their cached register
    // bytes, and the callbacks of the nodes GenApi calls back for such a change fire once.
    void noteChanged(CNodeBase* node, bool written) const;
    // Drops the cached bytes behind a node, then marks it changed.
    void invalidate(CNodeBase* node) const;
    void invalidatePort(CNodeBase* port) const;
    // Forgets the kept access of a node and of every node that reads it, since its own access changed.
    void dropAccessFrom(CNodeBase* node) const;

private:
    CNodeMapImpl(ArvDevice* device, std::unique_ptr<CAravisDocument> aravis, bool ownsDevice,
                 const std::string& xml, std::unique_ptr<CXmlIndex> index,
                 const GenICam::gcstring& deviceName, GenApi::CLock* userLock);
    static SPreparedDescription prepare(const std::string& xml);
    static CNodeMapImpl* createOverPorts(const std::string& xml, SPreparedDescription prepared,
                                         const GenICam::gcstring& deviceName, GenApi::CLock* userLock);
    ~CNodeMapImpl();
    void createNodes();
    void markFeatures();
    // The nodes GenApi calls back when a node is written or invalidated, worked out once per node.
    const std::vector<CNodeBase*>& calledBackWith(CNodeBase* node, bool written) const;
    void queueCallbacks(const std::vector<CNodeBase*>& nodes) const;
    void queueCallback(CNodeBase* node) const;
    void fireInsideLock() const;
    void destroyRetired() const;

    ArvDevice* m_Device;
    std::unique_ptr<CAravisDocument> m_Aravis;
    bool m_OwnsDevice;
    std::unique_ptr<CXmlIndex> m_Index;
    GenICam::gcstring m_DeviceName;
    std::string m_Xml;
    mutable GenApi::CLock m_OwnLock;
    GenApi::CLock* m_Lock;
    GenApi::UserData_t m_UserData = nullptr;

    std::vector<std::unique_ptr<CNodeBase>> m_Nodes;
    std::unordered_map<std::string, CNodeBase*> m_ByName;
    std::unique_ptr<CNodeLinks> m_Links;
    std::unique_ptr<CValueCache> m_Values;
    SPortRouting m_Routing;
    CSelectorLinks m_Selectors;
    mutable std::map<std::string, GenApi::IPort*> m_UserPorts;
    mutable std::unique_ptr<CDependentGraph> m_DependentGraph;
    mutable std::unique_ptr<CNodeProperties> m_LastProperties;
    mutable uint64_t m_AccessGeneration = 1;
    mutable uint64_t m_OutermostCalls = 0;
    mutable uint64_t m_PortsCheckedIn = 0;
    // The access each connected user port reported when last asked.
    struct SPortAccess {
        GenApi::IPort* port;
        GenApi::EAccessMode mode;
    };
    mutable std::vector<SPortAccess> m_PortAccess;
    std::unique_ptr<CDeviceControl> m_Control;
    mutable EDeviceControl m_LastControl = EDeviceControl::NotApplicable;
    std::map<CNodeBase*, int64_t> m_PollElapsed;

    mutable int64_t m_CallbackCount = 0;
    mutable int m_Depth = 0;
    mutable std::vector<CNodeBase*> m_Pending;
    // The nodes being called back in one round, kept so that firing allocates nothing once warm.
    mutable std::vector<CNodeBase*> m_Batch;
    mutable std::vector<CNodeBase*> m_FiredInside;
    mutable int m_OutsideFirings = 0;
    mutable std::vector<GenApi::CNodeCallback*> m_Retired;
    GenApi::ECallbackSuppressMode m_SuppressMode = GenApi::csmOff;
};

// Holds the map lock for one engine call and lets callbacks fire when the outermost call ends.
class CMapEntry {
public:
    explicit CMapEntry(const CNodeMapImpl& map) : m_Map(map) { m_Map.enter(); }
    ~CMapEntry() { m_Map.leave(); }
    CMapEntry(const CMapEntry&) = delete;
    CMapEntry& operator=(const CMapEntry&) = delete;

private:
    const CNodeMapImpl& m_Map;
};

}  // namespace GenApiEngine

#endif
