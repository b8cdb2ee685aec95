// IInteger over Aravis' integer interface, with GenApi's checks, limits and text forms.
#include "IntegerNode.h"
#include "FormulaEvaluation.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <GenApi/EnumClasses.h>
#include <algorithm>
#include <memory>
#include <cinttypes>
#include <sstream>

using namespace GENAPI_NAMESPACE;
using GENICAM_NAMESPACE::gcstring;

namespace GenApiEngine {

CIntegerNode::CIntegerNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CValueNode(map, description, intfIInteger) {}

ArvGcInteger* CIntegerNode::integer(const char* method) const {
    if (!arvNode() || !ARV_IS_GC_INTEGER(arvNode()))
        raise(EError::LogicalError, method, "node has no integer value");
    return ARV_GC_INTEGER(arvNode());
}

EAccessMode CIntegerNode::naturalAccessMode() const {
    const std::string& tag = description().tag;
    if (isRegisterKind(tag))
        return registerAccessMode();
    if (tag == "IntSwissKnife")
        return formulaAccessMode(RO);
    if (tag == "IntConverter")
        return formulaAccessMode(CNodeBase::naturalAccessMode());
    return CNodeBase::naturalAccessMode();
}

// A value whose limits are not implemented is not implemented either.
EAccessMode CIntegerNode::accessAskedFirst() const {
    if (description().tag != "Integer")
        return RW;
    return accessThroughLinks({"pMin", "pMax", "pInc"}, RW, false);
}

void CIntegerNode::checkAvailable(const char* method) const {
    if (!IsAvailable(GetAccessMode()))
        raise(EError::Access, method, "Node is not available.");
}

void CIntegerNode::checkRange(int64_t value, const char* method) {
    checkRange(value, method, GetMin(), GetMax(), GetInc());
}

void CIntegerNode::checkRange(int64_t value, const char* method, int64_t minimum, int64_t maximum,
                              int64_t increment) {
    if (value < minimum) {
        raise(EError::OutOfRange, method,
              formatText("Value = %" PRId64 " must be equal or greater than Min = %" PRId64 ".", value,
                         minimum));
    }
    if (value > maximum) {
        raise(EError::OutOfRange, method,
              formatText("Value = %" PRId64 " must be equal or smaller than Max = %" PRId64 ".", value,
                         maximum));
    }
    if (increment <= 0)
        raise(EError::LogicalError, method, "Increment must be larger than 0.");
    const std::vector<int64_t>& valid = validValues();
    if (!valid.empty() && std::find(valid.begin(), valid.end(), value) == valid.end()) {
        raise(EError::OutOfRange, method,
              formatText("Value = %" PRId64 " is not in the set of valid values.", value));
    }
    // value >= minimum here, so the distance fits an unsigned 64-bit number even for the widest limits.
    const uint64_t distance = static_cast<uint64_t>(value) - static_cast<uint64_t>(minimum);
    if (valid.empty() && distance % static_cast<uint64_t>(increment) != 0) {
        raise(EError::OutOfRange, method,
              formatText("The difference between Value = %" PRId64 " and Min = %" PRId64
                         " must be dividable without rest by Inc = %" PRId64 ".",
                         value, minimum, increment));
    }
}

// GenApi evaluates an integer converter in 64-bit integers; Aravis passes it through a double, which
// loses the low bits of large values.
int64_t CIntegerNode::convertedValue(bool Verify, bool IgnoreCache) {
    return CFormulaEvaluation(*this, "FormulaFrom", Verify, IgnoreCache).asInteger("GetValue");
}

int64_t CIntegerNode::GetValue(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    checkReadable("GetValue");
    raiseIfFormulaUnsupported("GetValue");
    const CCacheBypass bypass(*this, IgnoreCache);
    const int64_t value = cachedValue(m_Value, IgnoreCache || Verify, [&] {
        switch (source()) {
            case ESource::Own:
                return m_OwnValue;
            case ESource::Converter:
                return convertedValue(Verify, IgnoreCache);
            case ESource::Formula:
                return CFormulaEvaluation(*this, "Formula", Verify, IgnoreCache).asInteger("GetValue");
            case ESource::Pointee:
                if (IInteger* linked = dynamic_cast<IInteger*>(pointee("pValue")))
                    return linked->GetValue(Verify, IgnoreCache);
                break;
            case ESource::AravisFormula:
                CFormulaEvaluation::refuseFloatLiterals(*this, "Formula", "GetValue");
                break;
            default:
                break;
        }
        return arvCall("GetValue",
                       [&](GError** e) { return arv_gc_integer_get_value(integer("GetValue"), e); });
    });
    if (Verify && (value < GetMin() || value > GetMax())) {
        raise(EError::OutOfRange, "GetValue", formatText("Value = %" PRId64 " is out of range.", value));
    }
    return value;
}

void CIntegerNode::SetValue(int64_t Value, bool Verify) {
    CMapEntry entry(map());
    if (Verify)
        checkWritable("SetValue");
    checkRange(Value, "SetValue");
    // GenApi hands the value on to the pValue node, which checks it against its own limits as well.
    if (Verify) {
        if (CIntegerNode* target = valueTarget())
            target->checkRange(Value, "SetValue", target->minimum(), target->maximum(), target->increment());
    }
    if (holdsOwnValue())
        m_OwnValue = Value;
    else if (!writeRegisterDirectly(Value))
        arvCall("SetValue", [&](GError** e) { arv_gc_integer_set_value(integer("SetValue"), Value, e); });
    writeCopies<IInteger>(Value, Verify);
    changed();
}

// The integer node pValue names, which receives the value unchanged, looked up once since the
// description does not change; a converter's pValue receives the converted value instead.
CIntegerNode* CIntegerNode::valueTarget() {
    if (!m_ValueTargetKnown) {
        if (description().tag != "IntConverter")
            m_ValueTarget = dynamic_cast<CIntegerNode*>(pointee("pValue"));
        m_ValueTargetKnown = true;
    }
    return m_ValueTarget;
}

// An integer whose value the description writes as a number, with no pointer to take it from and no node
// that points to it, holds that value here: Aravis never reads or writes it then, and reading it through
// Aravis would keep a text buffer per node. A node the description only implies has no twin in Aravis
// that could hold the value instead. An integer converter, and a formula Aravis does not know (a
// converter's), whose constants live in nodes that may be written or that reads a boolean or an enumeration,
// are evaluated here; a plain pValue link is followed through the engine, so that GenApi's rules for the node
// it names hold all the way down.
CIntegerNode::ESource CIntegerNode::source() {
    if (m_Source != ESource::Unknown)
        return m_Source;
    const SNodeDescription& d = description();
    const bool plainInteger = d.tag == "Integer" && !d.has("pValueIndexed");
    if (plainInteger && !d.has("pValue") && (map().links().dependents(this).empty() || d.implied) &&
        textToInteger(d.value("Value"), m_OwnValue))
        m_Source = ESource::Own;
    else if (d.tag == "IntConverter")
        m_Source = ESource::Converter;
    else if (d.tag == "IntSwissKnife")
        m_Source = !arvNode() || d.has("Constant") || needsEngineEvaluation() ? ESource::Formula
                                                                              : ESource::AravisFormula;
    else if (plainInteger && !d.has("pIndex") && d.has("pValue"))
        m_Source = ESource::Pointee;
    else
        m_Source = ESource::Aravis;
    return m_Source;
}

// GenApi reads a boolean variable as 0 or 1, where Aravis cannot read it as a number at all, an
// enumeration through its current entry, where Aravis takes whatever its register holds, and a variable
// named like a function (EXP) as the variable, where Aravis calls the function.
bool CIntegerNode::needsEngineEvaluation() const {
    for (const SProperty& property : description().properties) {
        if (property.name != "pVariable")
            continue;
        if (namesFormulaFunction(nameAttribute(property)))
            return true;
        const CNodeBase* source = map().node(property.value);
        const std::string kind = source ? source->description().tag : std::string();
        if (kind == "Boolean" || kind == "Enumeration")
            return true;
    }
    return false;
}

// Places with a computed offset or length, or an address formula, are left to Aravis.
bool CIntegerNode::describePlace(const CNodeBase& reg, SRegisterPlace& place) const {
    const SNodeDescription& d = reg.description();
    if (d.tag != "IntReg" || !d.has("pPort") || !textToInteger(d.value("Length"), place.length) ||
        place.length < 1 || place.length > 8)
        return false;
    place.bigEndian = d.value("Endianess") == "BigEndian";
    place.base = map().portOffset(d.value("pPort"));
    for (const SProperty& property : d.properties) {
        int64_t part = 0;
        if (property.name == "Address") {
            if (!textToInteger(property.value, part))
                return false;
            place.base += part;
        } else if (property.name == "pAddress" || property.name == "pIndex") {
            int64_t multiplier = 1;
            if (property.name == "pIndex" && !indexStep(property, place.length, multiplier))
                return false;
            CNodeBase* node = map().node(property.value);
            if (!node)
                return false;
            place.parts.emplace_back(node, multiplier);
        } else if (property.name == "pLength" || property.name.find("SwissKnife") != std::string::npos) {
            return false;
        }
    }
    return true;
}

const CIntegerNode::SRegisterPlace& CIntegerNode::registerPlace() const {
    if (!m_Place.known) {
        const CNodeBase* reg = this;
        if (description().tag == "Integer" && !description().has("pValueIndexed"))
            reg = pointee("pValue");
        m_Place.usable = reg && !map().servedByDevice() && describePlace(*reg, m_Place);
        m_Place.known = true;
    }
    return m_Place;
}

bool CIntegerNode::writeRegisterDirectly(int64_t value) {
    const SRegisterPlace& place = registerPlace();
    if (!place.usable)
        return false;
    int64_t address = place.base;
    for (const auto& part : place.parts) {
        int64_t index = 0;
        if (!integerOf(part.first, index))
            return false;
        address += index * part.second;
    }
    const int64_t length = place.length;
    uint8_t bytes[8];
    for (int64_t i = 0; i < length; ++i) {
        const uint8_t byte = static_cast<uint8_t>(static_cast<uint64_t>(value) >> (8 * i));
        bytes[place.bigEndian ? length - 1 - i : i] = byte;
    }
    arvCall("SetValue", [&](GError** e) {
        arv_device_write_memory(map().device(), static_cast<guint64>(address), static_cast<guint32>(length),
                                bytes, e);
    });
    return true;
}

IInteger& CIntegerNode::operator=(int64_t Value) {
    SetValue(Value);
    return *this;
}

// Where a limit comes from follows from the description alone, so it is worked out once per limit: a node
// it names, a number it writes, the nodes the value goes to, or Aravis.
const CIntegerNode::SLimitSource& CIntegerNode::limitSource(SLimitSource& source, const std::string& name) {
    if (source.known)
        return source;
    const SNodeDescription& d = description();
    source.pointee = pointee(("p" + name).c_str());
    source.constant = textToInteger(d.value(name), source.value);
    // An integer over another takes that node's limits, as the engine works them out; so does one whose
    // value is copied to others, where all their ranges overlap.
    const bool linked = d.tag == "Integer" && d.has("pValue");
    if ((linked || d.has("pValueCopy")) && name != "Inc") {
        for (const SProperty& property : d.properties) {
            if (property.name != "pValue" && property.name != "pValueCopy")
                continue;
            if (IInteger* target = dynamic_cast<IInteger*>(map().node(property.value)))
                source.shared.push_back(target);
        }
        source.copied = true;
    }
    // A conversion that rises and falls maps its pValue's limits nowhere in particular: GenApi gives such
    // an integer converter the widest limits.
    source.widest = d.tag == "IntConverter" && d.value("Slope") == "Varying";
    source.converter = d.tag == "IntConverter" && name != "Inc";
    source.known = true;
    return source;
}

int64_t CIntegerNode::limit(SCachedValue<int64_t>& slot, SLimitSource& where, const char* name,
                            const char* method, int64_t fallback,
                            gint64 (*arvLimit)(ArvGcInteger*, GError**)) {
    return cachedLimit(slot, name, [&] {
        const SLimitSource& source = limitSource(where, name);
        int64_t value = 0;
        if (integerOf(source.pointee, value))
            return value;
        if (source.constant)
            return source.value;
        if (source.copied)
            return sharedLimit(source.shared, &slot == &m_Min, fallback);
        if (source.widest)
            return fallback;
        if (source.converter)
            CFormulaEvaluation::refuseFloatLiterals(*this, "FormulaFrom", method);
        return limitOr<int64_t>(method, name, fallback,
                                [&](GError** e) { return arvLimit(integer(method), e); });
    });
}

// A value written to pValue and to every pValueCopy must fit all of them: the limits are where their
// ranges overlap.
int64_t CIntegerNode::sharedLimit(const std::vector<IInteger*>& targets, bool minimum, int64_t fallback) {
    int64_t bound = fallback;
    bool found = false;
    for (IInteger* target : targets) {
        const int64_t limit = minimum ? target->GetMin() : target->GetMax();
        bound = !found ? limit : (minimum ? std::max(bound, limit) : std::min(bound, limit));
        found = true;
    }
    return bound;
}

int64_t CIntegerNode::minimum() {
    return std::max(limit(m_Min, m_MinSource, "Min", "GetMin", INT64_MIN, arv_gc_integer_get_min),
                    m_ImposedMin);
}

int64_t CIntegerNode::maximum() {
    return std::min(limit(m_Max, m_MaxSource, "Max", "GetMax", INT64_MAX, arv_gc_integer_get_max),
                    m_ImposedMax);
}

int64_t CIntegerNode::increment() {
    const int64_t step = limit(m_Inc, m_IncSource, "Inc", "GetInc", 1, arv_gc_integer_get_inc);
    return step > 0 ? step : 1;
}

int64_t CIntegerNode::GetMin() {
    CMapEntry entry(map());
    checkAvailable("GetMin");
    return minimum();
}

int64_t CIntegerNode::GetMax() {
    CMapEntry entry(map());
    checkAvailable("GetMax");
    return maximum();
}

int64_t CIntegerNode::GetInc() {
    CMapEntry entry(map());
    checkAvailable("GetInc");
    return increment();
}

// The set of valid values is a constant of the description, parsed once.
const std::vector<int64_t>& CIntegerNode::validValues() const {
    if (!m_ValidValuesKnown) {
        std::stringstream list(description().value("ValidValueSet"));
        std::string item;
        int64_t value;
        while (std::getline(list, item, ';')) {
            if (textToInteger(item, value))
                m_ValidValues.push_back(value);
        }
        m_ValidValuesKnown = true;
    }
    return m_ValidValues;
}

EIncMode CIntegerNode::GetIncMode() {
    return validValues().empty() ? fixedIncrement : listIncrement;
}

int64_autovector_t CIntegerNode::GetListOfValidValues(bool bounded) {
    CMapEntry entry(map());
    std::vector<int64_t> values = validValues();
    if (bounded && !values.empty()) {
        const int64_t minimum = GetMin();
        const int64_t maximum = GetMax();
        values.erase(std::remove_if(values.begin(), values.end(),
                                    [&](int64_t v) { return v < minimum || v > maximum; }),
                     values.end());
    }
    int64_autovector_t list(values.size());
    for (size_t i = 0; i < values.size(); ++i)
        list[i] = values[i];
    return list;
}

// The representation follows from the description alone (the node's own or its source's), so it is
// worked out once.
ERepresentation CIntegerNode::GetRepresentation() {
    if (m_Representation == _UndefinedRepresentation)
        m_Representation = describedRepresentation();
    return m_Representation;
}

ERepresentation CIntegerNode::describedRepresentation() {
    ERepresentation representation = PureNumber;
    if (ERepresentationClass::FromString(description().value("Representation").c_str(), &representation)) {
        return representation;
    }
    IInteger* source = dynamic_cast<IInteger*>(pointee("pValue"));
    return source ? source->GetRepresentation() : PureNumber;
}

gcstring CIntegerNode::GetUnit() {
    if (description().has("Unit"))
        return description().value("Unit").c_str();
    IInteger* source = dynamic_cast<IInteger*>(pointee("pValue"));
    return source ? source->GetUnit() : gcstring();
}

void CIntegerNode::ImposeMin(int64_t Value) {
    CMapEntry entry(map());
    m_ImposedMin = Value;
    changed();
}

void CIntegerNode::ImposeMax(int64_t Value) {
    CMapEntry entry(map());
    m_ImposedMax = Value;
    changed();
}

gcstring CIntegerNode::ToString(bool Verify, bool IgnoreCache) {
    CMapEntry entry(map());
    return integerToText(GetValue(Verify, IgnoreCache), GetRepresentation()).c_str();
}

void CIntegerNode::FromString(const gcstring& ValueStr, bool Verify) {
    CMapEntry entry(map());
    int64_t value = 0;
    if (!textToInteger(ValueStr.c_str(), value)) {
        raise(EError::InvalidArgument, "FromString",
              formatText("Node '%s' : cannot convert string '%s' to int.", name().c_str(), ValueStr.c_str()));
    }
    SetValue(value, Verify);
}

}  // namespace GenApiEngine
