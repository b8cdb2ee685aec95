// Out-of-line destructor of the boolean parameter interface.
#include "IBooleanParameter.h"

namespace ParameterCollection {

IBooleanParameter::~IBooleanParameter() {}

}  // namespace ParameterCollection
