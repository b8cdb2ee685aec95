// Refusing descriptions whose nodes read each other in a circle, as GenApi refuses them at load time.
#ifndef GENAPI_ENGINE_READCYCLES_H
#define GENAPI_ENGINE_READCYCLES_H

#include "XmlIndex.h"
#include <string>
#include <vector>

namespace GenApiEngine {

// The pointer properties through which GenApi reads another node to answer for this one (pValue, pMin,
// pVariable, pIsAvailable, pCommandValue, ...).
bool isReadingLink(const std::string& property);

// The first cycle of reading links (pValue, pMin, pVariable, pIsAvailable, ...) in document order, as the
// node names along it with the first repeated at the end; empty when there is none.
std::vector<std::string> findReadCycle(const CXmlIndex& index);

// Throws GenICam::RuntimeException "read cycle detected : A -> B -> A" for a description with a cycle.
void refuseReadCycles(const CXmlIndex& index);

}  // namespace GenApiEngine

#endif
