// Feature persistence: a bag of "Name<TAB>Value" entries (with the selector values of selected features)
// that a node map's streamable features are stored to and loaded back from, in GenApi's text format.
#ifndef GENAPI_PERSISTENCE_H
#define GENAPI_PERSISTENCE_H

#include <GenApi/Types.h>
#include <GenApi/Pointer.h>
#include <GenApi/GenApiDll.h>
#include <GenApi/SelectorSet.h>
#include <istream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#define GENAPI_PERSISTENCE_MAGIC "{05D8C294-F295-4dfb-9D01-096BD04049F4}"
#define GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER "{4709CB3C-7322-4460-84C3-DA11DDA09939}"

namespace GENAPI_NAMESPACE {

struct GENAPI_DECL_ABSTRACT IPersistScript {
    virtual void SetInfo(const GENICAM_NAMESPACE::gcstring& Info) = 0;
    virtual void PersistFeature(IValue& item, CSelectorSet* selectorSet = NULL) = 0;
    virtual ~IPersistScript() {}
};

// The bag: entries in the order they were stored.
class GENAPI_DECL CFeatureBag : public IPersistScript {
public:
    struct SEntry {
        std::string name;
        std::vector<std::pair<std::string, std::string> > selectors;
        std::string value;
    };

    CFeatureBag() {}
    CFeatureBag(const CFeatureBag& other) = default;
    CFeatureBag& operator=(const CFeatureBag& other) = default;
    virtual ~CFeatureBag() {}

    virtual void SetInfo(const GENICAM_NAMESPACE::gcstring& Info) { m_Info = Info; }
    virtual void PersistFeature(IValue& item, CSelectorSet* selectorSet = NULL);

    // Stores the streamable, readable and writable features (all value combinations of their selectors);
    // -1 stores all; a filter lists the names allowed. Answers the number of entries.
    int64_t StoreToBag(INodeMap* pNodeMap, const int MaxNumPersistSkriptEntries = -1,
                       GENICAM_NAMESPACE::gcstring_vector* pFeatureFilter = NULL);
    // Loads the entries, retrying those the device refused because of their order for as long as a pass
    // makes progress. With an error list, failures are listed there and loading goes on; without one the
    // first failure is thrown. With Verify every entry is read back and a difference counts as a failure.
    bool LoadFromBag(INodeMap* pNodeMap, bool Verify = true,
                     GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL);

    bool operator==(const CFeatureBag& other) const;
    GENICAM_NAMESPACE::gcstring ToString();
    virtual void Destroy() {}
    virtual const GENICAM_NAMESPACE::gcstring& GetBagName() const { return m_BagName; }
    virtual void SetBagName(const GENICAM_NAMESPACE::gcstring& name) { m_BagName = name; }

    const std::vector<SEntry>& entries() const { return m_Entries; }
    // Reads a bag text; throws GenICam::RuntimeException with GenApi's messages on malformed text.
    void read(std::istream& stream);
    void write(std::ostream& stream) const;

private:
    std::vector<SEntry> m_Entries;
    GENICAM_NAMESPACE::gcstring m_Info;
    GENICAM_NAMESPACE::gcstring m_BagName;
};

inline std::ostream& operator<<(std::ostream& stream, const CFeatureBag& bag) {
    bag.write(stream);
    return stream;
}

inline std::istream& operator>>(std::istream& stream, CFeatureBag& bag) {
    bag.read(stream);
    return stream;
}

// Bags of a node map: the default map as the bag "All".
class GENAPI_DECL CFeatureBagger {
public:
    explicit CFeatureBagger() {}
    size_t Bag(INodeMap* pNodeMap, bool handleDefaultNodeMap = true, bool handleUserSets = false,
               bool handleSequencerSets = false, const int MaxNumPersistSkriptEntries = -1);
    bool UnBag(INodeMap* pNodeMap, bool Verify = true, GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL);
    virtual void SetInfo(const GENICAM_NAMESPACE::gcstring& Info) { m_Info = Info; }
    virtual ~CFeatureBagger() {}
    std::vector<CFeatureBag>::const_iterator begin() const { return m_Bags.begin(); }
    std::vector<CFeatureBag>::const_iterator end() const { return m_Bags.end(); }
    const CFeatureBag& at(size_t index) const { return m_Bags.at(index); }
    size_t size() const { return m_Bags.size(); }

    void read(std::istream& stream);
    void write(std::ostream& stream) const;

private:
    CFeatureBagger(const CFeatureBagger&);
    CFeatureBagger& operator=(const CFeatureBagger&);

    std::vector<CFeatureBag> m_Bags;
    GENICAM_NAMESPACE::gcstring m_Info;
};

inline std::ostream& operator<<(std::ostream& stream, const CFeatureBagger& bagger) {
    bagger.write(stream);
    return stream;
}

inline std::istream& operator>>(std::istream& stream, CFeatureBagger& bagger) {
    bagger.read(stream);
    return stream;
}

// Skips comment lines starting with '#'.
GENAPI_DECL std::istream& EatComments(std::istream& stream);

}  // namespace GENAPI_NAMESPACE

#endif
