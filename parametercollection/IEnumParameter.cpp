// Out-of-line destructor of the enumeration parameter interface; its meta object comes from moc.
#include "IEnumParameter.h"

namespace ParameterCollection {

IEnumParameter::~IEnumParameter() {}

}  // namespace ParameterCollection
