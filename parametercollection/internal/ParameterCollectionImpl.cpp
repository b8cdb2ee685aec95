// Name resolution and the untyped lookups of the collection.
#include "ParameterCollectionImpl.h"

namespace ParameterCollection {
namespace Internal {

CParameterCollectionImpl::CParameterCollectionImpl(QSharedPointer<CObjectState> state)
    : m_ObjectState(state), m_Decoupler(new CModeratedParameterEventDecouplerThread(state)) {}

CParameterCollectionImpl::~CParameterCollectionImpl() {
    for (CNodemapWrapper* wrapper : m_WrapperList)
        delete wrapper;
}

// "@Map/Feature[/Alias]" names its node map; anything else is a feature of the first announced map.
CNodemapWrapper* CParameterCollectionImpl::parseFullName(QString& featureName, QString& nodeMapName,
                                                         bool& isAlias, QString fullName) {
    isAlias = false;
    if (fullName.isNull())
        return nullptr;
    if (!fullName.isEmpty() && fullName.at(0) == QLatin1Char('@')) {
        const QStringList parts = fullName.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        if (parts.size() < 2)
            return nullptr;
        nodeMapName = parts.at(0);
        featureName = parts.at(1);
        isAlias = parts.size() == 3 && parts.at(2) == QLatin1String("Alias");
        return m_WrapperMap.value(nodeMapName, nullptr);
    }
    if (m_WrapperList.isEmpty())
        return nullptr;
    featureName = fullName;
    nodeMapName = m_WrapperList.first()->GetWrapperName();
    return m_WrapperList.first();
}

void CParameterCollectionImpl::rememberResolved(QHash<QString, QSharedPointer<CParameter>>& memo,
                                                const QString& name, const SResolvedName& resolved,
                                                const QString& cacheKey,
                                                const QSharedPointer<CParameter>& parameter) {
    if (!name.contains(QLatin1Char('|')) && resolved.wrapper->cachedParameter(cacheKey) == parameter)
        memo.insert(name, parameter);
}

// A remembered parameter answers while it is bound; otherwise the name is resolved again, as the first
// time, so that an unbound parameter still gives no result.
QSharedPointer<IParameter> CParameterCollectionImpl::lookUpWithUnknownType(const QString& name) {
    CScopedObjectStateLock lock(m_ObjectState.data());
    const auto resolved = m_ResolvedUntyped.constFind(name);
    if (resolved != m_ResolvedUntyped.cend() && !(*resolved)->isEmpty())
        return *resolved;
    QSharedPointer<CParameter> found;
    SResolvedName last;
    const bool bound = forEachAlternative(name, last, [&](const SResolvedName& resolved) {
        found = resolved.wrapper->lookUpWithUnknownTypeInParameterCollection(resolved.featureName,
                                                                             resolved.isAlias);
        return !found->isEmpty();
    });
    if (!bound)
        return QSharedPointer<IParameter>();
    rememberResolved(m_ResolvedUntyped, name, last, CNodemapWrapper::cacheKey(last.featureName, last.isAlias),
                     found);
    return found;
}

bool CParameterCollectionImpl::containsWithUnknownType(const QString& name) {
    SResolvedName last;
    return forEachAlternative(name, last, [](const SResolvedName& resolved) {
        return resolved.wrapper->containsWithUnknownTypeInParameterCollection(resolved.featureName,
                                                                              resolved.isAlias);
    });
}

}  // namespace Internal
}  // namespace ParameterCollection
