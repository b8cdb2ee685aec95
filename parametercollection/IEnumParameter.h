// The enumeration parameter: entries by symbolic name, single and candidate-list writes.
#ifndef PARAMETERCOLLECTION_IENUMPARAMETER_H
#define PARAMETERCOLLECTION_IENUMPARAMETER_H

#include "EnumParameterData.h"
#include "IParameter.h"
#include <QList>
#include <QVector>

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IEnumParameter : public virtual IParameter {
public:
    ~IEnumParameter() override;

    virtual bool canSetValue(QString value) = 0;
    virtual void setValue(QString value) = 0;
    virtual QString getValue() = 0;
    virtual qint64 getIntValue(bool verify, bool ignoreCache) = 0;
    virtual QVector<QString> getAllValues() = 0;
    virtual QVector<QString> getSettableValues() = 0;
    virtual QString getValueOrDefault(QString defaultValue) = 0;
    virtual bool trySetValue(QString value) = 0;
    // Writes every settable candidate in turn, so the last settable one remains.
    virtual void setValue(QList<QString> values) = 0;
    // Writes the first settable candidate.
    virtual bool trySetValue(QList<QString> values) = 0;
    virtual QSharedPointer<IAdvancedParameterAccess> getAdvancedValueProperties(QString value) = 0;
};

}  // namespace ParameterCollection

#endif
