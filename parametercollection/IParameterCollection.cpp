// Constructor of the abstract collection interface; its meta object comes from moc.
#include "IParameterCollection.h"

namespace ParameterCollection {

IParameterCollection::IParameterCollection() : QObject(nullptr) {}

IParameterCollection::~IParameterCollection() {}

}  // namespace ParameterCollection
