// Out-of-line destructor of the integer parameter interface.
#include "IIntegerParameter.h"

namespace ParameterCollection {

IIntegerParameter::~IIntegerParameter() {}

}  // namespace ParameterCollection
