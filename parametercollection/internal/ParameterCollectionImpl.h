// The collection's state and algorithms: wrappers by announce order and by name, name resolution,
// typed and untyped lookups.
#ifndef PARAMETERCOLLECTION_INTERNAL_PARAMETERCOLLECTIONIMPL_H
#define PARAMETERCOLLECTION_INTERNAL_PARAMETERCOLLECTIONIMPL_H

#include "../ScopedObjectStateLock.h"
#include "NodemapWrapper.h"
#include <QMap>
#include <QStringList>
#include <QVector>

namespace ParameterCollection {
namespace Internal {

class CParameterCollectionImpl {
public:
    explicit CParameterCollectionImpl(QSharedPointer<CObjectState> state);
    ~CParameterCollectionImpl();

    // Splits one alternative into node map and feature names and finds its wrapper (null when none).
    CNodemapWrapper* parseFullName(QString& featureName, QString& nodeMapName, bool& isAlias,
                                   QString fullName);

    template <typename T>
    QSharedPointer<T> lookUpWithKnownType(const QString& name);
    QSharedPointer<IParameter> lookUpWithUnknownType(const QString& name);
    template <typename T, typename Node>
    bool containsWithKnownType(const QString& name);
    bool containsWithUnknownType(const QString& name);

    QSharedPointer<CObjectState> m_ObjectState;
    QVector<CNodemapWrapper*> m_WrapperList;
    QMap<QString, CNodemapWrapper*> m_WrapperMap;
    QSharedPointer<CModeratedParameterEventDecouplerThread> m_Decoupler;

private:
    static QStringList alternatives(const QString& name);
};

// Alternatives in order; a cached parameter of another class is fatal; without any bound result the
// caller still gets an unbound T named after the last alternative.
template <typename T>
QSharedPointer<T> CParameterCollectionImpl::lookUpWithKnownType(const QString& name) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    QString featureName;
    QString nodeMapName;
    for (const QString& alternative : alternatives(name)) {
        bool isAlias = false;
        CNodemapWrapper* wrapper = parseFullName(featureName, nodeMapName, isAlias, alternative);
        if (!wrapper)
            continue;
        QSharedPointer<T> cached = wrapper->lookUpWithKnownTypeInParameterCollection<T>(featureName);
        if (cached)
            return cached;
        QSharedPointer<T> created = wrapper->createAndAddToListIfNoDummy<T>(featureName, false);
        if (!created->isEmpty())
            return created;
    }
    return QSharedPointer<T>(new T(featureName, nodeMapName, m_ObjectState, m_Decoupler, nullptr));
}

template <typename T, typename Node>
bool CParameterCollectionImpl::containsWithKnownType(const QString& name) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    for (const QString& alternative : alternatives(name)) {
        QString featureName;
        QString nodeMapName;
        bool isAlias = false;
        CNodemapWrapper* wrapper = parseFullName(featureName, nodeMapName, isAlias, alternative);
        if (wrapper && wrapper->containsWithKnownTypeInParameterCollection<T, Node>(featureName))
            return true;
    }
    return false;
}

}  // namespace Internal
}  // namespace ParameterCollection

#endif
