// Out-of-line destructor of the enumeration parameter interface.
#include "IEnumParameter.h"

namespace ParameterCollection {

IEnumParameter::~IEnumParameter() {}

}  // namespace ParameterCollection
