// Out-of-line destructor of the port parameter interface; its meta object comes from moc.
#include "IPortParameter.h"

namespace ParameterCollection {

IPortParameter::~IPortParameter() {}

}  // namespace ParameterCollection
