// Feature bags: storing streamable features with every combination of their selectors, loading them back
// with retries for order-dependent refusals, and GenApi's text format.
#include <GenApi/GenApi.h>
#include <GenApi/Persistence.h>
#include <GenICamVersion.h>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sstream>

namespace GENAPI_NAMESPACE {

namespace {

using GENICAM_NAMESPACE::gcstring;

// Selectors with more values than this are stored at their current value only.
constexpr int64_t maximumSelectorValues = 4096;

bool persistable(INode* node) {
    switch (node->GetPrincipalInterfaceType()) {
        case intfIInteger:
        case intfIFloat:
        case intfIBoolean:
        case intfIEnumeration:
        case intfIString:
            return node->IsStreamable() && node->GetAccessMode() == RW;
        default:
            return false;
    }
}

// The shortest text that reads back to the same double, so that no float loses precision.
std::string floatText(double value) {
    char text[64];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

std::string valueText(IValue& value) {
    if (IFloat* floating = dynamic_cast<IFloat*>(&value))
        return floatText(floating->GetValue());
    return value.ToString().c_str();
}

bool sameValue(IValue& feature, const std::string& expected) {
    if (IFloat* floating = dynamic_cast<IFloat*>(&feature))
        return floating->GetValue(false, true) == std::strtod(expected.c_str(), nullptr);
    return feature.ToString(false, true) == expected.c_str();
}

IValue* valueNode(INodeMap* map, const std::string& name) {
    IValue* value = dynamic_cast<IValue*>(map->GetNode(name.c_str()));
    if (!value)
        throw RUNTIME_EXCEPTION("Feature '%s' : not in the node map", name.c_str());
    return value;
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    const size_t last = text.find_last_not_of(" \t\r\n");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

// The entries that follow the magic line, parsed as GenApi reads them (CRLF line ends tolerated).
void readEntries(std::istream& stream, std::vector<CFeatureBag::SEntry>& entries) {
    std::string line;
    while (std::getline(stream, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (trimmed(line).empty() || trimmed(line)[0] == '#')
            continue;
        const size_t tab = line.find('\t');
        if (tab == std::string::npos)
            throw RUNTIME_EXCEPTION("The stream holds incomplete key - value - set");
        CFeatureBag::SEntry entry;
        entry.name = trimmed(line.substr(0, tab));
        std::string rest = line.substr(tab + 1);
        if (!rest.empty() && rest[0] == '{') {
            const size_t close = rest.find('}');
            if (close == std::string::npos)
                throw RUNTIME_EXCEPTION("The stream holds incomplete key - value - set");
            std::istringstream selectors(rest.substr(1, close - 1));
            std::string token;
            while (std::getline(selectors, token, '\t')) {
                const size_t equals = token.rfind('=');
                if (equals != std::string::npos)
                    entry.selectors.emplace_back(trimmed(token.substr(0, equals)), token.substr(equals + 1));
            }
            rest = rest.substr(close + 1);
            if (rest.empty() || rest[0] != '\t')
                throw RUNTIME_EXCEPTION("The stream holds incomplete key - value - set");
            rest = rest.substr(1);
        }
        entry.value = rest;
        if (!entry.name.empty())
            entries.push_back(entry);
    }
}

// Checks the magic first line of a bag text.
void readMagic(std::istream& stream) {
    std::string line;
    if (!std::getline(stream, line))
        throw RUNTIME_EXCEPTION("The stream is eof");
    if (line.find(GENAPI_PERSISTENCE_MAGIC) != std::string::npos)
        return;
    if (line.find(GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER) != std::string::npos) {
        throw RUNTIME_EXCEPTION(
            "The stream has been created using the CFeatureBagger class thus must be restored using the "
            "CFeatureBagger class as well");
    }
    throw RUNTIME_EXCEPTION(
        "The stream is not a GenApi feature stream since it is missing the magic GUID in the "
        "first line");
}

// Entry values of one selector: the available entries of an enumeration, or an integer's grid.
std::vector<gcstring> selectorValues(IValue* selector) {
    std::vector<gcstring> values;
    if (IEnumeration* enumeration = dynamic_cast<IEnumeration*>(selector)) {
        NodeList_t entries;
        enumeration->GetEntries(entries);
        for (INode* node : entries) {
            IEnumEntry* entry = dynamic_cast<IEnumEntry*>(node);
            if (entry && IsAvailable(node))
                values.push_back(entry->GetSymbolic());
        }
    } else if (IInteger* integer = dynamic_cast<IInteger*>(selector)) {
        const int64_t minimum = integer->GetMin();
        const int64_t maximum = integer->GetMax();
        const int64_t increment = std::max<int64_t>(integer->GetInc(), 1);
        if ((maximum - minimum) / increment >= maximumSelectorValues)
            return {selector->ToString()};
        for (int64_t value = minimum; value <= maximum; value += increment)
            values.push_back(std::to_string(value).c_str());
    }
    return values;
}

}  // namespace

void CSelectorState::AddSelector(IValue& selector) {
    m_Entries.emplace_back(selector.GetNode()->GetName().c_str(), selector.ToString().c_str());
}

void CSelectorState::AddSelector(const gcstring& name, const gcstring& value) {
    m_Entries.emplace_back(name.c_str(), value.c_str());
}

gcstring CSelectorState::GetNodeName() const {
    return m_Index < m_Entries.size() ? m_Entries[m_Index].first.c_str() : "";
}

gcstring CSelectorState::GetNodeValue() const {
    return m_Index < m_Entries.size() ? m_Entries[m_Index].second.c_str() : "";
}

bool CSelectorState::RestoreState(INodeMap* pNodeMap, GENICAM_NAMESPACE::gcstring_vector* pErrorList) {
    bool restored = true;
    for (const auto& entry : m_Entries) {
        try {
            valueNode(pNodeMap, entry.first)->FromString(entry.second.c_str());
        } catch (const GENICAM_NAMESPACE::GenericException& e) {
            if (!pErrorList)
                throw;
            pErrorList->push_back(e.GetDescription());
            restored = false;
        }
    }
    return restored;
}

CSelectorSet::CSelectorSet(IBase* pSelectedFeature) {
    ISelector* selected = dynamic_cast<ISelector*>(pSelectedFeature);
    if (!selected)
        return;
    FeatureList_t selecting;
    selected->GetSelectingFeatures(selecting);
    for (IValue* selector : selecting) {
        INode* node = selector->GetNode();
        const EInterfaceType type = node->GetPrincipalInterfaceType();
        if ((type == intfIEnumeration || type == intfIInteger) && node->GetAccessMode() == RW) {
            m_Selectors.push_back(selector);
            m_Originals.push_back(selector->ToString());
        }
    }
}

CSelectorSet::~CSelectorSet() {}

bool CSelectorSet::SetFirst() {
    for (IValue* selector : m_Selectors) {
        const std::vector<gcstring> values = selectorValues(selector);
        if (values.empty())
            return false;
        selector->FromString(values.front());
    }
    return true;
}

// Counts like an odometer: the first selector moves fastest and carries into the next when it wraps.
bool CSelectorSet::SetNext(bool) {
    for (IValue* selector : m_Selectors) {
        const std::vector<gcstring> values = selectorValues(selector);
        const auto current = std::find(values.begin(), values.end(), selector->ToString());
        if (current != values.end() && current + 1 != values.end()) {
            selector->FromString(*(current + 1));
            return true;
        }
        if (!values.empty())
            selector->FromString(values.front());
    }
    return false;
}

void CSelectorSet::Restore() {
    for (size_t i = 0; i < m_Selectors.size(); ++i)
        m_Selectors[i]->FromString(m_Originals[i]);
}

gcstring CSelectorSet::ToString() {
    std::string text;
    for (IValue* selector : m_Selectors) {
        text += text.empty() ? "" : "\t";
        text += std::string(selector->GetNode()->GetName().c_str()) + "=" + selector->ToString().c_str();
    }
    return text.c_str();
}

void CSelectorSet::GetState(CSelectorState& State) {
    for (IValue* selector : m_Selectors)
        State.AddSelector(*selector);
}

void CSelectorSet::GetSelectorList(FeatureList_t& SelectorList, bool) {
    SelectorList.clear();
    for (IValue* selector : m_Selectors)
        SelectorList.push_back(selector);
}

void CFeatureBag::PersistFeature(IValue& item, CSelectorSet* selectorSet) {
    const std::string name = item.GetNode()->GetName().c_str();
    if (!selectorSet || selectorSet->IsEmpty()) {
        m_Entries.push_back(SEntry{name, {}, valueText(item)});
        return;
    }
    FeatureList_t selectors;
    selectorSet->GetSelectorList(selectors);
    if (selectorSet->SetFirst()) {
        do {
            try {
                if (!IsReadable(item.GetNode()) || !IsWritable(item.GetNode()))
                    continue;
                SEntry entry{name, {}, valueText(item)};
                for (IValue* selector : selectors)
                    entry.selectors.emplace_back(selector->GetNode()->GetName().c_str(),
                                                 selector->ToString().c_str());
                m_Entries.push_back(entry);
            } catch (const GENICAM_NAMESPACE::GenericException&) {
                // A combination the device cannot answer is left out.
            }
        } while (selectorSet->SetNext());
    }
    selectorSet->Restore();
    for (IValue* selector : selectors)
        m_Entries.push_back(SEntry{selector->GetNode()->GetName().c_str(), {}, selector->ToString().c_str()});
}

int64_t CFeatureBag::StoreToBag(INodeMap* pNodeMap, const int MaxNumPersistSkriptEntries,
                                GENICAM_NAMESPACE::gcstring_vector* pFeatureFilter) {
    if (!pNodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("No node map to store");
    NodeList_t nodes;
    pNodeMap->GetNodes(nodes);
    const size_t before = m_Entries.size();
    for (INode* node : nodes) {
        if (MaxNumPersistSkriptEntries >= 0 &&
            m_Entries.size() - before >= size_t(MaxNumPersistSkriptEntries))
            break;
        if (!persistable(node))
            continue;
        if (pFeatureFilter && std::find(pFeatureFilter->begin(), pFeatureFilter->end(), node->GetName()) ==
                                  pFeatureFilter->end())
            continue;
        try {
            CSelectorSet selectors(node);
            PersistFeature(*dynamic_cast<IValue*>(node), &selectors);
        } catch (const GENICAM_NAMESPACE::GenericException&) {
            // A feature that cannot be read now is not stored.
        }
    }
    return static_cast<int64_t>(m_Entries.size() - before);
}

bool CFeatureBag::LoadFromBag(INodeMap* pNodeMap, bool Verify,
                              GENICAM_NAMESPACE::gcstring_vector* pErrorList) {
    if (!pNodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("No node map to load");
    auto apply = [&](const SEntry& entry) {
        for (const auto& selector : entry.selectors)
            valueNode(pNodeMap, selector.first)->FromString(selector.second.c_str());
        valueNode(pNodeMap, entry.name)->FromString(entry.value.c_str());
    };
    // Passes over the entries the device refused, while each pass makes progress.
    std::vector<const SEntry*> pending;
    for (const SEntry& entry : m_Entries)
        pending.push_back(&entry);
    std::vector<std::pair<std::string, std::exception_ptr>> failures;
    while (!pending.empty()) {
        std::vector<const SEntry*> refused;
        failures.clear();
        for (const SEntry* entry : pending) {
            try {
                apply(*entry);
            } catch (const GENICAM_NAMESPACE::GenericException& e) {
                refused.push_back(entry);
                failures.emplace_back(entry->name + " : " + e.GetDescription(), std::current_exception());
            }
        }
        if (refused.size() == pending.size())
            break;
        pending = refused;
    }
    if (Verify && failures.empty()) {
        for (const SEntry& entry : m_Entries) {
            try {
                for (const auto& selector : entry.selectors)
                    valueNode(pNodeMap, selector.first)->FromString(selector.second.c_str());
                IValue* feature = valueNode(pNodeMap, entry.name);
                // Selectors are replayed, so that the entries after them are compared under their values.
                ISelector* selector = dynamic_cast<ISelector*>(feature);
                if (selector && selector->IsSelector()) {
                    feature->FromString(entry.value.c_str());
                    continue;
                }
                if (!sameValue(*feature, entry.value)) {
                    throw RUNTIME_EXCEPTION("Feature '%s' reads '%s' after '%s' was loaded",
                                            entry.name.c_str(), feature->ToString().c_str(),
                                            entry.value.c_str());
                }
            } catch (const GENICAM_NAMESPACE::GenericException& e) {
                failures.emplace_back(entry.name + " : " + e.GetDescription(), std::current_exception());
            }
        }
    }
    if (failures.empty())
        return true;
    if (!pErrorList)
        std::rethrow_exception(failures.front().second);
    for (const auto& failure : failures)
        pErrorList->push_back(failure.first.c_str());
    return false;
}

bool CFeatureBag::operator==(const CFeatureBag& other) const {
    if (m_Entries.size() != other.m_Entries.size())
        return false;
    for (size_t i = 0; i < m_Entries.size(); ++i) {
        const SEntry& a = m_Entries[i];
        const SEntry& b = other.m_Entries[i];
        if (a.name != b.name || a.selectors != b.selectors || a.value != b.value)
            return false;
    }
    return true;
}

gcstring CFeatureBag::ToString() {
    std::ostringstream text;
    write(text);
    return text.str().c_str();
}

void CFeatureBag::write(std::ostream& stream) const {
    stream << "# " << GENAPI_PERSISTENCE_MAGIC << "\n";
    if (!m_Info.empty()) {
        stream << "# GenApi persistence file (version " << GENICAM_VERSION_MAJOR << "."
               << GENICAM_VERSION_MINOR << "." << GENICAM_VERSION_SUBMINOR << ")\n# " << m_Info.c_str()
               << "\n";
    }
    for (const SEntry& entry : m_Entries) {
        stream << entry.name << "\t";
        if (!entry.selectors.empty()) {
            stream << "{";
            for (size_t i = 0; i < entry.selectors.size(); ++i)
                stream << (i ? "\t" : "") << entry.selectors[i].first << "=" << entry.selectors[i].second;
            stream << "}\t";
        }
        stream << entry.value << "\n";
    }
}

void CFeatureBag::read(std::istream& stream) {
    readMagic(stream);
    m_Entries.clear();
    readEntries(stream, m_Entries);
}

size_t CFeatureBagger::Bag(INodeMap* pNodeMap, bool handleDefaultNodeMap, bool, bool,
                           const int MaxNumPersistSkriptEntries) {
    m_Bags.clear();
    if (handleDefaultNodeMap) {
        CFeatureBag bag;
        bag.SetBagName("All");
        bag.SetInfo(m_Info);
        bag.StoreToBag(pNodeMap, MaxNumPersistSkriptEntries);
        m_Bags.push_back(bag);
    }
    return m_Bags.size();
}

bool CFeatureBagger::UnBag(INodeMap* pNodeMap, bool Verify, GENICAM_NAMESPACE::gcstring_vector* pErrorList) {
    bool loaded = true;
    for (CFeatureBag& bag : m_Bags)
        loaded = bag.LoadFromBag(pNodeMap, Verify, pErrorList) && loaded;
    return loaded;
}

void CFeatureBagger::write(std::ostream& stream) const {
    stream << "# " << GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER << "\n";
    if (!m_Info.empty()) {
        stream << "# GenApi CFeatureBagger persistence file (version " << GENICAM_VERSION_MAJOR << "."
               << GENICAM_VERSION_MINOR << "." << GENICAM_VERSION_SUBMINOR << ")\n# " << m_Info.c_str()
               << "\n";
    }
    for (const CFeatureBag& bag : m_Bags)
        stream << "[" << bag.GetBagName().c_str() << "]\n" << bag;
}

// A plain bag becomes one bag named "All"; a bagger stream holds "[name]" sections of bag texts.
void CFeatureBagger::read(std::istream& stream) {
    std::string first;
    if (!std::getline(stream, first))
        throw RUNTIME_EXCEPTION("The stream is eof");
    m_Bags.clear();
    if (first.find(GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER) == std::string::npos) {
        std::istringstream plain(first + "\n" + std::string(std::istreambuf_iterator<char>(stream), {}));
        CFeatureBag bag;
        plain >> bag;
        bag.SetBagName("All");
        m_Bags.push_back(bag);
        return;
    }
    std::string line;
    std::string name;
    std::string section;
    auto finish = [&] {
        if (name.empty())
            return;
        std::istringstream text(section);
        CFeatureBag bag;
        text >> bag;
        bag.SetBagName(name.c_str());
        m_Bags.push_back(bag);
    };
    while (std::getline(stream, line)) {
        const std::string clean = trimmed(line);
        if (clean.size() > 2 && clean.front() == '[' && clean.back() == ']') {
            finish();
            name = clean.substr(1, clean.size() - 2);
            section.clear();
        } else {
            section += line + "\n";
        }
    }
    finish();
}

std::istream& EatComments(std::istream& stream) {
    while (stream.peek() == '#')
        stream.ignore(1024, '\n');
    return stream;
}

}  // namespace GENAPI_NAMESPACE
