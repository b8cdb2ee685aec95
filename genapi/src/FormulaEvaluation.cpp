// Variables through the engine's typed interfaces, then Aravis' evaluator and GenApi's infinity check.
#include "FormulaEvaluation.h"
#include "FormulaCheck.h"
#include "NodeMapImpl.h"
#include <GenApi/IBoolean.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {
namespace {

// The node GenApi names in a formula's errors: the formula node itself, or the converter's formula node.
std::string formulaNodeName(const CNodeBase& node, const std::string& property) {
    if (property == "FormulaFrom")
        return node.name() + convertFromSuffix;
    if (property == "FormulaTo")
        return node.name() + convertToSuffix;
    return node.name();
}

// Aravis reads a variable named like one of its functions (EXP, say) as that function, where GenApi reads
// the variable; in the text Aravis evaluates such a variable goes by another name.
std::string aravisName(const std::string& name) {
    return namesFormulaFunction(name) ? name + "_VARIABLE_" : name;
}

// The names of a formula's variables, constants and expressions that are named like functions.
std::vector<std::string> clashingNames(const CNodeBase& node) {
    std::vector<std::string> names;
    for (const SProperty& element : node.description().properties) {
        const std::string name = nameAttribute(element);
        if (!name.empty() && namesFormulaFunction(name))
            names.push_back(name);
    }
    return names;
}

// The formula with each of the clashing names renamed for Aravis where it is not called; the functions and
// constants (PI, E) the formula means stay as they are.
std::string forAravis(const std::string& formula, const std::vector<std::string>& clashing) {
    if (clashing.empty())
        return formula;
    std::string text;
    size_t i = 0;
    while (i < formula.size()) {
        const unsigned char c = static_cast<unsigned char>(formula[i]);
        if (!std::isalpha(c) && c != '_') {
            text += formula[i++];
            continue;
        }
        size_t end = i;
        while (end < formula.size() && (std::isalnum(static_cast<unsigned char>(formula[end])) ||
                                        formula[end] == '_' || formula[end] == '.'))
            ++end;
        const std::string word = formula.substr(i, end - i);
        size_t next = end;
        while (next < formula.size() && std::isspace(static_cast<unsigned char>(formula[next])))
            ++next;
        const bool called = next < formula.size() && formula[next] == '(';
        const bool variable = std::find(clashing.begin(), clashing.end(), word) != clashing.end();
        text += variable && !called ? aravisName(word) : word;
        i = end;
    }
    return text;
}

}  // namespace

bool namesFormulaFunction(const std::string& name) {
    static const char* const functions[] = {"SGN",   "NEG",  "ATAN", "COS",  "SIN",   "TAN",   "ABS",
                                            "EXP",   "LN",   "LG",   "SQRT", "TRUNC", "FLOOR", "CEIL",
                                            "ROUND", "ASIN", "ACOS", "E",    "PI"};
    for (const char* function : functions) {
        if (name == function)
            return true;
    }
    return false;
}

CFormulaEvaluation::CFormulaEvaluation(const CNodeBase& node, const char* property, bool verify,
                                       bool ignoreCache)
    : m_Node(node),
      m_Formula(node.description().value(property)),
      m_Property(property),
      m_FormulaNode(formulaNodeName(node, property)),
      m_Verify(verify),
      m_IgnoreCache(ignoreCache),
      m_Evaluator(arv_evaluator_new(forAravis(m_Formula, clashingNames(node)).c_str())) {
    setVariables(node);
    if (std::string(property) == "FormulaFrom")
        setVariable("TO", node.map().node(node.description().value("pValue")));
    // A converter's formula node on its own has nothing behind its input, which counts as 0.
    const std::string& input = node.description().value("InputDirection");
    if (input == "From" || input == "To") {
        const char* variable = input == "From" ? "TO" : "FROM";
        arv_evaluator_set_int64_variable(m_Evaluator, variable, 0);
        m_Values[variable] = 0;
    }
}

CFormulaEvaluation::CFormulaEvaluation(const CNodeBase& node, double to)
    : m_Node(node),
      m_Formula(node.description().value("FormulaFrom")),
      m_Property("FormulaFrom"),
      m_FormulaNode(formulaNodeName(node, "FormulaFrom")),
      m_Verify(false),
      m_IgnoreCache(false),
      m_Evaluator(arv_evaluator_new(forAravis(m_Formula, clashingNames(node)).c_str())) {
    setVariables(node);
    arv_evaluator_set_double_variable(m_Evaluator, "TO", to);
    m_Values["TO"] = to;
}

void CFormulaEvaluation::setVariables(const CNodeBase& node) {
    for (const SProperty& element : node.description().properties) {
        const std::string name = nameAttribute(element);
        if (element.name == "pVariable") {
            setVariable(name, node.map().node(element.value));
        } else if (element.name == "Constant") {
            // An integer formula's constant lives in a node of its own, which may have been written.
            CNodeBase* constant = node.map().node(constantNodeName(node.description(), element));
            if (dynamic_cast<IInteger*>(constant)) {
                setVariable(name, constant);
                continue;
            }
            arv_evaluator_set_constant(m_Evaluator, aravisName(name).c_str(), element.value.c_str());
            m_Values[name] = std::strtod(element.value.c_str(), nullptr);
        } else if (element.name == "Expression") {
            arv_evaluator_set_sub_expression(m_Evaluator, aravisName(name).c_str(),
                                             forAravis(element.value, clashingNames(node)).c_str());
            m_Expressions[name] = element.value;
        }
    }
}

CFormulaEvaluation::~CFormulaEvaluation() {
    g_object_unref(m_Evaluator);
}

void CFormulaEvaluation::setVariable(const std::string& name, CNodeBase* source) {
    int64_t integer = 0;
    if (IInteger* value = dynamic_cast<IInteger*>(source)) {
        integer = value->GetValue(m_Verify, m_IgnoreCache);
    } else if (IFloat* floating = dynamic_cast<IFloat*>(source)) {
        const double number = floating->GetValue(m_Verify, m_IgnoreCache);
        arv_evaluator_set_double_variable(m_Evaluator, aravisName(name).c_str(), number);
        m_Values[name] = number;
        return;
    } else if (IEnumeration* enumeration = dynamic_cast<IEnumeration*>(source)) {
        // GenApi reads an enumeration through its current entry, so a value no entry has fails.
        IEnumEntry* current = enumeration->GetCurrentEntry(m_Verify, m_IgnoreCache);
        if (!current)
            m_Node.raiseError(EError::LogicalError, "GetValue", "NULL pointer dereferenced");
        integer = current->GetValue();
    } else if (IBoolean* boolean = dynamic_cast<IBoolean*>(source)) {
        integer = boolean->GetValue(m_Verify, m_IgnoreCache) ? 1 : 0;
    }
    arv_evaluator_set_int64_variable(m_Evaluator, aravisName(name).c_str(), integer);
    m_Values[name] = static_cast<double>(integer);
}

void CFormulaEvaluation::refuseFloatLiterals(const CNodeBase& node, const char* property,
                                             const char* method) {
    const std::string& formula = node.description().value(property);
    const std::string fraction = floatLiteralFraction(formula);
    if (!fraction.empty()) {
        node.raiseError(EError::LogicalError, method,
                        formulaNodeName(node, property) + " : Failed to parse formula '" + formula +
                            "' : error message is '# " + fraction + " - Unknown function/variable!'");
    }
}

int64_t CFormulaEvaluation::asInteger(const char* method) const {
    refuseFloatLiterals(m_Node, m_Property, method);
    GError* error = nullptr;
    const int64_t value = arv_evaluator_evaluate_as_int64(m_Evaluator, &error);
    if (error)
        m_Node.raiseFromAravis(error, method);
    return value;
}

double CFormulaEvaluation::asFloat(const char* method) const {
    double value = 0;
    if (!evaluateFloatFormula(m_Formula, m_Values, m_Expressions, value)) {
        GError* error = nullptr;
        value = arv_evaluator_evaluate_as_double(m_Evaluator, &error);
        if (error)
            m_Node.raiseFromAravis(error, method);
    }
    if (std::isinf(value)) {
        m_Node.raiseError(EError::LogicalError, method,
                          m_FormulaNode + " : Failed to evaluate formula '" + m_Formula +
                              "' : error message is '#Infinity somewhere!'");
    }
    return value;
}

}  // namespace GenApiEngine
