// CEnumParameter: settability by entry access, the two list writes with their different rules, and the
// settable-list refresh that leaves display names alone while the list stays the same.
#include "EnumParameter.h"
#include "../Exceptions.h"
#include "GenICamExceptionTranslation.h"
#include <GenApi/GenApi.h>

using namespace GENAPI_NAMESPACE;

namespace ParameterCollection {
namespace Internal {
namespace {

bool implemented(EAccessMode mode) {
    return mode != NI;
}
bool available(EAccessMode mode) {
    return mode > NA;
}

void refuseEmptyList(const QList<QString>& values) {
    if (values.isEmpty()) {
        throw Core::Exception::InvalidArgumentException("The passed parameter list must not be empty.");
    }
}

}  // namespace

CEnumParameter::CEnumParameter(QString const& name, QString const& nodeMapName,
                               QSharedPointer<CObjectState> state,
                               QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                               QObject* parent)
    : CParameter(name, nodeMapName, state, decoupler, parent),
      m_Enumeration(nullptr),
      m_ValuePropertySource(nullptr) {
    setCachedDataType<EnumParameterData>(this);
}

EParameterType CEnumParameter::getParameterType() {
    return ParameterType_Enumeration;
}

QString CEnumParameter::toString() {
    return CParameter::toString();
}

void CEnumParameter::parseAndSetValue(QString const& value) {
    CParameter::parseAndSetValue(value);
}

void CEnumParameter::setEnumValueAdvancedParameterAccessSource(
    IEnumValueAdvancedParameterAccessSource* source) {
    m_ValuePropertySource = source;
}

bool CEnumParameter::attach(INodeMap* nodeMap) {
    CParameter::attach(nodeMap);
    m_Symbolics.clear();
    m_Enumeration = nodeAs<IEnumeration>(true);
    return m_Enumeration != nullptr;
}

bool CEnumParameter::canSetValue(QString value) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        if (!m_Enumeration || !inWritableMode())
            return false;
        IEnumEntry* entry = m_Enumeration.load()->GetEntryByName(value.toUtf8().constData());
        return entry && available(entry->GetAccessMode());
    });
}

// No entry lookup first: GenApi refuses unknown and unavailable names itself.
void CEnumParameter::setValue(QString value) {
    translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotWritable();
        const QByteArray utf8 = value.toUtf8();
        announceValue(value);
        CValuePtr(m_Enumeration ? m_Enumeration.load()->GetNode() : nullptr)
            ->FromString(utf8.constData(), true);
    });
}

bool CEnumParameter::trySetValue(QString value) {
    CScopedObjectStateLock lock(objectState());
    if (isEmpty() || !canSetValue(value))
        return false;
    setValue(value);
    return true;
}

void CEnumParameter::setValue(QList<QString> values) {
    refuseEmptyList(values);
    CScopedObjectStateLock lock(objectState());
    for (const QString& candidate : values) {
        if (canSetValue(candidate))
            setValue(candidate);
    }
}

bool CEnumParameter::trySetValue(QList<QString> values) {
    refuseEmptyList(values);
    if (isEmpty())
        return false;
    CScopedObjectStateLock lock(objectState());
    for (const QString& candidate : values) {
        if (!canSetValue(candidate))
            continue;
        setValue(candidate);
        return true;
    }
    return false;
}

// GenApi's getter refuses an enumeration that is not readable itself (see valueRead); a value without an
// entry raises GenApi's error for the missing entry.
QString CEnumParameter::getValue() {
    return valueRead(m_Enumeration, [&](IEnumeration* node) {
        IEnumEntry* current = node->GetCurrentEntry(false, false);
        if (!current)
            return QString::fromLatin1(CEnumEntryPtr(nullptr)->GetSymbolic().c_str());
        return symbolicOf(current);
    });
}

// Each entry's name is made once per binding, since every read of the value asks for it.
QString CEnumParameter::symbolicOf(IEnumEntry* entry) {
    auto found = m_Symbolics.constFind(entry);
    if (found != m_Symbolics.constEnd())
        return found.value();
    return *m_Symbolics.insert(entry, QString::fromLatin1(entry->GetSymbolic().c_str()));
}

qint64 CEnumParameter::getIntValue(bool verify, bool ignoreCache) {
    return valueRead(m_Enumeration, [&](IEnumeration* node) {
        return static_cast<qint64>(node->GetIntValue(verify, ignoreCache));
    });
}

QString CEnumParameter::getValueOrDefault(QString defaultValue) {
    CScopedObjectStateLock lock(objectState());
    return isReadable() ? getValue() : defaultValue;
}

QVector<QString> CEnumParameter::entryNames(bool (*accepted)(EAccessMode)) {
    QVector<QString> names;
    if (!m_Enumeration)
        return names;
    NodeList_t entries;
    m_Enumeration.load()->GetEntries(entries);
    for (INode* node : entries) {
        IEnumEntry* entry = dynamic_cast<IEnumEntry*>(node);
        if (entry && accepted(node->GetAccessMode()))
            names.append(QString::fromUtf8(entry->GetSymbolic().c_str()));
    }
    return names;
}

QVector<QString> CEnumParameter::getAllValues() {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        return entryNames(&implemented);
    });
}

QVector<QString> CEnumParameter::getSettableValues() {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        raiseExceptionIfNotReadable();
        return entryNames(&available);
    });
}

QSharedPointer<IAdvancedParameterAccess> CEnumParameter::getAdvancedValueProperties(QString value) {
    return translateGenICamExceptions([&] {
        CScopedObjectStateLock lock(objectState());
        raiseExceptionIfDisposed();
        if (!m_ValuePropertySource || isEmpty()) {
            throw Core::Exception::ArgumentException("Invalid enumeration value.");
        }
        return m_ValuePropertySource->getAdvancedParameterAccess(getName(), value);
    });
}

QString CEnumParameter::displayNameOf(const QString& value) {
    IEnumEntry* entry =
        m_Enumeration ? m_Enumeration.load()->GetEntryByName(value.toUtf8().constData()) : nullptr;
    return entry ? QString::fromUtf8(entry->GetNode()->GetDisplayName().c_str()) : value;
}

// Runs under the state lock and the node map lock, which it releases once the settable values are
// read: display names are looked up under the state lock alone.
bool CEnumParameter::refreshSettableValues(bool wasValid, CNodeMapLock& mapLock) {
    EnumParameterData& data = static_cast<EnumParameterData&>(*cachedData());
    const QVector<QString> settable = getSettableValues();
    mapLock.unlock();
    if (wasValid && settable == data.settableValues)
        return false;
    data.settableValues = settable;
    data.settableValueDisplayNames.resize(settable.size());
    for (int i = 0; i < settable.size(); ++i)
        data.settableValueDisplayNames[i] = displayNameOf(settable[i]);
    data.valueDisplayName = displayNameOf(data.valueText);
    return true;
}

bool CEnumParameter::updateCachedParameterData() {
    return refreshWithTypedFields(
        [this](bool wasValid, CNodeMapLock& mapLock) { return refreshSettableValues(wasValid, mapLock); });
}

QSharedPointer<ParameterData> CEnumParameter::getCachedParameterData() {
    return copyCachedDataAs<EnumParameterData>();
}

}  // namespace Internal
}  // namespace ParameterCollection
