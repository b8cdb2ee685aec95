// The public face of every parameter: value text, access, snapshot and change signals.
#ifndef PARAMETERCOLLECTION_IPARAMETER_H
#define PARAMETERCOLLECTION_IPARAMETER_H

#include "IAdvancedParameterAccess.h"
#include "ParameterCollectionExport.h"
#include "ParameterData.h"
#include "ParameterType.h"
#include <QMetaType>
#include <QObject>
#include <QSharedPointer>
#include <QString>

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IParameter : public QObject {
    Q_OBJECT

public:
    IParameter();
    ~IParameter() override;

    virtual QString toString() = 0;
    virtual void parseAndSetValue(QString const& value) = 0;
    virtual bool isEmpty() = 0;
    virtual bool isReadable() = 0;
    virtual bool isWriteable() = 0;
    virtual bool isImplemented() = 0;
    virtual bool isAvailable() = 0;
    // A GenApi EVisibility value; 99 when there is no node.
    virtual int getVisibility() = 0;
    virtual EParameterType getParameterType() = 0;
    virtual QString getFullName() = 0;
    virtual QString getName() = 0;
    virtual QSharedPointer<IAdvancedParameterAccess> getAdvancedParameterAccess() = 0;
    // A fresh copy of the parameter's current snapshot.
    virtual QSharedPointer<const ParameterData> getParameterData() = 0;
    // Queues a decoupled check; with force the check reports a change even when nothing differs.
    virtual void scheduleParameterDataChangedCheck(bool force) = 0;

signals:
    // The GenApi node reported a change; emitted at once, on the thread that caused it.
    void parameterChanged();
    // A write is about to reach GenApi; the argument is the value as text.
    void parameterValueAboutToBeSet(QString const& value);
    // The snapshot changed; emitted by the decoupling thread.
    void parameterDataChangedDecoupled(QSharedPointer<const ParameterData> data);
};

}  // namespace ParameterCollection

Q_DECLARE_METATYPE(QSharedPointer<ParameterCollection::IParameter>)
Q_DECLARE_METATYPE(QSharedPointer<const ParameterCollection::ParameterData>)

#endif
