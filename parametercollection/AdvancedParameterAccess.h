// Metadata of a parameter's GenApi node by key, with visibility and access mode imposable on the node.
#ifndef PARAMETERCOLLECTION_ADVANCEDPARAMETERACCESS_H
#define PARAMETERCOLLECTION_ADVANCEDPARAMETERACCESS_H

#include "IAdvancedParameterAccess.h"
#include "ObjectState.h"
#include "ParameterCollectionExport.h"
#include <QSharedPointer>

#include <GenApi/GenApi.h>

namespace ParameterCollection {

// The text of a node's principal interface type ("intfIInteger", ...; "undefined" for value and base).
PARAMETERCOLLECTION_EXPORT QString principalInterfaceTypeToQString(GenApi::INode* node);

class PARAMETERCOLLECTION_EXPORT CAdvancedParameterAccess : public IAdvancedParameterAccess {
    Q_OBJECT

public:
    explicit CAdvancedParameterAccess(QSharedPointer<CObjectState> objectState);
    ~CAdvancedParameterAccess() override;

    bool containsProperty(const QString& key) override;
    QString getProperty(const QString& key) override;
    QString getPropertyOrDefault(const QString& key, const QString& defaultValue) override;
    void refresh() override;
    void setProperty(const QString& key, const QString& value) override;

    // Binds the node (null when detached) and the owning parameter's attached flag.
    void attach(GenApi::INode* node, bool attached);
    void raiseExceptionIfDisposed();
    void raiseExceptionIfNotAvailable();

private:
    // The attached node; "Node is empty." when there is none.
    GenApi::INode* requireNode() const;
    QString readProperty(const QString& key);
    QString nodePropertiesAsJson();

    GenApi::INode* m_Node;
    QSharedPointer<CObjectState> m_ObjectState;
    bool m_Attached;
};

}  // namespace ParameterCollection

#endif
