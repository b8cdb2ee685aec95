// The values a feature's selectors had, to be set again later.
#ifndef GENAPI_SELECTORSTATE_H
#define GENAPI_SELECTORSTATE_H

#include <GenApi/Types.h>
#include <GenApi/IValue.h>
#include <string>
#include <utility>
#include <vector>

namespace GENAPI_NAMESPACE {

// The values of a feature's selectors, as names and value texts.
class GENAPI_DECL CSelectorState {
public:
    void SetFirst() { m_Index = 0; }
    bool SetNext() { return ++m_Index < m_Entries.size(); }
    void AddSelector(IValue& selector);
    void AddSelector(const GENICAM_NAMESPACE::gcstring& name, const GENICAM_NAMESPACE::gcstring& value);
    GENICAM_NAMESPACE::gcstring GetNodeName() const;
    GENICAM_NAMESPACE::gcstring GetNodeValue() const;
    bool IsEmpty() const { return m_Entries.empty(); }
    // Sets every selector to its value; with an error list, failures are listed there instead of thrown.
    bool RestoreState(INodeMap* pNodeMap, GENICAM_NAMESPACE::gcstring_vector* pErrorList = NULL);

private:
    std::vector<std::pair<std::string, std::string> > m_Entries;
    size_t m_Index = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
