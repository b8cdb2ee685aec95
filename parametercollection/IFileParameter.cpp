// Out-of-line destructor of the file parameter interface; its meta object comes from moc.
#include "IFileParameter.h"

namespace ParameterCollection {

IFileParameter::~IFileParameter() {}

}  // namespace ParameterCollection
