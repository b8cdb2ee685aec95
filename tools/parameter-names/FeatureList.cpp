// Reading features through the engine and list files, checking them, and writing lists and headers.
#include "FeatureList.h"
#include <GenApi/GenApi.h>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

using namespace GenApi;

namespace {

const std::map<EInterfaceType, std::string> interfaceNames = {
    {intfIInteger, "IInteger"},         {intfIFloat, "IFloat"},
    {intfIBoolean, "IBoolean"},         {intfICommand, "ICommand"},
    {intfIEnumeration, "IEnumeration"}, {intfIString, "IString"}};

const std::map<std::string, std::string> nameClasses = {
    {"IInteger", "IntegerParameterName"},  {"IFloat", "FloatParameterName"},
    {"IBoolean", "BooleanParameterName"},  {"ICommand", "CommandParameterName"},
    {"IEnumeration", "EnumParameterName"}, {"IString", "StringParameterName"}};

const std::set<std::string> keywords = {
    "alignas",      "alignof",  "and",       "and_eq",   "asm",       "auto",
    "bitand",       "bitor",    "bool",      "break",    "case",      "catch",
    "char",         "class",    "compl",     "const",    "constexpr", "const_cast",
    "continue",     "decltype", "default",   "delete",   "do",        "double",
    "dynamic_cast", "else",     "enum",      "explicit", "export",    "extern",
    "false",        "float",    "for",       "friend",   "goto",      "if",
    "inline",       "int",      "long",      "mutable",  "namespace", "new",
    "noexcept",     "not",      "not_eq",    "nullptr",  "operator",  "or",
    "or_eq",        "private",  "protected", "public",   "register",  "reinterpret_cast",
    "return",       "short",    "signed",    "sizeof",   "static",    "static_assert",
    "static_cast",  "struct",   "switch",    "template", "this",      "thread_local",
    "throw",        "true",     "try",       "typedef",  "typeid",    "typename",
    "union",        "unsigned", "using",     "virtual",  "void",      "volatile",
    "wchar_t",      "while",    "xor",       "xor_eq"};

bool isIdentifier(const std::string& name) {
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0])))
        return false;
    for (char c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_')
            return false;
    }
    return keywords.count(name) == 0;
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    const size_t last = text.find_last_not_of(" \t\r\n");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

}  // namespace

std::vector<SFeature> featuresOfDescription(const std::string& path) {
    CNodeMapRef map;
    try {
        const bool zipped = path.size() > 4 && path.compare(path.size() - 4, 4, ".zip") == 0;
        if (zipped)
            map._LoadXMLFromZIPFile(path.c_str());
        else
            map._LoadXMLFromFile(path.c_str());
    } catch (const GenICam::GenericException& e) {
        throw CListError(path + ": not a camera description GenApi can load: " + e.GetDescription());
    }
    NodeList_t nodes;
    map._GetNodes(nodes);
    std::vector<SFeature> features;
    for (INode* node : nodes) {
        const auto type = interfaceNames.find(node->GetPrincipalInterfaceType());
        if (!node->IsFeature() || type == interfaceNames.end() || node->GetVisibility() == Invisible)
            continue;
        features.push_back(SFeature{node->GetName().c_str(), type->second});
    }
    checkFeatures(features, path);
    return features;
}

void checkFeatures(std::vector<SFeature>& features, const std::string& origin) {
    std::sort(features.begin(), features.end(),
              [](const SFeature& a, const SFeature& b) { return a.name < b.name; });
    for (size_t i = 0; i < features.size(); ++i) {
        if (!isIdentifier(features[i].name)) {
            throw CListError(origin + ": node '" + features[i].name + "' cannot be a C++ identifier");
        }
        if (nameClasses.count(features[i].interfaceName) == 0) {
            throw CListError(origin + ": node '" + features[i].name + "' has the unknown interface '" +
                             features[i].interfaceName + "'");
        }
        if (i > 0 && features[i].name == features[i - 1].name)
            throw CListError(origin + ": node '" + features[i].name + "' is listed twice");
    }
}

SFeatureList readListFile(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw CListError(path + ": cannot be read");
    SFeatureList list;
    std::string line;
    int number = 0;
    while (std::getline(file, line)) {
        ++number;
        line = trimmed(line);
        if (line.empty())
            continue;
        if (line[0] == '#') {
            std::istringstream words(line.substr(1));
            std::string key, value;
            words >> key >> value;
            if (key == "namespace")
                list.nameSpace = value;
            if (key == "prefix")
                list.prefix = value;
            continue;
        }
        const size_t tab = line.find('\t');
        if (tab == std::string::npos)
            throw CListError(path + ":" + std::to_string(number) + ": expected 'Name<TAB>Interface'");
        list.features.push_back(SFeature{trimmed(line.substr(0, tab)), trimmed(line.substr(tab + 1))});
    }
    if (!isIdentifier(list.nameSpace) || list.prefix.empty() || list.prefix[0] != '@')
        throw CListError(path + ": needs '# namespace NAME' and '# prefix @NodeMap' lines");
    checkFeatures(list.features, path);
    return list;
}

std::string listText(const SFeatureList& list) {
    std::string text;
    if (!list.nameSpace.empty())
        text += "# namespace " + list.nameSpace + "\n# prefix " + list.prefix + "\n";
    for (const SFeature& feature : list.features)
        text += feature.name + "\t" + feature.interfaceName + "\n";
    return text;
}

std::string catalogueEntries(const std::vector<SFeatureList>& lists) {
    std::string text;
    for (const SFeatureList& list : lists) {
        // Grouped by name type, each group in the list's order.
        for (const char* type : {"IInteger", "IFloat", "IBoolean", "ICommand", "IEnumeration", "IString"}) {
            for (const SFeature& feature : list.features) {
                if (feature.interfaceName != type)
                    continue;
                text += "PARAMETERCOLLECTION_CATALOGUE_NAME(" + list.nameSpace + ", " +
                        nameClasses.at(feature.interfaceName) + ", " + feature.name + ", \"" + list.prefix +
                        "/" + feature.name + "\")\n";
            }
        }
    }
    return text;
}

std::string headerText(const SFeatureList& list, const std::string& source) {
    std::string guard = "PARAMETERNAMES_" + list.nameSpace + "_H";
    std::transform(guard.begin(), guard.end(), guard.begin(), [](char c) { return std::toupper(c); });
    std::string text = "// Typed names of the features of " + list.prefix +
                       ", generated by parameter-names from " + source + ".\n#ifndef " + guard +
                       "\n#define " + guard +
                       "\n\n#include <parametercollection/ParameterNames.h>\n\n"
                       "#define PARAMETERCOLLECTION_CATALOGUE_NAME(Namespace, Type, Identifier, Path) \\\n"
                       "    namespace Namespace {                                                  \\\n"
                       "    const ParameterCollection::Type Identifier(QStringLiteral(Path));     \\\n"
                       "    }\n";
    text += catalogueEntries({list});
    text += "#undef PARAMETERCOLLECTION_CATALOGUE_NAME\n\n#endif\n";
    return text;
}

void writeFileAtomically(const std::string& path, const std::string& text) {
    const std::string temporary = path + ".part";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file << text;
        if (!file.flush())
            throw CListError(path + ": cannot be written");
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        std::remove(temporary.c_str());
        throw CListError(path + ": cannot be written");
    }
}
