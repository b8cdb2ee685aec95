// Out-of-line destructor of the command parameter interface.
#include "ICommandParameter.h"

namespace ParameterCollection {

ICommandParameter::~ICommandParameter() {}

}  // namespace ParameterCollection
