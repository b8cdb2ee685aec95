// Constructor of the abstract property interface; its meta object comes from moc.
#include "IAdvancedParameterAccess.h"

namespace ParameterCollection {

IAdvancedParameterAccess::IAdvancedParameterAccess(QObject* parent) : QObject(parent) {}

IAdvancedParameterAccess::~IAdvancedParameterAccess() {}

}  // namespace ParameterCollection
