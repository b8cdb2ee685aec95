// Float formulas evaluated in doubles as GenApi evaluates them: a division by zero inside gives an
// infinity that may still end in a finite result (3 / 2**(1/0) is 0), where Aravis' evaluator fails.
#ifndef GENAPI_ENGINE_FORMULACHECK_H
#define GENAPI_ENGINE_FORMULACHECK_H

#include <map>
#include <string>

namespace GenApiEngine {

// Evaluates a GenICam formula in doubles with the given variables (constants included, by name) and
// expressions. False, with the result untouched, for a formula it cannot read (an unknown name or
// function); the caller then evaluates it another way.
bool evaluateFloatFormula(const std::string& formula, const std::map<std::string, double>& variables,
                          const std::map<std::string, std::string>& expressions, double& result);

// GenApi reads the formulas of integer nodes with an integer parser, which stops at a decimal point: the
// first float literal's fraction (".0" of "4.0"), or an empty text when the formula has none.
std::string floatLiteralFraction(const std::string& formula);

}  // namespace GenApiEngine

#endif
