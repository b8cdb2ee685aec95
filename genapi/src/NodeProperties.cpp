// GenApi answers GetProperty from its node objects, not from the description: numbers in decimal, the
// values it defaults, the variables of a formula by name, and links it derives. This builds that list.
#include "NodeProperties.h"
#include "FormulaEvaluation.h"
#include "NodeBase.h"
#include "NodeMapImpl.h"
#include "TextForms.h"
#include <GenApi/EnumClasses.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <algorithm>
#include <set>

using namespace GenApi;

namespace GenApiEngine {
namespace {

const char* yesNo(bool value) {
    return value ? "Yes" : "No";
}

bool isOneOf(const std::string& text, std::initializer_list<const char*> candidates) {
    return std::any_of(candidates.begin(), candidates.end(), [&](const char* c) { return text == c; });
}

// Properties GenApi keeps as numbers and so hands out in decimal, whatever base the description used.
bool isNumeric(const std::string& property) {
    return isOneOf(property, {"Address", "Length", "LSB", "MSB", "Bit", "CommandValue", "OnValue", "OffValue",
                              "PollingTime", "Value", "Min", "Max", "Inc", "NumericValue", "DisplayPrecision",
                              "ValueIndexed", "ValueDefault"});
}

// The values of an attribute list ("Name=VAR Offset=4") without their names.
std::string attributeValues(const std::string& attributes) {
    std::string values;
    size_t start = 0;
    while (start < attributes.size()) {
        size_t end = attributes.find(' ', start);
        if (end == std::string::npos)
            end = attributes.size();
        const std::string pair = attributes.substr(start, end - start);
        const size_t equals = pair.find('=');
        if (!values.empty())
            values += ' ';
        // A number (an Offset or an Index) comes back in decimal.
        const std::string value = equals == std::string::npos ? pair : pair.substr(equals + 1);
        int64_t number = 0;
        values += textToInteger(value, number) ? std::to_string(number) : value;
        start = end + 1;
    }
    return values;
}

// GenApi keeps indexed values by their index, so they come back in its order.
bool byIndex(const std::pair<std::string, std::string>& a, const std::pair<std::string, std::string>& b) {
    int64_t first = 0;
    int64_t second = 0;
    return textToInteger(a.first, first) && textToInteger(b.first, second) && first < second;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (size_t i = 0; i < parts.size(); ++i)
        text += (i ? "\t" : "") + parts[i];
    return text;
}

}  // namespace

CNodeProperties::CNodeProperties(const CNodeBase& node) : m_Node(node), m_Description(node.description()) {
    addDescribed();
    addCommon();
    addKindDefaults();
    addLinks();
}

std::vector<std::string> CNodeProperties::names() const {
    std::vector<std::string> list;
    for (const auto& entry : m_Entries) {
        if (!entry.second.listedWhenEmpty && entry.second.deferred && entry.second.deferred().empty())
            continue;
        list.push_back(entry.first);
    }
    return list;
}

bool CNodeProperties::get(const std::string& name, std::string& value, std::string& attribute) const {
    const auto found = m_Entries.find(name);
    if (found == m_Entries.end() || !found->second.defined)
        return false;
    value = found->second.deferred ? found->second.deferred() : found->second.value;
    if (value.empty() && !found->second.listedWhenEmpty)
        return false;
    attribute = found->second.attribute;
    return true;
}

void CNodeProperties::defer(const std::string& name, std::function<std::string()> work,
                            bool listedWhenEmpty) {
    SEntry& entry = m_Entries[name];
    entry.deferred = std::move(work);
    entry.listedWhenEmpty = listedWhenEmpty;
}

void CNodeProperties::set(const std::string& name, const std::string& value, const std::string& attribute) {
    m_Entries[name] = SEntry{value, attribute, true, nullptr, true};
}

void CNodeProperties::setDefault(const std::string& name, const std::string& value) {
    if (!has(name))
        set(name, value);
}

void CNodeProperties::setList(const std::string& name, const std::vector<std::string>& values) {
    if (!values.empty())
        set(name, joined(values));
}

bool CNodeProperties::isFloatKind() const {
    return isOneOf(m_Description.tag, {"Float", "FloatReg", "Converter", "SwissKnife"});
}

std::string CNodeProperties::textForm(const std::string& property, const std::string& value) const {
    // A string's value is text, whatever it looks like.
    if (!isNumeric(property) || (property == "Value" && m_Description.tag == "String"))
        return value;
    if (isFloatKind() && isOneOf(property, {"Value", "Min", "Max", "Inc", "ValueIndexed", "ValueDefault"})) {
        double number = 0;
        return textToFloat(value, number) ? floatToText(number, fnAutomatic, -1) : value;
    }
    int64_t number = 0;
    return textToInteger(value, number) ? std::to_string(number) : value;
}

// Several elements of one name come back tab-separated, values and attributes alike; a formula's
// variables come sorted by their names, as GenApi keeps them.
void CNodeProperties::addDescribed() {
    std::map<std::string, std::vector<std::pair<std::string, std::string>>> grouped;
    for (const SProperty& property : m_Description.properties)
        grouped[property.name].emplace_back(attributeValues(property.attribute), property.value);
    for (auto& group : grouped) {
        std::vector<std::pair<std::string, std::string>>& occurrences = group.second;
        if (group.first == "pVariable")
            std::stable_sort(occurrences.begin(), occurrences.end());
        if (group.first == "ValueIndexed" || group.first == "pValueIndexed")
            std::stable_sort(occurrences.begin(), occurrences.end(), byIndex);
        std::vector<std::string> values;
        std::vector<std::string> attributes;
        bool anyAttribute = false;
        for (const auto& occurrence : occurrences) {
            values.push_back(textForm(group.first, occurrence.second));
            attributes.push_back(occurrence.first);
            anyAttribute = anyAttribute || !occurrence.first.empty();
        }
        set(group.first, joined(values), anyAttribute ? joined(attributes) : std::string());
    }
    // A single bit is a range of one.
    const auto bit = m_Entries.find("Bit");
    if (bit != m_Entries.end()) {
        setDefault("LSB", bit->second.value);
        setDefault("MSB", bit->second.value);
        m_Entries.erase(bit);
    }
}

void CNodeProperties::addCommon() {
    const bool entry = m_Description.tag == "EnumEntry";
    set("Name", m_Description.name);
    set("NameSpace", m_Description.nameSpace);
    set("NodeType", m_Description.tag == "StructEntry" ? "MaskedIntReg" : m_Description.tag);
    if (entry)
        m_Entries["DeviceName"] = SEntry{std::string(), std::string(), false, nullptr, true};
    else
        set("DeviceName", m_Node.map().GetDeviceName().c_str());
    setDefault("ExposeStatic", "Yes");
    setDefault("IsDeprecated", "No");
    set("IsFeature", yesNo(m_Node.IsFeature()));
    setDefault("ImposedAccessMode", "RW");
    defer("Visibility",
          [this] { return std::string(EVisibilityClass::ToString(m_Node.GetVisibility()).c_str()); });
    setDefault("Streamable", "No");
    if (entry) {
        set("Symbolic", m_Description.xmlName);
        setDefault("IsSelfClearing", "No");
        double numeric = 0;
        const auto value = m_Entries.find("Value");
        if (!has("NumericValue") && value != m_Entries.end() && textToFloat(value->second.value, numeric))
            set("NumericValue", floatToText(numeric, fnAutomatic, -1));
    }
}

namespace {

// The values GenApi gives a property the description leaves out, by the kinds of node that have it.
struct SKindDefault {
    std::initializer_list<const char*> kinds;
    const char* property;
    const char* value;
};

const SKindDefault kindDefaults[] = {
    {{"IntReg", "MaskedIntReg", "StructEntry", "FloatReg", "StringReg", "Register"}, "AccessMode", "RO"},
    {{"IntReg", "MaskedIntReg", "StructEntry"}, "Sign", "Unsigned"},
    {{"IntReg", "MaskedIntReg", "StructEntry", "IntSwissKnife"}, "Representation", "PureNumber"},
    {{"IntReg", "MaskedIntReg", "StructEntry", "FloatReg"}, "Endianess", "LittleEndian"},
    {{"IntSwissKnife", "SwissKnife"}, "InputDirection", "None"},
    {{"SwissKnife", "FloatReg"}, "DisplayNotation", "Automatic"},
    {{"SwissKnife", "FloatReg", "Float", "Converter"}, "DisplayPrecision", "-1"},
    {{"Converter"}, "IsLinear", "No"},
    {{"Boolean"}, "OnValue", "1"},
    {{"Boolean"}, "OffValue", "0"},
    {{"Port"}, "CacheChunkData", "No"},
    {{"Port"}, "SwapEndianess", "No"},
};

}  // namespace

void CNodeProperties::addKindDefaults() {
    const std::string& tag = m_Description.tag;
    for (const SKindDefault& entry : kindDefaults) {
        if (isOneOf(tag, entry.kinds))
            setDefault(entry.property, entry.value);
    }
    if (isRegisterKind(tag) && !has("Cachable")) {
        defer("Cachable",
              [this] { return std::string(ECachingModeClass::ToString(m_Node.GetCachingMode()).c_str()); });
    }
    if (isConverter(tag)) {
        // A converter always has a slope; one the description leaves automatic is worked out when asked.
        if (!has("Slope") || m_Entries["Slope"].value == "Automatic")
            defer("Slope", [this] { return automaticSlope(); });
        set("pSwissKnifeFrom", m_Description.name + convertFromSuffix);
        set("pSwissKnifeTo", m_Description.name + convertToSuffix);
    }
}

void CNodeProperties::addLinks() {
    const CNodeMapImpl& map = m_Node.map();
    const CDependentGraph& graph = map.dependentGraph();
    if (graph.hasDependents(m_Description.name))
        defer("pDependent", [this, &graph] { return joined(graph.dependentsOf(m_Description.name)); });
    defer(
        "pTerminal", [this] { return joined(terminals()); }, false);
    setList("pEnumEntry", m_Description.entries);
    std::vector<std::string> selected;
    for (const CNodeBase* feature : map.selectedBy(&m_Node))
        selected.push_back(feature->name());
    setList("pSelected", selected);
    std::vector<std::string> selecting;
    for (const CNodeBase* selector : map.selectorsOf(&m_Node))
        selecting.push_back(selector->name());
    setList("pSelecting", selecting);
}

// A converter whose slope the description leaves to GenApi gets the direction FormulaFrom takes between
// the limits of its pValue; "Automatic" stays when they cannot be evaluated.
std::string CNodeProperties::automaticSlope() const {
    CNodeBase* source = m_Node.map().node(m_Description.value("pValue"));
    IInteger* integer = dynamic_cast<IInteger*>(source);
    IFloat* floating = dynamic_cast<IFloat*>(source);
    try {
        double low = 0, high = 0;
        if (integer) {
            low = static_cast<double>(integer->GetMin());
            high = static_cast<double>(integer->GetMax());
        } else if (floating) {
            low = floating->GetMin();
            high = floating->GetMax();
        } else {
            return "Automatic";
        }
        const double atLow = CFormulaEvaluation(m_Node, low).asFloat("GetProperty");
        const double atHigh = CFormulaEvaluation(m_Node, high).asFloat("GetProperty");
        return atHigh >= atLow ? "Increasing" : "Decreasing";
    } catch (const GenICam::GenericException&) {
        return "Automatic";
    }
}

std::vector<std::string> CNodeProperties::terminals() const {
    return m_Node.map().dependentGraph().terminalsOf(m_Description.name);
}

}  // namespace GenApiEngine
