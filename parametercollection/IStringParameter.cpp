// Out-of-line destructor of the string parameter interface.
#include "IStringParameter.h"

namespace ParameterCollection {

IStringParameter::~IStringParameter() {}

}  // namespace ParameterCollection
