// GenApi's check of float formulas: a formula whose result is infinite (a division by zero, an overflow)
// fails with "#Infinity somewhere!", where Aravis answers a number.
#ifndef GENAPI_ENGINE_FORMULACHECK_H
#define GENAPI_ENGINE_FORMULACHECK_H

#include <map>
#include <string>

namespace GenApiEngine {

// Evaluates a GenICam formula in doubles with the given variables (constants included, by name) and
// expressions, and tells whether the result is infinite. A formula it cannot read (an unknown name or
// function) is not judged: the answer is false.
bool formulaIsInfinite(const std::string& formula, const std::map<std::string, double>& variables,
                       const std::map<std::string, std::string>& expressions = {});

}  // namespace GenApiEngine

#endif
