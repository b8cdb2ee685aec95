// Out-of-line destructor of the boolean parameter interface; its meta object comes from moc.
#include "IBooleanParameter.h"

namespace ParameterCollection {

IBooleanParameter::~IBooleanParameter() {}

}  // namespace ParameterCollection
