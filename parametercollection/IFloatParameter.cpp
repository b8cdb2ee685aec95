// Out-of-line destructor of the float parameter interface; its meta object comes from moc.
#include "IFloatParameter.h"

namespace ParameterCollection {

IFloatParameter::~IFloatParameter() {}

}  // namespace ParameterCollection
