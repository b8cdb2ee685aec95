// CParameter: binding, access queries, guards, text conversion, snapshot refresh and change signals.
#include "Parameter.h"
#include "../Exceptions.h"
#include "../ScopedObjectStateLock.h"
#include "GenICamExceptionTranslation.h"
#include "ModeratedParameterEventDecouplerThread.h"
#include <utility>
#include <GenApi/GenApi.h>
#include <QDebug>
#include <QMetaMethod>
#include <QTextStream>
#include <mutex>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {
namespace {

// Both shared-pointer types travel through queued connections; registering the parameter one also
// registers its conversion to QObject*, which Qt provides for shared pointers to QObjects. The signals
// name the types as written inside the namespace, and a queued connection looks them up by that text.
void registerMetaTypes() {
    static std::once_flag once;
    std::call_once(once, [] {
        qRegisterMetaType<QSharedPointer<IParameter>>();
        qRegisterMetaType<QSharedPointer<const ParameterData>>();
        qRegisterMetaType<QSharedPointer<IParameter>>("QSharedPointer<IParameter>");
        qRegisterMetaType<QSharedPointer<const ParameterData>>("QSharedPointer<const ParameterData>");
    });
}

EParameterType parameterTypeOf(EInterfaceType type) {
    switch (type) {
        case intfIInteger:
            return ParameterType_Integer;
        case intfIBoolean:
            return ParameterType_Boolean;
        case intfIFloat:
            return ParameterType_Float;
        case intfICommand:
            return ParameterType_Command;
        case intfIString:
            return ParameterType_String;
        case intfIEnumeration:
            return ParameterType_Enumeration;
        case intfICategory:
            return ParameterType_Category;
        case intfIRegister:
            return ParameterType_Register;
        default:
            return ParameterType_Undefined;
    }
}

}  // namespace

CParameter::CParameter(QString name, QString nodeMapName, QSharedPointer<CObjectState> state,
                       QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler, QObject* parent)
    : m_ObjectState(state),
      m_CacheValid(false),
      m_ChangePending(false),
      m_Name(name),
      m_NodeMapName(nodeMapName),
      m_Attached(false),
      m_Node(nullptr),
      m_CallbackHandle(0),
      m_CallbackRegistered(false),
      m_AdvancedAccess(QSharedPointer<CAdvancedParameterAccess>::create(state)),
      m_IsAlias(false),
      m_IsCallbackEnabled(true),
      m_Decoupler(decoupler) {
    setParent(parent);
    registerMetaTypes();
}

// Leaves the decoupler's queue first, so that no check can reach a parameter being destroyed.
CParameter::~CParameter() {
    if (m_Decoupler)
        m_Decoupler->removeParameterFromDecoupledParameterDataChangedSignalling(this);
    unregisterGenICamCallback();
}

QString CParameter::getName() {
    return m_Name;
}

QString CParameter::getFullName() {
    return m_NodeMapName + "/" + m_Name;
}

void CParameter::setIsAlias(bool isAlias) {
    m_IsAlias = isAlias;
}

void CParameter::setIsCallbackEnabled(bool isCallbackEnabled) {
    m_IsCallbackEnabled = isCallbackEnabled;
}

bool CParameter::isEmpty() {
    return !m_Attached;
}

QSharedPointer<IAdvancedParameterAccess> CParameter::getAdvancedParameterAccess() {
    return m_AdvancedAccess;
}

void CParameter::attachToAdvancedParameters() {
    m_AdvancedAccess->attach(m_Node, m_Attached);
}

// Only a detach or a successful attach binds it: a parameter that was never bound keeps an empty
// announcer, whose call throws std::bad_function_call.
void CParameter::bindSetValueAnnouncer() {
    if (m_AnnouncerBound.load(std::memory_order_acquire))
        return;
    m_SetValueAnnouncer = [this](QString const& value) { postSetValue(value); };
    m_AnnouncerBound.store(true, std::memory_order_release);
}

void CParameter::postSetValue(QString const& value) {
    emit parameterValueAboutToBeSet(value);
}

QString CParameter::fixedProperty(const QString& key, const QString& defaultValue) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    auto found = m_FixedProperties.constFind(key);
    if (found == m_FixedProperties.constEnd())
        found = m_FixedProperties.insert(
            key, getAdvancedParameterAccess()->getPropertyOrDefault(key, defaultValue));
    return found.value();
}

QString CParameter::snapshotText() {
    IInteger* integer = m_IntegerValue.load();
    if (!integer)
        return toString();
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        const int64_t value = integer->GetValue(false, false);
        if (m_TextValueKnown && m_CacheValid && value == m_TextValue)
            return m_CachedData->valueText;
        QString text = toString();
        m_TextValue = value;
        m_TextValueKnown = true;
        return text;
    });
}

bool CParameter::announcementListened() const {
    static const QMetaMethod announcement = QMetaMethod::fromSignal(&IParameter::parameterValueAboutToBeSet);
    return isSignalConnected(announcement);
}

void CParameter::announceValue(QString const& value) {
    if (!m_AnnouncerBound.load(std::memory_order_acquire))
        throw std::bad_function_call();
    m_SetValueAnnouncer(value);
}

// The access mode of the bound node, NI once none is bound: the unlocked guards of the access queries may
// pass just before a detach, and the answer is then the one the guard would have given a moment later.
EAccessMode CParameter::nodeAccessMode() {
    INode* node = m_Node.load();
    return node ? node->GetAccessMode() : NI;
}

bool CParameter::isReadable() {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        return IsReadable(nodeAccessMode());
    });
}

bool CParameter::isWriteable() {
    if (!m_Node)
        return false;
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        return IsWritable(nodeAccessMode());
    });
}

bool CParameter::isAvailable() {
    if (!m_Node)
        return false;
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        return IsAvailable(nodeAccessMode());
    });
}

bool CParameter::isImplemented() {
    if (!m_Node)
        return false;
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        return IsImplemented(nodeAccessMode());
    });
}

int CParameter::getVisibility() {
    if (!m_Node)
        return _UndefinedVisibility;
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        INode* node = m_Node.load();
        return node ? static_cast<int>(node->GetVisibility()) : static_cast<int>(_UndefinedVisibility);
    });
}

EParameterType CParameter::getParameterType() {
    if (!m_Node)
        return ParameterType_Undefined;
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        INode* node = m_Node.load();
        return node ? parameterTypeOf(node->GetPrincipalInterfaceType()) : ParameterType_Undefined;
    });
}

void CParameter::raiseExceptionIfDisposed() {
    if (m_ObjectState->getState() == ObjectState_Disposed) {
        throw Core::Exception::ObjectDisposedException("The parent object of the parameter " + getFullName() +
                                                       " has been disposed.");
    }
}

void CParameter::raiseExceptionIfDeviceNotOpen() {
    if (m_ObjectState->getState() == ObjectState_Closed) {
        throw Core::Exception::InvalidOperationException("Device is closed.");
    }
}

void CParameter::raiseExceptionIfNotWritable() {
    if (isEmpty())
        throw Core::Exception::InvalidOperationException(QObject::tr("Node is empty."));
    if (!IsWritable(nodeAccessMode())) {
        throw Core::Exception::InvalidOperationException(QObject::tr("Node not writable."));
    }
}

void CParameter::raiseExceptionIfNotReadable() {
    if (isEmpty())
        throw Core::Exception::InvalidOperationException(QObject::tr("Node is empty."));
    if (!IsReadable(nodeAccessMode())) {
        throw Core::Exception::InvalidOperationException(QObject::tr("Node not readable."));
    }
}

QString CParameter::toString() {
    if (m_ObjectState->getState() == ObjectState_Disposed)
        return QStringLiteral("<disposed>");
    if (isEmpty())
        return QStringLiteral("<not found>");
    if (!isReadable())
        return QStringLiteral("<error>");
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        IValue* value = m_Value.load();
        return value ? QString::fromLatin1(value->ToString(false, false).c_str())
                     : QStringLiteral("<no value>");
    });
}

void CParameter::parseAndSetValue(QString const& text) {
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotWritable();
        const QByteArray utf8 = text.toUtf8();
        announceValue(text);
        CValuePtr value(m_Node.load());
        value->FromString(utf8.constData(), true);
    });
}

// Detach with a null map; a name that is not found (or has no alias) leaves the binding as it was.
bool CParameter::attach(INodeMap* nodeMap) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        if (!nodeMap) {
            unregisterGenICamCallback();
            bindSetValueAnnouncer();
            m_Attached = false;
            m_FixedProperties.clear();
            m_Node = nullptr;
            m_Value = nullptr;
            m_IntegerValue = nullptr;
            m_TextValueKnown = false;
            attachToAdvancedParameters();
            return false;
        }
        INode* found = nodeMap->GetNode(m_Name.toUtf8().constData());
        if (found && m_IsAlias)
            found = found->GetAlias();
        if (!found)
            return false;
        if (m_Node)
            unregisterGenICamCallback();
        bindSetValueAnnouncer();
        m_FixedProperties.clear();
        m_Node = found;
        m_Value = dynamic_cast<IValue*>(found);
        m_IntegerValue = dynamic_cast<IInteger*>(found);
        m_TextValueKnown = false;
        m_Attached = true;
        registerGenICamCallback();
        attachToAdvancedParameters();
        return true;
    });
}

// A second call in a row unregisters again: the callback toggles.
void CParameter::registerGenICamCallback() {
    if (!m_Node)
        return;
    if (m_CallbackRegistered) {
        unregisterGenICamCallback();
        return;
    }
    m_CallbackHandle = Register(m_Node, *this, &CParameter::onGenApiCallback, cbPostInsideLock);
    m_CallbackRegistered = true;
}

void CParameter::unregisterGenICamCallback() {
    if (!m_Node || !m_CallbackRegistered)
        return;
    Deregister(m_CallbackHandle);
    m_CallbackHandle = 0;
    m_CallbackRegistered = false;
}

// Runs inside GenApi's lock on the changing thread: it only signals and queues, never refreshes.
void CParameter::onGenApiCallback(INode* node) {
    if (node != m_Node || !m_IsCallbackEnabled)
        return;
    emit parameterChanged();
    static const QMetaMethod decoupledSignal =
        QMetaMethod::fromSignal(&IParameter::parameterDataChangedDecoupled);
    if (m_Decoupler && isSignalConnected(decoupledSignal)) {
        m_Decoupler->pushParameterForDecoupledParameterDataChangedSignalling(this);
    }
}

bool CParameter::inReadableMode() {
    return IsReadable(nodeAccessMode());
}

bool CParameter::inWritableMode() {
    return IsWritable(nodeAccessMode());
}

bool CParameter::inReadWriteMode() {
    return nodeAccessMode() == RW;
}

void CParameter::raiseFeatureNotPresent() {
    throw Core::Exception::AccessException("Feature not present (reference not valid)");
}

void CParameter::logTypeMismatch() {
    qDebug("TypeMismatch on Attach");
}

QString CParameter::announcementText(long long value) {
    QString text;
    QTextStream(&text) << value;
    return text;
}

QString CParameter::announcementText(double value) {
    QString text;
    QTextStream(&text) << value;
    return text;
}

bool CParameter::refreshWithTypedFields(
    const std::function<bool(bool wasValid, CNodeMapLock& mapLock)>& refreshTypedFields) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    CNodeMapLock mapLock(m_Node);
    const bool wasValid = m_CacheValid;
    try {
        const bool changed = CParameter::updateCachedParameterData();
        if (!m_CachedData->isReadable)
            return changed;
        if (!refreshTypedFields(wasValid, mapLock))
            return changed;
        noteRecordChanged();
        return true;
    } catch (...) {
        m_CacheValid = false;
        throw;
    }
}

bool CParameter::updateCachedParameterDataWithoutToString() {
    if (!m_CachedData) {
        m_CachedData = createCachedData();
        m_CachedData->parameterType = getParameterType();
    }
    const int visibility = m_Node ? getVisibility() : _UndefinedVisibility;
    const bool readable = isReadable();
    const bool writeable = isWriteable();
    const bool implemented = isImplemented();
    const bool empty = isEmpty();
    // Taking the pending flag here keeps a force that arrives during the refresh for the next one.
    const bool pending = m_ChangePending.exchange(false);
    ParameterData& data = *m_CachedData;
    const bool unchanged = m_CacheValid && data.visibility == visibility && data.isReadable == readable &&
                           data.isWriteable == writeable && data.isImplemented == implemented &&
                           data.isEmpty == empty;
    // A pending force reports a change without changing the record, so the shared snapshot stays.
    if (unchanged && !pending)
        return false;
    if (!unchanged)
        noteRecordChanged();
    data.visibility = visibility;
    data.isReadable = readable;
    data.isWriteable = writeable;
    data.isImplemented = implemented;
    data.isEmpty = empty;
    m_CacheValid = true;
    return true;
}

// State lock first, then the node map's lock, as everywhere in the library.
bool CParameter::updateCachedParameterData() {
    CScopedObjectStateLock lock(m_ObjectState.data());
    CNodeMapLock mapLock(m_Node);
    const bool wasValid = m_CacheValid;
    bool changed = updateCachedParameterDataWithoutToString();
    if (m_CachedData->isReadable) {
        QString text;
        try {
            text = snapshotText();
        } catch (...) {
            m_CacheValid = false;
            throw;
        }
        if (!wasValid || text != m_CachedData->valueText) {
            // Moved, not copied: the old text, which a snapshot in another thread may share, is then
            // released by the inline QString code, where thread checkers see its atomic reference count.
            m_CachedData->valueText = std::move(text);
            noteRecordChanged();
            changed = true;
        }
    }
    return changed;
}

QSharedPointer<ParameterData> CParameter::getCachedParameterData() {
    CScopedObjectStateLock lock(m_ObjectState.data());
    QSharedPointer<ParameterData> copy = createCachedData();
    if (m_CachedData)
        *copy = *m_CachedData;
    return copy;
}

// A snapshot is immutable, so one that still tells the current state is handed out again instead of a
// copy; a change of the record (here or in the decoupler's check) makes the next call copy it anew.
QSharedPointer<const ParameterData> CParameter::getParameterData() {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(m_ObjectState.data());
        if (updateCachedParameterData())
            m_ChangePending = true;
        if (!m_Snapshot || m_SnapshotGeneration != m_CachedGeneration || !m_CacheValid ||
            typeid(*this) != *m_LibraryClass) {
            m_Snapshot = getCachedParameterData();
            m_SnapshotGeneration = m_CachedGeneration;
        }
        return m_Snapshot;
    });
}

bool CParameter::checkParameterDataChanged() {
    raiseExceptionIfDisposed();
    raiseExceptionIfDeviceNotOpen();
    const bool changed = updateCachedParameterData();
    if (changed)
        emit parameterDataChangedDecoupled(getCachedParameterData());
    return changed;
}

// Takes no state lock: a slot connected directly to parameterChanged calls this inside GenApi's
// node map lock, and the decoupler thread takes the two locks in the other order.
void CParameter::scheduleParameterDataChangedCheck(bool force) {
    if (force)
        m_ChangePending = true;
    if (m_Decoupler)
        m_Decoupler->pushParameterForDecoupledParameterDataChangedSignalling(this);
}

}  // namespace Internal
}  // namespace ParameterCollection
