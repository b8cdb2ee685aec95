// Out-of-line destructor of the command parameter interface; its meta object comes from moc.
#include "ICommandParameter.h"

namespace ParameterCollection {

ICommandParameter::~ICommandParameter() {}

}  // namespace ParameterCollection
