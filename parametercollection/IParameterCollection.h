// The library's entry point as callers see it: typed and untyped parameters by full name, relations,
// feature streams, the device's SFNC version, polling and invalidation.
#ifndef PARAMETERCOLLECTION_IPARAMETERCOLLECTION_H
#define PARAMETERCOLLECTION_IPARAMETERCOLLECTION_H

#include "IBooleanParameter.h"
#include "ICommandParameter.h"
#include "IEnumParameter.h"
#include "IFileParameter.h"
#include "IFloatParameter.h"
#include "IIntegerParameter.h"
#include "IParameter.h"
#include "IPortParameter.h"
#include "IStringParameter.h"
#include "ParameterCollectionExport.h"
#include "ParameterNames.h"
#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVersionNumber>

namespace ParameterCollection {

// What getParameterRelation lists for a feature.
enum EParameterRelation : int {
    ParameterRelation_CategoryFeatures = 0,   // the features of a category
    ParameterRelation_SelectedFeatures = 1,   // the features a selector selects
    ParameterRelation_SelectingFeatures = 2,  // the selectors that select a feature
    ParameterRelation_CategoryPath = 3        // the categories from Root down to the feature
};

class PARAMETERCOLLECTION_EXPORT IParameterCollection : public QObject {
    Q_OBJECT

public:
    IParameterCollection();
    ~IParameterCollection() override;

    // The untyped get answers null when no alternative matches; the typed gets always answer an object,
    // an unbound one that reports itself empty when nothing matches.
    virtual QSharedPointer<IParameter> get(ParameterName name) = 0;
    virtual QSharedPointer<IIntegerParameter> get(IntegerParameterName name) = 0;
    virtual QSharedPointer<IBooleanParameter> get(BooleanParameterName name) = 0;
    virtual QSharedPointer<IEnumParameter> get(EnumParameterName name) = 0;
    virtual QSharedPointer<IFloatParameter> get(FloatParameterName name) = 0;
    virtual QSharedPointer<IStringParameter> get(StringParameterName name) = 0;
    virtual QSharedPointer<IPortParameter> get(PortParameterName name) = 0;
    virtual QSharedPointer<IFileParameter> get(FileParameterName name) = 0;
    virtual QSharedPointer<ICommandParameter> get(CommandParameterName name) = 0;
    virtual bool contains(ParameterName name) = 0;
    virtual bool contains(IntegerParameterName name) = 0;
    virtual bool contains(BooleanParameterName name) = 0;
    virtual bool contains(EnumParameterName name) = 0;
    virtual bool contains(StringParameterName name) = 0;
    virtual bool contains(FloatParameterName name) = 0;
    virtual bool contains(PortParameterName name) = 0;
    virtual bool contains(CommandParameterName name) = 0;
    // The names of the attached node maps, in announce order.
    virtual QList<QString> getParameterCollectionNames() = 0;
    // Full names related to a feature; with allNodes false, only features are kept (relations 0 to 2).
    virtual QList<QString> getParameterRelation(QString fullName, EParameterRelation relation,
                                                bool allNodes) = 0;
    virtual QList<QSharedPointer<IParameter>> getAllParameter() = 0;
    virtual QVersionNumber getSfncVersion() = 0;
    virtual QString saveFeatureStreamToString(const QString& nodeMapName) = 0;
    virtual bool loadFeatureStreamFromString(const QString& featureStream, QString& errorText,
                                             const QString& nodeMapName) = 0;
    virtual bool loadFeatureStream(const QString& fileName, QString& errorText,
                                   const QString& nodeMapName) = 0;
    virtual void invalidate() = 0;
    virtual void poll(long long elapsedMilliseconds) = 0;

signals:
    void nodeMapAttached(const QString& nodeMapName);
};

}  // namespace ParameterCollection

#endif
