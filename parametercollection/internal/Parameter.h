// The implementation base of every parameter: binding to a node, access, guards, snapshot, callbacks.
#ifndef PARAMETERCOLLECTION_INTERNAL_PARAMETER_H
#define PARAMETERCOLLECTION_INTERNAL_PARAMETER_H

#include "../AdvancedParameterAccess.h"
#include "../IParameter.h"
#include "../ObjectState.h"
#include "../ParameterCollectionExport.h"
#include "../ScopedObjectStateLock.h"
#include "GenICamExceptionTranslation.h"
#include "NodeMapLock.h"
#include <GenApi/GenApi.h>
#include <QHash>
#include <QSharedPointer>
#include <atomic>
#include <functional>
#include <type_traits>
#include <typeinfo>

namespace ParameterCollection {
namespace Internal {

class CModeratedParameterEventDecouplerThread;

class PARAMETERCOLLECTION_EXPORT CParameter : public virtual IParameter {
    Q_OBJECT

public:
    CParameter(QString name, QString nodeMapName, QSharedPointer<CObjectState> state,
               QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler, QObject* parent = nullptr);
    ~CParameter() override;

    virtual QString getName() override;
    virtual QString getFullName() override;
    virtual bool isReadable() override;
    virtual bool isWriteable() override;
    virtual bool isEmpty() override;
    virtual bool isAvailable() override;
    virtual bool isImplemented() override;
    virtual int getVisibility() override;
    virtual EParameterType getParameterType() override;
    virtual QSharedPointer<const ParameterData> getParameterData() override;
    virtual void scheduleParameterDataChangedCheck(bool force) override;
    // Binds to the node of this parameter's name in a node map (null detaches); false when not found.
    virtual bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap);
    virtual QString toString() override;
    virtual void parseAndSetValue(QString const& value) override;
    virtual QSharedPointer<IAdvancedParameterAccess> getAdvancedParameterAccess() override;
    virtual void raiseExceptionIfDisposed();
    virtual void raiseExceptionIfDeviceNotOpen();
    virtual void raiseExceptionIfNotReadable();
    virtual void raiseExceptionIfNotWritable();
    // Refreshes the snapshot; true when it changed (or a change was pending).
    virtual bool updateCachedParameterData();
    // A copy of the snapshot in a fresh shared pointer.
    virtual QSharedPointer<ParameterData> getCachedParameterData();

    // The decoupler's check: refresh, and emit parameterDataChangedDecoupled when the snapshot changed.
    bool checkParameterDataChanged();
    void setIsAlias(bool isAlias);
    void setIsCallbackEnabled(bool isCallbackEnabled);
    void registerGenICamCallback();
    void unregisterGenICamCallback();
    void onGenApiCallback(GENAPI_NAMESPACE::INode* node);

protected:
    // Refreshes everything but the value text; used by typed refreshes too.
    bool updateCachedParameterDataWithoutToString();
    void attachToAdvancedParameters();
    void bindSetValueAnnouncer();
    void postSetValue(QString const& value);
    // Calls the set-value announcer, so that parameterValueAboutToBeSet goes out before a write.
    void announceValue(QString const& value);
    // True while a receiver is connected to parameterValueAboutToBeSet.
    bool announcementListened() const;
    // A property the description fixes for the node (its representation, say), read once per binding.
    QString fixedProperty(const QString& key, const QString& defaultValue);
    // The value text a snapshot keeps: an integer's text follows from its value, so it is made again only
    // when the value changed since the snapshot made it.
    QString snapshotText();
    GENAPI_NAMESPACE::EAccessMode nodeAccessMode();
    GENAPI_NAMESPACE::INode* node() const { return m_Node; }
    CObjectState* objectState() const { return m_ObjectState.data(); }
    // The cached record, created on first refresh with the record type its class chose.
    QSharedPointer<ParameterData>& cachedData() { return m_CachedData; }
    // Typed classes choose their record type in their constructor; the choice is a plain function
    // pointer, not a virtual, so that the virtual operations keep their published slot order.
    // The class passes itself too: snapshots of the library's own classes, whose refreshes note every change
    // of the record, are shared while unchanged; a class derived elsewhere gets a fresh copy every time.
    template <typename Data, typename Self>
    void setCachedDataType(const Self*) {
        m_CreateCachedData = &createRecord<Data>;
        m_LibraryClass = &typeid(Self);
    }
    // Counts a change of the cached record, so that the next snapshot is a fresh copy.
    void noteRecordChanged() { ++m_CachedGeneration; }
    QSharedPointer<ParameterData> createCachedData() const { return m_CreateCachedData(); }
    bool cacheValid() const { return m_CacheValid; }

    // Whether a node is bound and its access mode allows reading, writing, or both (RW).
    bool inReadableMode();
    bool inWritableMode();
    bool inReadWriteMode();
    // The typed operations that need a node raise "Feature not present (reference not valid)" without one.
    template <typename Node>
    Node* requireNode(Node* node) {
        if (!node)
            raiseFeatureNotPresent();
        return node;
    }
    template <typename Node>
    Node* requireNode(const std::atomic<Node*>& node) {
        return requireNode(node.load());
    }
    [[noreturn]] static void raiseFeatureNotPresent();
    // The bound node as one of GenApi's typed interfaces; logs "TypeMismatch on Attach" when asked to
    // and the node has another interface.
    template <typename Node>
    Node* nodeAs(bool logMismatch) {
        Node* typed = dynamic_cast<Node*>(m_Node.load());
        if (!typed && m_Node && logMismatch)
            logTypeMismatch();
        return typed;
    }
    static void logTypeMismatch();

    // Announces a value in its QTextStream form, then writes it with verification.
    template <typename Node, typename Value>
    void announceAndWrite(Node* node, Value value) {
        if constexpr (std::is_integral_v<Value>) {
            announceValue(announcementText(static_cast<long long>(value)));
        } else {
            announceValue(announcementText(static_cast<double>(value)));
        }
        node->SetValue(value, true);
    }
    // A percent write at or beyond an end of the range writes that limit, reading only it: true when it
    // did. A percentage inside the range (or NaN) is left to the caller.
    template <typename Node>
    static bool writeLimitOfPercent(Node* node, double percent) {
        if (percent <= 0)
            node->SetValue(node->GetMin(), true);
        else if (percent >= 100.0)
            node->SetValue(node->GetMax(), true);
        else
            return false;
        return true;
    }
    static QString announcementText(long long value);
    static QString announcementText(double value);

    // The standard read: state lock, disposed and readable guards, then the read of the typed node (a
    // missing typed node raises "Feature not present"), with GenICam exceptions translated. The node is
    // taken only under the lock, so that a read never uses a node of a map attached meanwhile.
    template <typename Node, typename Read>
    auto standardRead(const std::atomic<Node*>& node, Read read) -> decltype(read(node.load())) {
        return translateGenICamExceptions([&] {
            CScopedObjectStateLock lock(m_ObjectState.data());
            raiseExceptionIfDisposed();
            raiseExceptionIfNotReadable();
            return read(requireNode(node.load()));
        });
    }
    // A value read: GenApi's value getters refuse a node that is not readable themselves, so the
    // readable guard is asked only when the getter refused, and raises its own exception then.
    template <typename Node, typename Read>
    auto valueRead(const std::atomic<Node*>& node, Read read) -> decltype(read(node.load())) {
        return translateGenICamExceptions([&] {
            CScopedObjectStateLock lock(m_ObjectState.data());
            if (m_ObjectState->getState() == ObjectState_Disposed)
                raiseExceptionIfDisposed();
            Node* current = node.load();
            if (!current) {
                raiseExceptionIfNotReadable();
                requireNode(current);
            }
            try {
                return read(current);
            } catch (const GENICAM_NAMESPACE::AccessException&) {
                raiseExceptionIfNotReadable();
                throw;
            }
        });
    }
    // The standard write: state lock, disposed and writable guards, the announcement, then the write,
    // with GenICam exceptions translated. While nobody listens to the announcement, the text is not made
    // and GenApi's setter refuses a node that is not writable itself; the writable guard is asked only
    // then, and raises its own exception, so that the outcome is the same.
    template <typename Text, typename Write>
    void standardWrite(Text announcement, Write write) {
        translateGenICamExceptions([&] {
            CScopedObjectStateLock lock(m_ObjectState.data());
            raiseExceptionIfDisposed();
            if (m_Node.load() && !announcementListened()) {
                try {
                    write();
                } catch (const GENICAM_NAMESPACE::AccessException&) {
                    raiseExceptionIfNotWritable();
                    throw;
                }
                return;
            }
            raiseExceptionIfNotWritable();
            announceValue(announcement());
            write();
        });
    }

    // Runs an operation under the state lock.
    template <typename Operation>
    void underStateLock(Operation operation) {
        CScopedObjectStateLock lock(m_ObjectState.data());
        operation();
    }
    // The try form of a write that needs a readable and writable node: false without one.
    template <typename Operation>
    bool tryWhenReadWrite(Operation operation) {
        CScopedObjectStateLock lock(m_ObjectState.data());
        if (isEmpty() || !inReadWriteMode())
            return false;
        operation();
        return true;
    }

    // A copy of the cached record with its typed fields, in a fresh shared pointer.
    template <typename Data>
    QSharedPointer<ParameterData> copyCachedDataAs() {
        CScopedObjectStateLock lock(m_ObjectState.data());
        QSharedPointer<Data> copy = QSharedPointer<Data>::create();
        if (m_CachedData)
            *copy = static_cast<const Data&>(*m_CachedData);
        return copy;
    }
    // A typed refresh: the base refresh under the state and node map locks, then, while readable,
    // refreshTypedFields(wasValid, mapLock) reports whether typed fields changed; it may release the
    // node map lock early. A failure invalidates the cache.
    bool refreshWithTypedFields(
        const std::function<bool(bool wasValid, CNodeMapLock& mapLock)>& refreshTypedFields);

private:
    template <typename Data>
    static QSharedPointer<ParameterData> createRecord() {
        return QSharedPointer<Data>::create();
    }

    QSharedPointer<CObjectState> m_ObjectState;
    QSharedPointer<ParameterData> m_CachedData;
    bool m_CacheValid;
    // The last snapshot getParameterData handed out, shared again while the cached record is unchanged;
    // the generation counts the changes of the record.
    QSharedPointer<const ParameterData> m_Snapshot;
    QHash<QString, QString> m_FixedProperties;
    quint64 m_SnapshotGeneration = 0;
    quint64 m_CachedGeneration = 1;
    const std::type_info* m_LibraryClass = &typeid(CParameter);
    // Set without the state lock by scheduleParameterDataChangedCheck, hence atomic.
    std::atomic<bool> m_ChangePending;
    QString m_Name;
    QString m_NodeMapName;
    // Read without the state lock by isEmpty (toString's first tests, the unlocked guards).
    std::atomic<bool> m_Attached;
    // Written by attach under the state lock, read by operations that test it first without it.
    std::atomic<GENAPI_NAMESPACE::INode*> m_Node;
    // The bound node as a value (null for categories and the like), for toString.
    std::atomic<GENAPI_NAMESPACE::IValue*> m_Value{nullptr};
    std::atomic<GENAPI_NAMESPACE::IInteger*> m_IntegerValue{nullptr};
    // The integer value the snapshot's text was made from; guarded by the state lock.
    int64_t m_TextValue = 0;
    bool m_TextValueKnown = false;
    std::function<void(QString const&)> m_SetValueAnnouncer;
    // Set once the announcer is bound; it is bound only once, since its target never changes, so that an
    // unchecked write may call it without the lock.
    std::atomic<bool> m_AnnouncerBound{false};
    GENAPI_NAMESPACE::CallbackHandleType m_CallbackHandle;
    bool m_CallbackRegistered;
    QSharedPointer<CAdvancedParameterAccess> m_AdvancedAccess;
    bool m_IsAlias;
    bool m_IsCallbackEnabled;
    QSharedPointer<CModeratedParameterEventDecouplerThread> m_Decoupler;
    QSharedPointer<ParameterData> (*m_CreateCachedData)() = &createRecord<ParameterData>;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
