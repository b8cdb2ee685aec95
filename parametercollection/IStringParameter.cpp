// Out-of-line destructor of the string parameter interface; its meta object comes from moc.
#include "IStringParameter.h"

namespace ParameterCollection {

IStringParameter::~IStringParameter() {}

}  // namespace ParameterCollection
