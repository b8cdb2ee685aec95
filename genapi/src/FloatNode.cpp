// IFloat over Aravis' float interface, with GenApi's checks, display forms and imposed limits.
#include "FloatNode.h"
#include "FormulaEvaluation.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <GenApi/EnumClasses.h>
#include <GenApi/IInteger.h>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CFloatNode::CFloatNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CValueNode(map, description, intfIFloat),
      m_ImposedMin(-std::numeric_limits<double>::max()),
      m_ImposedMax(std::numeric_limits<double>::max()) {}

ArvGcFloat* CFloatNode::floating(const char* method) const {
    if (!arvNode() || !ARV_IS_GC_FLOAT(arvNode()))
        raise(EError::LogicalError, method, "node has no float value");
    return ARV_GC_FLOAT(arvNode());
}

IFloat* CFloatNode::source() const {
    return dynamic_cast<IFloat*>(pointee("pValue"));
}

IInteger* CFloatNode::integerSource() const {
    return dynamic_cast<IInteger*>(pointee("pValue"));
}

EAccessMode CFloatNode::naturalAccessMode() const {
    const std::string& tag = description().tag;
    if (isRegisterKind(tag))
        return registerAccessMode();
    if (tag == "SwissKnife")
        return formulaAccessMode(RO);
    if (tag == "Converter")
        return formulaAccessMode(CNodeBase::naturalAccessMode());
    return CNodeBase::naturalAccessMode();
}

// A value whose limits are not implemented is not implemented either.
EAccessMode CFloatNode::accessAskedFirst() const {
    if (description().tag != "Float")
        return RW;
    return accessThroughLinks({"pMin", "pMax", "pInc"}, RW, false);
}

void CFloatNode::checkAvailable(const char* method) const {
    if (!IsAvailable(GetAccessMode()))
        raise(EError::Access, method, "Node is not available.");
}

// Formulas and plain pValue links go through the engine, so that GenApi's formula rules apply all the
// way down; everything else is Aravis' evaluation.
double CFloatNode::computeValue(bool Verify, bool IgnoreCache) {
    const SNodeDescription& node = description();
    if (node.tag == "SwissKnife")
        return CFormulaEvaluation(*this, "Formula", Verify, IgnoreCache).asFloat("GetValue");
    if (node.tag == "Converter")
        return CFormulaEvaluation(*this, "FormulaFrom", Verify, IgnoreCache).asFloat("GetValue");
    if (node.tag == "Float" && !node.has("pIndex") && !node.has("pValueIndexed")) {
        if (IFloat* floating = dynamic_cast<IFloat*>(pointee("pValue")))
            return floating->GetValue(Verify, IgnoreCache);
    }
    return arvCall("GetValue", [&](GError** e) { return arv_gc_float_get_value(floating("GetValue"), e); });
}

double CFloatNode::GetValue(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    checkReadable("GetValue");
    raiseIfFormulaUnsupported("GetValue");
    const CCacheBypass bypass(*this, IgnoreCache);
    const double value =
        cachedValue(m_Value, IgnoreCache || Verify, [&] { return computeValue(Verify, IgnoreCache); });
    if (Verify && (value < GetMin() || value > GetMax())) {
        raise(EError::OutOfRange, "GetValue", formatText("Value %f is out of range.", value));
    }
    return value;
}

void CFloatNode::SetValue(double Value, bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("SetValue");
    const double minimum = GetMin();
    const double maximum = GetMax();
    if (Value < minimum) {
        raise(EError::OutOfRange, "SetValue",
              formatText("Value %f must be greater than or equal %f.", Value, minimum));
    }
    if (Value > maximum) {
        raise(EError::OutOfRange, "SetValue",
              formatText("Value %f must be smaller than or equal %f.", Value, maximum));
    }
    arvCall("SetValue", [&](GError** e) { arv_gc_float_set_value(floating("SetValue"), Value, e); });
    writeCopies<IFloat>(Value, Verify);
    changed();
}

IFloat& CFloatNode::operator=(double Value) {
    SetValue(Value);
    return *this;
}

// GenApi's converter limits: FormulaFrom at both limits of pValue (either failing fails the limit), taken
// in the order its slope gives.
bool CFloatNode::converterLimit(bool minimum, const char* method, double& limit) {
    if (description().tag != "Converter" || description().has("Min") || description().has("pMin"))
        return false;
    CNodeBase* from = pointee("pValue");
    IInteger* integer = dynamic_cast<IInteger*>(from);
    IFloat* floating = dynamic_cast<IFloat*>(from);
    if (!integer && !floating)
        return false;
    auto convertedAt = [&](bool lower) {
        const double to = integer ? static_cast<double>(lower ? integer->GetMin() : integer->GetMax())
                                  : (lower ? floating->GetMin() : floating->GetMax());
        return CFormulaEvaluation(*this, to).asFloat(method);
    };
    // A converter whose slope may change sign has the widest limits.
    const std::string& slope = description().value("Slope");
    if (slope == "Varying") {
        limit = minimum ? -std::numeric_limits<double>::max() : std::numeric_limits<double>::max();
        return true;
    }
    const double atLow = convertedAt(true), atHigh = convertedAt(false);
    if (slope == "Increasing")
        limit = minimum ? atLow : atHigh;
    else if (slope == "Decreasing")
        limit = minimum ? atHigh : atLow;
    else
        limit = minimum ? std::min(atLow, atHigh) : std::max(atLow, atHigh);
    return true;
}

// A Float without limits of its own takes those of the node its value comes from, as the engine works
// them out (a converter's included).
bool CFloatNode::sourceLimit(bool minimum, double& limit) {
    const SNodeDescription& d = description();
    const char* own = minimum ? "Min" : "Max";
    if (d.tag != "Float" || d.has(own) || d.has(std::string("p") + own))
        return false;
    if (IFloat* from = source()) {
        limit = minimum ? from->GetMin() : from->GetMax();
        return true;
    }
    if (IInteger* from = integerSource()) {
        limit = static_cast<double>(minimum ? from->GetMin() : from->GetMax());
        return true;
    }
    return false;
}

double CFloatNode::GetMin() {
    CMapEntry entry(map());
    checkAvailable("GetMin");
    if (IFloat* limit = dynamic_cast<IFloat*>(pointee("pMin")))
        return std::max(limit->GetValue(), m_ImposedMin);
    double converted = 0;
    if (converterLimit(true, "GetMin", converted) || sourceLimit(true, converted))
        return std::max(converted, m_ImposedMin);
    const double minimum = cachedLimit(m_Min, "Min", [&] {
        return limitOr<double>("GetMin", "Min", -std::numeric_limits<double>::max(),
                               [&](GError** e) { return arv_gc_float_get_min(floating("GetMin"), e); });
    });
    return std::max(minimum, m_ImposedMin);
}

double CFloatNode::GetMax() {
    CMapEntry entry(map());
    checkAvailable("GetMax");
    if (IFloat* limit = dynamic_cast<IFloat*>(pointee("pMax")))
        return std::min(limit->GetValue(), m_ImposedMax);
    double converted = 0;
    if (converterLimit(false, "GetMax", converted) || sourceLimit(false, converted))
        return std::min(converted, m_ImposedMax);
    const double maximum = cachedLimit(m_Max, "Max", [&] {
        return limitOr<double>("GetMax", "Max", std::numeric_limits<double>::max(),
                               [&](GError** e) { return arv_gc_float_get_max(floating("GetMax"), e); });
    });
    return std::min(maximum, m_ImposedMax);
}

// A float over an integer steps as the integer does.
bool CFloatNode::HasInc() {
    if (description().has("Inc") || description().has("pInc"))
        return true;
    if (description().tag == "Float" && integerSource())
        return true;
    IFloat* from = source();
    return from && !description().has("Min") && !description().has("pMin") && from->HasInc();
}

EIncMode CFloatNode::GetIncMode() {
    return HasInc() ? fixedIncrement : noIncrement;
}

double CFloatNode::GetInc() {
    CMapEntry entry(map());
    if (!HasInc())
        raise(EError::Runtime, "GetInc", "node does not have an increment.");
    if (!description().has("Inc") && !description().has("pInc")) {
        if (IFloat* from = source())
            return from->GetInc();
        return static_cast<double>(integerSource()->GetInc());
    }
    return arvCall("GetInc", [&](GError** e) { return arv_gc_float_get_inc(floating("GetInc"), e); });
}

double_autovector_t CFloatNode::GetListOfValidValues(bool) {
    return double_autovector_t();
}

// The representation follows from the description alone (the node's own or its source's), so it is
// worked out once.
ERepresentation CFloatNode::GetRepresentation() {
    if (m_Representation == _UndefinedRepresentation)
        m_Representation = describedRepresentation();
    return m_Representation;
}

ERepresentation CFloatNode::describedRepresentation() {
    ERepresentation representation = PureNumber;
    if (ERepresentationClass::FromString(description().value("Representation").c_str(), &representation)) {
        return representation;
    }
    if (IFloat* from = source())
        return from->GetRepresentation();
    IInteger* integer = integerSource();
    return integer ? integer->GetRepresentation() : PureNumber;
}

gcstring CFloatNode::GetUnit() const {
    if (description().has("Unit"))
        return description().value("Unit").c_str();
    if (IFloat* from = source())
        return from->GetUnit();
    IInteger* integer = integerSource();
    return integer ? integer->GetUnit() : gcstring();
}

EDisplayNotation CFloatNode::GetDisplayNotation() const {
    EDisplayNotation notation = fnAutomatic;
    if (EDisplayNotationClass::FromString(description().value("DisplayNotation").c_str(), &notation))
        return notation;
    IFloat* from = source();
    return from ? from->GetDisplayNotation() : fnAutomatic;
}

int64_t CFloatNode::GetDisplayPrecision() const {
    const std::string& text = description().value("DisplayPrecision");
    if (!text.empty())
        return std::strtoll(text.c_str(), nullptr, 10);
    IFloat* from = source();
    return from ? from->GetDisplayPrecision() : 6;
}

void CFloatNode::ImposeMin(double Value) {
    CMapEntry entry(map());
    m_ImposedMin = Value;
    changed();
}

void CFloatNode::ImposeMax(double Value) {
    CMapEntry entry(map());
    m_ImposedMax = Value;
    changed();
}

// Formats with the display notation and precision, and keeps the text of a value inside the limits
// inside them.
gcstring CFloatNode::ToString(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    const double value = GetValue(Verify, IgnoreCache);
    const EDisplayNotation notation = GetDisplayNotation();
    int64_t precision = GetDisplayPrecision();
    std::string text = floatToText(value, notation, precision);
    double printed = value;
    const double minimum = GetMin();
    const double maximum = GetMax();
    const bool textOutside = textToFloat(text, printed) && (printed < minimum || printed > maximum);
    if ((value > maximum || value < minimum) && textOutside)
        return floatToText(towardsLimits(value, text, value > maximum), notation, precision).c_str();
    if (value > maximum || value < minimum)
        return text.c_str();
    while (textToFloat(text, printed) && (printed < minimum || printed > maximum) && precision < 17)
        text = floatToText(value, notation, ++precision);
    return text.c_str();
}

// GenApi moves a value whose text lies outside its limits half a unit of the last decimal the text shows
// towards them before printing it (a value just outside whose text rounds onto a limit prints as it is); in
// scientific notation that is the mantissa's last decimal, whatever the exponent.
double CFloatNode::towardsLimits(double value, const std::string& text, bool above) {
    const size_t point = text.find('.');
    int decimals = 0;
    if (point != std::string::npos) {
        for (size_t i = point + 1; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i)
            ++decimals;
    }
    const double half = 0.5 * std::pow(10.0, -decimals);
    return above ? value - half : value + half;
}

void CFloatNode::FromString(const gcstring& ValueStr, bool Verify) {
    CMapEntry entry(map());
    double value = 0;
    if (!textToFloat(ValueStr.c_str(), value)) {
        raise(EError::InvalidArgument, "FromString",
              formatText("Node '%s' : cannot convert string '%s' to double.", name().c_str(),
                         ValueStr.c_str()));
    }
    SetValue(value, Verify);
}

}  // namespace GenApiEngine
