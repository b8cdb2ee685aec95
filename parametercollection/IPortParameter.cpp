// Out-of-line destructor of the port parameter interface.
#include "IPortParameter.h"

namespace ParameterCollection {

IPortParameter::~IPortParameter() {}

}  // namespace ParameterCollection
