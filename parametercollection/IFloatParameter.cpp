// Out-of-line destructor of the float parameter interface.
#include "IFloatParameter.h"

namespace ParameterCollection {

IFloatParameter::~IFloatParameter() {}

}  // namespace ParameterCollection
