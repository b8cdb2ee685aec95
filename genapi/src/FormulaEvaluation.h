// Evaluating a node's formula (SwissKnife, Converter) with variables read once through the engine.
#ifndef GENAPI_ENGINE_FORMULAEVALUATION_H
#define GENAPI_ENGINE_FORMULAEVALUATION_H

#include "NodeBase.h"
#include <map>
#include <memory>
#include <string>

namespace GenApiEngine {

// Aravis evaluates formulas through its own node graph, which passes integer converters through doubles
// and knows nothing of GenApi's infinity check; formulas are therefore evaluated here with Aravis'
// evaluator on values the engine read: integers stay 64-bit integers, and an infinite float result fails
// with GenApi's "#Infinity somewhere!".
// Whether a name is one of the functions a formula may call (EXP, LN, ROUND, PI, ...).
bool namesFormulaFunction(const std::string& name);

class CFormulaEvaluation {
public:
    // The formula in `property` of the node (Formula, FormulaFrom); a converter's TO is its pValue.
    CFormulaEvaluation(const CNodeBase& node, const char* property, bool verify, bool ignoreCache);
    // A converter's FormulaFrom with TO given, as for the limits of its pValue.
    CFormulaEvaluation(const CNodeBase& node, double to);
    ~CFormulaEvaluation();

    // Raises the error of an integer formula (IntSwissKnife, IntConverter) GenApi's integer parser cannot
    // read: one with a float literal.
    int64_t asInteger(const char* method) const;
    static void refuseFloatLiterals(const CNodeBase& node, const char* property, const char* method);
    double asFloat(const char* method) const;

private:
    void setVariables(const CNodeBase& node);
    void setVariable(const std::string& name, CNodeBase* source);

    const CNodeBase& m_Node;
    std::string m_Formula;
    const char* m_Property;
    std::string m_FormulaNode;
    bool m_Verify;
    bool m_IgnoreCache;
    ArvEvaluator* m_Evaluator;
    std::map<std::string, double> m_Values;
    std::map<std::string, std::string> m_Expressions;
};

}  // namespace GenApiEngine

#endif
