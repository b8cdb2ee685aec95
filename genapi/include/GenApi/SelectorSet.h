// The selectors of a feature, stepped through all their value combinations.
#ifndef GENAPI_SELECTORSET_H
#define GENAPI_SELECTORSET_H

#include <GenApi/GenApiDll.h>
#include <GenApi/ISelectorDigit.h>
#include <GenApi/IBase.h>
#include <GenApi/Pointer.h>
#include <vector>

namespace GENAPI_NAMESPACE {

// A counter over all value combinations of the selectors of a feature, the first selector counting fastest.
class GENAPI_DECL CSelectorSet : public ISelectorDigit {
public:
    explicit CSelectorSet(IBase* pSelectedFeature);
    virtual ~CSelectorSet();
    bool IsEmpty() const { return m_Selectors.empty(); }
    virtual bool SetFirst();
    virtual bool SetNext(bool Tick = true);
    // Puts every selector back to the value it had when the set was made.
    virtual void Restore();
    // "Selector1=Value1<TAB>Selector2=Value2"
    virtual GENICAM_NAMESPACE::gcstring ToString();
    void GetState(CSelectorState& State);
    virtual void GetSelectorList(FeatureList_t& SelectorList, bool Incremental = false);

private:
    CSelectorSet(const CSelectorSet&);
    CSelectorSet& operator=(const CSelectorSet&);

    std::vector<IValue*> m_Selectors;
    std::vector<GENICAM_NAMESPACE::gcstring> m_Originals;
};

}  // namespace GENAPI_NAMESPACE

#endif
