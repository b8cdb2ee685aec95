// Feature lists: the typed features of a node map, read from a camera description or a list file, and
// written as a list or as C++ name constants.
#ifndef TOOLS_PARAMETERNAMES_FEATURELIST_H
#define TOOLS_PARAMETERNAMES_FEATURELIST_H

#include <stdexcept>
#include <string>
#include <vector>

struct SFeature {
    std::string name;
    std::string interfaceName;  // IInteger, IFloat, IBoolean, ICommand, IEnumeration or IString
};

// Input that cannot become a list, with the file (and node) it comes from.
class CListError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct SFeatureList {
    std::string nameSpace;
    std::string prefix;
    std::vector<SFeature> features;  // sorted by name in character-code order
};

// The visible features of a description (plain or zipped GenICam XML) that have one of the six typed
// interfaces: no categories, ports, registers, enumeration entries or invisible helper nodes.
std::vector<SFeature> featuresOfDescription(const std::string& path);

// A list file: "# namespace NS" and "# prefix @NodeMap" lines, other "#" lines, then "Name<TAB>Interface".
SFeatureList readListFile(const std::string& path);

// Sorts by name and checks that every name can be a C++ identifier and occurs once; `origin` names the
// file in errors.
void checkFeatures(std::vector<SFeature>& features, const std::string& origin);

std::string listText(const SFeatureList& list);
// One line a constant: PARAMETERCOLLECTION_CATALOGUE_NAME(Namespace, Type, Identifier, "Path").
std::string catalogueEntries(const std::vector<SFeatureList>& lists);
// A stand-alone header with the constants of one list.
std::string headerText(const SFeatureList& list, const std::string& source);

// Writes through a temporary file and a rename, so that a failure leaves nothing half-written.
void writeFileAtomically(const std::string& path, const std::string& text);

#endif
