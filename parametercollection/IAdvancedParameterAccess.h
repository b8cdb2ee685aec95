// String-keyed access to the metadata of a parameter's node.
#ifndef PARAMETERCOLLECTION_IADVANCEDPARAMETERACCESS_H
#define PARAMETERCOLLECTION_IADVANCEDPARAMETERACCESS_H

#include "ParameterCollectionExport.h"
#include <QObject>
#include <QString>

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IAdvancedParameterAccess : public QObject {
    Q_OBJECT

public:
    explicit IAdvancedParameterAccess(QObject* parent = nullptr);
    ~IAdvancedParameterAccess() override;

    virtual bool containsProperty(const QString& key) = 0;
    virtual QString getProperty(const QString& key) = 0;
    virtual QString getPropertyOrDefault(const QString& key, const QString& defaultValue) = 0;
    virtual void refresh() = 0;
    virtual void setProperty(const QString& key, const QString& value) = 0;
};

}  // namespace ParameterCollection

#endif
