// Smart pointers that cast a node to one of its interfaces; they never own the node.
#ifndef GENAPI_POINTER_H
#define GENAPI_POINTER_H

#include <Base/GCException.h>
#include <GenApi/IBase.h>
#include <GenApi/INode.h>
#include <GenApi/IValue.h>
#include <GenApi/ICategory.h>
#include <GenApi/IInteger.h>
#include <GenApi/IFloat.h>
#include <GenApi/IRegister.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IBoolean.h>
#include <GenApi/IPort.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortStacked.h>
#include <GenApi/IChunkPort.h>
#include <GenApi/IString.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/ISelector.h>
#include <GenApi/ICommand.h>
#include <GenApi/IUserData.h>
#include <cassert>

namespace GENAPI_NAMESPACE {

template <class T, class B = IBase>
class CPointer {
public:
    CPointer(void) throw() : m_pT(NULL) {}
    CPointer(B* pB) : m_pT(dynamic_cast<T*>(pB)) {}
    virtual ~CPointer(void) {}

    void operator=(B* pB) { m_pT = dynamic_cast<T*>(pB); }

    operator T*(void) const {
        if (NULL == m_pT)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return m_pT;
    }
    T& operator*(void) const {
        if (NULL == m_pT)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return *m_pT;
    }
    T& operator()(void) const {
        if (NULL == m_pT)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return *m_pT;
    }
    T* operator->(void) const {
        if (NULL == m_pT)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return m_pT;
    }
    bool IsValid() const throw() { return m_pT != NULL; }
    operator bool(void) const throw() { return m_pT != NULL; }
    bool operator==(T* pT) const { return m_pT == pT; }
    bool operator==(const CPointer<T, B>& rT) const { return m_pT == rT.m_pT; }
    bool operator==(int nMustBeNull) const {
        if (0 != nMustBeNull)
            throw LOGICAL_ERROR_EXCEPTION("argument must be NULL");
        return NULL == m_pT;
    }

protected:
    T* m_pT;
};

typedef CPointer<IBase> CBasePtr;
typedef CPointer<INode> CNodePtr;
typedef CPointer<IValue> CValuePtr;
typedef CPointer<ICategory> CCategoryPtr;
typedef CPointer<IBoolean> CBooleanPtr;
typedef CPointer<IInteger> CIntegerPtr;
typedef CPointer<IString> CStringPtr;
typedef CPointer<IRegister> CRegisterPtr;
typedef CPointer<IEnumeration> CEnumerationPtr;
typedef CPointer<IEnumEntry> CEnumEntryPtr;
typedef CPointer<IPort> CPortPtr;
typedef CPointer<IPortReplay> CPortReplayPtr;
typedef CPointer<IPortRecorder> CPortRecorderPtr;
typedef CPointer<IPortWriteList, IPortWriteList> CPortWriteListPtr;
typedef CPointer<IChunkPort> CChunkPortPtr;
typedef CPointer<INodeMap, INodeMap> CNodeMapPtr;
typedef CPointer<IDeviceInfo, INodeMap> CDeviceInfoPtr;
typedef CPointer<IUserData, INodeMap> CNodeMapUserDataPtr;
typedef CPointer<IUserData> CNodeUserDataPtr;
typedef CPointer<ISelector> CSelectorPtr;
typedef CPointer<ICommand> CCommandPtr;
typedef CPointer<IPortConstruct> CPortConstructPtr;
typedef CPointer<IPortStackedConstruct> CPortStackedConstructPtr;

// Pointer to a float node that can also reach the node's integer and enumeration cast aliases.
class CFloatPtr : public CPointer<IFloat, IBase> {
public:
    CFloatPtr() throw() : CPointer<IFloat, IBase>() {}
    CFloatPtr(IBase* pB) : CPointer<IFloat, IBase>(pB) {}
    void operator=(IBase* pB) { CPointer<IFloat, IBase>::operator=(pB); }
    IInteger* GetIntAlias() { return dynamic_cast<IInteger*>((*this)->GetNode()->GetCastAlias()); }
    IEnumeration* GetEnumAlias() { return dynamic_cast<IEnumeration*>((*this)->GetNode()->GetCastAlias()); }
};

// Name of the principal interface of a node (deprecated helper).
inline GENICAM_NAMESPACE::gcstring GetInterfaceName(IBase* pBase) {
    assert(pBase && "GetInterfaceName called with NULL pointer");
    switch (CNodePtr(pBase)->GetPrincipalInterfaceType()) {
        case intfIValue:
            return "IValue";
        case intfIInteger:
            return "IInteger";
        case intfIBoolean:
            return "IBoolean";
        case intfICommand:
            return "ICommand";
        case intfIFloat:
            return "IFloat";
        case intfIString:
            return "IString";
        case intfIRegister:
            return "IRegister";
        case intfICategory:
            return "ICategory";
        case intfIEnumeration:
            return "IEnumeration";
        case intfIEnumEntry:
            return "IEnumEntry";
        case intfIPort:
            return "IPort";
        default:
            return "IBase";
    }
}

template <class T, class B>
inline bool IsReadable(const CPointer<T, B>& ptr) {
    return ptr.IsValid() && IsReadable(ptr->GetAccessMode());
}
template <class T, class B>
inline bool IsWritable(const CPointer<T, B>& ptr) {
    return ptr.IsValid() && IsWritable(ptr->GetAccessMode());
}
template <class T, class B>
inline bool IsImplemented(const CPointer<T, B>& ptr) {
    return ptr.IsValid() && IsImplemented(ptr->GetAccessMode());
}
template <class T, class B>
inline bool IsAvailable(const CPointer<T, B>& ptr) {
    return ptr.IsValid() && IsAvailable(ptr->GetAccessMode());
}

}  // namespace GENAPI_NAMESPACE

#endif
