// The collection's state and algorithms: wrappers by announce order and by name, name resolution,
// typed and untyped lookups.
#ifndef PARAMETERCOLLECTION_INTERNAL_PARAMETERCOLLECTIONIMPL_H
#define PARAMETERCOLLECTION_INTERNAL_PARAMETERCOLLECTIONIMPL_H

#include "../ScopedObjectStateLock.h"
#include "NodemapWrapper.h"
#include <QHash>
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
    // Full names without alternatives whose get found a parameter in its wrapper's cache, one memo per
    // kind of get: the typed get ignores "/Alias" and the untyped get does not, so the same text can name
    // two objects. Wrappers keep what they cache as long as the collection lives, so a remembered entry
    // is exactly what resolving the name again would give; it answers a repeated get with one hash lookup.
    // A parameter the wrapper did not cache (a node of another interface) is never remembered.
    QHash<QString, QSharedPointer<CParameter>> m_ResolvedTyped;
    QHash<QString, QSharedPointer<CParameter>> m_ResolvedUntyped;
    struct SResolvedName;
    static void rememberResolved(QHash<QString, QSharedPointer<CParameter>>& memo, const QString& name,
                                 const SResolvedName& resolved, const QString& cacheKey,
                                 const QSharedPointer<CParameter>& parameter);

    // A resolved alternative of a full name.
    struct SResolvedName {
        CNodemapWrapper* wrapper = nullptr;
        QString featureName;
        QString nodeMapName;
        bool isAlias = false;
    };
    // Under the state lock, visits each alternative of a name ("|"-separated) whose node map is known,
    // until the visitor answers true; the last alternative parsed is left in `last`.
    template <typename Visitor>
    bool forEachAlternative(const QString& name, SResolvedName& last, Visitor visit);
};

template <typename Visitor>
bool CParameterCollectionImpl::forEachAlternative(const QString& name, SResolvedName& last, Visitor visit) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    for (const QString& alternative : name.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        last.wrapper = parseFullName(last.featureName, last.nodeMapName, last.isAlias, alternative);
        if (last.wrapper && visit(last))
            return true;
    }
    return false;
}

// Alternatives in order; a cached parameter is taken as it is, bound or not, so that callers keep the
// same object across detach and attach; a cached parameter of another class is fatal. Without any
// cached or bound result the caller still gets an unbound T named after the last alternative.
template <typename T>
QSharedPointer<T> CParameterCollectionImpl::lookUpWithKnownType(const QString& name) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    const auto resolved = m_ResolvedTyped.constFind(name);
    if (resolved != m_ResolvedTyped.cend()) {
        if (QSharedPointer<T> typed = resolved->template dynamicCast<T>())
            return typed;
    }
    QSharedPointer<T> found;
    SResolvedName last;
    const bool bound = forEachAlternative(name, last, [&](const SResolvedName& resolved) {
        found = resolved.wrapper->lookUpWithKnownTypeInParameterCollection<T>(resolved.featureName);
        if (found)
            return true;
        found = resolved.wrapper->createAndAddToListIfNoDummy<T>(resolved.featureName, false);
        return !found->isEmpty();
    });
    if (bound) {
        rememberResolved(m_ResolvedTyped, name, last, last.featureName, found);
        return found;
    }
    return QSharedPointer<T>(new T(last.featureName, last.nodeMapName, m_ObjectState, m_Decoupler, nullptr));
}

template <typename T, typename Node>
bool CParameterCollectionImpl::containsWithKnownType(const QString& name) {
    SResolvedName last;
    return forEachAlternative(name, last, [](const SResolvedName& resolved) {
        return resolved.wrapper->containsWithKnownTypeInParameterCollection<T, Node>(resolved.featureName);
    });
}

}  // namespace Internal
}  // namespace ParameterCollection

#endif
