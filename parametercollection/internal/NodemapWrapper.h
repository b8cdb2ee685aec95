// One named node map of a camera inside a collection: the cache of its parameters, their creation,
// and their re-binding whenever a node map is attached or detached.
#ifndef PARAMETERCOLLECTION_INTERNAL_NODEMAPWRAPPER_H
#define PARAMETERCOLLECTION_INTERNAL_NODEMAPWRAPPER_H

#include "../FileParameter.h"
#include "../IFileParameter.h"
#include "../IParameterCollection.h"
#include "../ObjectState.h"
#include "IEnumValueAdvancedParameterAccessSource.h"
#include "ModeratedParameterEventDecouplerThread.h"
#include "Parameter.h"
#include <GenApi/GenApi.h>
#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

namespace ParameterCollection {
namespace Internal {

class CEnumParameter;

class CNodemapWrapper : public IEnumValueAdvancedParameterAccessSource {
public:
    CNodemapWrapper(QString name, QSharedPointer<CModeratedParameterEventDecouplerThread> decoupler,
                    QSharedPointer<CObjectState> state);
    ~CNodemapWrapper() override;

    // The property access of the entry "EnumEntry_<parameter>_<value>".
    QSharedPointer<IAdvancedParameterAccess> getAdvancedParameterAccess(const QString& parameterName,
                                                                        const QString& valueName) override;

    QString GetWrapperName() const { return m_Name; }
    bool isValid() const { return m_NodeMap != nullptr; }
    // Binds the wrapper and every cached parameter to a node map (null detaches); a failure is fatal.
    void Attach(GENAPI_NAMESPACE::INodeMap* nodeMap);
    void invalidate();
    void poll(long long elapsedMilliseconds);
    void setCallbacksEnabled(bool enabled);
    void enableCallbacks() { setCallbacksEnabled(true); }
    void disableCallbacks() { setCallbacksEnabled(false); }

    // The cached parameter of a feature as a T, or null when none is cached; another class is fatal.
    template <typename T>
    QSharedPointer<T> lookUpWithKnownTypeInParameterCollection(const QString& featureName);
    // Creates a T bound to the node map; it is cached only when its node was found.
    template <typename T>
    QSharedPointer<T> createAndAddToListIfNoDummy(const QString& featureName, bool isAlias);
    // The cached parameter, or a new one whose class follows the node's interface (a dummy without node).
    QSharedPointer<CParameter> lookUpWithUnknownTypeInParameterCollection(const QString& featureName,
                                                                          bool isAlias);
    bool containsWithUnknownTypeInParameterCollection(const QString& featureName, bool isAlias);
    // Cached as a T, or, uncached, a node of that name offering GenApi interface Node.
    template <typename T, typename Node>
    bool containsWithKnownTypeInParameterCollection(const QString& featureName);
    // The device-file parameter of a file of this node map, bound to it; the same object for the same
    // name, re-bound by every Attach like the other parameters.
    QSharedPointer<IFileParameter> createFileParameter(const QString& fileName);

    // The parameter cached under a key (feature name, "/Alias" appended for the alias view), or null.
    QSharedPointer<CParameter> cachedParameter(const QString& key) const { return m_Parameters.value(key); }
    static QString cacheKey(const QString& featureName, bool isAlias);

    QString buildPath(GENAPI_NAMESPACE::INode* node) const;
    QList<QString> getParameterPaths() const;
    QList<QString> getParameterRelationFromParameterCollection(const QString& featureName,
                                                               EParameterRelation relation, bool allNodes);
    // The full names of the categories from `category` down to the parent of the searched feature.
    QList<QString> depthSearch(const QString& searchedName, bool& found, const QString& category,
                               int depth = 0);

    bool loadFeatureStream(const QString& fileName, QString& errorText);
    bool loadFeatureStreamFromString(const QString& featureStream, QString& errorText);
    QString saveFeatureStreamToString();

private:
    GENAPI_NAMESPACE::INode* findNode(const QString& featureName) const;
    void installValueSource(const QSharedPointer<CParameter>& parameter);
    QList<QString> relatedNodes(GENAPI_NAMESPACE::INode* node, EParameterRelation relation, bool allNodes);
    // Runs a load with callbacks off; a GenICam failure becomes errorText and false.
    template <typename Load>
    bool loadWithCallbacksOff(QString& errorText, Load load);

    QMap<QString, QSharedPointer<CParameter>> m_Parameters;

    QMap<QString, QSharedPointer<CFileParameter>> m_FileParameters;
    GENAPI_NAMESPACE::INodeMap* m_NodeMap;
    QSharedPointer<CObjectState> m_ObjectState;
    QString m_Name;
    QSharedPointer<CModeratedParameterEventDecouplerThread> m_Decoupler;
};

template <typename T>
QSharedPointer<T> CNodemapWrapper::lookUpWithKnownTypeInParameterCollection(const QString& featureName) {
    const auto cached = m_Parameters.constFind(featureName);
    if (cached == m_Parameters.constEnd())
        return QSharedPointer<T>();
    QSharedPointer<T> typed = cached.value().template dynamicCast<T>();
    if (!typed)
        qFatal("Error: TypeMismatch");
    return typed;
}

template <typename T>
QSharedPointer<T> CNodemapWrapper::createAndAddToListIfNoDummy(const QString& featureName, bool isAlias) {
    QSharedPointer<T> created = QSharedPointer<T>::create(featureName, m_Name, m_ObjectState, m_Decoupler,
                                                          static_cast<QObject*>(nullptr));
    created->setIsAlias(isAlias);
    if (created->attach(m_NodeMap))
        m_Parameters.insert(cacheKey(featureName, isAlias), created);
    installValueSource(created);
    return created;
}

template <typename T, typename Node>
bool CNodemapWrapper::containsWithKnownTypeInParameterCollection(const QString& featureName) {
    const auto cached = m_Parameters.constFind(featureName);
    if (cached != m_Parameters.constEnd())
        return !cached.value().template dynamicCast<T>().isNull();
    return dynamic_cast<Node*>(findNode(featureName)) != nullptr;
}

}  // namespace Internal
}  // namespace ParameterCollection

#endif
