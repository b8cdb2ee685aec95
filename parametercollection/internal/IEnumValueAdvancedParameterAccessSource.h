// Where an enumeration parameter finds the property access of one of its entries.
#ifndef PARAMETERCOLLECTION_INTERNAL_IENUMVALUEADVANCEDPARAMETERACCESSSOURCE_H
#define PARAMETERCOLLECTION_INTERNAL_IENUMVALUEADVANCEDPARAMETERACCESSSOURCE_H

#include "../IAdvancedParameterAccess.h"
#include <QSharedPointer>
#include <QString>

namespace ParameterCollection {
namespace Internal {

class IEnumValueAdvancedParameterAccessSource {
public:
    virtual ~IEnumValueAdvancedParameterAccessSource() {}
    virtual QSharedPointer<IAdvancedParameterAccess> getAdvancedParameterAccess(const QString& parameterName,
                                                                                const QString& valueName) = 0;
};

}  // namespace Internal
}  // namespace ParameterCollection

#endif
