// Constructor of the abstract parameter interface; its meta object comes from moc.
#include "IParameter.h"

namespace ParameterCollection {

IParameter::IParameter() : QObject(nullptr) {}

IParameter::~IParameter() {}

}  // namespace ParameterCollection
