// The library's entry point: one collection per camera, knowing its node maps by name.
#ifndef PARAMETERCOLLECTION_PARAMETERCOLLECTION_H
#define PARAMETERCOLLECTION_PARAMETERCOLLECTION_H

#include "IParameterCollection.h"
#include "ObjectState.h"
#include "ParameterCollectionExport.h"
#include <GenApi/GenApi.h>

namespace ParameterCollection {

namespace Internal {
class CParameterCollectionImpl;
}

class PARAMETERCOLLECTION_EXPORT CParameterCollection : public IParameterCollection {
    Q_OBJECT

public:
    explicit CParameterCollection(QSharedPointer<CObjectState> state);
    // Unbinds every parameter, stops the decoupler, then destroys the node map wrappers; parameters that
    // callers still hold survive and report themselves empty.
    ~CParameterCollection() override;

    // Node map management, for the owner only. Announcing makes a name known; attaching binds (and
    // re-binds) every parameter of that name and emits nodeMapAttached after the lock is released.
    void announceNodeMap(QString nodeMapName);
    void attachNodeMap(QString nodeMapName, GENAPI_NAMESPACE::INodeMap* nodeMap);
    void detachNodeMap(QString nodeMapName);
    void detachAllNodeMaps();

    QSharedPointer<IParameter> get(ParameterName name) override;
    QSharedPointer<IIntegerParameter> get(IntegerParameterName name) override;
    QSharedPointer<IBooleanParameter> get(BooleanParameterName name) override;
    QSharedPointer<IEnumParameter> get(EnumParameterName name) override;
    QSharedPointer<IFloatParameter> get(FloatParameterName name) override;
    QSharedPointer<IStringParameter> get(StringParameterName name) override;
    QSharedPointer<IPortParameter> get(PortParameterName name) override;
    QSharedPointer<IFileParameter> get(FileParameterName name) override;
    QSharedPointer<ICommandParameter> get(CommandParameterName name) override;
    bool contains(ParameterName name) override;
    bool contains(IntegerParameterName name) override;
    bool contains(BooleanParameterName name) override;
    bool contains(EnumParameterName name) override;
    bool contains(StringParameterName name) override;
    bool contains(FloatParameterName name) override;
    bool contains(PortParameterName name) override;
    bool contains(CommandParameterName name) override;
    bool contains(FileParameterName name);
    QList<QString> getParameterCollectionNames() override;
    QList<QString> getParameterRelation(QString fullName, EParameterRelation relation,
                                        bool allNodes) override;
    QList<QSharedPointer<IParameter>> getAllParameter() override;
    QVersionNumber getSfncVersion() override;
    QString saveFeatureStreamToString(const QString& nodeMapName) override;
    bool loadFeatureStreamFromString(const QString& featureStream, QString& errorText,
                                     const QString& nodeMapName) override;
    bool loadFeatureStream(const QString& fileName, QString& errorText, const QString& nodeMapName) override;
    void invalidate() override;
    void poll(long long elapsedMilliseconds) override;

private:
    // Loads into one node map, then invalidates every node map, whatever the result.
    template <typename Load>
    bool loadAndInvalidate(const QString& nodeMapName, Load load);

    Internal::CParameterCollectionImpl* m_Impl;
};

}  // namespace ParameterCollection

#endif
