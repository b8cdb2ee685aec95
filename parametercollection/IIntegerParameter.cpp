// Out-of-line destructor of the integer parameter interface; its meta object comes from moc.
#include "IIntegerParameter.h"

namespace ParameterCollection {

IIntegerParameter::~IIntegerParameter() {}

}  // namespace ParameterCollection
