// Out-of-line destructor, so the snapshot's type information lives in the library.
#include "ParameterData.h"

namespace ParameterCollection {

ParameterData::~ParameterData() {}

}  // namespace ParameterCollection
