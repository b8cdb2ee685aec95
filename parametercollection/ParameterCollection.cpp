// CParameterCollection: every operation under the state lock; signals after it is released.
#include "ParameterCollection.h"
#include "ScopedObjectStateLock.h"
#include "SfncVersion.h"
#include "internal/BooleanParameter.h"
#include "internal/CommandParameter.h"
#include "internal/EnumParameter.h"
#include "internal/FloatParameter.h"
#include "internal/IntegerParameter.h"
#include "internal/ParameterCollectionImpl.h"
#include "internal/PortParameter.h"
#include "internal/StringParameter.h"
#include <GenApi/GenApi.h>

using namespace ParameterCollection::Internal;

namespace ParameterCollection {

CParameterCollection::CParameterCollection(QSharedPointer<CObjectState> state)
    : m_Impl(new CParameterCollectionImpl(state)) {}

CParameterCollection::~CParameterCollection() {
    {
        CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
        for (CNodemapWrapper* wrapper : m_Impl->m_WrapperMap) {
            if (wrapper)
                wrapper->Attach(nullptr);
        }
    }
    m_Impl->m_Decoupler->shutdown();
    delete m_Impl;
}

void CParameterCollection::announceNodeMap(QString nodeMapName) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    if (m_Impl->m_WrapperMap.contains(nodeMapName))
        return;
    CNodemapWrapper* wrapper = new CNodemapWrapper(nodeMapName, m_Impl->m_Decoupler, m_Impl->m_ObjectState);
    m_Impl->m_WrapperMap.insert(nodeMapName, wrapper);
    m_Impl->m_WrapperList.append(wrapper);
}

void CParameterCollection::attachNodeMap(QString nodeMapName, GENAPI_NAMESPACE::INodeMap* nodeMap) {
    {
        CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
        CNodemapWrapper* wrapper = m_Impl->m_WrapperMap.value(nodeMapName, nullptr);
        if (wrapper)
            wrapper->Attach(nodeMap);
    }
    if (nodeMap)
        emit nodeMapAttached(nodeMapName);
}

// An unknown name gets an entry without wrapper, so that it cannot be announced afterwards.
void CParameterCollection::detachNodeMap(QString nodeMapName) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    CNodemapWrapper* wrapper = m_Impl->m_WrapperMap[nodeMapName];
    if (wrapper)
        wrapper->Attach(nullptr);
}

void CParameterCollection::detachAllNodeMaps() {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    for (CNodemapWrapper* wrapper : m_Impl->m_WrapperMap) {
        if (wrapper)
            wrapper->Attach(nullptr);
    }
}

QSharedPointer<IParameter> CParameterCollection::get(ParameterName name) {
    return m_Impl->lookUpWithUnknownType(name.getFullName());
}

QSharedPointer<IIntegerParameter> CParameterCollection::get(IntegerParameterName name) {
    return m_Impl->lookUpWithKnownType<CIntegerParameter>(name.getFullName());
}

QSharedPointer<IBooleanParameter> CParameterCollection::get(BooleanParameterName name) {
    return m_Impl->lookUpWithKnownType<CBooleanParameter>(name.getFullName());
}

QSharedPointer<IEnumParameter> CParameterCollection::get(EnumParameterName name) {
    return m_Impl->lookUpWithKnownType<CEnumParameter>(name.getFullName());
}

QSharedPointer<IFloatParameter> CParameterCollection::get(FloatParameterName name) {
    return m_Impl->lookUpWithKnownType<CFloatParameter>(name.getFullName());
}

QSharedPointer<IStringParameter> CParameterCollection::get(StringParameterName name) {
    return m_Impl->lookUpWithKnownType<CStringParameter>(name.getFullName());
}

QSharedPointer<IPortParameter> CParameterCollection::get(PortParameterName name) {
    return m_Impl->lookUpWithKnownType<CPortParameter>(name.getFullName());
}

QSharedPointer<ICommandParameter> CParameterCollection::get(CommandParameterName name) {
    return m_Impl->lookUpWithKnownType<CCommandParameter>(name.getFullName());
}

// Device files are looked up by the wrapper that the name refers to.
QSharedPointer<IFileParameter> CParameterCollection::get(FileParameterName name) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    QString fileName;
    QString nodeMapName;
    bool isAlias = false;
    CNodemapWrapper* wrapper = m_Impl->parseFullName(fileName, nodeMapName, isAlias, name.getFullName());
    return wrapper ? wrapper->createFileParameter(fileName) : QSharedPointer<IFileParameter>();
}

bool CParameterCollection::contains(ParameterName name) {
    return m_Impl->containsWithUnknownType(name.getFullName());
}

bool CParameterCollection::contains(IntegerParameterName name) {
    return m_Impl->containsWithKnownType<CIntegerParameter, GENAPI_NAMESPACE::IInteger>(name.getFullName());
}

bool CParameterCollection::contains(BooleanParameterName name) {
    return m_Impl->containsWithKnownType<CBooleanParameter, GENAPI_NAMESPACE::IBoolean>(name.getFullName());
}

bool CParameterCollection::contains(EnumParameterName name) {
    return m_Impl->containsWithKnownType<CEnumParameter, GENAPI_NAMESPACE::IEnumeration>(name.getFullName());
}

bool CParameterCollection::contains(StringParameterName name) {
    return m_Impl->containsWithKnownType<CStringParameter, GENAPI_NAMESPACE::IString>(name.getFullName());
}

bool CParameterCollection::contains(FloatParameterName name) {
    return m_Impl->containsWithKnownType<CFloatParameter, GENAPI_NAMESPACE::IFloat>(name.getFullName());
}

bool CParameterCollection::contains(PortParameterName name) {
    return m_Impl->containsWithKnownType<CPortParameter, GENAPI_NAMESPACE::IPort>(name.getFullName());
}

bool CParameterCollection::contains(CommandParameterName name) {
    return m_Impl->containsWithKnownType<CCommandParameter, GENAPI_NAMESPACE::ICommand>(name.getFullName());
}

// A device file counts when its node map lists it as an available file.
bool CParameterCollection::contains(FileParameterName name) {
    QSharedPointer<IFileParameter> file = get(name);
    return file && file->isAvailable();
}

QList<QString> CParameterCollection::getParameterCollectionNames() {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    QList<QString> names;
    for (CNodemapWrapper* wrapper : m_Impl->m_WrapperList) {
        if (wrapper->isValid())
            names.append(wrapper->GetWrapperName());
    }
    return names;
}

QList<QString> CParameterCollection::getParameterRelation(QString fullName, EParameterRelation relation,
                                                          bool allNodes) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    QString featureName;
    QString nodeMapName;
    bool isAlias = false;
    CNodemapWrapper* wrapper = m_Impl->parseFullName(featureName, nodeMapName, isAlias, fullName);
    if (!wrapper || !wrapper->isValid())
        return QList<QString>();
    return wrapper->getParameterRelationFromParameterCollection(featureName, relation, allNodes);
}

QList<QSharedPointer<IParameter>> CParameterCollection::getAllParameter() {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    QList<QSharedPointer<IParameter>> parameters;
    for (CNodemapWrapper* wrapper : m_Impl->m_WrapperList) {
        for (const QString& path : wrapper->getParameterPaths()) {
            QSharedPointer<IParameter> parameter = m_Impl->lookUpWithUnknownType(path);
            if (parameter)
                parameters.append(parameter);
        }
    }
    return parameters;
}

// An unreadable version part counts as 0; a device without the major version is undefined.
// The three parts are read in order under one hold of the state lock, so that no detach or attach
// between them mixes two devices' versions.
QVersionNumber CParameterCollection::getSfncVersion() {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    try {
        QSharedPointer<IIntegerParameter> major =
            get(IntegerParameterName("@CameraDevice/DeviceSFNCVersionMajor"));
        if (major->isEmpty())
            return Sfnc_VersionUndefined;
        QSharedPointer<IIntegerParameter> minor =
            get(IntegerParameterName("@CameraDevice/DeviceSFNCVersionMinor"));
        QSharedPointer<IIntegerParameter> subMinor =
            get(IntegerParameterName("@CameraDevice/DeviceSFNCVersionSubMinor"));
        const int majorValue = static_cast<int>(major->getValueOrDefault(0));
        const int minorValue = static_cast<int>(minor->getValueOrDefault(0));
        const int subMinorValue = static_cast<int>(subMinor->getValueOrDefault(0));
        return QVersionNumber(majorValue, minorValue, subMinorValue);
    } catch (const GENICAM_NAMESPACE::GenericException&) {
        return Sfnc_VersionUndefined;
    }
}

QString CParameterCollection::saveFeatureStreamToString(const QString& nodeMapName) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    CNodemapWrapper* wrapper = m_Impl->m_WrapperMap.value(nodeMapName, nullptr);
    return wrapper ? wrapper->saveFeatureStreamToString() : QString();
}

template <typename Load>
bool CParameterCollection::loadAndInvalidate(const QString& nodeMapName, Load load) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    CNodemapWrapper* wrapper = m_Impl->m_WrapperMap.value(nodeMapName, nullptr);
    if (!wrapper)
        return false;
    const bool loaded = load(wrapper);
    for (CNodemapWrapper* each : m_Impl->m_WrapperMap) {
        if (each)
            each->invalidate();
    }
    return loaded;
}

bool CParameterCollection::loadFeatureStreamFromString(const QString& featureStream, QString& errorText,
                                                       const QString& nodeMapName) {
    return loadAndInvalidate(nodeMapName, [&](CNodemapWrapper* wrapper) {
        return wrapper->loadFeatureStreamFromString(featureStream, errorText);
    });
}

bool CParameterCollection::loadFeatureStream(const QString& fileName, QString& errorText,
                                             const QString& nodeMapName) {
    return loadAndInvalidate(nodeMapName, [&](CNodemapWrapper* wrapper) {
        return wrapper->loadFeatureStream(fileName, errorText);
    });
}

void CParameterCollection::invalidate() {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    for (CNodemapWrapper* wrapper : m_Impl->m_WrapperMap) {
        if (wrapper)
            wrapper->invalidate();
    }
}

void CParameterCollection::poll(long long elapsedMilliseconds) {
    CScopedObjectStateLock lock(m_Impl->m_ObjectState.data());
    for (CNodemapWrapper* wrapper : m_Impl->m_WrapperMap) {
        if (wrapper)
            wrapper->poll(elapsedMilliseconds);
    }
}

}  // namespace ParameterCollection
