// Out-of-line destructor of the file parameter interface.
#include "IFileParameter.h"

namespace ParameterCollection {

IFileParameter::~IFileParameter() {}

}  // namespace ParameterCollection
