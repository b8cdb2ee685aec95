// Interface common to all nodes, and the access-mode helpers.
#ifndef GENAPI_INODE_H
#define GENAPI_INODE_H

#include <GenApi/IBase.h>
#include <GenApi/Container.h>
#include <Base/GCString.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE INodeMap;
class CNodeCallback;

typedef node_vector NodeList_t;
typedef intptr_t CallbackHandleType;

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT INode : virtual public IBase {
    virtual GENICAM_NAMESPACE::gcstring GetName(bool FullQualified = false) const = 0;
    virtual GenApi::ENameSpace GetNameSpace() const = 0;
    virtual EVisibility GetVisibility() const = 0;
    virtual void InvalidateNode() = 0;
    virtual bool IsCachable() const = 0;
    virtual EYesNo IsAccessModeCacheable() const = 0;
    virtual ECachingMode GetCachingMode() const = 0;
    virtual int64_t GetPollingTime() const = 0;
    virtual GENICAM_NAMESPACE::gcstring GetToolTip() const = 0;
    virtual GENICAM_NAMESPACE::gcstring GetDescription() const = 0;
    virtual GENICAM_NAMESPACE::gcstring GetDisplayName() const = 0;
    virtual GENICAM_NAMESPACE::gcstring GetDeviceName() const = 0;
    virtual void GetChildren(GENAPI_NAMESPACE::NodeList_t & Children, ELinkType LinkType = ctReadingChildren)
        const = 0;
    virtual void GetParents(GENAPI_NAMESPACE::NodeList_t & Parents) const = 0;
    virtual CallbackHandleType RegisterCallback(CNodeCallback * pCallback) = 0;
    virtual bool DeregisterCallback(CallbackHandleType hCallback) = 0;
    virtual INodeMap* GetNodeMap() const = 0;
    virtual GENICAM_NAMESPACE::gcstring GetEventID() const = 0;
    virtual bool IsStreamable() const = 0;
    virtual void GetPropertyNames(GENICAM_NAMESPACE::gcstring_vector & PropertyNames) const = 0;
    virtual bool GetProperty(const GENICAM_NAMESPACE::gcstring& PropertyName,
                             GENICAM_NAMESPACE::gcstring& ValueStr,
                             GENICAM_NAMESPACE::gcstring& AttributeStr) = 0;
    virtual void ImposeAccessMode(EAccessMode ImposedAccessMode) = 0;
    virtual void ImposeVisibility(EVisibility ImposedVisibility) = 0;
    virtual INode* GetAlias() const = 0;
    virtual INode* GetCastAlias() const = 0;
    virtual GENICAM_NAMESPACE::gcstring GetDocuURL() const = 0;
    virtual bool IsDeprecated() const = 0;
    virtual EInterfaceType GetPrincipalInterfaceType() const = 0;
    virtual bool IsFeature() const = 0;
};

inline bool IsReadable(EAccessMode AccessMode) {
    return RO == AccessMode || RW == AccessMode;
}
inline bool IsReadable(const IBase* p) {
    return (p != NULL) && IsReadable(p->GetAccessMode());
}
inline bool IsReadable(const IBase& r) {
    return IsReadable(r.GetAccessMode());
}

inline bool IsWritable(EAccessMode AccessMode) {
    return WO == AccessMode || RW == AccessMode;
}
inline bool IsWritable(const IBase* p) {
    return (p != NULL) && IsWritable(p->GetAccessMode());
}
inline bool IsWritable(const IBase& r) {
    return IsWritable(r.GetAccessMode());
}

inline bool IsImplemented(EAccessMode AccessMode) {
    return AccessMode != NI;
}
inline bool IsImplemented(const IBase* p) {
    return (p != NULL) && IsImplemented(p->GetAccessMode());
}
inline bool IsImplemented(const IBase& r) {
    return IsImplemented(&r);
}

inline bool IsAvailable(EAccessMode AccessMode) {
    return !(AccessMode == NA || AccessMode == NI);
}
inline bool IsAvailable(const IBase* p) {
    return (p != NULL) && IsAvailable(p->GetAccessMode());
}
inline bool IsAvailable(const IBase& r) {
    return IsAvailable(r.GetAccessMode());
}

// Combines two access modes into the more restrictive one.
inline EAccessMode Combine(EAccessMode Peter, EAccessMode Paul) {
    if ((Peter == NI) || (Paul == NI))
        return NI;
    if ((Peter == NA) || (Paul == NA))
        return NA;
    if ((Peter == RO && Paul == WO) || (Peter == WO && Paul == RO))
        return NA;
    if ((Peter == WO) || (Paul == WO))
        return WO;
    if ((Peter == RO) || (Paul == RO))
        return RO;
    return RW;
}

inline bool IsVisible(EVisibility Visibility, EVisibility MaxVisiblity) {
    return (Visibility <= MaxVisiblity);
}

inline EVisibility Combine(EVisibility Peter, EVisibility Paul) {
    if ((Peter == Invisible) || (Paul == Invisible))
        return Invisible;
    if ((Peter == Guru) || (Paul == Guru))
        return Guru;
    if ((Peter == Expert) || (Paul == Expert))
        return Expert;
    return Beginner;
}

inline bool IsCacheable(ECachingMode CachingMode) {
    return (CachingMode != NoCache);
}

inline ECachingMode Combine(ECachingMode Peter, ECachingMode Paul) {
    if ((Peter == NoCache) || (Paul == NoCache))
        return NoCache;
    if ((Peter == WriteAround) || (Paul == WriteAround))
        return WriteAround;
    return WriteThrough;
}

}  // namespace GENAPI_NAMESPACE

#endif
